#include "ui/printing/preview.h"

#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace ui {

namespace {

constexpr double smallest_zoom = 0.25;
constexpr double largest_zoom = 4;
constexpr double zoom_step = 1.25;
constexpr double screen_dots_per_mm = 96 / 25.4;
constexpr int gap = 16;  // around and between the pages
const QColor desk(0x6B, 0x78, 0x85);

}  // namespace

PreviewDialog::PreviewDialog(std::shared_ptr<const printing::pages::PageSet> pages,
                             std::function<bool()> print)
    : pages_(std::move(pages)), print_(std::move(print)) {
    setObjectName("preview");
    setWindowTitle("معاينة قبل الطباعة");  // preview before printing
    setLayoutDirection(Qt::RightToLeft);

    const auto button = [this](const QString& text, const char* name, auto action) {
        auto* made = new QPushButton(text);
        made->setObjectName(name);
        made->setFocusPolicy(Qt::NoFocus);  // the preview itself handles the keys
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, action);
        return made;
    };
    zoom_label_ = new QLabel;
    zoom_label_->setObjectName("previewZoom");
    zoom_label_->setMinimumWidth(56);
    zoom_label_->setAlignment(Qt::AlignCenter);
    auto* bar = new QHBoxLayout;
    bar->addWidget(button("طباعة  Enter", "previewPrint", [this] { this->print(); }));
    bar->addSpacing(gap);
    bar->addWidget(button("تكبير  +", "previewLarger", [this] { set_zoom(zoom_ * zoom_step); }));
    bar->addWidget(zoom_label_);
    bar->addWidget(button("تصغير  -", "previewSmaller", [this] { set_zoom(zoom_ / zoom_step); }));
    bar->addWidget(button("عرض الورقة  0", "previewFit", [this] { fit_width(); }));
    bar->addStretch();
    bar->addWidget(button("إغلاق  Esc", "previewClose", [this] { reject(); }));

    paper_ = new QLabel;
    paper_->setObjectName("previewPaper");
    paper_->setAlignment(Qt::AlignCenter);
    view_ = new QScrollArea;
    view_->setWidget(paper_);
    view_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    view_->setFrameShape(QFrame::NoFrame);
    view_->setFocusPolicy(Qt::NoFocus);
    QPalette palette = view_->palette();
    palette.setColor(QPalette::Window, desk);
    view_->setPalette(palette);
    view_->viewport()->setAutoFillBackground(true);

    auto* column = new QVBoxLayout(this);
    column->addLayout(bar);
    column->addWidget(view_, 1);
    const QSize room = screen() != nullptr ? screen()->availableSize() : QSize(1024, 768);
    resize(std::min(900, room.width() - 40), room.height() - 80);
    draw();
}

void PreviewDialog::run() {
    const QPointer<QWidget> before = QApplication::activeWindow();
    if (before) {
        // A child of the window stays in front of it and gives the focus back when it closes.
        setParent(before, windowFlags());
    }
    exec();
    setParent(nullptr, windowFlags());
    if (before) before->activateWindow();
}

void PreviewDialog::set_zoom(double zoom) {
    zoom_ = std::clamp(zoom, smallest_zoom, largest_zoom);
    draw();
}

void PreviewDialog::fit_width() {
    const double room = view_->viewport()->width() - 2 * gap;
    set_zoom(std::min(2.0, room / (pages_->size().width() * screen_dots_per_mm)));
}

void PreviewDialog::print() {
    if (print_()) accept();
}

void PreviewDialog::draw() {
    const double dots = devicePixelRatioF();
    const std::vector<QImage> images = printing::pages::pictures(*pages_, zoom_ * screen_dots_per_mm * dots);
    int width = 0;
    int height = gap;
    for (const QImage& image : images) {
        width = std::max(width, static_cast<int>(image.width() / dots));
        height += static_cast<int>(image.height() / dots) + gap;
    }
    width += 2 * gap;
    QPixmap paper(QSize(width, height) * dots);
    paper.setDevicePixelRatio(dots);
    paper.fill(desk);
    QPainter painter(&paper);
    double y = gap;
    for (QImage image : images) {
        image.setDevicePixelRatio(dots);
        painter.drawImage(QPointF(gap, y), image);
        y += image.height() / dots + gap;
    }
    painter.end();
    paper_->setPixmap(paper);
    paper_->resize(width, height);
    zoom_label_->setText(QString("%1%").arg(std::lround(zoom_ * 100)));
}

void PreviewDialog::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    fit_width();
}

void PreviewDialog::keyPressEvent(QKeyEvent* event) {
    const auto scroll = [this](int steps) {
        QScrollBar* bar = view_->verticalScrollBar();
        bar->setValue(bar->value() + steps);
    };
    switch (event->key()) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            return set_zoom(zoom_ * zoom_step);
        case Qt::Key_Minus:
            return set_zoom(zoom_ / zoom_step);
        case Qt::Key_0:
            return fit_width();
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return print();
        case Qt::Key_Down:
            return scroll(60);
        case Qt::Key_Up:
            return scroll(-60);
        case Qt::Key_PageDown:
        case Qt::Key_Space:
            return scroll(view_->viewport()->height() - 40);
        case Qt::Key_PageUp:
            return scroll(40 - view_->viewport()->height());
        default:
            QDialog::keyPressEvent(event);
    }
}

void PreviewDialog::wheelEvent(QWheelEvent* event) {
    if ((event->modifiers() & Qt::ControlModifier) == 0) return QDialog::wheelEvent(event);
    set_zoom(event->angleDelta().y() > 0 ? zoom_ * zoom_step : zoom_ / zoom_step);
    event->accept();
}

void show_preview(std::shared_ptr<const printing::pages::PageSet> pages, std::function<bool()> print) {
    PreviewDialog(std::move(pages), std::move(print)).run();
}

}  // namespace ui

#include "ui/printing/preview.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

using printing::pages::PageSet;

constexpr double smallest_zoom = 0.25;
constexpr double largest_zoom = 4;
constexpr double zoom_step = 1.25;
constexpr double shown_dots_per_mm = 96 / 25.4;
constexpr int gap = 16;  // around and between the pages
constexpr int arrow_step = 60;

// All pages below one another. Only those in sight are drawn, each time anew, so that a long report takes no
// more memory than a short one.
class PaperView final : public QWidget {
  public:
    explicit PaperView(const PageSet& pages) : pages_(pages) { setObjectName("previewPaper"); }

    void set_scale(double dots_per_mm) {
        scale_ = dots_per_mm;
        const QSizeF paper = pages_.size() * scale_;
        resize(static_cast<int>(std::ceil(paper.width())) + 2 * gap,
               static_cast<int>(std::ceil(pages_.count() * (paper.height() + gap))) + gap);
        update();
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.fillRect(event->rect(), QColor(0xC9, 0xD1, 0xD8));
        const QSizeF paper = pages_.size() * scale_;
        const double pitch = paper.height() + gap;
        const int first = std::max(0, static_cast<int>((event->rect().top() - gap) / pitch));
        const int last = std::min(pages_.count() - 1, static_cast<int>(event->rect().bottom() / pitch));
        for (int page = first; page <= last; ++page) {
            const QRectF place({gap, gap + page * pitch}, paper);
            painter.save();
            painter.setClipRect(place);
            painter.fillRect(place, Qt::white);
            painter.translate(place.topLeft());
            pages_.draw(painter, scale_, page);
            painter.restore();
        }
    }

  private:
    const PageSet& pages_;
    double scale_ = 1;
};

}  // namespace

PreviewDialog::PreviewDialog(QWidget* host, std::shared_ptr<const PageSet> pages, std::function<bool()> print)
    : Sheet(host), pages_(std::move(pages)), print_(std::move(print)) {
    setObjectName("preview");
    setWindowTitle("معاينة قبل الطباعة");  // preview before printing
    setLayoutDirection(Qt::RightToLeft);
    setFocusPolicy(Qt::StrongFocus);
    layout()->setAlignment(card(), Qt::Alignment());  // as large as the window
    body()->setContentsMargins(px(12), px(12), px(12), px(12));
    build_bar();
    paper_ = new PaperView(*pages_);
    view_ = new QScrollArea;
    view_->setWidget(paper_);
    view_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    view_->setFrameShape(QFrame::NoFrame);
    view_->setFocusPolicy(Qt::NoFocus);
    view_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // the width to fit does not depend on it
    set_role(view_, "paper");
    if (isWindow()) view_->setMinimumSize(screen()->availableSize() - QSize(px(120), px(200)));
    view_->viewport()->installEventFilter(this);
    body()->addWidget(view_, 1);
    show_zoom(zoom_);
}

void PreviewDialog::build_bar() {
    auto* bar = add_row();
    // The preview itself has the focus and handles the keys; the captions only name them.
    const auto add = [&](const char* name, const QString& caption, const char* key, auto action) {
        QPushButton* made = foot_button(bar, name, caption + "  " + key, 0, action);
        made->setFocusPolicy(Qt::NoFocus);
        made->setProperty(key_property, key);
        return made;
    };
    set_role(add("previewPrint", "طباعة", "Enter", [this] { this->print(); }), "main");
    bar->addSpacing(gap);
    add("previewLarger", "تكبير", "+", [this] { set_zoom(zoom_ * zoom_step); });
    zoom_label_ = label({}, "figure", "previewZoom");
    zoom_label_->setMinimumWidth(px(64));
    zoom_label_->setAlignment(Qt::AlignCenter);
    bar->addWidget(zoom_label_);
    add("previewSmaller", "تصغير", "-", [this] { set_zoom(zoom_ / zoom_step); });
    add("previewFit", "عرض الورقة", "0", [this] { fit_width(); });
    bar->addStretch();
    add("previewClose", "إغلاق", "Esc", [this] { leave(0); });
}

void PreviewDialog::show_zoom(double zoom) {
    zoom_ = std::clamp(zoom, smallest_zoom, largest_zoom);
    static_cast<PaperView*>(paper_)->set_scale(zoom_ * shown_dots_per_mm);
    zoom_label_->setText(QString("%1%").arg(std::lround(zoom_ * 100)));
}

void PreviewDialog::set_zoom(double zoom) {
    fits_ = false;
    show_zoom(zoom);
}

void PreviewDialog::fit_width() {
    fits_ = true;
    const double room = view_->viewport()->width() - 2 * gap - 1;
    show_zoom(std::min(2.0, room / (pages_->size().width() * shown_dots_per_mm)));
}

void PreviewDialog::print() {
    if (print_()) leave(1);
}

bool PreviewDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == view_->viewport() && fits_) fit_width();
    return Sheet::eventFilter(watched, event);
}

void PreviewDialog::keyPressEvent(QKeyEvent* event) {
    const auto scroll = [](QScrollBar* bar, int steps) { bar->setValue(bar->value() + steps); };
    QScrollBar* down = view_->verticalScrollBar();
    QScrollBar* left = view_->horizontalScrollBar();  // counts from the right
    const int page = view_->viewport()->height() - 40;
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
            return scroll(down, arrow_step);
        case Qt::Key_Up:
            return scroll(down, -arrow_step);
        case Qt::Key_Left:
            return scroll(left, arrow_step);
        case Qt::Key_Right:
            return scroll(left, -arrow_step);
        case Qt::Key_PageDown:
        case Qt::Key_Space:
            return scroll(down, page);
        case Qt::Key_PageUp:
            return scroll(down, -page);
        case Qt::Key_Home:
            return down->setValue(0);
        case Qt::Key_End:
            return down->setValue(down->maximum());
        default:
            Sheet::keyPressEvent(event);
    }
}

void PreviewDialog::wheelEvent(QWheelEvent* event) {
    if ((event->modifiers() & Qt::ControlModifier) == 0) return Sheet::wheelEvent(event);
    set_zoom(event->angleDelta().y() > 0 ? zoom_ * zoom_step : zoom_ / zoom_step);
    event->accept();
}

void show_preview(std::shared_ptr<const PageSet> pages, std::function<bool()> print) {
    PreviewDialog(window_in_use(), std::move(pages), std::move(print)).run();
}

}  // namespace ui

#include "ui/printing/paper_sheet.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "ui/widgets/style.h"

namespace ui {

PaperSheet::PaperSheet(QWidget* host, const QString& title, const QImage& paper) : Sheet(host, title) {
    setObjectName("paper_sheet");
    auto* picture = new QLabel;
    picture->setObjectName("paper");
    const QPixmap drawn = QPixmap::fromImage(paper);
    picture->setPixmap(px(100) > 100 ? drawn.scaledToWidth(px(paper.width()), Qt::SmoothTransformation)
                                     : drawn);
    area_ = new QScrollArea;
    area_->setObjectName("paper_area");
    area_->setWidget(picture);
    area_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    set_role(area_, "paper");
    area_->setFixedWidth(px(paper.width()) + px(32));
    area_->setMinimumHeight(std::min(picture->pixmap().height() + px(8), host->window()->height() - px(220)));
    body()->addWidget(area_, 1);
    auto* back = new QPushButton("ر&جوع");
    back->setObjectName("paper_back");
    back->setMinimumHeight(px(48));
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
    body()->addWidget(back);
}

void PaperSheet::take_focus() {
    area_->setFocus();
}

void PaperSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        leave(0);
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

}  // namespace ui

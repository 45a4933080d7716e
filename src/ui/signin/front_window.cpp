#include "ui/signin/front_window.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

FrontWindow::FrontWindow(const char* name, const QString& heading, int card_width) {
    setObjectName(name);
    set_role(this, "screen");
    setWindowTitle(qt(message::title));
    setMinimumSize(px(640), px(480));
    auto* outer = new QVBoxLayout(this);
    auto* card = new QWidget;
    set_role(card, "card");
    card->setFixedWidth(px(card_width));
    outer->addWidget(card, 0, Qt::AlignCenter);
    column_ = new QVBoxLayout(card);
    column_->setContentsMargins(px(32), px(28), px(32), px(32));
    column_->setSpacing(px(16));
    column_->addWidget(label(qt(message::title), "caption"));
    column_->addWidget(label(heading, "title"));
}

bool FrontWindow::wait() {
    QEventLoop loop;
    loop_ = &loop;
    loop.exec();
    loop_ = nullptr;
    return outcome_;
}

void FrontWindow::leave(bool outcome) {
    outcome_ = outcome;
    if (loop_ != nullptr) loop_->quit();
}

void FrontWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        leave(false);
    } else {
        QWidget::keyPressEvent(event);
    }
}

void FrontWindow::closeEvent(QCloseEvent*) {
    leave(false);
}

void FrontWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(colour::background));
    painter.fillRect(0, 0, width(), height() * 2 / 5, QColor(colour::night));
}

}  // namespace ui

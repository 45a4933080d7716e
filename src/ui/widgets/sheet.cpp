#include "ui/widgets/sheet.h"

#include <QApplication>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "ui/widgets/key_queue.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr auto notice_name = "sheet_notice";

QLabel* notice_over(const QWidget* window) {
    return window->findChild<QLabel*>(notice_name, Qt::FindDirectChildrenOnly);
}

}  // namespace

Sheet::Sheet(QWidget* host, const QString& title)
    : QWidget(host != nullptr && host->window()->isVisible() ? host->window() : nullptr) {
    hide();
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(px(12), px(12), px(12), px(12));
    card_ = new QWidget(this);
    set_role(card_, "card");
    outer->addWidget(card_, 0, Qt::AlignCenter);
    body_ = new QVBoxLayout(card_);
    body_->setContentsMargins(px(28), px(22), px(28), px(24));
    body_->setSpacing(px(14));
    if (!title.isEmpty()) {
        auto* heading = new QLabel(title, card_);
        set_role(heading, "title");
        body_->addWidget(heading);
    }
    setWindowTitle(qt(message::title));
    // A scan belongs to the screen below and is entered there once the sheet is gone.
    setProperty(keys_property, keys_no_scans);
}

void Sheet::set_card_width(double measure) {
    card_->setFixedWidth(px(measure));
}

QHBoxLayout* Sheet::add_row() {
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    body_->addLayout(row);
    return row;
}

void Sheet::open() {
    former_ = QApplication::focusWidget();
    if (isWindow()) {
        setWindowModality(Qt::ApplicationModal);
        adjustSize();
        move(screen()->availableGeometry().center() - rect().center());  // a till may have no window manager
        show();
        activateWindow();
    } else {
        window()->installEventFilter(this);
        cover();
        show();
        raise();
    }
    take_focus();
}

void Sheet::shut() {
    if (!isWindow()) window()->removeEventFilter(this);
    hide();
    if (!isWindow() && top_of(window()) == nullptr) delete notice_over(window());
    if (former_ != nullptr && former_->isVisible() && former_->isEnabled())
        former_->setFocus();
    else if (!isWindow())
        focus_below();
}

int Sheet::run() {
    open();
    result_ = 0;
    QEventLoop loop;
    loop_ = &loop;
    loop.exec();
    loop_ = nullptr;
    shut();
    return result_;
}

void Sheet::focus_below() {
    if (Sheet* below = top_of(window()))
        below->take_focus();
    else
        window()->setFocus();
}

void Sheet::leave(int result) {
    result_ = result;
    if (loop_ != nullptr) loop_->quit();
}

Sheet* Sheet::top_of(const QWidget* window) {
    Sheet* top = nullptr;
    // Children are in the order in which they were raised.
    for (QObject* child : window->children()) {
        auto* sheet = qobject_cast<Sheet*>(child);
        if (sheet != nullptr && sheet->isVisible()) top = sheet;
    }
    return top;
}

void Sheet::tell(QWidget* window, const QString& text) {
    if (top_of(window) == nullptr) return;
    QLabel* notice = notice_over(window);
    if (notice == nullptr) {
        notice = new QLabel(window);
        notice->setObjectName(notice_name);
        notice->setWordWrap(true);
        set_role(notice, "lost");
        notice->show();
    }
    notice->setText(sentence(text));
    for (QObject* child : window->children()) {
        auto* sheet = qobject_cast<Sheet*>(child);
        if (sheet != nullptr && sheet->isVisible()) sheet->cover();
    }
}

void Sheet::cover() {
    QRect area = parentWidget()->contentsRect();
    if (QLabel* notice = notice_over(window())) {
        notice->setGeometry(area.left(), area.top(), area.width(), notice->heightForWidth(area.width()));
        notice->raise();
        area.setTop(area.top() + notice->height());
    }
    setGeometry(area);
}

void Sheet::take_focus() {
    setFocus();
    focusNextPrevChild(true);
}

void Sheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        escape();
    } else if (is_enter(event->key())) {
        // A focused button presses itself. If the focus is on one here, Enter in a field has just moved it
        // there.
        if (qobject_cast<QPushButton*>(focusWidget()) == nullptr) enter();
    }
    // Other keys end here too: the screen below must not act on them.
    event->accept();
}

bool Sheet::focusNextPrevChild(bool next) {
    QWidget* from = QApplication::focusWidget();
    if (from == nullptr || !isAncestorOf(from)) from = this;
    QWidget* to = from;
    do {
        to = next ? to->nextInFocusChain() : to->previousInFocusChain();
        if (isAncestorOf(to) && to->isVisible() && to->isEnabled() && (to->focusPolicy() & Qt::TabFocus) &&
            to->focusProxy() == nullptr) {
            to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    } while (to != from);
    return true;
}

bool Sheet::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == parentWidget()) cover();
    return QWidget::eventFilter(watched, event);
}

void Sheet::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), isWindow() ? QColor(0xee, 0xf1, 0xf4) : QColor(15, 37, 54, 140));
}

void Sheet::closeEvent(QCloseEvent*) {
    leave(0);
}

QWidget* window_in_use() {
    QWidget* active = QApplication::activeWindow();
    if (active != nullptr && active->isVisible() && active->windowType() != Qt::Tool) return active;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() == Qt::Window) return window;
    }
    return nullptr;
}

}  // namespace ui

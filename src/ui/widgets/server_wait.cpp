#include "ui/widgets/server_wait.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <algorithm>

#include "ui/widgets/key_queue.h"
#include "ui/widgets/server_panel.h"
#include "ui/widgets/sheet.h"

namespace ui {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds silent_time{1000};
// The patience for further statements of an action whose panel is shown: quick ones need no event loop.
constexpr milliseconds least_patience{20};
// An Esc pressed before the panel can have been read was meant for the screen.
constexpr milliseconds reading_time{300};

}  // namespace

ServerWait::ServerWait(KeyQueue& keys) : keys_(keys) {}

ServerWait::~ServerWait() {
    delete panel_;
}

milliseconds ServerWait::patience() {
    if (!begun_.isValid()) {
        begun_.start();
        // The action is over when the event loop has control again.
        QMetaObject::invokeMethod(this, &ServerWait::end_action, Qt::QueuedConnection);
    }
    return std::max(silent_time - milliseconds(begun_.elapsed()), least_patience);
}

void ServerWait::end_action() {
    if (loop_ != nullptr) return;  // this is the loop of the wait
    begun_.invalidate();
    delete panel_;
}

bool ServerWait::wait(const std::function<bool()>& ended) {
    keys_.hold(true);
    qApp->installEventFilter(this);
    QEventLoop loop;
    loop_ = &loop;
    has_given_up_ = false;
    show_panel();
    while (!has_given_up_ && !ended()) {
        if (loop.exec() < 0) has_given_up_ = true;  // the program ends
    }
    loop_ = nullptr;
    qApp->removeEventFilter(this);
    keys_.hold(false);
    QMetaObject::invokeMethod(this, &ServerWait::end_action, Qt::QueuedConnection);
    return !has_given_up_;
}

void ServerWait::wake() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (loop_ != nullptr) loop_->quit();
        },
        Qt::QueuedConnection);
}

void ServerWait::ended(const std::exception* error) {
    if (error == nullptr)
        emit answered();
    else if (database::may_have_run(*error))
        emit failed();
}

void ServerWait::give_up() {
    has_given_up_ = true;
    if (loop_ != nullptr) loop_->quit();
}

// The panel of an earlier statement of the same action stays.
void ServerWait::show_panel() {
    QWidget* window = window_in_use();
    if (panel_ != nullptr && panel_->parentWidget() == window) return;
    delete panel_;
    panel_ = new ServerPanel(window, begun_);
    connect(panel_, &ServerPanel::given_up, this, &ServerWait::give_up);
}

bool ServerWait::presses_button(const QEvent& event) const {
    return event.isPointerEvent() && panel_ != nullptr &&
           panel_->has_button_at(
               static_cast<const QPointerEvent&>(event).points().first().globalPosition().toPoint());
}

// Nothing reaches the screens but painting and the clock: no action may begin in the middle of another.
bool ServerWait::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Timer:  // it comes again
            return qobject_cast<QTimer*>(watched) != nullptr &&
                   !watched->property(runs_while_waiting).toBool();
        case QEvent::ShortcutOverride:  // the key comes to the queue and not to a button
            event->accept();
            return true;
        case QEvent::KeyPress: {
            const bool leaves = static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
                                panel_ != nullptr && panel_->shown_for() >= reading_time;
            if (leaves) give_up();
            return leaves;
        }
        case QEvent::Close:
            event->ignore();
            return true;
        case QEvent::KeyRelease:
        case QEvent::InputMethod:
        case QEvent::ContextMenu:
        case QEvent::Wheel:
            return true;
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
            return !presses_button(*event);
        default:
            return false;
    }
}

}  // namespace ui

#include "ui/signin/waiting_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <exception>

#include "ui/widgets/fields.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int moment_ms = 700;  // a server that answers sooner is not waited for visibly
constexpr int pause_ms = 3000;  // between two attempts

QLabel* paragraph(const QString& text, const char* role) {
    QLabel* made = label(text, role);
    made->setWordWrap(true);
    made->setTextFormat(Qt::PlainText);
    return made;
}

// Shows a window after a moment, unless the timer is gone by then.
void appear_later(QTimer& timer, QWidget& window, const std::function<void(QWidget&)>& show_window) {
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &window, [&window, &show_window] {
        show_window(window);
        window.activateWindow();
    });
    timer.start(moment_ms);
}

}  // namespace

WaitingWindow::WaitingWindow(const QString& server, std::function<void(QWidget&)> show_window)
    : FrontWindow("waiting", "في انتظار جهاز الخادم", 520), show_window_(std::move(show_window)) {
    // A machine's name is read from left to right.
    auto* name = paragraph(QChar(0x2066) + server + QChar(0x2069), "figure");
    name->setObjectName("waiting_server");
    column()->addWidget(name);
    column()->addWidget(
        paragraph("الخادم لا يستجيب. تأكد من أنه يعمل ومن توصيل الشبكة. تعاد المحاولة كل بضع ثوان، "
                  "ويكمل البرنامج وحده عندما يستجيب الخادم.",
                  "said"));
    state_ = label("", "caption");
    state_->setObjectName("waiting_state");
    column()->addWidget(state_);
    auto* row = new QHBoxLayout;
    foot_button(row, "waiting_leave", "&خروج", 1, [this] { leave(false); })->setMinimumHeight(px(52));
    column()->addSpacing(px(6));
    column()->addLayout(row);
}

WaitingWindow::~WaitingWindow() {
    if (thread_.joinable()) thread_.join();
}

bool WaitingWindow::run(const std::function<bool()>& attempt) {
    attempt_ = attempt;
    QTimer::singleShot(0, this, [this] { try_once(); });
    QTimer appear;
    appear_later(appear, *this, show_window_);
    const bool connected = wait();
    hide();
    QCoreApplication::processEvents();
    // The window is gone at once; an attempt that still runs ends by its own time limit.
    if (thread_.joinable()) thread_.join();
    return connected;
}

void WaitingWindow::try_once() {
    if (!is_waiting()) return;
    ++attempts_;
    state_->setText("المحاولة رقم " + QString::number(attempts_));
    thread_ = std::thread([this] {
        const bool connected = attempt_();
        QMetaObject::invokeMethod(
            this,
            [this, connected] {
                if (thread_.joinable()) thread_.join();
                if (!is_waiting()) return;
                if (connected) return leave(true);
                QTimer::singleShot(pause_ms, this, [this] { try_once(); });
            },
            Qt::QueuedConnection);
    });
}

CopyingWindow::CopyingWindow(std::function<void(QWidget&)> show_window, const QString& heading,
                             const QString& text)
    : FrontWindow("copying", heading, 520), show_window_(std::move(show_window)) {
    column()->addWidget(paragraph(text, "said"));
    bar_ = new QProgressBar;
    bar_->setObjectName("copying_done");
    bar_->setRange(0, 100);
    column()->addWidget(bar_);
}

void CopyingWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
}

void CopyingWindow::run(const std::function<void(const std::function<void(int)>& tell)>& copying) {
    std::exception_ptr failure;
    std::thread thread([&] {
        try {
            copying([this](int done) {
                QMetaObject::invokeMethod(
                    this, [this, done] { bar_->setValue(done); }, Qt::QueuedConnection);
            });
        } catch (...) {
            failure = std::current_exception();
        }
        QMetaObject::invokeMethod(
            this, [this] { leave(true); }, Qt::QueuedConnection);
    });
    QTimer appear;
    appear_later(appear, *this, show_window_);
    wait();
    thread.join();
    hide();
    QCoreApplication::processEvents();
    if (failure) std::rethrow_exception(failure);
}

}  // namespace ui

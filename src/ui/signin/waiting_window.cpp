#include "ui/signin/waiting_window.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

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
    appear.setSingleShot(true);
    connect(&appear, &QTimer::timeout, this, [this] {
        show_window_(*this);
        activateWindow();
    });
    appear.start(moment_ms);
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

}  // namespace ui

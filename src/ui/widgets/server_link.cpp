#include "ui/widgets/server_link.h"

#include <utility>

namespace ui {

namespace {

constexpr std::chrono::seconds between_attempts{3};
constexpr std::chrono::seconds good_news{6};

}  // namespace

ServerLink::ServerLink(KeyQueue& keys, common::Clock& clock) : wait_(keys), clock_(clock) {
    next_.setSingleShot(true);
    connect(&next_, &QTimer::timeout, this, [this] {
        if (state_ == State::lost) return ask();
        state_ = State::reached;
        emit changed();
    });
    connect(&wait_, &ServerWait::failed, this, &ServerLink::statement_failed);
    connect(&wait_, &ServerWait::answered, this, &ServerLink::statement_answered);
}

std::unique_ptr<database::Connection> ServerLink::attach(std::unique_ptr<database::Connection> opened,
                                                         Ping ping) {
    if (opened->is_embedded()) return opened;
    auto threaded = std::make_unique<database::ThreadedConnection>(std::move(opened), wait_);
    connection_ = threaded.get();
    ping_ = std::move(ping);
    return threaded;
}

void ServerLink::run_later(std::function<void(database::Connection&)> work, std::function<void()> done,
                           std::function<void()> failed) {
    connection_->run_later(
        [this, work = std::move(work), done = std::move(done), failed = std::move(failed)](auto& connection) {
            try {
                work(connection);
                QMetaObject::invokeMethod(this, done, Qt::QueuedConnection);
            } catch (const std::exception& error) {
                QMetaObject::invokeMethod(this, failed, Qt::QueuedConnection);
                // Any other error shows up at the cashier's next action.
                if (database::may_have_run(error))
                    QMetaObject::invokeMethod(this, &ServerLink::statement_failed, Qt::QueuedConnection);
            }
        });
}

QString ServerLink::text() const {
    if (state_ == State::lost)
        return QString::asprintf(
            "الخادم لا يستجيب منذ الساعة %02d:%02d. البيع متوقف حتى يعود، وما على الشاشة باق كما "
            "هو",
            since_->hour, since_->minute);
    if (state_ == State::back) {
        const auto ms = std::chrono::ceil<std::chrono::milliseconds>(answer_time_).count();
        return "عاد الخادم، وزمن رده " + QString::number(ms) + " مللي ثانية. يمكن متابعة البيع";
    }
    return {};
}

void ServerLink::statement_failed() {
    if (!since_) since_ = clock_.now().time;
    ask();
}

void ServerLink::statement_answered() {
    if (state_ == State::lost) ask();
}

void ServerLink::ask() {
    if (is_asking_ || connection_ == nullptr) return;
    is_asking_ = true;
    connection_->run_later([this, ping = ping_](database::Connection&) {
        const auto time = ping();
        QMetaObject::invokeMethod(
            this, [this, time] { answered(time); }, Qt::QueuedConnection);
    });
}

void ServerLink::answered(std::optional<std::chrono::microseconds> time) {
    is_asking_ = false;
    if (!time) {
        state_ = State::lost;
        next_.start(between_attempts);
    } else {
        since_.reset();
        if (state_ != State::lost) return;
        state_ = State::back;
        answer_time_ = *time;
        next_.start(good_news);
    }
    emit changed();
}

}  // namespace ui

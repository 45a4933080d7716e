#include "ui/journal/trail_writer.h"

#include <QPointer>
#include <chrono>
#include <memory>
#include <string>

#include "database/error.h"
#include "ui/widgets/server_link.h"

namespace ui {

namespace {

constexpr std::chrono::seconds between_looks{1};
// Waiting costs nothing: the events are in the till's own file.
constexpr std::chrono::minutes between_looks_on_server{1};
constexpr std::chrono::minutes after_failure{1};
constexpr std::string_view journal_code = "224";  // in the log

}  // namespace

TrailWriter::TrailWriter(database::Connection& connection, const signin::Session& session, ServerLink& server,
                         common::Log& log)
    : connection_(connection), session_(session), server_(server), log_(log) {
    const std::chrono::milliseconds between =
        connection.is_embedded() ? between_looks : std::chrono::milliseconds(between_looks_on_server);
    connect(&timer_, &QTimer::timeout, this, [this, between] {
        timer_.setInterval(between);
        if (!session_.trail->has_pending()) return;
        if (connection_.is_embedded())
            write();
        else
            write_later();
    });
    timer_.start(between);
}

bool TrailWriter::write() {
    if (is_writing_ || server_.is_lost()) return false;
    try {
        session_.trail->write(connection_);
        return true;
    } catch (const std::exception& error) {
        failed(error);
        return false;
    }
}

void TrailWriter::write_later() {
    if (is_writing_ || server_.is_lost()) return;
    is_writing_ = true;
    struct Writing {
        audit::Batch batch;
        std::string error;
    };
    const auto writing = std::make_shared<Writing>(Writing{session_.trail->batch(), {}});
    server_.run_later(
        [writing](database::Connection& shop) {
            try {
                writing->batch.write(shop);
            } catch (const std::exception& error) {
                writing->error = error.what();
            }
        },
        [self = QPointer(this), trail = session_.trail, writing] {
            trail->finish(writing->batch);
            if (!self) return;
            self->is_writing_ = false;
            if (!writing->error.empty()) self->failed(std::runtime_error(writing->error));
        });
}

// If the server is away, the cashier's next action will tell him.
void TrailWriter::failed(const std::exception& error) {
    log_.log_event(database::log_line("WriteJournal", error), journal_code);
    timer_.start(after_failure);
}

}  // namespace ui

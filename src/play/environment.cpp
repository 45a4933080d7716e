#include "play/environment.h"

#include <unistd.h>

#include <fstream>
#include <iterator>

#include "common/text.h"
#include "database/error.h"

namespace play {

namespace fs = std::filesystem;

fs::path PlayDevices::file_of(std::string_view port) const {
    std::string name = common::lower_ascii(common::trim(port));
    for (char& letter : name) {
        if (letter == '/' || letter == ':') letter = '_';
    }
    return folder_ / "ports" / name;
}

common::PortFault PlayDevices::write_port(std::string_view port, std::string_view bytes) {
    using common::PortFault;
    fs::path missing = file_of(port);
    missing += ".missing";
    if (common::trim(port).empty() || fs::exists(missing)) return PortFault::silent;
    // The devices of this machine are not asked, but a file of the shop is refused as at a till.
    if (common::port_fault(port, folder_) == PortFault::not_a_port) return PortFault::not_a_port;
    std::ofstream stream(file_of(port), std::ios::binary | std::ios::app);
    stream << bytes;
    return stream.good() ? PortFault::none : PortFault::silent;
}

std::string PlayDevices::written(std::string_view port) const {
    std::ifstream stream(file_of(port), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void PlayDevices::empty(std::string_view port) const {
    std::error_code ignored;
    fs::remove(file_of(port), ignored);
}

void PlayDevices::set_missing(std::string_view port, bool missing) const {
    fs::path mark = file_of(port);
    mark += ".missing";
    if (missing) {
        std::ofstream{mark};
    } else {
        fs::remove(mark);
    }
}

void PlayConnection::kill_when(const std::string& text) {
    kill_text_ = common::lower_ascii(text);
}

void PlayConnection::fail_when(const std::string& text, std::string sqlstate) {
    fail_text_ = common::lower_ascii(text);
    sqlstate_ = std::move(sqlstate);
}

database::Connection::Outcome PlayConnection::run(std::string_view statement,
                                                  const std::vector<database::Value>& values) {
    if (!kill_text_.empty() || !fail_text_.empty()) {
        const std::string text = common::lower_ascii(statement);
        const auto holds = [&text](const std::string& part) {
            return !part.empty() && text.find(part) != std::string::npos;
        };
        if (holds(kill_text_)) _exit(killed);
        if (holds(fail_text_)) {
            fail_text_.clear();
            throw database::Error(sqlstate_, "failed on purpose", std::string(statement));
        }
    }
    return by_clock(statement, real_->run(statement, values));
}

std::vector<database::Connection::Outcome> PlayConnection::run_all(
    const std::vector<database::Command>& commands) {
    // A statement that is to kill or to fail must be run by itself.
    if (!kill_text_.empty() || !fail_text_.empty()) return Connection::run_all(commands);
    std::vector<Outcome> outcomes = real_->run_all(commands);
    for (std::size_t i = 0; i < outcomes.size(); ++i)
        outcomes[i] = by_clock(commands[i].text(), std::move(outcomes[i]));
    return outcomes;
}

// The server's time is the play's.
database::Connection::Outcome PlayConnection::by_clock(std::string_view statement, Outcome outcome) {
    if (statement == "select getdate()") {
        auto columns = std::make_shared<const database::Columns>(std::vector<std::string>{""});
        outcome.result = database::Result(columns, {database::Row(columns, {clock_.now()})});
    }
    return outcome;
}

}  // namespace play

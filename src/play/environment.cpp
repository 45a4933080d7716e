#include "play/environment.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "common/ports.h"
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

PlayDevices::~PlayDevices() {
    for (auto& [name, port] : slow_) {
        port.is_ending = true;
        port.reader.join();
    }
}

void PlayDevices::set_speed(const std::string& port, int bytes_a_second) {
    SlowPort& slow = slow_[port];
    slow.bytes_a_second = bytes_a_second;
    if (slow.reader.joinable()) return;
    fs::path pipe = file_of(port);
    pipe += ".pipe";
    mkfifo(pipe.c_str(), 0600);
    std::string variable = "TALLVEX_" + port;
    std::transform(variable.begin(), variable.end(), variable.begin(),
                   [](char letter) { return letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter; });
    setenv(variable.c_str(), pipe.c_str(), 1);
    // Opened here, so that the port is there from now on.
    slow.reader = std::thread([&slow, file = file_of(port),
                               opened = common::Descriptor(open(pipe.c_str(), O_RDONLY | O_NONBLOCK))] {
        read_slowly(slow, opened, file);
    });
}

void PlayDevices::read_slowly(const SlowPort& port, const common::Descriptor& pipe, const fs::path& file) {
    constexpr int looks_a_second = 20;
    std::array<char, 4096> bytes{};
    while (!port.is_ending) {
        const int wanted = std::min<int>(port.bytes_a_second / looks_a_second, bytes.size());
        const ssize_t count =
            wanted > 0 ? read(pipe.get(), bytes.data(), static_cast<std::size_t>(wanted)) : 0;
        if (count > 0) std::ofstream(file, std::ios::binary | std::ios::app).write(bytes.data(), count);
        std::this_thread::sleep_for(std::chrono::milliseconds(1000 / looks_a_second));
    }
}

common::PortFault PlayDevices::write_port(std::string_view port, std::string_view bytes,
                                          std::string_view document) {
    using common::PortFault;
    fs::path missing = file_of(port);
    missing += ".missing";
    if (common::trim(port).empty() || fs::exists(missing)) return PortFault::silent;
    // The devices of this machine are not asked, but a file of the shop is refused as at a till.
    const PortFault fault = common::port_fault(port, folder_);
    if (common::is_never_a_port(fault)) return fault;
    if (slow_.contains(port)) return files_.write_port(port, bytes, document);
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

// The server's time is that of the play.
database::Connection::Outcome PlayConnection::by_clock(std::string_view statement, Outcome outcome) {
    if (statement == "select getdate()") {
        auto columns = std::make_shared<const database::Columns>(std::vector<std::string>{""});
        outcome.result = database::Result(columns, {database::Row(columns, {clock_.now()})});
    }
    return outcome;
}

}  // namespace play

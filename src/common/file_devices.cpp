#include "common/file_devices.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

#include "common/files.h"
#include "common/ports.h"

namespace common {

namespace fs = std::filesystem;

namespace {

constexpr auto pause = std::chrono::milliseconds(20);  // between two looks at a slow port

}  // namespace

FileDevices::~FileDevices() {
    forget_unsent();
    {
        const std::lock_guard lock(mutex_);
        is_ending_ = true;
    }
    changed_.notify_all();
    if (worker_.joinable()) worker_.join();
}

PortFault FileDevices::write_port(std::string_view port, std::string_view bytes, std::string_view document) {
    const std::lock_guard lock(mutex_);
    return send({{std::string(document), std::string(port), PortFault::none}, std::string(bytes)});
}

// Fast ports have taken everything when this returns, so that a fault is known at once.
PortFault FileDevices::send(Job job) {
    const fs::path place = port_place(job.document.port, folder_);
    if (const auto found = lines_.find(place); found != lines_.end()) {
        found->second.jobs.push_back(std::move(job));
        return PortFault::none;
    }
    OpenedPort opened = open_port(job.document.port, folder_);
    if (opened.fault != PortFault::none) return opened.fault;
    auto transfer = std::make_unique<PortTransfer>(std::move(opened.file), job.bytes);
    const PortTransfer::State state = transfer->advance();
    const PortFault fault = transfer->fault();
    if (state == PortTransfer::State::under_way) {
        Line& line = lines_[place];
        line.jobs.push_back(std::move(job));
        line.transfer = std::move(transfer);
        wake_worker();
    } else {
        close(std::move(transfer));
    }
    return fault;
}

void FileDevices::wake_worker() {
    if (!worker_.joinable()) worker_ = std::thread([this] { work(); });
    changed_.notify_all();
}

// Nobody waits for a port to close, neither the cashier nor whoever wants the lock.
void FileDevices::close(std::unique_ptr<PortTransfer> transfer) {
    if (!transfer->is_slow_to_close()) return;
    closing_.push_back(std::move(transfer));
    wake_worker();
}

void FileDevices::work() {
    std::unique_lock lock(mutex_);
    while (!is_ending_) {
        for (auto& [place, line] : lines_)
            advance(line);
        std::erase_if(lines_, [](const auto& entry) { return entry.second.jobs.empty(); });
        if (!closing_.empty()) {
            auto closing = std::exchange(closing_, {});
            lock.unlock();
            closing.clear();
            lock.lock();
        } else if (lines_.empty()) {
            changed_.wait(lock);
        } else {
            changed_.wait_for(lock, pause);
        }
    }
}

void FileDevices::advance(Line& line) {
    while (!line.jobs.empty()) {
        if (line.transfer == nullptr) {
            const Job& next = line.jobs.front();
            OpenedPort opened = open_port(next.document.port, folder_);
            if (opened.fault != PortFault::none) return fail(line, opened.fault);
            line.transfer = std::make_unique<PortTransfer>(std::move(opened.file), next.bytes);
        }
        switch (line.transfer->advance()) {
            case PortTransfer::State::under_way:
                return;
            case PortTransfer::State::failed:
                return fail(line, line.transfer->fault());
            case PortTransfer::State::done:
                close(std::move(line.transfer));
                line.jobs.pop_front();
        }
    }
}

// Documents waiting behind it would fail too. A drawer must not open later, when nobody expects it.
void FileDevices::fail(Line& line, PortFault fault) {
    for (Job& job : line.jobs) {
        if (job.document.title.empty()) continue;
        job.document.fault = fault;
        failed_.push_back(std::move(job));
    }
    line.jobs.clear();
    if (line.transfer != nullptr) close(std::move(line.transfer));
}

PortReport FileDevices::port_report() const {
    const std::lock_guard lock(mutex_);
    PortReport report;
    for (const auto& [place, line] : lines_) {
        for (const Job& job : line.jobs)
            if (!job.document.title.empty()) report.under_way.push_back(job.document);
    }
    for (const Job& job : failed_)
        report.failed.push_back(job.document);
    return report;
}

void FileDevices::send_again() {
    const std::lock_guard lock(mutex_);
    for (Job& job : std::exchange(failed_, {})) {
        const PortFault fault = send(job);
        if (fault == PortFault::none) continue;
        job.document.fault = fault;
        failed_.push_back(std::move(job));
    }
}

void FileDevices::forget_failed() {
    const std::lock_guard lock(mutex_);
    failed_.clear();
}

void FileDevices::forget_unsent() {
    const std::lock_guard lock(mutex_);
    for (auto& [place, line] : lines_) {
        if (line.transfer == nullptr) continue;
        line.transfer->abandon();
        close(std::move(line.transfer));
    }
    lines_.clear();
    failed_.clear();
}

// A device in the file's place, such as the customer's display on a serial port, is written to as a port.
bool FileDevices::write_file(std::string_view name, std::string_view bytes) {
    if (name.empty() || name.find('\0') != name.npos) return false;
    const fs::path path = folder_ / name;
    std::error_code failed;
    const fs::file_status form = fs::status(path, failed);
    if (fs::is_character_file(form) || fs::is_fifo(form)) return write_port(name, bytes) == PortFault::none;
    if (is_open_here(path)) return false;
    const Descriptor file(
        open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0644));
    return file.is_open() && write_all(file.get(), bytes, std::chrono::steady_clock::now() + port_patience);
}

}  // namespace common

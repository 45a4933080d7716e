// The ports and files of this machine.
#pragma once

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "common/port_transfer.h"
#include "common/services.h"

namespace common {

// Writes to each port in order. What a port does not take at once is sent by a thread; one thread serves all
// ports.
class FileDevices final : public Devices {
  public:
    // Relative paths start from this folder.
    explicit FileDevices(std::filesystem::path working_folder) : folder_(std::move(working_folder)) {}
    // Drops what has not gone out.
    ~FileDevices() override;

    PortFault write_port(std::string_view port, std::string_view bytes,
                         std::string_view document = {}) override;
    bool write_file(std::string_view name, std::string_view bytes) override;
    PortReport port_report() const override;
    void send_again() override;
    void forget_failed() override;
    void forget_unsent() override;

  private:
    struct Job {
        PortDocument document;
        std::string bytes;
    };
    struct Line {
        std::deque<Job> jobs;
        std::unique_ptr<PortTransfer> transfer;  // of the first job
    };
    using Lines = std::map<std::filesystem::path, Line>;

    PortFault send(Job job);
    void wake_worker();
    void close(std::unique_ptr<PortTransfer> transfer);
    void work();
    void advance(Line& line);
    void fail(Line& line, PortFault fault);

    std::filesystem::path folder_;
    mutable std::mutex mutex_;  // of all that follows
    std::condition_variable changed_;
    Lines lines_;
    std::deque<Job> failed_;
    std::vector<std::unique_ptr<PortTransfer>> closing_;
    bool is_ending_ = false;
    std::thread worker_;
};

}  // namespace common

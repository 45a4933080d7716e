// The environment of a play: a clock that the play sets, ports that are files, and a connection on which a
// play can make statements fail.
#pragma once

#include <atomic>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <thread>

#include "common/clock.h"
#include "common/file_devices.h"
#include "common/services.h"
#include "database/connection.h"

namespace play {

class PlayClock final : public common::Clock {
  public:
    common::Moment now() override { return moment_; }
    // Does nothing: only the play sets the time.
    bool set(const common::Moment&) override { return true; }
    void put(const common::Moment& moment) { moment_ = moment; }

  private:
    common::Moment moment_{{2026, 11, 21}, {10, 42, 0, 0}};
};

// Appends what is written to a port to the file of its name in the folder "ports".
class PlayDevices final : public common::Devices {
  public:
    explicit PlayDevices(std::filesystem::path folder)
        : folder_(std::move(folder)), files_(folder_.string()) {}
    ~PlayDevices() override;
    common::PortFault write_port(std::string_view port, std::string_view bytes,
                                 std::string_view document = {}) override;
    bool write_file(std::string_view name, std::string_view bytes) override {
        return files_.write_file(name, bytes);
    }
    common::PortReport port_report() const override { return files_.port_report(); }
    void send_again() override { files_.send_again(); }
    void forget_failed() override { files_.forget_failed(); }
    void forget_unsent() override { files_.forget_unsent(); }

    // Returns everything that was written to a port.
    std::string written(std::string_view port) const;
    void empty(std::string_view port) const;
    // Makes writing to a port fail from now on, or work again.
    void set_missing(std::string_view port, bool missing) const;
    // From now on a port with a DOS name is a printer that takes so many bytes a second; with 0 it takes
    // none.
    void set_speed(const std::string& port, int bytes_a_second);

  private:
    // A pipe, and the thread that takes from it and appends to the port's file.
    struct SlowPort {
        std::atomic<int> bytes_a_second = 0;
        std::atomic<bool> is_ending = false;
        std::thread reader;
    };
    std::filesystem::path file_of(std::string_view port) const;
    static void read_slowly(const SlowPort& port, const common::Descriptor& pipe,
                            const std::filesystem::path& file);

    std::filesystem::path folder_;
    common::FileDevices files_;
    std::map<std::string, SlowPort, std::less<>> slow_;
};

// The exit code of a program that a play killed.
inline constexpr int killed = 137;

// Passes statements on to the real connection, but takes the server's time from the play's clock.
class PlayConnection final : public database::Connection {
  public:
    PlayConnection(std::unique_ptr<database::Connection> real, common::Clock& clock)
        : real_(std::move(real)), clock_(clock) {}

    // Kills the process without cleanup before a statement that contains the text, as a power cut would.
    void kill_when(const std::string& text);
    // Makes the next statement that contains the text fail with the SQLSTATE.
    void fail_when(const std::string& text, std::string sqlstate);

    void make_durable() override { real_->make_durable(); }
    bool is_embedded() const override { return real_->is_embedded(); }
    Table describe(std::string_view table) override { return real_->describe(table); }
    std::shared_ptr<const Table> description(std::string_view table) override {
        return real_->description(table);
    }
    void describe_all(const std::vector<std::string>& tables) override { real_->describe_all(tables); }
    std::vector<std::string> tables() override { return real_->tables(); }
    Outcome run(std::string_view statement, const std::vector<database::Value>& values) override;
    std::vector<Outcome> run_all(const std::vector<database::Command>& commands) override;

  private:
    Outcome by_clock(std::string_view statement, Outcome outcome);
    std::unique_ptr<database::Connection> real_;
    common::Clock& clock_;
    std::string kill_text_;  // in lower case, as fail_text_; empty for none
    std::string fail_text_;
    std::string sqlstate_;
};

}  // namespace play

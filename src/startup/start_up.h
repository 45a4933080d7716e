// Start-up: everything between the start of the program and sign-in.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"
#include "startup/cash_point_lock.h"
#include "startup/connection_file.h"
#include "startup/running_till.h"
#include "startup/shop_version.h"

namespace startup {

// What start-up takes from the machine. Members left empty are filled in from the real machine.
struct Environment {
    std::string command_line;              // the arguments; the first character is the cash point
    std::filesystem::path program_folder;  // holds the version file, the logs and the password file
    std::filesystem::path working_folder;  // holds the connection file and the credit lines
    std::string computer_name;
    bool is_training = false;  // the working folder is that of a training shop
    OpenConnection open;
    std::function<std::string(std::string_view server)> get_ip;
    // Shows that a server does not answer, and calls `attempt` in another thread until it returns true.
    // Returns false if the cashier gave up. Without it the first attempt decides.
    std::function<bool(const std::string& server, const std::function<bool()>& attempt)> wait_for_server{};
    // Shows that the shop is copied before its update, if that takes more than a moment. Runs the copying in
    // another thread and throws what it throws. The copying reports how many hundredths are done.
    using Copying = std::function<void(const std::function<void(int)>& tell)>;
    std::function<void(const Copying& copying)> show_copying{};
    // Called once this till has its cash point. Another start of the same till makes the descriptor readable;
    // then answer_second_start() must be called.
    std::function<void(int descriptor)> listen{};
    bool is_office = false;  // the office, which is no till

    // This machine, with the cash point of its command line.
    static Environment here(const std::string& command_line);
};

// The code of the log lines for what went wrong at the start.
inline constexpr std::string_view failure_log_code = "223";

class StartUp {
  public:
    // Shows sign-in and returns when the cashier has closed the program.
    using ShowSignIn = std::function<void(database::Connection&, signin::Session&)>;

    StartUp(Environment environment, common::Services services);

    // Runs start-up from the files to sign-in, and returns true after sign-in has returned, after the till
    // that has this cash point already came to the front, or after the cashier left while the server did not
    // answer. A failure is shown to the cashier, written to the log and to the fatal-error record, and
    // returns false.
    bool run(const ShowSignIn& show_sign_in);

    // Brings this till to the front when it is started once more.
    void answer_second_start(const std::function<void()>& show);
    // Keeps the cash point of a shop on a server for this machine. It must be renewed every
    // RunningTill::seconds_between_claims, in any thread. None for a shop in a file.
    const std::optional<RunningTill>& claim() const { return claim_; }
    // Logs that the renewed claim found this cash point at another place. Returns the question to the cashier
    // whether to leave the program.
    std::string found_other_till(const std::string& place);
    // Leaves the cash point to the program that was started in place of this one.
    void hand_over();

    signin::Session& session() { return session_; }
    database::Connection& connection() { return *connection_; }

  private:
    void prepare_files();
    std::optional<CashPointLock::Holder> take_cash_point();
    bool connect();
    bool wait_for_server();
    void open();
    bool claim_cash_point();
    bool claim_office();
    void open_trail();
    std::string place_of_this_machine() const;
    void leave_cash_point();
    void set_clock();
    bool check_version();
    void update_shop();
    bool check_schema();
    void stamp_and_upgrade();
    void keep_copy();
    void fail(const std::string& cause, const std::string& reason, bool server_missing);
    void write_fatal_record(const std::string& cause);
    bool store_server_address();
    void progress(std::string_view what);

    Environment environment_;
    common::Services services_;
    signin::Session session_;
    ConnectionRecord record_;
    DataSource source_;
    Stamp stamp_;
    bool stamps_ = false;        // this till's version becomes the shop's
    std::string found_address_;  // the last answer of the network
    std::unique_ptr<database::Connection> connection_;
    std::optional<CashPointLock> lock_;  // among the tills of this machine
    std::optional<RunningTill> claim_;   // among the machines of a server
};

}  // namespace startup

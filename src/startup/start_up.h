// Start-up: everything between the start of the program and sign-in.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "common/services.h"
#include "database/connection.h"
#include "signin/session.h"
#include "startup/connection_file.h"
#include "startup/shop_version.h"

namespace startup {

// What start-up takes from the machine. Members left empty are filled in from the real machine.
struct Environment {
    std::string command_line;              // the arguments; the first character is the cash point
    std::filesystem::path program_folder;  // holds the version file, the logs and the password file
    std::filesystem::path working_folder;  // holds the connection file and the credit lines
    std::string computer_name;
    OpenConnection open;
    std::function<std::string(std::string_view server)> get_ip;

    // This machine, with the arguments of main().
    static Environment here(int argc, const char* const* argv);
};

class StartUp {
  public:
    // Shows sign-in and returns when the cashier has closed the program.
    using ShowSignIn = std::function<void(database::Connection&, signin::Session&)>;

    StartUp(Environment environment, common::Services services);

    // Runs start-up from the files to sign-in, and returns true after sign-in has returned. A failure is
    // shown to the cashier, written to the log and to the fatal-error record, and returns false.
    bool run(const ShowSignIn& show_sign_in);

    signin::Session& session() { return session_; }
    database::Connection& connection() { return *connection_; }

  private:
    void prepare_files();
    void connect();
    void set_clock();
    bool check_version();
    void update_shop();
    void fail(const std::string& cause, const std::string& reason, bool server_missing);
    bool store_server_address();
    void progress(std::string_view what);

    Environment environment_;
    common::Services services_;
    signin::Session session_;
    ConnectionRecord record_;
    DataSource source_;
    Stamp stamp_;
    bool stamps_ = false;  // this till's version becomes the shop's
    std::unique_ptr<database::Connection> connection_;
};

}  // namespace startup

// The road from the program's start to sign-in.
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
#include "startup/workstation.h"

namespace startup {

// What the road stands on; the defaults are the real machine's.
struct Environment {
    std::string command_line;              // the arguments; the first character is the cash point
    std::filesystem::path program_folder;  // holds the version file, the logs and the password file
    std::filesystem::path working_folder;  // holds the connection file and the credit lines
    std::string computer_name;             // empty: asked from the system
    // Opens what a connection string names (a shop file's name is taken from the folder).
    std::function<std::unique_ptr<database::Connection>(const std::string&, const std::filesystem::path&)>
        open;
    // The network address of a server text, or "Not Found".
    std::function<std::string(std::string_view)> get_ip;

    // This machine, with the arguments of main().
    static Environment here(int argc, const char* const* argv);
};

class StartUp {
  public:
    // Shows sign-in and returns when the cashier has closed the program.
    using ShowSignIn = std::function<void(database::Connection&, signin::Session&)>;

    StartUp(Environment environment, common::Services services);

    // Goes the whole road, to the end of the program. Whatever fails on it is told to the cashier, written to
    // the log and to the fatal-error record, and ends it. True when sign-in was reached and came back.
    bool run(const ShowSignIn& show_sign_in);

    // Filled as the road goes on.
    signin::Session& session() { return session_; }
    database::Connection& connection() { return *connection_; }

  private:
    void prepare_files();
    void connect();
    void set_clock();
    bool stamp_version();
    void fail(const std::string& cause, const std::string& reason, bool server_missing);
    bool store_server_address();
    void progress(std::string_view what);

    Environment environment_;
    common::Services services_;
    signin::Session session_;
    ConnectionRecord record_;
    DataSource source_;
    std::unique_ptr<database::Connection> connection_;
};

}  // namespace startup

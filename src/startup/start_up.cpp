#include "startup/start_up.h"

#include <utility>

#include "common/cash_point.h"
#include "startup/messages.h"
#include "startup/reasons.h"
#include "startup/shop_files.h"
#include "startup/workstation.h"

namespace startup {

namespace {

using common::Icon;

constexpr std::string_view progress_code = "222";

}  // namespace

Environment Environment::here(const std::string& command_line) {
    Environment environment;
    environment.command_line = command_line;
    environment.working_folder = shop_folder();
    environment.program_folder = home_of(environment.working_folder);
    return environment;
}

StartUp::StartUp(Environment environment, common::Services services)
    : environment_(std::move(environment)), services_(services) {
    if (!environment_.open) environment_.open = open_connection;
    if (!environment_.get_ip)
        environment_.get_ip = [](std::string_view server) { return startup::get_ip(server); };
}

bool StartUp::run(const ShowSignIn& show_sign_in) {
    try {
        prepare_files();
        if (const auto holder = take_cash_point()) return holder->shown;
        if (!connect()) return true;
        set_clock();
        connection_->execute("set dateformat ymd");
        // There is no short-date setting to change here; the program formats dates itself.
        progress("short date yyyy/MM/dd: nothing to set on this system");
        session_.computer_name =
            environment_.computer_name.empty() ? startup::computer_name() : environment_.computer_name;
        progress("computer name " + session_.computer_name);
        if (!check_version()) return false;
        update_shop();
        if (!check_schema() || !claim_cash_point()) return false;
        progress("sign-in");
        show_sign_in(*connection_, session_);
        leave_cash_point();
        return true;
    } catch (const StartUpError& error) {
        fail(error.what(), error.reason(), false);
    } catch (const database::Error& error) {
        fail(error.what() + (error.statement().empty() ? std::string() : " in: " + error.statement()),
             reason_of(error, record_.database), error.kind() == database::Error::Kind::server_missing);
    } catch (const std::exception& error) {
        fail(error.what(), std::string(message::see_log), false);
    }
    return false;
}

void StartUp::prepare_files() {
    session_.is_training = environment_.is_training;
    session_.program_folder = environment_.program_folder;
    session_.working_folder = environment_.working_folder;
    session_.is_office = environment_.is_office;
    session_.cash_point =
        environment_.is_office ? common::first_office : cash_point_of(environment_.command_line);
    const std::filesystem::path& folder = environment_.working_folder;
    if (!has_connection_file(folder) && !find_file(environment_.program_folder, version_file_name))
        throw StartUpError(folder.string() + ": there is no shop",
                           std::string(message::no_shop_folder) + folder.string());
    ensure_logs_folder(environment_.program_folder);
    progress("start, cash point " + std::to_string(session_.cash_point));
    session_.version = read_version_file(environment_.program_folder);
    progress("version " + session_.version);
    session_.credit_lines = read_credit_file(environment_.working_folder);
    record_ = read_connection_file(environment_.working_folder);
    source_ = data_source_of(record_);
    progress("connection file: server " + record_.server + ", database " + record_.database + ", address " +
             record_.address);
}

// Takes over the server's time, so that the moments of all tills are in one order. A difference of less than
// a second counts as none. If the system does not let the program set the clock, the difference is logged.
void StartUp::set_clock() {
    const common::Moment server = database::moment_of(connection_->scalar("select getdate()"));
    const double difference = common::seconds_between(services_.clock.now(), server);
    if (difference > -1 && difference < 1) {
        progress("clock as the server's");
    } else if (services_.clock.set(server)) {
        progress("clock set to " + common::moment_text(server));
    } else {
        progress("clock may not be set here; the server's " + common::moment_text(server) + " is " +
                 std::to_string(static_cast<long long>(difference)) + " s ahead of it");
    }
}

// Shows the fixed message, then the reason in a second box.
void StartUp::fail(const std::string& cause, const std::string& reason, bool server_missing) {
    services_.log.log_event(cause, failure_log_code);
    services_.prompts.message(message::wrong_path, Icon::information);
    const bool renewed = server_missing && store_server_address();
    write_fatal_record(cause);
    services_.prompts.message(renewed ? message::address_renewed : std::string_view(reason),
                              Icon::exclamation);
}

void StartUp::write_fatal_record(const std::string& cause) {
    try {
        write_fatal_error(environment_.program_folder, cause);
    } catch (const StartUpError& error) {
        services_.log.log_event(error.what(), failure_log_code);
    }
}

void StartUp::progress(std::string_view what) {
    services_.log.log_event(what, progress_code);
}

}  // namespace startup

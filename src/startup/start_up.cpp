#include "startup/start_up.h"
#include "startup/connection_file.h"

#include <utility>

#include "common/text.h"
#include "database/embedded/open.h"
#include "database/schema/schema.h"
#include "startup/messages.h"
#include "startup/reasons.h"
#include "startup/shop_files.h"
#include "startup/shop_version.h"
#include "startup/workstation.h"

namespace startup {

namespace {

using common::Icon;
constexpr std::string_view progress_code = "222";
constexpr std::string_view failure_code = "223";

double seconds_between(const common::Moment& from, const common::Moment& to) {
    const auto seconds = [](const common::Moment& m) {
        return static_cast<double>(common::days_from_epoch(m.date)) * 86400.0 + m.time.hour * 3600.0 +
               m.time.minute * 60.0 + m.time.second + m.time.millisecond / 1000.0;
    };
    return seconds(to) - seconds(from);
}

}  // namespace

Environment Environment::here(int argc, const char* const* argv) {
    Environment environment;
    for (int i = 1; i < argc; ++i) {
        if (i > 1) environment.command_line += ' ';
        environment.command_line += argv[i];
    }
    environment.program_folder = startup::program_folder();
    environment.working_folder = shop_folder();
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
        connect();
        set_clock();
        connection_->execute("set dateformat ymd");
        // There is no short-date setting to change here; the program formats dates itself.
        progress("short date yyyy/MM/dd: nothing to set on this system");
        session_.computer_name =
            environment_.computer_name.empty() ? startup::computer_name() : environment_.computer_name;
        progress("computer name " + session_.computer_name);
        if (!check_version()) return false;
        update_shop();
        progress("sign-in");
        show_sign_in(*connection_, session_);
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
    session_.program_folder = environment_.program_folder;
    session_.working_folder = environment_.working_folder;
    session_.cash_point = cash_point_of(environment_.command_line);
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

void StartUp::connect() {
    progress("connecting to " + source_.data_source);
    connection_ =
        open_shop(record_, environment_.program_folder, environment_.working_folder, environment_.open);
    progress("connected");
}

// Takes over the server's time, so that the moments of all tills are in one order. A difference of less than
// a second counts as none. If the system does not let the program set the clock, the difference is logged.
void StartUp::set_clock() {
    const common::Moment server = database::moment_of(connection_->scalar("select getdate()"));
    const double difference = seconds_between(services_.clock.now(), server);
    if (difference > -1 && difference < 1) {
        progress("clock as the server's");
    } else if (services_.clock.set(server)) {
        progress("clock set to " + common::moment_text(server));
    } else {
        progress("clock may not be set here; the server's " + common::moment_text(server) + " is " +
                 std::to_string(static_cast<long long>(difference)) + " s ahead of it");
    }
}

// The till on the server machine stamps its version; every other till must have the stamped version. No till
// takes a shop back to an older version. Returns false after telling the cashier that this one may not start.
bool StartUp::check_version() {
    stamp_ = read_stamp(*connection_);
    stamps_ = source_.is_embedded() || is_this_machine(source_.server, session_.computer_name);
    const bool is_same = stamp_.version == common::trim(session_.version);
    const bool older = is_older(session_.version, stamp_.version);
    if (is_same || (stamps_ && !older)) return true;
    progress("version " + session_.version + " differs from the stamped " + stamp_.version);
    std::string text = std::string(message::version_differs) + stamp_.version;
    if (older) text += "\n" + std::string(message::program_older) + session_.version;
    services_.prompts.message(text, Icon::critical);
    return false;
}

// A shop whose settings row has no place for the stamp yet gets it from the list.
void StartUp::update_shop() {
    const auto stamp = [this] {
        write_stamp(*connection_, session_.version);
        progress("version stamped");
    };
    if (stamps_ && stamp_.has_column) stamp();
    progress("schema upgrade");
    database::run_upgrade_list(*connection_);
    if (stamps_ && !stamp_.has_column) stamp();
    connection_->make_durable();
}

// Shows the fixed message, then the reason in a second box.
void StartUp::fail(const std::string& cause, const std::string& reason, bool server_missing) {
    services_.log.log_event(cause, failure_code);
    services_.prompts.message(message::wrong_path, Icon::information);
    const bool renewed = server_missing && store_server_address();
    try {
        write_fatal_error(environment_.program_folder, cause);
    } catch (const StartUpError& error) {
        services_.log.log_event(error.what(), failure_code);
    }
    services_.prompts.message(renewed ? message::address_renewed : std::string_view(reason),
                              Icon::exclamation);
}

// Asks the network for the server's address and stores it for the next start. Returns true if that start will
// connect to another data source than this one did.
bool StartUp::store_server_address() {
    try {
        std::string address = environment_.get_ip(record_.server);
        // The "C" at the end may be an addition to the machine's name.
        if (address == no_address && source_.server != record_.server)
            address = environment_.get_ip(source_.server);
        services_.log.log_event("address of " + record_.server + ": " + address, failure_code);
        if (address == no_address) return false;
        write_server_address(environment_.program_folder, address);
        return data_source_of({record_.server, record_.database, address}).data_source != source_.data_source;
    } catch (const std::exception& error) {
        services_.log.log_event(std::string("the server's address was not kept: ") + error.what(),
                                failure_code);
        return false;
    }
}

void StartUp::progress(std::string_view what) {
    services_.log.log_event(what, progress_code);
}

}  // namespace startup

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
        if (const auto holder = take_cash_point()) return holder->shown;
        if (!connect()) return false;
        set_clock();
        connection_->execute("set dateformat ymd");
        // There is no short-date setting to change here; the program formats dates itself.
        progress("short date yyyy/MM/dd: nothing to set on this system");
        session_.computer_name =
            environment_.computer_name.empty() ? startup::computer_name() : environment_.computer_name;
        progress("computer name " + session_.computer_name);
        if (!check_version()) return false;
        update_shop();
        if (!claim_cash_point()) return false;
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

// Another till of this machine with the same cash point comes to the front instead of this one, or the
// cashier is told whose it is. Returns that till.
std::optional<CashPointLock::Holder> StartUp::take_cash_point() {
    std::error_code ignored;
    const auto& folder = environment_.working_folder;
    const std::string shop =
        source_.is_embedded()
            ? std::filesystem::weakly_canonical(shop_file(record_, folder), ignored).string()
            : std::filesystem::weakly_canonical(folder, ignored).string() + '\n' + source_.data_source +
                  '\n' + record_.database;
    lock_.emplace(shop, session_.cash_point);
    auto holder = lock_->take();
    if (!holder) {
        if (environment_.listen && lock_->descriptor() >= 0) environment_.listen(lock_->descriptor());
        return std::nullopt;
    }
    lock_.reset();
    const std::string number = std::to_string(session_.cash_point);
    progress("cash point " + number + " is running on this machine");
    if (holder->shown) return holder;
    const std::string text = std::string(message::cash_point) + number;
    services_.prompts.message(
        text + (holder->user.empty() ? std::string(message::runs_silently)
                                     : std::string(message::runs_as_user) + holder->user),
        Icon::critical);
    return holder;
}

void StartUp::answer_second_start(const std::function<void()>& show) {
    if (lock_)
        lock_->answer([&] {
            progress("brought to the front by a second start");
            show();
        });
}

// Returns false if the cashier gave up waiting for the server.
bool StartUp::connect() {
    progress("connecting to " + source_.data_source);
    if (source_.is_embedded() || !environment_.wait_for_server)
        open();
    else if (!wait_for_server())
        return false;
    progress("connected");
    return true;
}

void StartUp::open() {
    connection_ =
        open_shop(record_, environment_.program_folder, environment_.working_folder, environment_.open);
}

// Only a server that does not answer is waited for; any other error ends the start at once.
bool StartUp::wait_for_server() {
    std::exception_ptr other;
    std::string silence;  // why the server was not reached at the first attempt
    const auto attempt = [&] {
        try {
            open();
        } catch (const database::Error& error) {
            using Kind = database::Error::Kind;
            const bool is_silent = error.kind() == Kind::server_missing ||
                                   error.kind() == Kind::connection_lost || error.kind() == Kind::timed_out;
            if (!is_silent) {
                other = std::current_exception();
                return true;
            }
            if (silence.empty()) {
                silence = error.what();
                services_.log.log_event("waiting for the server: " + silence, failure_code);
            }
            if (store_server_address()) {
                record_.address = found_address_;
                source_ = data_source_of(record_);
            }
            return false;
        } catch (...) {
            other = std::current_exception();
        }
        return true;
    };
    const bool ended = environment_.wait_for_server(record_.server, attempt);
    if (other) std::rethrow_exception(other);
    if (ended) return true;
    services_.log.log_event("the cashier left while the server did not answer", failure_code);
    write_fatal_record(silence);
    return false;
}

// Tells the cashier if another machine runs this cash point. Tills of a shop in a file are on one machine.
bool StartUp::claim_cash_point() {
    if (source_.is_embedded()) return true;
    const std::string folder = environment_.working_folder.string();
    claim_.emplace(session_.cash_point, common::left(session_.computer_name + " " + folder, 200));
    const auto other = claim_->claim(*connection_);
    if (!other) return true;
    claim_.reset();
    const std::string number = std::to_string(session_.cash_point);
    progress("cash point " + number + " is running on " + *other);
    services_.prompts.message(std::string(message::cash_point) + number +
                                  std::string(message::runs_elsewhere) + *other +
                                  std::string(message::free_after_three_minutes),
                              Icon::critical);
    return false;
}

bool StartUp::renew_claim() {
    if (!claim_) return true;
    try {
        if (const auto other = claim_->claim(*connection_))
            progress("this cash point also runs on " + *other);
        return true;
    } catch (const database::Error& error) {
        return false;  // what the cashier does next will tell
    }
}

// A server that is gone by then lets the claim run out.
void StartUp::leave_cash_point() {
    if (!claim_) return;
    try {
        claim_->leave(*connection_);
    } catch (const database::Error& error) {
        progress(std::string("the cash point was not given free: ") + error.what());
    }
}

void StartUp::hand_over() {
    claim_.reset();
    if (lock_) lock_->release();
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
    write_fatal_record(cause);
    services_.prompts.message(renewed ? message::address_renewed : std::string_view(reason),
                              Icon::exclamation);
}

void StartUp::write_fatal_record(const std::string& cause) {
    try {
        write_fatal_error(environment_.program_folder, cause);
    } catch (const StartUpError& error) {
        services_.log.log_event(error.what(), failure_code);
    }
}

// Asks the network for the server's address and stores it for the next start. Returns true if that start will
// connect to another data source than this one did.
bool StartUp::store_server_address() {
    try {
        std::string address = environment_.get_ip(record_.server);
        // The "C" at the end may be an addition to the machine's name.
        if (address == no_address && source_.server != record_.server)
            address = environment_.get_ip(source_.server);
        if (address == found_address_) return false;
        found_address_ = address;
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

#include "database/sqlserver/odbc_connection.h"

#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>

#include "common/text.h"
#include "database/sqlserver/odbc_catalogue.h"

namespace database {

namespace {

std::set<int> open_descriptors() {
    std::set<int> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", ignored)) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") == name.npos) found.insert(std::stoi(name));
    }
    return found;
}

// The port of an address, or 0 if it is not an IP address.
std::uint16_t port_of(const sockaddr_storage& address) {
    if (address.ss_family == AF_INET) return ntohs(reinterpret_cast<const sockaddr_in&>(address).sin_port);
    if (address.ss_family == AF_INET6) return ntohs(reinterpret_cast<const sockaddr_in6&>(address).sin6_port);
    return 0;
}

using AddressOf = int (*)(int, sockaddr*, socklen_t*);
sockaddr_storage address_by(AddressOf ask, int descriptor) {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    if (ask(descriptor, reinterpret_cast<sockaddr*>(&address), &size) != 0) return {};
    return address;
}

sockaddr_storage own_address(int descriptor) {
    return address_by([](int d, sockaddr* a, socklen_t* s) { return getsockname(d, a, s); }, descriptor);
}

}  // namespace

SocketsBefore::SocketsBefore() : known_(open_descriptors()) {}

std::optional<SocketsBefore::Found> SocketsBefore::new_one(std::uint16_t port) const {
    std::optional<Found> found;
    for (const int descriptor : open_descriptors()) {
        if (known_.contains(descriptor)) continue;
        const auto peer =
            address_by([](int d, sockaddr* a, socklen_t* s) { return getpeername(d, a, s); }, descriptor);
        if (port == 0 || port_of(peer) != port) continue;
        if (found) return {};
        found = Found{descriptor, own_address(descriptor)};
    }
    return found;
}

OdbcWatch::~OdbcWatch() {
    {
        const std::lock_guard guard(lock_);
        ending_ = true;
    }
    changed_.notify_one();
    if (thread_.joinable()) thread_.join();
}

void OdbcWatch::look_after(std::optional<SocketsBefore::Found> socket) {
    const std::lock_guard guard(lock_);
    socket_ = socket;
}

bool OdbcWatch::has_cut() {
    const std::lock_guard guard(lock_);
    return cut_;
}

void OdbcWatch::begin(std::chrono::milliseconds most) {
    const std::lock_guard guard(lock_);
    cut_ = false;
    if (!socket_) return;
    deadline_ = Clock::now() + most;
    if (!thread_.joinable()) thread_ = std::thread([this] { keep_watch(); });
    // Usually the thread wakes up in time anyway, at the deadline of an earlier wait.
    if (asleep_until_ > deadline_) changed_.notify_one();
}

void OdbcWatch::end() {
    const std::lock_guard guard(lock_);
    deadline_ = Clock::time_point::max();
}

void OdbcWatch::cut() {
    const std::lock_guard guard(lock_);
    shut();
}

void OdbcWatch::shut() {
    cut_ = true;
    deadline_ = Clock::time_point::max();
    if (!socket_) return;
    const sockaddr_storage now = own_address(socket_->descriptor);
    if (std::memcmp(&now, &socket_->own, sizeof now) == 0) ::shutdown(socket_->descriptor, SHUT_RDWR);
}

void OdbcWatch::keep_watch() {
    std::unique_lock guard(lock_);
    while (!ending_) {
        if (deadline_ == Clock::time_point::max()) {
            asleep_until_ = deadline_;
            changed_.wait(guard);
        } else if (Clock::now() < deadline_) {
            asleep_until_ = deadline_;
            changed_.wait_until(guard, asleep_until_);
        } else {
            shut();
        }
    }
}

namespace {

SQLPOINTER number_pointer(int number) {
    return reinterpret_cast<SQLPOINTER>(static_cast<std::uintptr_t>(number));
}

// Read, write and end-of-file failures of FreeTDS, and its refusal to use a dead connection, with any
// SQLSTATE.
bool means_loss(const Diagnostic& diagnostic) {
    static constexpr std::array lost = {20004, 20006, 20017, 20020, 20047};
    return diagnostic.sqlstate.starts_with("08") ||
           std::find(lost.begin(), lost.end(), diagnostic.native) != lost.end();
}

const Diagnostic* first_that(const std::vector<Diagnostic>& all, auto condition) {
    const auto found = std::find_if(all.begin(), all.end(), condition);
    return found == all.end() ? nullptr : &*found;
}

// The reason if the server refused the log-in; every other failure counts as an unreachable server.
Error connect_error(const std::vector<Diagnostic>& all) {
    // A missing database is reported together with the failed log-in.
    const auto* refusal = first_that(all, [](const Diagnostic& d) { return is_missing_database(d.native); });
    if (refusal == nullptr)
        refusal = first_that(all, [](const Diagnostic& d) { return !d.is_notice() && d.is_from_server(); });
    if (refusal != nullptr) {
        const Error error = server_error(*refusal, "");
        // A server that answers is not missing, whatever SQLSTATE the driver reports for an error that it
        // does not know.
        if (!error.is_connection_lost()) return error;
        return {"42000", error.what(), ""};
    }
    // If the driver or its library is missing, the driver manager reports only notices; a driver always
    // reports an error.
    const auto* said = first_that(all, [](const Diagnostic& d) { return d.sqlstate.starts_with("IM"); });
    if (said == nullptr && !all.empty() &&
        std::all_of(all.begin(), all.end(), [](const Diagnostic& d) { return d.is_notice(); }))
        said = &all.front();
    if (said != nullptr) return {"IM003", "The ODBC driver cannot be used: " + said->text, ""};
    return {"08001", server_unreachable, ""};
}

// Everything that was reported when a connection broke; the server's own messages come before the driver's.
std::string causes_in(const std::vector<Diagnostic>& all) {
    std::string causes;
    for (const Diagnostic& one : all) {
        if (one.text.empty() || causes.find(one.text) != causes.npos) continue;
        causes += (causes.empty() ? "" : "; ") + one.text;
        if (one.is_from_server()) causes += " (" + std::to_string(one.native) + ")";
    }
    return causes;
}

Error statement_error(const std::vector<Diagnostic>& all, bool lost, std::string_view statement) {
    const Diagnostic* said = first_that(all, [](const Diagnostic& d) { return !d.is_notice(); });
    if (said == nullptr && !all.empty()) said = &all.front();
    if (said == nullptr) return {"HY000", "The statement failed without a reason.", std::string(statement)};
    if (lost) return {"08S01", causes_in(all), std::string(statement)};
    return server_error(*said, statement);
}

// The server's port in a connection string of the driver; 0 without one.
std::uint16_t port_in(std::string_view driver_string) {
    constexpr std::string_view name = ";PORT=";
    const auto at = driver_string.find(name);
    std::uint16_t port = 0;
    if (at != driver_string.npos)
        std::from_chars(driver_string.data() + at + name.size(), driver_string.data() + driver_string.size(),
                        port);
    return port;
}

std::string bare_name(std::string_view table) {
    std::string name(common::trim(table));
    if (const auto dot = name.rfind('.'); dot != std::string::npos) name.erase(0, dot + 1);
    if (name.size() > 1 && name.front() == '[' && name.back() == ']') name = name.substr(1, name.size() - 2);
    return common::lower_ascii(name);
}

}  // namespace

OdbcConnection::OdbcConnection(OdbcSettings settings)
    : settings_(std::move(settings)), environment_(SQL_HANDLE_ENV, SQL_NULL_HANDLE) {
    SQLSetEnvAttr(environment_.get(), SQL_ATTR_ODBC_VERSION, number_pointer(SQL_OV_ODBC3), 0);
    connect();
}

OdbcConnection::~OdbcConnection() {
    disconnect();
}

template <typename Work>
auto OdbcConnection::guarded(std::string_view statement, std::chrono::milliseconds most, Work work) {
    constexpr const char* late_answer = "The server did not answer in time.";
    if (stop_.stop_requested()) throw Error("HYT00", late_answer, std::string(statement));
    try {
        const OdbcWatch::Wait wait(watch_, most);
        const std::stop_callback on_stop(stop_, [this] { watch_.cut(); });
        return work();
    } catch (const OdbcFailure& failure) {
        const auto& all = failure.diagnostics;
        SQLUINTEGER dead = SQL_CD_FALSE;
        SQLGetConnectAttr(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr);
        const bool lost = dead == SQL_CD_TRUE || std::any_of(all.begin(), all.end(), means_loss);
        const bool late = watch_.has_cut() || std::any_of(all.begin(), all.end(), [](const Diagnostic& d) {
                              return d.sqlstate.starts_with("HYT") && !d.is_from_server();
                          });
        // A late answer must not be read as the answer to the next statement.
        if (lost || late) disconnect();
        if (late) throw Error("HYT00", late_answer, std::string(statement));
        throw statement_error(all, lost, statement);
    }
}

void OdbcConnection::connect() {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(settings_.login_seconds);
    const auto left = [&] {
        return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()),
                        std::chrono::milliseconds(1));
    };
    if (settings_.find) settings_.driver_string = settings_.find(left());
    OdbcHandle handle(SQL_HANDLE_DBC, environment_.get());
    const auto seconds = static_cast<int>(std::chrono::ceil<std::chrono::seconds>(left()).count());
    SQLSetConnectAttr(handle.get(), SQL_ATTR_LOGIN_TIMEOUT, number_pointer(seconds), 0);
    std::vector<SQLWCHAR> text = to_wide(settings_.driver_string);
    const SocketsBefore before;
    const SQLRETURN answer = SQLDriverConnectW(handle.get(), nullptr, text.data(), SQL_NTS, nullptr, 0,
                                               nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(answer)) throw connect_error(diagnostics_of(SQL_HANDLE_DBC, handle.get()));
    connection_ = std::move(handle);
    watch_.look_after(before.new_one(port_in(settings_.driver_string)));
    if (settings_.opening_statement.empty()) return;
    try {
        guarded(settings_.opening_statement, left(), [&] {
            return run_odbc_statement(connection_.get(), settings_.opening_statement, {},
                                      settings_.login_seconds);
        });
    } catch (const Error&) {
        disconnect();  // better no connection than one that reads dates differently
        throw;
    }
}

void OdbcConnection::disconnect() {
    if (!connection_) return;
    constexpr auto most = std::chrono::seconds(1);
    const OdbcWatch::Wait wait(watch_, most);
    connection_.free();
}

Connection::Outcome OdbcConnection::run(std::string_view statement, const std::vector<Value>& values) {
    if (!connection_ && statement == "rollback transaction")  // it has ended with its connection
        return {Result(std::make_shared<const Columns>(std::vector<std::string>()), {}), 0};
    if (!connection_) connect();
    if (may_change_tables(statement)) described_.clear();
    const std::string sent = server_text(statement, values);
    return guarded(statement, std::chrono::seconds(settings_.query_seconds), [&] {
        return run_odbc_statement(connection_.get(), sent, values, settings_.query_seconds);
    });
}

std::vector<Connection::Outcome> OdbcConnection::run_all(const std::vector<Command>& commands) {
    std::vector<Outcome> outcomes;
    if (commands.empty()) return outcomes;
    const auto running = [&]() -> const Command& {
        return commands[std::min(outcomes.size(), commands.size() - 1)];
    };
    try {
        if (!connection_) connect();
        for (const Command& command : commands)
            if (may_change_tables(command.text())) described_.clear();
        const std::string sent = batch_text(commands);
        guarded(sent, std::chrono::seconds(settings_.query_seconds),
                [&] { run_odbc_batch(connection_.get(), sent, settings_.query_seconds, outcomes); });
        const bool is_unchanged =
            !outcomes.empty() && outcomes.back().changed == 0 && commands[outcomes.size() - 1].must_change();
        if (is_unchanged) {
            outcomes.pop_back();
            throw unchanged(running());
        }
        if (outcomes.size() < commands.size())
            throw Error("HY000", "The server stopped without an error.", "");
        return outcomes;
    } catch (const Error& error) {
        if (connection_) roll_back_begun(commands, outcomes.size());
        throw BatchError({error.sqlstate(), error.what(), running().text(), error.kind()}, outcomes.size());
    }
}

std::shared_ptr<const Connection::Table> OdbcConnection::description(std::string_view table) {
    describe_all({std::string(table)});
    return described_.find(bare_name(table))->second;
}

void OdbcConnection::describe_all(const std::vector<std::string>& tables) {
    std::vector<std::string> unknown;
    for (const std::string& table : tables)
        if (!described_.contains(bare_name(table))) unknown.push_back(bare_name(table));
    if (unknown.empty()) return;
    described_.merge(tables_in(query(catalogue_statement(unknown))));
    for (const std::string& name : unknown) {
        if (!described_.contains(name)) throw Error("42S02", "Invalid object name '" + name + "'.", "");
    }
}

}  // namespace database

#include "support/tds_bridge.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <regex>
#include <stdexcept>

#include "common/text.h"
#include "database/embedded/open.h"
#include "database/sqlserver/odbc_text.h"
#include "support/tds_bytes.h"
#include "support/tds_catalogue.h"
#include "support/tds_messages.h"

namespace test::tds {

using database::Error;
using database::Value;

namespace {

struct ServerError {
    const char* sqlstate;
    int number;
    int severity;
};

// The server's numbers for the errors of the embedded engine.
ServerError numbered(const Error& error) {
    static constexpr std::array known = {
        ServerError{"42S02", 208, 16},  ServerError{"42S22", 207, 16},  ServerError{"42S01", 2714, 16},
        ServerError{"42S21", 2705, 16}, ServerError{"42S11", 1913, 16}, ServerError{"42S12", 3701, 11},
        ServerError{"42000", 102, 15},  ServerError{"22001", 2628, 16}, ServerError{"22003", 8115, 16},
        ServerError{"22007", 241, 16},  ServerError{"22012", 8134, 16}, ServerError{"22018", 245, 16},
        ServerError{"21S01", 213, 16},  ServerError{"40001", 1205, 13}, ServerError{"HYT00", 1222, 16},
        ServerError{"23000", 2627, 14}};
    constexpr int null_refused = 515, disk_full = 1105, any_other = 50000;
    const std::string_view text = error.what();
    if (error.sqlstate() == "23000" && text.starts_with("Cannot insert the value NULL"))
        return {"23000", null_refused, 16};
    for (const ServerError& one : known)
        if (error.sqlstate() == one.sqlstate) return one;
    if (text.starts_with("The disk is full")) return {"HY000", disk_full, 17};
    return {"HY000", any_other, 16};
}

// What a batch tells after each statement.
std::string rows_result(std::int64_t changed) {
    const auto columns = std::make_shared<const database::Columns>(
        std::vector<std::string>{std::string(database::batch_rows)});
    return result({columns, {{columns, {changed}}}}, {{Type::whole, 4}});
}

bool changes_rows(std::string_view text) {
    text = common::trim(text);
    for (const std::string_view word : {"insert", "update", "delete"})
        if (common::equal_ignoring_case(text.substr(0, word.size()), word)) return true;
    return false;
}

// The number of an error that a SQL Server does not know.
constexpr int own_number = 33557097;

// Returns true for what TdsBridge::know_less() names.
bool is_too_much(std::string_view statement) {
    static const std::regex quoted("'[^']*'"), in_brackets(R"(\([^()]*\))");
    static const std::regex refused(
        R"((^\s*alter\s+table\b.*\badd\b.*,)|(\balter\s+column\b.*\bnull\s*$)|(\b[0-9]+(and|or|order)\b))",
        std::regex::icase);
    const std::string text = std::regex_replace(std::string(statement), quoted, "''");
    return std::regex_search(std::regex_replace(text, in_brackets, ""), refused);
}

}  // namespace

// A session with one client, on a connection of its own to the shop's file.
class Session {
  public:
    Session(TdsBridge& bridge, int number, int socket) : bridge_(bridge), number_(number), socket_(socket) {}
    // Returns when the client is gone or cut off.
    void run();

  private:
    // The answer to a request; empty for silence. Sets `cut_` if the connection ends with it.
    std::string answer(const Message& message);
    std::string answer_statement(std::string_view text, const std::vector<database::Value>& values,
                                 bool in_call);
    std::string answer_batch(std::string_view text);
    std::string answer_call(const Call& call);
    std::string result_of(const Statement& statement, bool in_call);

    TdsBridge& bridge_;
    int number_;
    int socket_;
    int request_ = 0;
    bool cut_ = false;
    // Of the last statement.
    bool failed_ = false;
    std::int64_t changed_ = 0;
    bool more_follows_ = false;  // the running statement is not the last of its batch
    std::unique_ptr<database::Connection> shop_;
};

void Session::run() {
    try {
        while (!cut_) {
            const Message message = read_message(socket_);
            if (message.kind == closed) break;
            if (bridge_.network() == TdsBridge::Network::silent) continue;
            if (message.kind != attention) request_ = bridge_.count_request();
            const std::string bytes = answer(message);
            std::this_thread::sleep_for(bridge_.latency());
            if (!cut_ && !bytes.empty() && !send_answer(socket_, bytes)) break;
            if (message.kind == login && shop_ == nullptr) break;
        }
    } catch (const Malformed&) {
        // A server closes the connection after a malformed message.
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "test server: %s\n", failure.what());
    }
    shutdown(socket_, SHUT_RDWR);
}

std::string Session::answer(const Message& message) {
    switch (message.kind) {
        case prelogin:
            return prelogin_answer;
        case login: {
            const Login asked = read_login(message.body);
            const auto& account = bridge_.account();
            const std::string refused = error(18456, 14, "Login failed for user '" + asked.user + "'.");
            if (asked.user != account.user || asked.password != account.password) return refused;
            if (bridge_.knows_less() && asked.database == "nowhere")
                return error(own_number, 16, "database \"nowhere\" does not exist");
            if (!common::equal_ignoring_case(asked.database, account.database) &&
                !(bridge_.knows_less() && asked.database == "master")) {
                return error(4060, 11,
                             "Cannot open database \"" + asked.database +
                                 "\" requested by the login. The login failed.") +
                       refused;
            }
            shop_ = database::open_embedded(bridge_.file());
            bridge_.count_login();
            return login_answer(asked.database);
        }
        case attention:
            return done_cancelled();
        case batch:
            if (shop_ == nullptr) throw Malformed();
            return answer_batch(read_batch(message.body));
        case call:
            if (shop_ == nullptr) throw Malformed();
            return answer_call(read_call(message.body));
        default:
            throw Malformed();
    }
}

// A batch of the program's connection is run statement by statement, as its text asks for. Any other text is
// one statement.
std::string Session::answer_batch(std::string_view text) {
    if (!text.starts_with(database::batch_opening)) return answer_statement(text, {}, false);
    text.remove_prefix(database::batch_opening.size());
    std::string answer;
    while (!text.empty()) {
        const auto end = text.find(database::batch_mark);
        if (end == text.npos) throw Malformed();
        if (text.starts_with("create view"))
            return answer + error(111, 15, "'CREATE VIEW' must be the first statement in a query batch.");
        failed_ = false;
        more_follows_ = true;
        const std::string part = answer_statement(text.substr(0, end), {}, false);
        more_follows_ = false;
        if (part.empty() || cut_) return {};  // silence, or the connection is cut
        answer += part;
        if (failed_) return answer;
        text.remove_prefix(end + database::batch_mark.size());
        const bool must_change = text.starts_with(database::batch_must_change);
        if (must_change) text.remove_prefix(database::batch_must_change.size());
        if (must_change && changed_ == 0) text = {};
        answer += rows_result(changed_) + done(1, true, !text.empty());
    }
    return answer;
}

std::string Session::answer_statement(std::string_view text, const std::vector<Value>& values, bool in_call) {
    using Failure = TdsBridge::Failure;
    const Failure planned = bridge_.receive({number_, request_, std::string(text), values});
    if (planned == Failure::silence) return {};
    cut_ = planned != Failure::none;
    if (planned == Failure::cut) return {};
    if (bridge_.knows_less() && is_too_much(text)) {
        failed_ = true;
        return (in_call ? error_in_call : error)(own_number, 16, "syntax error");
    }
    try {
        return result_of({std::string(text), values}, in_call);
    } catch (const Error& failure) {
        failed_ = true;
        const ServerError number = numbered(failure);
        const auto say = in_call ? error_in_call : error;
        const std::string answer = say(number.number, number.severity, failure.what());
        const bool is_terminated = number.number == 2627 || number.number == 515;
        return is_terminated ? notice(3621, "The statement has been terminated.") + answer : answer;
    }
}

std::string Session::result_of(const Statement& statement, bool in_call) {
    const auto end = [&](std::uint64_t rows, bool counted) {
        return in_call ? done_in_call(rows, counted) + call_status() + done_call()
                       : done(rows, counted, more_follows_);
    };
    auto told = ask_catalogue(*shop_, bridge_.file(), statement.text);
    const auto outcome = told ? std::move(*told) : shop_->run(statement.text, statement.values);
    changed_ = outcome.changed;
    if (outcome.result.columns().empty())
        return end(static_cast<std::uint64_t>(outcome.changed), changes_rows(statement.text));
    return result(outcome.result, types_of(*shop_, statement, outcome.result)) +
           end(outcome.result.size(), true);
}

std::string Session::answer_call(const Call& call) {
    const std::string name = common::lower_ascii(call.procedure);
    if (name == "sp_executesql") {
        const Statement statement = with_values(database::text_of(call.at(0)), call, 2);
        return answer_statement(statement.text, statement.values, true);
    }
    bridge_.receive({number_, request_, call.procedure, {}});
    return error_in_call(2812, 16, "Could not find stored procedure '" + call.procedure + "'.");
}

}  // namespace test::tds

namespace test {

TdsBridge::TdsBridge(std::filesystem::path folder, Account account)
    : folder_(std::move(folder)), account_(std::move(account)) {
    std::filesystem::create_directories(folder_);
    database::open_embedded(file(), true);
    listener_ = tds::listen_on_loopback(port_);
    thread_ = std::thread([this] { serve(); });
}

TdsBridge::~TdsBridge() {
    {
        const std::lock_guard guard(lock_);
        ending_ = true;
        if (listener_ >= 0) shutdown(listener_, SHUT_RDWR);
    }
    back_.notify_all();
    thread_.join();
    drop();
    for (std::thread& session : sessions_)
        session.join();
    if (listener_ >= 0) close(listener_);
}

std::string TdsBridge::place() const {
    return "127.0.0.1;" + std::to_string(port_) + ";" + account_.database + ";" + account_.user + ";" +
           account_.password;
}

void TdsBridge::set_network(Network network) {
    std::unique_lock guard(lock_);
    if (network_ == network) return;
    const bool was_down = network_ == Network::down;
    network_ = network;
    if (network == Network::down) {
        shutdown(listener_, SHUT_RDWR);
        for (const auto& [number, socket] : open_)
            shutdown(socket, SHUT_RDWR);
    } else if (was_down) {
        // A client that comes now must find it listening.
        is_listening_ = false;
        back_.notify_all();
        listens_.wait(guard, [this] { return ending_ || is_listening_; });
    }
}

void TdsBridge::drop() {
    const std::lock_guard guard(lock_);
    for (const auto& [number, socket] : open_)
        shutdown(socket, SHUT_RDWR);
}

void TdsBridge::fail_next(std::string text, Failure failure) {
    const std::lock_guard guard(lock_);
    failing_ = common::lower_ascii(text);
    failure_ = failure;
}

std::vector<TdsBridge::Received> TdsBridge::received() {
    const std::lock_guard guard(lock_);
    return received_;
}

TdsBridge::Failure TdsBridge::receive(Received received) {
    const std::lock_guard guard(lock_);
    received_.push_back(std::move(received));
    if (failing_.empty() || common::lower_ascii(received_.back().text).find(failing_) == std::string::npos)
        return Failure::none;
    failing_.clear();
    return failure_;
}

void TdsBridge::serve() {
    while (!ending_) {
        const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        std::unique_lock guard(lock_);
        if (socket < 0) {
            // The socket was shut down: for good, or until the network is up again.
            close(listener_);
            listener_ = -1;
            back_.wait(guard, [this] { return ending_ || network_ != Network::down; });
            if (!ending_) listener_ = tds::listen_on_loopback(port_);
            is_listening_ = true;
            listens_.notify_all();
            continue;
        }
        const int number = ++connections_;
        open_[number] = socket;
        sessions_.emplace_back([this, number, socket] {
            tds::Session(*this, number, socket).run();
            const std::lock_guard held(lock_);
            open_.erase(number);
            close(socket);
        });
    }
}

TdsControl::TdsControl(TdsBridge& bridge, std::filesystem::path path)
    : bridge_(bridge), path_(std::move(path)), listener_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = path_.string();
    if (name.size() >= sizeof address.sun_path) throw std::runtime_error("the folder's name is too long");
    std::memcpy(address.sun_path, name.c_str(), name.size() + 1);
    if (bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener_, 4) != 0)
        throw std::runtime_error("no socket " + name);
    thread_ = std::thread([this] { serve(); });
}

TdsControl::~TdsControl() {
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
}

void TdsControl::serve() {
    for (int client; (client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC)) >= 0; close(client)) {
        std::string line;
        for (char c; recv(client, &c, 1, 0) == 1 && c != '\n';)
            line += c;
        const std::string answer = answer_to(line) + "\n";
        send(client, answer.data(), answer.size(), MSG_NOSIGNAL);
    }
}

std::string TdsControl::answer_to(std::string_view line) {
    using Network = TdsBridge::Network;
    using Failure = TdsBridge::Failure;
    const auto rest_after = [&](std::string_view word) {
        return line.starts_with(word) ? std::string(line.substr(word.size())) : std::string();
    };
    if (line == "well") {
        bridge_.set_network(Network::up);
    } else if (line == "silent") {
        bridge_.set_network(Network::silent);
    } else if (line == "away") {
        bridge_.set_network(Network::down);
    } else if (line == "drop") {
        bridge_.drop();
    } else if (const std::string cut = rest_after("cut "); !cut.empty()) {
        bridge_.fail_next(cut, Failure::cut);
    } else if (const std::string run = rest_after("run and cut "); !run.empty()) {
        bridge_.fail_next(run, Failure::run_and_cut);
    } else if (const std::string silence = rest_after("silence "); !silence.empty()) {
        bridge_.fail_next(silence, Failure::silence);
    } else if (const std::string latency = rest_after("latency "); !latency.empty()) {
        bridge_.set_latency(std::chrono::milliseconds(std::stoi(latency)));
    } else if (line == "count") {
        counted_from_ = bridge_.requests();
    } else {
        return answer_question(line);
    }
    return "ok";
}

std::string TdsControl::answer_question(std::string_view line) {
    constexpr std::string_view heard = "heard ";
    const auto received = bridge_.received();
    if (line.starts_with(heard)) {
        const std::string_view text = line.substr(heard.size());
        return std::to_string(std::count_if(
            received.begin(), received.end(),
            [&](const TdsBridge::Received& one) { return one.text.find(text) != std::string::npos; }));
    }
    if (line == "logins") return std::to_string(bridge_.logins());
    if (line == "requests") return std::to_string(bridge_.requests() - counted_from_);
    if (line == "statements") return statements_since_count();
    if (line != "opening") return "?";
    // The first statement of the latest connection.
    if (received.empty()) return "";
    const auto latest = std::max_element(received.begin(), received.end(), [](const auto& a, const auto& b) {
        return a.connection < b.connection;
    });
    return latest->text;  // the first of the largest
}

// On one line: "1 select …; select … 2 update …".
std::string TdsControl::statements_since_count() {
    std::string text;
    int last = counted_from_;
    for (const TdsBridge::Received& one : bridge_.received()) {
        if (one.request <= counted_from_) continue;
        text += one.request == last ? "; " : "\t[" + std::to_string(one.request - counted_from_) + "] ";
        text += one.text;
        last = one.request;
    }
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

}  // namespace test

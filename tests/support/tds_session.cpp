#include "support/tds_session.h"

#include <sys/socket.h>

#include <array>
#include <cstdio>

#include "common/text.h"
#include "database/embedded/open.h"
#include "support/tds_answer.h"
#include "support/tds_catalogue.h"

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

bool changes_rows(std::string_view text) {
    text = common::trim(text);
    for (const std::string_view word : {"insert", "update", "delete"})
        if (common::equal_ignoring_case(text.substr(0, word.size()), word)) return true;
    return false;
}

}  // namespace

void Session::run() {
    try {
        while (!cut_) {
            const Message message = read_message(socket_);
            if (message.kind == closed) break;
            if (bridge_.network() == TdsBridge::Network::silent) continue;
            const std::string bytes = answer(message);
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
            if (!common::equal_ignoring_case(asked.database, account.database)) {
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
            return answer_statement(read_batch(message.body), {}, false);
        case call:
            if (shop_ == nullptr) throw Malformed();
            return answer_call(read_call(message.body));
        default:
            throw Malformed();
    }
}

std::string Session::answer_statement(std::string_view text, const std::vector<Value>& values, bool in_call) {
    using Failure = TdsBridge::Failure;
    const Failure planned = bridge_.receive(number_, text);
    if (planned == Failure::silence) return {};
    cut_ = planned != Failure::none;
    if (planned == Failure::cut) return {};
    try {
        return result_of({std::string(text), values}, in_call);
    } catch (const Error& failure) {
        const ServerError number = numbered(failure);
        const auto say = in_call ? error_in_call : error;
        const std::string answer = say(number.number, number.severity, failure.what());
        const bool is_terminated = number.number == 2627 || number.number == 515;
        return is_terminated ? notice(3621, "The statement has been terminated.") + answer : answer;
    }
}

std::string Session::result_of(const Statement& statement, bool in_call) {
    const auto end = [&](std::uint64_t rows, bool counted) {
        return in_call ? done_in_call(rows, counted) + call_status() + done_call() : done(rows, counted);
    };
    auto told = ask_catalogue(*shop_, bridge_.file(), statement.text);
    const auto outcome = told ? std::move(*told) : shop_->run(statement.text, statement.values);
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
    bridge_.receive(number_, call.procedure);
    if (name == "sp_columns" || name == "sp_pkeys") {
        const database::Result rows = name == "sp_columns" ? columns_of(*shop_, call.text("@table_name", 0))
                                                           : keys_of(*shop_, call.text("@table_name", 0));
        return result(rows, name == "sp_columns" ? columns_shape() : keys_shape()) +
               done_in_call(rows.size(), true) + call_status() + done_call();
    }
    return error_in_call(2812, 16, "Could not find stored procedure '" + call.procedure + "'.");
}

}  // namespace test::tds

#include "database/odbc_connection.h"

#include <algorithm>
#include <array>

#include "common/text.h"

namespace database {

namespace {

// Numbers from the server itself lie below FreeTDS's own.
constexpr int first_driver_number = 20000;
constexpr int cannot_open_database = 4060;
constexpr int login_failed = 18456;

SQLPOINTER number_pointer(int number) {
    return reinterpret_cast<SQLPOINTER>(static_cast<std::uintptr_t>(number));
}

// Read, write and end-of-file failures of FreeTDS, and its refusal to use a dead connection, whatever state
// they come with.
bool means_loss(const Diagnostic& diagnostic) {
    static constexpr std::array lost = {20004, 20006, 20017, 20020, 20047};
    return diagnostic.sqlstate.starts_with("08") ||
           std::find(lost.begin(), lost.end(), diagnostic.native) != lost.end();
}

const Diagnostic* first_that(const std::vector<Diagnostic>& all, auto condition) {
    const auto found = std::find_if(all.begin(), all.end(), condition);
    return found == all.end() ? nullptr : &*found;
}

// What the server said when it refused a log-in; everything else is a server that cannot be reached.
Error connect_error(const std::vector<Diagnostic>& all) {
    const auto said_by_server = [](const Diagnostic& d) {
        return !d.is_notice() && d.native > 0 && d.native < first_driver_number;
    };
    if (const auto* d = first_that(all, [](const Diagnostic& x) { return x.native == cannot_open_database; }))
        return {"42000", d->text, ""};
    if (const auto* d = first_that(all, [](const Diagnostic& x) { return x.native == login_failed; }))
        return {"28000", d->text, ""};
    if (const auto* d = first_that(all, said_by_server)) return {d->sqlstate, d->text, ""};
    // The driver manager's own complaints: no such driver, or its library is missing.
    if (const auto* d = first_that(all, [](const Diagnostic& x) {
            return x.sqlstate.starts_with("IM") || x.text.find("Can't open lib") != std::string::npos;
        }))
        return {"IM003", "The ODBC driver cannot be used: " + d->text, ""};
    return {"08001", server_unreachable, ""};
}

Error statement_error(const std::vector<Diagnostic>& all, bool lost, std::string_view statement) {
    const Diagnostic* said = first_that(all, [](const Diagnostic& d) { return !d.is_notice(); });
    if (said == nullptr && !all.empty()) said = &all.front();
    const std::string text = said != nullptr ? said->text : "The statement failed without a reason.";
    if (lost) return {"08S01", text, std::string(statement)};
    return {said != nullptr ? said->sqlstate : "HY000", text, std::string(statement)};
}

bool changes_tables(std::string_view statement) {
    const std::string_view text = common::trim(statement);
    return std::any_of(text.begin(), text.end(), [](char c) { return c == ';'; }) ||
           !(common::equal_ignoring_case(text.substr(0, 6), "select") ||
             common::equal_ignoring_case(text.substr(0, 6), "insert") ||
             common::equal_ignoring_case(text.substr(0, 6), "update") ||
             common::equal_ignoring_case(text.substr(0, 6), "delete"));
}

std::string bare_name(std::string_view table) {
    std::string name(common::trim(table));
    if (const auto dot = name.rfind('.'); dot != std::string::npos) name.erase(0, dot + 1);
    if (name.size() > 1 && name.front() == '[' && name.back() == ']') name = name.substr(1, name.size() - 2);
    return common::lower_ascii(name);
}

}  // namespace

OdbcConnection::OdbcConnection(OdbcRoad road)
    : road_(std::move(road)), environment_(SQL_HANDLE_ENV, SQL_NULL_HANDLE) {
    SQLSetEnvAttr(environment_.get(), SQL_ATTR_ODBC_VERSION, number_pointer(SQL_OV_ODBC3), 0);
    connect();
}

template <typename Work>
auto OdbcConnection::guarded(std::string_view statement, Work work) {
    try {
        return work();
    } catch (const OdbcFailure& failure) {
        const auto& all = failure.diagnostics;
        SQLUINTEGER dead = SQL_CD_FALSE;
        SQLGetConnectAttr(connection_.get(), SQL_ATTR_CONNECTION_DEAD, &dead, 0, nullptr);
        const bool lost = dead == SQL_CD_TRUE || std::any_of(all.begin(), all.end(), means_loss);
        const bool late = first_that(all, [](const Diagnostic& d) { return d.sqlstate.starts_with("HYT"); });
        // What a server that did not answer in time still sends must not be read as the next answer.
        if (lost || late) disconnect();
        if (late) throw Error("HYT00", "The server did not answer in time.", std::string(statement));
        throw statement_error(all, lost, statement);
    }
}

void OdbcConnection::connect() {
    OdbcHandle handle(SQL_HANDLE_DBC, environment_.get());
    SQLSetConnectAttr(handle.get(), SQL_ATTR_LOGIN_TIMEOUT, number_pointer(road_.login_seconds), 0);
    std::vector<SQLWCHAR> text = to_wide(road_.driver_string);
    const SQLRETURN answer = SQLDriverConnectW(handle.get(), nullptr, text.data(), SQL_NTS, nullptr, 0,
                                               nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(answer)) throw connect_error(diagnostics_of(SQL_HANDLE_DBC, handle.get()));
    connection_ = std::move(handle);
    if (road_.opening_statement.empty()) return;
    try {
        guarded(road_.opening_statement, [&] {
            return run_odbc_statement(connection_.get(), road_.opening_statement, {}, road_.query_seconds);
        });
    } catch (const Error&) {
        disconnect();  // rather none than one that reads dates differently
        throw;
    }
}

void OdbcConnection::disconnect() {
    described_.clear();
    connection_.free();
}

Connection::Outcome OdbcConnection::run(std::string_view statement, const std::vector<Value>& values) {
    if (!connection_) connect();
    if (changes_tables(statement)) described_.clear();
    const std::string sent = road_.wide_literals ? with_wide_literals(statement) : std::string(statement);
    return guarded(statement,
                   [&] { return run_odbc_statement(connection_.get(), sent, values, road_.query_seconds); });
}

Connection::Table OdbcConnection::describe(std::string_view table) {
    const std::string name = bare_name(table);
    if (const auto known = described_.find(name); known != described_.end()) return known->second;
    if (!connection_) connect();
    Table shape =
        guarded(table, [&] { return describe_odbc_table(connection_.get(), name, road_.query_seconds); });
    if (shape.columns.empty())
        throw Error("42S02", "Invalid object name '" + name + "'.", std::string(table));
    described_.emplace(name, shape);
    return shape;
}

}  // namespace database

// The server's functions and conversions, registered in the embedded engine under names of their own (ts_…).
#pragma once

#include <sqlite3.h>

#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace database::embedded {

// Registers the collation and all functions on a connection.
void register_functions(sqlite3* engine);

// A call of a registered function: its arguments and its result.
struct Call {
    sqlite3_context* context;
    int count;
    sqlite3_value** values;

    bool null(int i) const { return i >= count || sqlite3_value_type(values[i]) == SQLITE_NULL; }
    bool any_null() const;
    int type(int i) const { return sqlite3_value_type(values[i]); }
    std::string_view text(int i) const;
    std::int64_t integer(int i) const { return sqlite3_value_int64(values[i]); }
    double number(int i) const { return sqlite3_value_double(values[i]); }

    void give() const { sqlite3_result_null(context); }
    void give(std::int64_t value) const { sqlite3_result_int64(context, value); }
    void give(double value) const { sqlite3_result_double(context, value); }
    void give(std::string_view value) const;
    // Fails the statement with a SQLSTATE and a text.
    void fail(std::string_view sqlstate, std::string_view why) const;
};

struct Function {
    const char* name;
    int arguments;  // -1: any number
    void (*body)(const Call&);
    bool deterministic = true;
};
void register_all(sqlite3* engine, const Function* functions, std::size_t count);

void register_conversions(sqlite3* engine);

// An argument that is the same for all rows of a statement, converted to `Made` once.
template <typename Made>
const Made& kept_argument(const Call& call, int i) {
    auto* kept = static_cast<Made*>(sqlite3_get_auxdata(call.context, i));
    if (kept == nullptr) {
        sqlite3_set_auxdata(call.context, i, new Made(call.text(i)),
                            [](void* made) { delete static_cast<Made*>(made); });
        kept = static_cast<Made*>(sqlite3_get_auxdata(call.context, i));
    }
    if (kept == nullptr) throw std::bad_alloc();
    return *kept;
}

// Reads a number in the server's forms ("12", " -1.5e3 "; blanks alone are 0). Returns nothing for other
// texts.
std::optional<double> parse_server_number(std::string_view text);

}  // namespace database::embedded

#include "database/embedded/functions.h"

#include "database/embedded/collation.h"
#include "database/error.h"

namespace database::embedded {

bool Call::any_null() const {
    for (int i = 0; i < count; ++i) {
        if (null(i)) return true;
    }
    return false;
}

std::string_view Call::text(int i) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(values[i]));
    return {bytes == nullptr ? "" : bytes, static_cast<std::size_t>(sqlite3_value_bytes(values[i]))};
}

void Call::give(std::string_view value) const {
    sqlite3_result_text64(context, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Call::fail(std::string_view sqlstate, std::string_view why) const {
    const std::string text = std::string(sqlstate) + "|" + std::string(why);
    sqlite3_result_error(context, text.data(), static_cast<int>(text.size()));
}

namespace {

void call(sqlite3_context* context, int count, sqlite3_value** values) {
    const auto* function = static_cast<const Function*>(sqlite3_user_data(context));
    const Call made{context, count, values};
    try {
        function->body(made);
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    } catch (const std::exception& e) {
        made.fail("HY000", e.what());
    }
}

int collate(void*, int a_size, const void* a, int b_size, const void* b) {
    return compare_texts({static_cast<const char*>(a), static_cast<std::size_t>(a_size)},
                         {static_cast<const char*>(b), static_cast<std::size_t>(b_size)});
}

}  // namespace

void register_all(sqlite3* engine, const Function* functions, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const Function& f = functions[i];
        const int flags = SQLITE_UTF8 | (f.deterministic ? SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS : 0);
        const int code = sqlite3_create_function_v2(
            engine, f.name, f.arguments, flags, const_cast<Function*>(&f), call, nullptr, nullptr, nullptr);
        if (code != SQLITE_OK) throw Error("HY000", sqlite3_errmsg(engine), f.name);
    }
}

void register_functions(sqlite3* engine) {
    if (sqlite3_create_collation_v2(engine, collation_name, SQLITE_UTF8, nullptr, collate, nullptr) !=
        SQLITE_OK) {
        throw Error("HY000", sqlite3_errmsg(engine), "");
    }
    register_conversions(engine);
    register_texts(engine);
    register_numbers(engine);
}

}  // namespace database::embedded

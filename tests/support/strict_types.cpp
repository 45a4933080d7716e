// The server's types: their names and the texts that can be converted to them.
#include <algorithm>

#include "common/text.h"
#include "database/embedded/functions.h"
#include "database/embedded/moments.h"
#include "database/error.h"
#include "support/strict.h"

namespace test::strict {

namespace {

struct Named {
    std::string_view name;
    Rank rank;
};
constexpr Named names[] = {
    {"bit", Rank::bit},
    {"tinyint", Rank::tinyint},
    {"smallint", Rank::smallint},
    {"int", Rank::integer},
    {"integer", Rank::integer},
    {"bigint", Rank::bigint},
    {"money", Rank::money},
    {"smallmoney", Rank::money},
    {"numeric", Rank::numeric},
    {"decimal", Rank::numeric},
    {"real", Rank::real},
    {"float", Rank::floating},
    {"smalldatetime", Rank::date},
    {"date", Rank::date},
    {"datetime", Rank::datetime},
    {"datetime2", Rank::datetime},
    {"varchar", Rank::text},
    {"nvarchar", Rank::text},
    {"char", Rank::text},
    {"nchar", Rank::text},
    {"sysname", Rank::text},
    {"text", Rank::large},
    {"ntext", Rank::large},
    {"image", Rank::large},
    {"the type of a null", Rank::null},
};

bool is_whole_text(std::string_view text) {
    text = common::trim(text);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool is_readable(std::string_view text, Rank as) {
    if (as == Rank::bit) {
        const std::string_view word = common::trim(text);
        if (common::equal_ignoring_case(word, "true") || common::equal_ignoring_case(word, "false"))
            return true;
    }
    if (as >= Rank::bit && as <= Rank::bigint) return is_whole_text(text);
    if (as == Rank::numeric) {
        return !common::trim(text).empty() && text.find_first_of("eE") == text.npos &&
               database::embedded::parse_server_number(text).has_value();
    }
    if (as == Rank::real || as == Rank::floating)
        return database::embedded::parse_server_number(text).has_value();
    if (as == Rank::date || as == Rank::datetime) return database::embedded::parse_ticks(text).has_value();
    return true;
}

}  // namespace

void refuse(std::string_view sqlstate, const std::string& why) {
    throw database::Error(std::string(sqlstate), "A server refuses this: " + why, "");
}

Rank rank_of(const Type& type) {
    const std::string word = common::lower_ascii(type.written.substr(0, type.written.find('(')));
    const auto* found = std::find_if(std::begin(names), std::end(names),
                                     [&](const Named& n) { return n.name == common::trim(word); });
    return found == std::end(names) ? Rank::unknown : found->rank;
}

std::string_view name_of(Rank rank) {
    const auto* found =
        std::find_if(std::begin(names), std::end(names), [&](const Named& n) { return n.rank == rank; });
    return found == std::end(names) ? "an unknown type" : found->name;
}

void check_converts(const Typed& text, Rank to) {
    if (text.literal == nullptr || is_readable(*text.literal, to)) return;
    refuse(to >= Rank::date ? "22007" : "22018", "Conversion failed when converting the value '" +
                                                     *text.literal + "' to data type " +
                                                     std::string(name_of(to)) + ".");
}

}  // namespace test::strict

#include "database/sqlserver/odbc_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <optional>
#include <stdexcept>

#include "common/text.h"

namespace database {

std::vector<SQLWCHAR> to_wide(std::string_view utf8) {
    static_assert(sizeof(SQLWCHAR) == 2);
    std::vector<SQLWCHAR> wide;
    wide.reserve(utf8.size() + 1);
    for (const char32_t character : common::code_points(utf8)) {
        if (character < 0x10000) {
            wide.push_back(static_cast<SQLWCHAR>(character));
        } else {
            const char32_t offset = character - 0x10000;
            wide.push_back(static_cast<SQLWCHAR>(0xD800 + (offset >> 10)));
            wide.push_back(static_cast<SQLWCHAR>(0xDC00 + (offset & 0x3FF)));
        }
    }
    wide.push_back(0);
    return wide;
}

std::string from_wide(const SQLWCHAR* text, std::size_t length) {
    std::u32string characters;
    characters.reserve(length);
    for (std::size_t i = 0; i < length; ++i) {
        const char32_t unit = text[i];
        const bool high = unit >= 0xD800 && unit < 0xDC00;
        if (high && i + 1 < length && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
            characters += 0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00U);
            ++i;
        } else {
            characters += unit >= 0xD800 && unit < 0xE000 ? U'\xFFFD' : unit;
        }
    }
    return common::utf8(characters);
}

namespace {

bool is_name_character(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '@' || c == '#' || c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

// Returns true if the quote at `at` already has an N before it.
bool is_wide_literal(std::string_view statement, std::size_t at) {
    if (at == 0 || (statement[at - 1] != 'N' && statement[at - 1] != 'n')) return false;
    return at == 1 || !is_name_character(statement[at - 2]);
}

}  // namespace

std::size_t end_of_quoted(std::string_view statement, std::size_t at) {
    const char close = statement[at] == '[' ? ']' : statement[at];
    for (std::size_t i = at + 1; i < statement.size(); ++i) {
        if (statement[i] != close) continue;
        if (i + 1 < statement.size() && statement[i + 1] == close)
            ++i;
        else
            return i + 1;
    }
    return statement.size();
}

namespace {

// Adds a literal or another piece of a statement.
void add_piece(std::string& text, std::string_view piece, bool is_literal) {
    const bool is_wide =
        std::any_of(piece.begin(), piece.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    if (is_literal && is_wide) text += 'N';
    std::remove_copy(piece.begin(), piece.end(), std::back_inserter(text), '\0');
}

// Adds a statement. `add_value` adds what stands for the n-th value.
template <typename AddValue>
void add_statement(std::string& text, std::string_view statement, std::size_t values, AddValue add_value) {
    std::size_t next_value = 0;
    for (std::size_t at = 0; at < statement.size();) {
        std::size_t end = at + 1;
        const std::string_view rest = statement.substr(at);
        if (rest.starts_with("--")) {
            end = std::min(statement.find('\n', at), statement.size());
        } else if (rest.starts_with("/*")) {
            const auto close = statement.find("*/", at + 2);
            end = close == statement.npos ? statement.size() : close + 2;
        } else if (rest[0] == '\'' || rest[0] == '"' || rest[0] == '[') {
            end = end_of_quoted(statement, at);
        }
        const std::string_view piece = statement.substr(at, end - at);
        if (piece == "?" && next_value < values)
            add_value(next_value++);
        else
            add_piece(text, piece, rest[0] == '\'' && !is_wide_literal(statement, at));
        at = end;
    }
}

// Writes an exponent. Without one a server reads a decimal number and may round it on its way to a float
// column; a row would then not be found by the number it holds.
void add_float(std::string& text, double number) {
    if (!std::isfinite(number))
        throw std::invalid_argument("a number that is not finite cannot enter a statement");
    std::array<char, 32> digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::scientific)
            .ptr;
    text.append(digits.data(), end);
}

// A value as a literal of a statement.
void add_literal(std::string& text, const Value& value) {
    if (is_null(value)) {
        text += "null";
    } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
        text += (Sql("") + *whole).text();
    } else if (const auto* number = std::get_if<double>(&value)) {
        add_float(text, *number);
    } else if (const auto* moment = std::get_if<common::Moment>(&value)) {
        text += fmt::format("'{}.{:03}'", common::moment_text(*moment), moment->time.millisecond);
    } else {
        add_piece(text, quoted(std::get<std::string>(value)).text(), true);
    }
}

}  // namespace

std::string server_text(std::string_view statement, const std::vector<Value>& values) {
    std::string text;
    text.reserve(statement.size() + 8);
    add_statement(text, statement, values.size(), [&](std::size_t value) {
        text += std::holds_alternative<common::Moment>(values[value]) ? "convert(datetime,?)" : "?";
    });
    return text;
}

std::string batch_text(const std::vector<Command>& commands) {
    std::string text(batch_opening);
    for (const Command& command : commands) {
        const auto& values = command.values();
        add_statement(text, command.text(), values.size(),
                      [&](std::size_t value) { add_literal(text, values[value]); });
        text += batch_mark;
        if (command.must_change()) text += batch_must_change;
    }
    return text;
}

std::vector<Diagnostic> diagnostics_of(SQLSMALLINT kind, SQLHANDLE handle) {
    std::vector<Diagnostic> found;
    for (SQLSMALLINT record = 1; record <= 20; ++record) {
        std::array<SQLWCHAR, 6> state{};
        std::array<SQLWCHAR, 2048> text{};
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        if (!SQL_SUCCEEDED(SQLGetDiagRecW(kind, handle, record, state.data(), &native, text.data(),
                                          static_cast<SQLSMALLINT>(text.size()), &length)))
            break;
        const auto shown =
            std::min(static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)), text.size() - 1);
        Diagnostic diagnostic{from_wide(state.data(), 5), native, from_wide(text.data(), shown)};
        while (diagnostic.text.starts_with('[') && diagnostic.text.find(']') != std::string::npos)
            diagnostic.text.erase(0, diagnostic.text.find(']') + 1);
        diagnostic.text = common::trim(diagnostic.text);
        found.push_back(std::move(diagnostic));
    }
    return found;
}

namespace {

using Kind = Error::Kind;

struct Meaning {
    int number;
    const char* sqlstate;
    std::optional<Kind> kind = {};  // if the SQLSTATE does not tell
};

constexpr std::array meanings = {
    // A row: a key, a null, a constraint.
    Meaning{2627, "23000"},
    Meaning{2601, "23000"},
    Meaning{515, "23000"},
    Meaning{547, "23000"},
    // An object that does not exist, or exists already.
    Meaning{208, "42S02"},
    Meaning{3701, "42S02"},
    Meaning{4902, "42S02"},
    Meaning{207, "42S22"},
    Meaning{4924, "42S22"},
    Meaning{2714, "42S01"},
    Meaning{2705, "42S21"},
    Meaning{1913, "42S11"},
    Meaning{102, "42000"},
    Meaning{105, "42000"},
    Meaning{156, "42000"},
    // Values.
    Meaning{2628, "22001"},
    Meaning{8152, "22001"},
    Meaning{220, "22003"},
    Meaning{232, "22003"},
    Meaning{244, "22003"},
    Meaning{248, "22003"},
    Meaning{8115, "22003"},
    Meaning{241, "22007"},
    Meaning{242, "22007"},
    Meaning{8134, "22012"},
    Meaning{245, "22018"},
    Meaning{8114, "22018"},
    Meaning{109, "21S01"},
    Meaning{110, "21S01"},
    Meaning{213, "21S01"},
    // Other tills: a deadlock, a changed row, a lock held too long.
    Meaning{1205, "40001"},
    Meaning{3960, "40001"},
    Meaning{1222, "HYT00"},
    // Log-in.
    Meaning{4060, "42000", Kind::database_missing},
    Meaning{4064, "42000", Kind::database_missing},
    Meaning{911, "42000", Kind::database_missing},
    Meaning{916, "42000", Kind::database_missing},
    Meaning{927, "42000", Kind::database_missing},
    Meaning{942, "42000", Kind::database_missing},
    Meaning{18452, "28000"},
    Meaning{18456, "28000"},
    Meaning{18470, "28000"},
    Meaning{18486, "28000"},
    Meaning{18487, "28000"},
    Meaning{18488, "28000"},
    // No room: in the files, in the log, in a database of limited size, on the disk.
    Meaning{1101, "HY000", Kind::disk_full},
    Meaning{1105, "HY000", Kind::disk_full},
    Meaning{1827, "HY000", Kind::disk_full},
    Meaning{5149, "HY000", Kind::disk_full},
    Meaning{9002, "HY000", Kind::disk_full},
    Meaning{3906, "HY000", Kind::read_only},
    Meaning{3908, "HY000", Kind::read_only},
};

}  // namespace

bool is_missing_database(int number) {
    return std::any_of(meanings.begin(), meanings.end(), [number](const Meaning& meaning) {
        return meaning.number == number && meaning.kind == Kind::database_missing;
    });
}

Error server_error(const Diagnostic& said, std::string_view statement) {
    const auto* meaning = std::find_if(meanings.begin(), meanings.end(),
                                       [&](const Meaning& one) { return one.number == said.native; });
    if (meaning == meanings.end()) return {said.sqlstate, said.text, std::string(statement)};
    Error error(meaning->sqlstate, said.text, std::string(statement));
    if (!meaning->kind) return error;
    return {error.sqlstate(), said.text, std::string(statement), *meaning->kind};
}

}  // namespace database

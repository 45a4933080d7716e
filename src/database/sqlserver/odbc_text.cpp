#include "database/sqlserver/odbc_text.h"

#include <algorithm>
#include <array>
#include <iterator>

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

// The end of the literal, name or comment that begins at `at`. Doubled closing marks do not end it.
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

}  // namespace

std::string server_text(std::string_view statement, const std::vector<Value>& values) {
    std::string text;
    text.reserve(statement.size() + 8);
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
        at = end;
        if (piece == "?" && next_value < values.size() &&
            std::holds_alternative<common::Moment>(values[next_value++])) {
            text += "convert(datetime,?)";
            continue;
        }
        const bool is_wide = std::any_of(piece.begin(), piece.end(),
                                         [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
        const std::size_t begin = end - piece.size();
        if (rest[0] == '\'' && is_wide && !is_wide_literal(statement, begin)) text += 'N';
        std::remove_copy(piece.begin(), piece.end(), std::back_inserter(text), '\0');
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

}  // namespace database

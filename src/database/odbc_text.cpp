#include "database/odbc_text.h"

#include <array>

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

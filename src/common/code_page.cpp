#include "common/code_page.h"

#include <iconv.h>

#include <array>
#include <stdexcept>
#include <unordered_map>

#include "common/text.h"

namespace common {

namespace {

// The page as a table, read once from the C library's converter.
struct Page {
    std::array<char32_t, 256> characters{};
    std::unordered_map<char32_t, unsigned char> codes;

    Page() {
        const iconv_t converter = iconv_open("UTF-32LE", "CP1256");
        if (converter == reinterpret_cast<iconv_t>(-1)) {
            throw std::runtime_error("this system has no converter for code page 1256");
        }
        for (unsigned code = 0; code < characters.size(); ++code) {
            char in = static_cast<char>(static_cast<unsigned char>(code));
            std::array<unsigned char, 4> out{};
            char* from = &in;
            char* to = reinterpret_cast<char*>(out.data());
            std::size_t left_in = 1;
            std::size_t left_out = out.size();
            const bool mapped =
                iconv(converter, &from, &left_in, &to, &left_out) != static_cast<std::size_t>(-1);
            characters[code] = mapped ? static_cast<char32_t>(out[0]) | static_cast<char32_t>(out[1]) << 8U |
                                            static_cast<char32_t>(out[2]) << 16U
                                      : U'\uFFFD';
            if (mapped) codes.emplace(characters[code], static_cast<unsigned char>(code));
        }
        iconv_close(converter);
    }
};

const Page& page() {
    static const Page made;
    return made;
}

}  // namespace

std::optional<unsigned char> code_in_page_1256(char32_t character) {
    const auto found = page().codes.find(character);
    if (found == page().codes.end()) return {};
    return found->second;
}

std::string to_code_page_1256(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char32_t c : code_points(text))
        out += static_cast<char>(code_in_page_1256(c).value_or('?'));
    return out;
}

std::string from_code_page_1256(std::string_view bytes) {
    std::u32string out;
    out.reserve(bytes.size());
    for (const char c : bytes)
        out += page().characters[static_cast<unsigned char>(c)];
    return utf8(out);
}

std::string from_utf8_or_1256(std::string_view bytes) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(byte_order_mark)) bytes.remove_prefix(byte_order_mark.size());
    const bool is_utf8 = utf8(code_points(bytes)) == bytes;
    return is_utf8 ? std::string(bytes) : from_code_page_1256(bytes);
}

}  // namespace common

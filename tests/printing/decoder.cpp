#include "decoder.h"

#include <iconv.h>

#include <QString>
#include <algorithm>
#include <stdexcept>

namespace test {

std::string decode_864(std::string_view bytes) {
    const iconv_t converter = iconv_open("UTF-8", "CP864");
    if (converter == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("no iconv for code page 864");
    std::string text(bytes.size() * 4, '\0');
    std::string source(bytes);
    char* in = source.data();
    std::size_t in_left = source.size();
    char* out = text.data();
    std::size_t out_left = text.size();
    while (in_left > 0 && iconv(converter, &in, &in_left, &out, &out_left) == static_cast<std::size_t>(-1)) {
        ++in;
        --in_left;
        *out++ = '?';
        --out_left;
    }
    iconv_close(converter);
    text.resize(text.size() - out_left);
    return text;
}

std::string read_aloud(std::string_view bytes) {
    std::u32string letters = QString::fromStdString(decode_864(bytes)).toStdU32String();
    std::reverse(letters.begin(), letters.end());
    const auto in_number = [](char32_t c) { return (c >= U'0' && c <= U'9') || c == U'.' || c == U'/'; };
    for (auto at = letters.begin(); at != letters.end();) {
        const auto end = std::find_if_not(at, letters.end(), in_number);
        std::reverse(at, end);
        at = end == at ? at + 1 : end;
    }
    // Compatibility composition takes the forms and the ligatures back to letters and the hard blank to a
    // blank.
    return QString::fromStdU32String(letters).normalized(QString::NormalizationForm_KC).toStdString();
}

}  // namespace test

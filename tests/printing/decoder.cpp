#include "decoder.h"

#include <iconv.h>

#include <stdexcept>

#include "play/receipt_reading.h"

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
    std::string read = play::readable_receipt(bytes);
    read.pop_back();
    return read;
}

}  // namespace test

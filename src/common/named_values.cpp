#include "common/named_values.h"

#include <algorithm>
#include <string_view>
#include <system_error>

#include "common/files.h"
#include "common/text.h"

namespace common {

std::filesystem::path printer_file(const std::filesystem::path& program_folder, std::int64_t cash_point) {
    return program_folder / ("printer-" + std::to_string(cash_point) + ".txt");
}

std::filesystem::path screen_file(const std::filesystem::path& program_folder, std::int64_t cash_point) {
    return program_folder / ("screen-" + std::to_string(cash_point) + ".txt");
}

NamedValues read_named_values(const std::filesystem::path& file) {
    std::string bytes;
    try {
        bytes = read_file(file);
    } catch (const std::system_error&) {
        return {};
    }
    NamedValues values;
    for (std::string_view text = bytes; !text.empty();) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const auto sign = line.find('=');
        if (sign == line.npos) continue;
        values.emplace(trim(line.substr(0, sign)), trim(line.substr(sign + 1)));
    }
    return values;
}

void keep_named_values(const std::filesystem::path& file, const NamedValues& values) {
    std::string text;
    for (const auto& [name, value] : values)
        text += name + " = " + value + "\n";
    replace_file(file, text, shop_file_mode);
}

}  // namespace common

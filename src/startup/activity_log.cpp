#include "startup/activity_log.h"

#include <fmt/format.h>

#include "common/files.h"
#include "startup/shop_files.h"

namespace startup {

namespace {

std::string on_one_line(std::string_view text) {
    std::string line(text);
    for (char& c : line) {
        if (c == '\n' || c == '\r' || c == '\0') c = ' ';
    }
    return line;
}

}  // namespace

void ActivityLog::log_event(std::string_view message, std::string_view code) {
    constexpr std::string_view between = "  ----  ";
    const common::Moment now = clock_.now();
    const std::string line =
        fmt::format("{}{}{}{}{} {:02}:{:02}\n", on_one_line(message), between, on_one_line(code), between,
                    common::date_text(now.date), now.time.hour, now.time.minute);
    const auto folder = find_file(folder_, logs_folder_name);
    if (!folder) return;
    const auto file = find_file(*folder, log_file_name).value_or(*folder / log_file_name);
    common::append_to_file(file, line);
}

}  // namespace startup

#include "admin/arabic_help.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string_view>

namespace admin {

namespace {

constexpr const char* from_right_to_left = "\u2067";  // up to the end mark, in a line of any direction
constexpr const char* from_left_to_right = "\u2066";
constexpr const char* end_of_part = "\u2069";

bool is_latin(std::string_view word) {
    return std::any_of(word.begin(), word.end(),
                       [](unsigned char c) { return std::isalpha(c) != 0 && c < 0x80; });
}

// A line of Arabic text in which successive Latin words keep their order and their signs: "--show", not
// "show--".
std::string arabic_line(const std::string& text) {
    std::string line;
    std::string latin;
    const auto add = [&line](const std::string& part) {
        line += (line.empty() || part.empty() ? "" : " ") + part;
    };
    const auto end_latin = [&] {
        // A mark after the words belongs to the Arabic sentence.
        const auto end = latin.find_last_not_of("،:,.") + 1;
        if (!latin.empty()) add(from_left_to_right + latin.substr(0, end) + end_of_part + latin.substr(end));
        latin.clear();
    };
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (is_latin(word)) {
            latin += (latin.empty() ? "" : " ") + word;
        } else {
            end_latin();
            add(word);
        }
    }
    end_latin();
    return from_right_to_left + line + end_of_part + '\n';
}

std::string arabic_lines(const std::string& text) {
    std::istringstream lines(text);
    std::string written;
    for (std::string line; std::getline(lines, line);)
        written += arabic_line(line);
    return written;
}

std::string entry(const std::string& name, const std::string& meaning) {
    return "  " + name + "\n      " + arabic_line(meaning);
}

}  // namespace

ArabicHelp::ArabicHelp() {
    label("Options", "الخيارات");
    label("Positionals", "ما يكتب بعد الأمر");
    label("REQUIRED", "(مطلوب)");
    label("Needs", "لا يكتب إلا مع");
    label("Excludes", "لا يكتب مع");
}

std::string ArabicHelp::make_usage(const CLI::App* app, std::string name) const {
    constexpr std::string_view heading = "Usage: ";
    return "الاستعمال:\n  " + Formatter::make_usage(app, std::move(name)).substr(heading.size());
}

std::string ArabicHelp::make_description(const CLI::App* app) const {
    return arabic_line(app->get_description());
}

std::string ArabicHelp::make_footer(const CLI::App* app) const {
    return arabic_lines(app->get_footer());
}

std::string ArabicHelp::make_group(std::string group, bool is_positional,
                                   std::vector<const CLI::Option*> options) const {
    return Formatter::make_group(get_label(std::move(group)), is_positional, std::move(options));
}

std::string ArabicHelp::make_subcommand(const CLI::App* command) const {
    return entry(command->get_display_name(true), command->get_description());
}

std::string ArabicHelp::make_option(const CLI::Option* option, bool is_positional) const {
    return entry(make_option_name(option, is_positional) + make_option_opts(option),
                 option->get_description());
}

}  // namespace admin

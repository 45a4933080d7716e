#include "play/script.h"

#include <fstream>

#include "common/text.h"

namespace play {

Script read_script(const std::filesystem::path& file) {
    std::ifstream stream(file);
    if (!stream) throw ScriptError(file.string() + ": cannot be read");
    Script script{file, {}};
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        const std::string text(common::trim(line));
        if (text.empty() || text.front() == '#') continue;
        const auto blank = text.find(' ');
        const std::string rest = blank == std::string::npos ? "" : text.substr(blank + 1);
        script.steps.push_back({number, text, text.substr(0, blank), std::string(common::trim(rest))});
    }
    return script;
}

Halves split_at(std::string_view text, std::string_view word) {
    const std::string between = " " + std::string(word) + " ";
    // The text before or after the word may be empty.
    const std::string padded = " " + std::string(text) + " ";
    const auto at = padded.find(between);
    if (at == std::string::npos) return {std::string(common::trim(text)), {}, false};
    return {std::string(common::trim(padded.substr(0, at))),
            std::string(common::trim(padded.substr(at + between.size()))), true};
}

std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> found;
    std::size_t from = 0;
    while (from < text.size()) {
        const auto end = std::min(text.find(' ', from), text.size());
        if (end > from) found.emplace_back(text.substr(from, end - from));
        from = end + 1;
    }
    return found;
}

}  // namespace play

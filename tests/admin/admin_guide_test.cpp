// The messages, commands and options in the technician's guide are those of the program, and the guide says
// the same in both languages.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <sstream>

#include "admin/workbench.h"
#include "common/files.h"
#include "common/text.h"
#include "support/data_file.h"

namespace {

namespace fs = std::filesystem;
using common::read_file;
using testing::HasSubstr;

const fs::path root = test::tests_folder().parent_path();

std::string english_guide() {
    return read_file(root / "docs/admin.md");
}
std::string arabic_guide() {
    return read_file(root / "docs/technician.ar.md");
}

std::vector<std::string> matches(const std::string& text, const char* pattern) {
    const std::regex wanted(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), wanted); at != std::sregex_iterator(); ++at)
        found.push_back((*at)[1]);
    return found;
}

TEST(AdminGuide, QuotesMessagesOfTheProgram) {
    std::string source;
    for (const auto& entry : fs::recursive_directory_iterator(root / "src")) {
        const auto ending = entry.path().extension();
        if (ending == ".h" || ending == ".cpp") source += read_file(entry.path());
    }
    const std::string guide = english_guide();
    const std::string table = guide.substr(guide.find("| on the screen |"));
    std::size_t quoted = 0;
    for (const std::string& cell : matches(table, "\n\\| ([^|`]*\xD8[^|]*) \\|")) {
        // An ellipsis or a bar stands for what the program puts between.
        std::string parts = std::regex_replace(cell, std::regex("…| / "), "\n");
        std::istringstream lines(parts);
        for (std::string part; std::getline(lines, part);) {
            part = common::trim(part);
            if (part.empty()) continue;
            ++quoted;
            EXPECT_NE(source.find(part), std::string::npos) << part;
        }
    }
    EXPECT_GT(quoted, 25U);
}

TEST(AdminGuide, NamesCommandsAndOptionsOfTheProgram) {
    const std::string guide = english_guide() + arabic_guide();
    const test::Workbench bench;
    std::map<std::string, std::string> help;
    std::size_t lines = 0;
    for (const std::string& line : matches(guide, "tallvex-admin ([a-z][^\n`#|<>]*)")) {
        const std::string command = line.substr(0, line.find(' '));
        if (!help.contains(command)) {
            auto run = test::Workbench::run_in(bench.folder(), {command, "--help"});
            EXPECT_EQ(run.code, 0) << line;
            if (command == "users") {
                for (const char* part : {"add", "password", "permissions", "badge"})
                    run.out += test::Workbench::run_in(bench.folder(), {"users", part, "--help"}).out;
            }
            help[command] = run.out;
        }
        for (const std::string& option : matches(line, "(--[a-z0-9-]+)"))
            EXPECT_THAT(help[command], HasSubstr(option + " ")) << line;
        ++lines;
    }
    EXPECT_GT(lines, 50U);
}

// The blocks between lines of three backticks.
std::vector<std::string> commands_of(const std::string& guide) {
    std::vector<std::string> blocks;
    std::istringstream lines(guide);
    bool inside = false;
    for (std::string line; std::getline(lines, line);) {
        const bool fence = line == "```";
        if (fence) inside = !inside;
        if (fence && inside) blocks.emplace_back();
        if (!fence && inside) blocks.back() += line + '\n';
    }
    return blocks;
}

TEST(AdminGuide, SaysTheSameInBothLanguages) {
    const auto places = [](const std::string& guide) { return matches(guide, "<a id=\"([^\"]+)\"></a>"); };
    EXPECT_EQ(places(english_guide()), places(arabic_guide()));
    EXPECT_GT(places(english_guide()).size(), 30U);
    EXPECT_EQ(commands_of(english_guide()), commands_of(arabic_guide()));
    EXPECT_GT(commands_of(english_guide()).size(), 20U);
    for (const std::string& guide : {english_guide(), arabic_guide()}) {
        for (const std::string& place : matches(guide, "\\]\\(#([^)]+)\\)"))
            EXPECT_THAT(places(guide), testing::Contains(place));
        for (const std::string& chapter : matches(guide, "\"></a>\n## ([^\n]+)")) {
            if (chapter == "Contents" || chapter == "المحتويات") continue;
            EXPECT_THAT(guide, HasSubstr(". [" + chapter + "](#"));
        }
        for (const std::string& picture : matches(guide, "\\]\\((pictures/[^)]+)\\)"))
            EXPECT_TRUE(fs::exists(root / "docs" / picture)) << picture;
    }
}

}  // namespace

// Reading plays.
#include "play/script.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include "common/files.h"
#include "support/data_file.h"
#include "support/shop.h"

namespace {

TEST(Script, KnowsTheLineOfEveryStep) {
    const test::TemporaryFolder folder;
    const auto file = folder.path() / "a.play";
    std::ofstream(file) << "# a comment\n\n  press F1  \n\ntype  12  into entry\nstart";
    const play::Script script = play::read_script(file);
    ASSERT_EQ(script.steps.size(), 3U);
    EXPECT_EQ(script.steps[0].line, 3);
    EXPECT_EQ(script.steps[0].verb, "press");
    EXPECT_EQ(script.steps[0].rest, "F1");
    EXPECT_EQ(script.steps[1].line, 5);
    EXPECT_EQ(script.steps[1].rest, "12  into entry");
    EXPECT_EQ(script.steps[2].verb, "start");
    EXPECT_EQ(script.steps[2].rest, "");
    EXPECT_THROW(play::read_script(folder.path() / "none.play"), play::ScriptError);
}

TEST(Script, SplitsAtAWordAndNotWithinOne) {
    const struct {
        const char *text, *word, *before, *after;
        bool found;
    } cases[] = {
        {"12 into entry", "into", "12", "entry", true},
        {"entry =", "=", "entry", "", true},
        {"= 5", "=", "", "5", true},
        {"select a=b gives 1", "gives", "select a=b", "1", true},
        {"intonation", "into", "intonation", "", false},
        {"total = a = b", "=", "total", "a = b", true},
    };
    for (const auto& [text, word, before, after, found] : cases) {
        const auto halves = play::split_at(text, word);
        EXPECT_EQ(halves.before, before) << text;
        EXPECT_EQ(halves.after, after) << text;
        EXPECT_EQ(halves.found, found) << text;
    }
    EXPECT_EQ(play::words(" a  b c "), (std::vector<std::string>{"a", "b", "c"}));
}

// Whoever writes a play must find its language on the page.
TEST(PlaysPage, HasEveryWordThatThePlaysUse) {
    const std::filesystem::path root = test::tests_folder().parent_path();
    const std::string page = common::read_file(root / "docs" / "plays.md");
    const std::size_t begin = page.find("## The shop");
    const std::string language = page.substr(begin, page.find("## Object names") - begin);
    std::set<std::string> verbs;
    std::set<std::string> known;
    const std::regex code("`([^`\n]+)`");
    for (std::sregex_iterator at(language.begin(), language.end(), code), end; at != end; ++at) {
        const auto words = play::words((*at)[1].str());
        verbs.insert(words.front());
        known.insert(words.begin(), words.end());
    }
    const std::set<std::string> with_word = {"answer",   "disk",   "expect", "monitor",
                                             "remember", "server", "shop",   "start"};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / "tests" / "plays")) {
        if (entry.path().extension() != ".play") continue;
        for (const play::Step& step : play::read_script(entry.path()).steps) {
            const auto words = play::words(step.rest);
            const bool is_known = verbs.contains(step.verb) && (!with_word.contains(step.verb) ||
                                                                words.empty() || known.contains(words[0]));
            EXPECT_TRUE(is_known) << entry.path() << ":" << step.line << ": " << step.text;
        }
    }
}

}  // namespace

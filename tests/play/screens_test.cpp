// docs/screens.md shows every screen of the program, and its pictures are there.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>

#include "common/files.h"
#include "play/screens_page.h"
#include "play/script.h"
#include "support/data_file.h"

namespace {

namespace fs = std::filesystem;
using common::read_file;

const fs::path root = test::tests_folder().parent_path();

// The classes that are screens: all sheets and dialogs that no other is derived from, and the windows.
std::set<std::string> screens_of_the_program() {
    std::map<std::string, std::string> base_of;
    const std::regex heading(R"(class (\w+)(?: final)? : public (?:\w+::)?(\w+))");
    for (const char* folder : {"ui", "printing/pages"}) {
        for (const auto& entry : fs::recursive_directory_iterator(root / "src" / folder)) {
            if (!entry.is_regular_file()) continue;
            const std::string text = read_file(entry.path());
            for (std::sregex_iterator at(text.begin(), text.end(), heading), end; at != end; ++at)
                base_of[(*at)[1]] = (*at)[2];
        }
    }
    std::set<std::string> shown = {"SalesWindow", "SignInWindow"};
    std::set<std::string> bases;
    for (const auto& [name, base] : base_of) {
        std::string top = base;
        while (top != "Sheet" && top != "QDialog" && base_of.contains(top))
            top = base_of[top];
        if (top != "Sheet" && top != "QDialog") continue;
        shown.insert(name);
        bases.insert(base);
    }
    for (const std::string& base : bases)
        shown.erase(base);
    return shown;
}

TEST(ScreensPage, ShowsEveryScreen) {
    const std::string page = read_file(root / "docs" / "screens.md");
    const auto screens = screens_of_the_program();
    EXPECT_GT(screens.size(), 25U);
    for (const std::string& screen : screens) {
        EXPECT_NE(page.find("`" + screen + "`"), std::string::npos)
            << screen << " is not in docs/screens.md: let a play of docs/screens look at it, then run "
            << "docs/make-screens";
    }
}

TEST(ScreensPage, HasThePicturesOfItsPlays) {
    const std::string page = read_file(root / "docs" / "screens.md");
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(root / "docs" / "screens")) {
        if (entry.path().extension() != ".play") continue;
        for (const play::Step& step : play::read_script(entry.path()).steps) {
            if (step.verb != "look") continue;
            const auto shot = play::read_screenshot(step);
            ASSERT_TRUE(shot) << entry.path() << ":" << step.line;
            EXPECT_TRUE(names.insert(shot->name).second) << shot->name << " twice";
            for (const QSize& size : play::page_sizes()) {
                const std::string picture = play::picture_name(shot->name, size);
                EXPECT_NE(page.find("(pictures/screens/" + picture + ")"), std::string::npos)
                    << picture << ": run docs/make-screens";
                EXPECT_TRUE(fs::exists(root / "docs" / "pictures" / "screens" / picture)) << picture;
            }
        }
    }
    EXPECT_GT(names.size(), 60U);
}

}  // namespace

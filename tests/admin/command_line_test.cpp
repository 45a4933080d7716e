#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "admin/workbench.h"

namespace {

using test::Workbench;
using testing::HasSubstr;

// The commands below a line, and the options, as the help names them at the beginning of its lines.
std::set<std::string> named_in(const std::string& help) {
    static const std::regex name("\n  (-h,--[a-z]+|--[a-z0-9-]+|[a-z-]+)");
    std::set<std::string> names;
    for (std::sregex_iterator at(help.begin(), help.end(), name); at != std::sregex_iterator(); ++at)
        names.insert((*at)[1]);
    names.erase("tallvex-admin");  // the usage
    return names;
}

// The help of a command and of those below it, in both languages. Each name has its meaning in Arabic below
// it.
void expect_help(const std::vector<std::string>& command) {
    auto line = command;
    line.emplace_back("--help");
    const auto english = Workbench::run_in(".", line);
    const auto arabic = Workbench::run_in(".", line, {}, true);
    SCOPED_TRACE(testing::PrintToString(line));
    EXPECT_EQ(english.code + arabic.code, 0);
    EXPECT_EQ(english.err + arabic.err, "");
    EXPECT_THAT(english.out, HasSubstr("Usage:"));
    EXPECT_THAT(arabic.out, HasSubstr("الاستعمال:\n  tallvex-admin"));
    EXPECT_EQ(named_in(english.out), named_in(arabic.out));
    // Every line is a name, a meaning in Arabic, or a heading.
    std::istringstream lines(arabic.out);
    for (std::string text; std::getline(lines, text);) {
        const bool names = std::regex_search(text, std::regex("^  [a-z-]"));
        EXPECT_TRUE(text.empty() || names || text.find("\xD8") != std::string::npos) << text;
    }
    for (const std::string& name : named_in(english.out)) {
        if (name.starts_with('-') || english.out.find("Subcommands:") == std::string::npos) continue;
        auto below = command;
        below.push_back(name);
        expect_help(below);
    }
}

TEST(CommandLine, EveryCommandHelpsInBothLanguages) {
    expect_help({});
    const auto connect = Workbench::run_in(".", {"connect", "--help"}, {}, true).out;
    EXPECT_THAT(connect, HasSubstr("  --show لا يكتب مع: --"));
    EXPECT_THAT(connect, HasSubstr("\n      \u2067يعرض ما في ملف الاتصال مقروءا\u2069\n"));
    EXPECT_THAT(connect, HasSubstr("أو \u2066machine\\instance\u2069، أو \u2066embedded\u2069 لمحل"));
    // Only the help is in Arabic, and nothing else may contain direction marks.
    const auto refused = Workbench::run_in(".", {"sql", "select '\u2067'"}, {}, true);
    EXPECT_THAT(refused.err, HasSubstr("no connection file"));
}

TEST(CommandLine, TheEnvironmentChoosesTheLanguage) {
    using Variables = std::map<std::string, std::string>;
    const std::pair<Variables, bool> cases[] = {
        {{}, false},
        {{{"LANG", "ar_EG.UTF-8"}}, true},
        {{{"LANG", "ar"}}, true},
        {{{"LANG", "arn_CL.UTF-8"}}, false},
        {{{"LANG", "en_US.UTF-8"}, {"LC_MESSAGES", "ar_SA"}}, true},
        {{{"LANG", "ar_EG.UTF-8"}, {"LC_MESSAGES", "C"}}, false},
        {{{"LANG", "ar_EG.UTF-8"}, {"LC_ALL", "C.UTF-8"}}, false},
        {{{"LANG", "ar_EG.UTF-8"}, {"LC_ALL", ""}}, true},
    };
    for (const auto& [variables, arabic] : cases) {
        const auto variable = [&variables](const char* name) {
            const auto found = variables.find(name);
            return found == variables.end() ? nullptr : found->second.c_str();
        };
        EXPECT_EQ(admin::asks_for_arabic(variable), arabic) << testing::PrintToString(variables);
    }
}

TEST(CommandLine, AWrongLineEndsWithTwo) {
    Workbench bench;
    const std::vector<std::vector<std::string>> lines = {
        {},
        {"sell"},
        {"new-shop"},
        {"new-shop", "a", "b"},
        {"new-shop", "a", "--demo", "--ask-password"},
        {"new-shop", "a", "--password", "in sight of every user of the machine"},
        {"new-shop", "a", "--user", "x", "--demo"},
        {"new-shop", "a", "--name", std::string(101, 'n')},
        {"sql"},
        {"sql", "select 1", "--xml"},
        {"connect"},
        {"connect", "--server", "PC1"},
        {"connect", "--show", "--server", "PC1"},
        {"users"},
        {"users", "add"},
        {"users", "remove", "1"},
        {"check", "--days", "many"},
        {"check", "--days", "-1"},
        {"import-items"},
        {"restore"},
        {"copy-shop"},
        {"show-receipt"},
    };
    for (const auto& line : lines) {
        const auto run = bench.run(line);
        EXPECT_EQ(run.code, 2) << testing::PrintToString(line);
        EXPECT_NE(run.err, "") << testing::PrintToString(line);
    }
    EXPECT_TRUE(std::filesystem::is_empty(bench.folder()));
    EXPECT_THAT(bench.run({"sell", "1"}).err, HasSubstr("sell"));
}

TEST(CommandLine, WithoutAShopEveryCommandSaysSo) {
    const std::vector<std::vector<std::string>> lines = {
        {"sql", "select 1"}, {"connect", "--show"},         {"users", "list"},
        {"check"},           {"import-items", "items.csv"}, {"backup"},
        {"restore", "x"},    {"copy-shop", "other"}};
    for (const auto& line : lines) {
        Workbench bench;
        bench.write("items.csv", "code,name,price12\n");
        const auto run = bench.run(line);
        EXPECT_EQ(run.code, 1) << line.front();
        EXPECT_THAT(run.err, HasSubstr("connection file")) << line.front();
    }
}

TEST(CommandLine, ABadShopFileIsNamed) {
    struct Break {
        const char* what;
        void (*apply)(Workbench& bench);
    };
    const Break breaks[] = {
        {"missing", [](Workbench& b) { std::filesystem::remove(b.file("shop.db")); }},
        {"garbage", [](Workbench& b) { b.write("shop.db", std::string(5000, 'x')); }},
        {"folder",
         [](Workbench& b) {
             std::filesystem::remove(b.file("shop.db"));
             std::filesystem::create_directory(b.file("shop.db"));
         }},
        {"truncated connection file", [](Workbench& b) { b.write("datacon24.stk", "abc"); }},
    };
    for (const Break& how : breaks) {
        Workbench bench;
        bench.make_shop();
        how.apply(bench);
        const auto run = bench.run({"sql", "select * from basic"});
        EXPECT_EQ(run.code, 1) << how.what;
        EXPECT_THAT(run.err, testing::StartsWith("tallvex-admin: ")) << how.what;
        EXPECT_EQ(run.out, "") << how.what;
    }
}

TEST(Connect, WritesTheFileAndReadsItBack) {
    Workbench bench;
    const auto run = bench.run(
        {"connect", "--server", "PC1\\SQLEXPRESS", "--database", "بقالة", "--address", "192.168.1.5"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out,
              "server:   PC1\\SQLEXPRESS\ndatabase: بقالة\naddress:  192.168.1.5\n"
              "encryption: login: the password of sa is encrypted, else it is not sent; what follows is "
              "encrypted if the server says so\n");
    EXPECT_EQ(bench.run({"connect", "--show"}).out, run.out);
    EXPECT_EQ(std::filesystem::file_size(bench.file("datacon24.stk")), 200U);
    // A text that does not fit its field is refused and the file does not change.
    for (const auto& [option, value] :
         std::vector<std::pair<std::string, std::string>>{{"--server", std::string(60, 's')},
                                                          {"--database", std::string(60, 'd')},
                                                          {"--server", "大"},
                                                          {"--database", "shop;Data Source=other"},
                                                          {"--server", "PC1;"}}) {
        std::vector<std::string> line = {"connect", "--server", "A", "--database", "B"};
        line[option == "--server" ? 2 : 4] = value;
        EXPECT_EQ(bench.run(line).code, 1) << value;
    }
    EXPECT_EQ(bench.run({"connect", "--show"}).out, run.out);
}

TEST(Connect, MakesAFolderThatATillCanStartIn) {
    Workbench bench;
    const auto run =
        bench.run({"connect", "--server", "127.0.0.1", "--database", "shop", "--keep-password"}, "p;w=d\n");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_THAT(run.out, testing::Not(HasSubstr("p;w=d")));
    for (const char* name : {"datacon24.stk", "merlo-ver.txt", "Data.dat"}) {
        EXPECT_EQ(std::filesystem::status(bench.file(name)).permissions(), std::filesystem::perms(0660))
            << name;
    }
    EXPECT_EQ(std::filesystem::status(bench.file("sa.pwd")).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    const auto refused = bench.run({"connect", "--keep-password"}, "");
    EXPECT_EQ(refused.code, 1);
    EXPECT_THAT(refused.err, HasSubstr("no password of "));
}

// In any other folder the password would go beside the program, for every user of it.
TEST(Connect, KeepsAPasswordOnlyForAShop) {
    Workbench bench;
    EXPECT_EQ(bench.run({"connect", "--keep-password"}, "p\n").code, 1);
    EXPECT_TRUE(std::filesystem::is_empty(bench.folder()));
}

}  // namespace

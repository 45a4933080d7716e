// Compares what the source writes into tables with the schema: the columns exist, and every row gets a value
// for each column that takes no null.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "common/text.h"
#include "database/schema/schema.h"
#include "support/data_file.h"
#include "support/shop.h"

namespace {

using database::Connection;
using database::Sql;
namespace fs = std::filesystem;

std::string text_of_file(const fs::path& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The sources of the program, with the parts of each text literal joined.
std::map<std::string, std::string> sources() {
    static const std::regex seam("\"\\s*\"");
    std::map<std::string, std::string> found;
    const fs::path root = test::tests_folder().parent_path() / "src";
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.path().extension() != ".cpp") continue;
        found[entry.path().lexically_relative(root).string()] =
            std::regex_replace(text_of_file(entry.path()), seam, "");
    }
    return found;
}

// The rest of a function, up to the closing brace in the first column.
std::string rest_of_function(const std::string& source, std::size_t from) {
    return source.substr(from, std::min(source.find("\n}", from), source.size()) - from);
}

template <typename Use>
void each_match(const std::string& text, const std::string& pattern, Use use) {
    const std::regex expression(pattern, std::regex::icase);
    for (auto at = std::sregex_iterator(text.begin(), text.end(), expression); at != std::sregex_iterator();
         ++at)
        use(*at);
}

class SchemaUse : public testing::Test {
  protected:
    const Connection::Table& table(const std::string& name) {
        const std::string key = common::lower_ascii(name);
        if (!tables_.contains(key)) tables_[key] = shop_.connection().describe(key);
        return tables_[key];
    }
    void expect_column(const std::string& name, const std::string& column, const std::string& where) {
        const auto& columns = table(name).columns;
        EXPECT_TRUE(
            std::any_of(columns.begin(), columns.end(),
                        [&](const std::string& each) { return common::equal_ignoring_case(each, column); }))
            << where << ": " << name << "." << column;
    }
    // Inserts such a row, with nulls in all other columns.
    void expect_whole_row(const std::string& name, const std::set<std::string>& given,
                          const std::string& where) {
        std::string columns;
        std::string values;
        for (std::size_t i = 0; i < table(name).columns.size(); ++i) {
            if (!given.contains(common::lower_ascii(table(name).columns[i]))) continue;
            const bool is_moment = table(name).types[i].find("date") != std::string::npos;
            columns += (columns.empty() ? "[" : ",[") + table(name).columns[i] + "]";
            values += (values.empty() ? "" : ",") + std::string(is_moment ? "'2026/11/21'" : "1");
        }
        const auto insert =
            Sql::from_administrator("insert into [" + name + "] (" + columns + ") values (" + values + ")");
        EXPECT_NO_THROW({
            shop_.sql("delete from [" + name + "]");
            shop_.connection().execute(insert);
        }) << where
           << ": " << insert.text();
    }

    test::Shop shop_;
    std::map<std::string, Connection::Table> tables_;
};

TEST_F(SchemaUse, EveryRowThatARecordsetAddsIsWhole) {
    int rows = 0;
    for (const auto& [file, source] : sources()) {
        const std::string opening =
            R"re(Recordset\s+(\w+)\s*(?:\(|=[^;]*?Recordset\()[^;"]*"select \* from \[?(\w+)\]?[^;]*;)re";
        each_match(source, opening, [&, &file = file, &source = source](const std::smatch& match) {
            const std::string body =
                rest_of_function(source, static_cast<std::size_t>(match.position() + match.length()));
            std::set<std::string> given;
            each_match(body, "\\b" + match[1].str() + R"re(\.set\("(\w+)")re", [&](const std::smatch& set) {
                expect_column(match[2], set[1], file);
                given.insert(common::lower_ascii(set[1].str()));
            });
            if (given.empty() || body.find(match[1].str() + ".add()") == std::string::npos) return;
            if (match[2] == "offer")  // its 25 cells are set in a loop
                given.insert({"f0", "f24"});
            expect_whole_row(match[2], given, file);
            ++rows;
        });
    }
    EXPECT_GE(rows, 8) << "the pattern finds the recordsets no longer";
}

TEST_F(SchemaUse, EveryInsertNamesColumnsThatAreThere) {
    int inserts = 0;
    for (const auto& [file, source] : sources()) {
        if (file.starts_with("play/")) continue;
        each_match(source, R"(insert into (\w+) ?\(([\w, \[\]]+)\))",
                   [&, &file = file](const std::smatch& match) {
                       std::set<std::string> given;
                       each_match(match[2].str(), R"(\w+)", [&](const std::smatch& column) {
                           expect_column(match[1], column.str(), file);
                           given.insert(common::lower_ascii(column.str()));
                       });
                       expect_whole_row(match[1], given, file);
                       ++inserts;
                   });
    }
    EXPECT_GE(inserts, 14) << "the pattern finds the statements no longer";
}

// A server refuses to change an indexed column, except to widen a text (error 5074).
TEST_F(SchemaUse, TheUpgradeListChangesNoColumnOfAnIndex) {
    std::map<std::string, std::set<std::string>> indexed;
    const std::string script = text_of_file(test::tests_folder().parent_path() / "data/base_schema.sql");
    each_match(script, R"(create index \w+ on \[?(\w+)\]? \(([^)]*)\))", [&](const std::smatch& index) {
        each_match(index[2].str(), R"(\w+)", [&](const std::smatch& column) {
            indexed[common::lower_ascii(index[1].str())].insert(common::lower_ascii(column.str()));
        });
    });
    ASSERT_GT(indexed.size(), 15U);
    int changes = 0;
    for (const auto& entry : database::upgrade_entries())
        each_match(std::string(entry.statement),
                   R"(alter table \[?(\w+)\]? alter column \[?(\w+)\]? \[?(\w+))",
                   [&](const std::smatch& change) {
                       ++changes;
                       const auto& columns = indexed[common::lower_ascii(change[1].str())];
                       if (!columns.contains(common::lower_ascii(change[2].str()))) return;
                       EXPECT_EQ(common::lower_ascii(change[3].str()), "nvarchar") << entry.statement;
                   });
    EXPECT_GT(changes, 40);
}

}  // namespace

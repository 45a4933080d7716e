// An empty embedded database for tests of the engine itself.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "database/embedded/open.h"
#include "support/shop.h"

namespace test {

class Engine : public testing::Test {
  protected:
    Engine() : file(folder.path() / "engine.db"), connection(database::open_embedded(file, true)) {}

    database::Connection::Outcome run(const std::string& statement,
                                      const std::vector<database::Value>& values = {}) {
        return connection->run(statement, values);
    }
    // The rows of a query as text: cells separated by "|", rows by " / ", nulls as "null".
    std::string rows(const std::string& statement, const std::vector<database::Value>& values = {}) {
        std::string text;
        for (const auto& row : run(statement, values).result) {
            if (!text.empty()) text += " / ";
            for (std::size_t i = 0; i < row.cells().size(); ++i) {
                const auto& cell = row.cells()[i];
                text += (i == 0 ? "" : "|") + (database::is_null(cell) ? "null" : database::text_of(cell));
            }
        }
        return text;
    }
    // The rows, or the SQLSTATE of the failure.
    std::string outcome(const std::string& statement, const std::vector<database::Value>& values = {}) {
        try {
            return rows(statement, values);
        } catch (const database::Error& error) {
            return error.sqlstate();
        }
    }

    struct Case {
        const char* statement;
        const char* outcome;
    };
    void check(std::initializer_list<Case> cases) {
        for (const auto& [statement, expected] : cases)
            EXPECT_EQ(outcome(statement), expected) << statement;
    }

    TemporaryFolder folder;
    std::filesystem::path file;
    std::unique_ptr<database::Connection> connection;
};

}  // namespace test

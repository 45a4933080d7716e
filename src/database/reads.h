// Reads that an action needs together: one round trip to a server.
#pragma once

#include <functional>
#include <vector>

#include "database/connection.h"

namespace database {

// Statements that are sent together, each with the function that takes its result. They must not depend on
// each other.
class Reads {
  public:
    using Take = std::function<void(const Result&)>;

    void add(Sql statement, Take take) { entries_.push_back({std::move(statement), std::move(take), false}); }
    void add(Fragment statement, Take take) { add(Sql(statement), std::move(take)); }
    // The same for a table that the shop may not have; nothing is taken then.
    void add_optional(Sql statement, Take take) {
        entries_.push_back({std::move(statement), std::move(take), true});
    }
    void add_optional(Fragment statement, Take take) { add_optional(Sql(statement), std::move(take)); }
    // Runs the statements in their order, hands on their results and forgets them. Throws Error.
    void run(Connection& connection);

  private:
    struct Entry {
        Sql statement;
        Take take;
        bool is_optional;
    };
    std::vector<Entry> entries_;
};

// The first column of the first row; null without a row.
Value first_cell(const Result& result);

}  // namespace database

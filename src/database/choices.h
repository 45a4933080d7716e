// Lists to choose from, read from the database, and what the columns of a table can hold.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "common/choice.h"
#include "database/connection.h"
#include "database/reads.h"

namespace database {

// One choice per row. Trailing blanks of names are dropped, as the database compares them.
std::vector<common::Choice> choices(const Result& rows, std::string_view code = "code",
                                    std::string_view name = "name");
// Takes the choices of a result into a list.
Reads::Take into(std::vector<common::Choice>& list, const char* code = "code", const char* name = "name");

// Each list can be read on its own or together with other reads.
void ask_stores(Reads& reads, std::vector<common::Choice>& list);
std::vector<common::Choice> load_stores(Connection& connection);
// The drawers of a store, in the order of the table.
void ask_drawers(Reads& reads, std::int64_t store, std::vector<common::Choice>& list);
std::vector<common::Choice> load_drawers(Connection& connection, std::int64_t store);
// Workers and salesmen.
void ask_workers(Reads& reads, std::vector<common::Choice>& list);
std::vector<common::Choice> load_workers(Connection& connection);

// How many characters the text columns of a table hold, as the database declares them.
class TextLimits {
  public:
    TextLimits(Connection& connection, std::string_view table);
    bool fits(std::string_view column, std::string_view text) const;

  private:
    std::shared_ptr<const Connection::Table> table_;
};

// The highest number that a column of whole numbers holds, as the database declares it; nothing for another
// column.
std::optional<std::int64_t> highest_whole_number(Connection& connection, std::string_view table,
                                                 std::string_view column);

}  // namespace database

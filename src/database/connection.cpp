#include "database/connection.h"

#include "common/text.h"
#include "database/reads.h"

namespace database {

int Columns::find(std::string_view name) const {
    for (std::size_t i = 0; i < names_.size(); ++i) {
        if (common::equal_ignoring_case(names_[i], name)) return static_cast<int>(i);
    }
    return -1;
}

const Value& Row::value(std::string_view column) const {
    const int at = columns_->find(column);
    if (at < 0) throw Error("42S22", "Invalid column name '" + std::string(column) + "'.", "");
    return cells_[static_cast<std::size_t>(at)];
}

Value Connection::scalar(const Sql& statement) {
    return first_cell(query(statement));
}

std::vector<Connection::Outcome> Connection::run_all(const std::vector<Command>& commands) {
    std::vector<Outcome> outcomes;
    outcomes.reserve(commands.size());
    try {
        for (const Command& command : commands) {
            Outcome outcome = run(command.text(), command.values());
            if (command.must_change() && outcome.changed == 0) throw unchanged(command);
            outcomes.push_back(std::move(outcome));
        }
    } catch (const Error& error) {
        roll_back_begun(commands, outcomes.size());
        throw BatchError(error, outcomes.size());
    }
    return outcomes;
}

void Connection::roll_back_begun(const std::vector<Command>& commands, std::size_t done) noexcept {
    bool is_open = false;
    for (std::size_t i = 0; i < done; ++i) {
        const std::string& text = commands[i].text();
        if (text == "begin transaction") is_open = true;
        if (text == "commit transaction" || text == "rollback transaction") is_open = false;
    }
    if (!is_open) return;
    try {
        run("rollback transaction", {});
    } catch (const Error&) {
        // It was rolled back already.
    }
}

Error Connection::unchanged(const Command& command) {
    return {"40001", "The row was changed or deleted by another workstation.", command.text()};
}

std::vector<std::string> Connection::tables() {
    std::vector<std::string> names;
    for (const Row& row : query("select name from sys.tables where is_ms_shipped = 0 order by name"))
        names.push_back(row.text("name"));
    return names;
}

}  // namespace database

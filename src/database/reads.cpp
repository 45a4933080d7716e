#include "database/reads.h"

#include <utility>

#include "database/till_tables.h"

namespace database {

void Reads::run(Connection& connection) {
    std::vector<Entry> entries = std::exchange(entries_, {});
    while (!entries.empty()) {
        std::vector<Command> commands;
        for (const Entry& entry : entries)
            commands.emplace_back(entry.statement);
        try {
            const auto outcomes = connection.run_all(commands);
            for (std::size_t at = 0; at < entries.size(); ++at)
                entries[at].take(outcomes[at].result);
            return;
        } catch (const BatchError& error) {
            if (error.sqlstate() != no_such_table || !entries[error.position()].is_optional) throw;
            entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(error.position()));
        }
    }
}

Value first_cell(const Result& result) {
    if (result.empty() || result.front().cells().empty()) return Null{};
    return result.front().cells().front();
}

}  // namespace database

#include "database/schema/schema.h"

#include <string>
#include <string_view>

#include "common/text.h"
#include "database/schema/upgrade_list.h"

namespace database {

extern const std::string_view base_schema_text;

namespace {

// The script's next statement without its comments; empty at the end of the script.
std::string next_statement(std::string_view& script) {
    std::string statement;
    while (!script.empty()) {
        const std::size_t end = std::min(script.find('\n'), script.size());
        const std::string_view line = script.substr(0, end);
        script.remove_prefix(std::min(end + 1, script.size()));
        if (line == "GO") break;
        if (line.starts_with("--") || common::trim(line).empty()) continue;
        if (!statement.empty()) statement += '\n';
        statement += line;
    }
    return statement;
}

}  // namespace

void create_base_schema(Connection& connection) {
    std::string_view script = base_schema_text;
    for (std::string statement = next_statement(script); !statement.empty();
         statement = next_statement(script))
        connection.execute(Sql::from_administrator(std::move(statement)));
    connection.make_durable();
}

void run_upgrade_list(Connection& connection) {
    for (const auto& entries :
         {upgrade_entries_1_to_100(), upgrade_entries_101_to_200(), upgrade_entries_201_to_300()})
        for (const UpgradeEntry& entry : entries)
            ignoring_failure([&] {
                if (entry.procedure != nullptr)
                    entry.procedure(connection);
                else
                    connection.run(entry.statement, {});
            });
    connection.make_durable();
}

}  // namespace database

// tallvex-admin sql: runs a statement on the shop, over the same connection as the till.
#include <CLI/CLI.hpp>
#include <memory>

#include "admin/commands.h"
#include "admin/shop.h"
#include "admin/table.h"

namespace admin {

namespace {

struct Options {
    std::string statement;
    bool csv = false;
};

void run(const Options& options, Tool& tool) {
    const auto connection = open_shop(tool);
    // The statement as a whole is the administrator's own, so it goes the engine's road, which alone tells
    // both its rows and how many it changed.
    const auto outcome = connection->run(options.statement, {});
    connection->make_durable();
    if (outcome.result.columns().empty()) {
        tool.err << outcome.changed << (outcome.changed == 1 ? " row changed\n" : " rows changed\n");
    } else if (options.csv) {
        tool.out << csv_table(outcome.result);
    } else {
        const std::size_t count = outcome.result.size();
        tool.out << aligned_table(outcome.result) << '(' << count << (count == 1 ? " row)\n" : " rows)\n");
    }
}

}  // namespace

void add_sql(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<Options>();
    CLI::App* command =
        program.add_subcommand("sql", "Runs a Transact-SQL statement on the shop and prints its rows");
    command->add_option("statement", options->statement, "The statement")->required();
    command->add_flag("--csv", options->csv, "Rows as CSV (RFC 4180, UTF-8, nulls empty) instead of a table");
    command->callback([options, &tool] { run(*options, tool); });
}

}  // namespace admin

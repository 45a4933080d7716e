#include "admin/tool.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "database/error.h"

namespace admin {

namespace {

constexpr const char* footer =
    "Exit codes: 0 done, 1 refused or failed (nothing half-done is left), 2 wrong command line.\n"
    "Commands work on the shop whose connection file stands in the working directory.";

}  // namespace

int run_tool(const std::vector<AddCommand>& commands, const std::vector<std::string>& arguments, Tool& tool) {
    CLI::App program("Sets up and looks after a Tallvex shop.", "tallvex-admin");
    program.set_version_flag("--version", TALLVEX_VERSION);
    program.require_subcommand(1);
    program.footer(footer);
    for (const AddCommand add : commands)
        add(program, tool);
    for (CLI::App* command : program.get_subcommands({}))
        command->footer(footer);
    try {
        // The parser would only say that a command is missing.
        if (!arguments.empty() && !arguments.front().starts_with('-') &&
            program
                .get_subcommands([&](CLI::App* command) { return command->get_name() == arguments.front(); })
                .empty()) {
            throw CLI::ExtrasError("tallvex-admin", {arguments.front()});
        }
        // The parser takes its words from the back.
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return done;
    } catch (const CLI::ParseError& error) {
        return program.exit(error, tool.out, tool.err) == 0 ? done : usage;
    } catch (const Refused& error) {
        tool.err << "tallvex-admin: " << error.what() << '\n';
    } catch (const database::Error& error) {
        tool.err << "tallvex-admin: the database says: " << error.what();
        if (!error.statement().empty()) tool.err << "\n  in: " << error.statement();
        tool.err << '\n';
    } catch (const std::exception& error) {
        tool.err << "tallvex-admin: " << error.what() << '\n';
    }
    return refused;
}

}  // namespace admin

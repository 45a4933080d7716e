// tallvex-admin stamp: writes this till's version into the shop, where no till runs on the server's machine.
#include <CLI/CLI.hpp>

#include "admin/shop.h"
#include "admin/tool.h"
#include "startup/reasons.h"
#include "startup/shop_version.h"

namespace admin {

namespace {

void stamp(Tool& tool) {
    const std::string version = read_version(tool.shop);
    const auto connection = open_shop(tool);
    startup::Stamp former;
    try {
        former = startup::read_stamp(*connection);
    } catch (const startup::StartUpError& error) {
        throw Refused(std::string(error.what()) + "; restore a backup");
    }
    if (!former.has_column) connection->execute("ALTER TABLE [basic] add cr_v nvarchar(100)");
    startup::write_stamp(*connection, version);
    connection->make_durable();
    tool.out << "the shop's version is \"" << version << "\", it was \"" << former.version << "\"\n";
    if (startup::is_older(version, former.version))
        tool.err << "note: tills of the newer version refuse to start until it is stamped again\n";
}

}  // namespace

void add_stamp(CLI::App& program, Tool& tool) {
    CLI::App* command = program.add_subcommand(
        "stamp",
        tool.help(
            "Stamps the version of this till's version file in the shop; tills of another refuse to start",
            "يسجل إصدار هذا الجهاز في المحل، والأجهزة التي إصدارها غيره لا تبدأ"));
    command->callback([&tool] { stamp(tool); });
}

}  // namespace admin

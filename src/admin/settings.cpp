// tallvex-admin settings: shows and sets the settings of the tills; what the check says about them.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "admin/checks.h"
#include "admin/shop.h"
#include "admin/tool.h"
#include "backup/automatic.h"
#include "cash/cash_sums.h"
#include "common/amount.h"
#include "database/till_settings.h"
#include "database/till_tables.h"

namespace admin {

using database::Connection;
using database::TillSetting;

namespace {

struct SettingsOptions {
    std::string name;
    std::string value;
};

constexpr std::string_view not_set = "(not set)";

std::string shown(Connection& connection, const TillSetting& setting) {
    return database::till_setting(connection, setting.name).value_or(std::string(not_set));
}

void list_settings(Connection& connection, Tool& tool) {
    for (const TillSetting& setting : database::till_settings()) {
        tool.out << setting.name << " = " << shown(connection, setting) << "\n    " << setting.meaning
                 << "\n    value: " << setting.form << '\n';
    }
}

void note_missing_folders(Connection& connection, Tool& tool) {
    for (const std::string& folder : backup::missing_folders(connection))
        tool.err << "note: there is no folder " << folder
                 << " now; it gets copies only while it is there: plug the stick in, or make the folder\n";
}

void set(Connection& connection, const SettingsOptions& options, Tool& tool) {
    const auto settings = database::till_settings();
    const auto setting = std::find_if(settings.begin(), settings.end(),
                                      [&](const TillSetting& known) { return known.name == options.name; });
    if (setting == settings.end())
        throw Refused("there is no setting \"" + options.name + "\"; tallvex-admin settings lists them");
    const auto value = setting->read(options.value);
    if (!value)
        throw Refused(options.name + " cannot be \"" + options.value +
                      "\"; give it: " + std::string(setting->form));
    const std::string before = shown(connection, *setting);
    try {
        database::set_till_setting(connection, setting->name, *value);
    } catch (const database::Error& error) {
        if (error.sqlstate() != database::no_such_table) throw;
        throw Refused("the shop has no table for settings yet; start the till once, which creates it");
    }
    connection.make_durable();
    tool.out << setting->name << " = " << *value << ", was " << before << '\n';
    if (setting->name == database::setting::backup_to) note_missing_folders(connection, tool);
}

}  // namespace

Findings check_till_settings(Connection& connection, const Period& period) {
    using database::setting::net_from;
    const auto value = database::till_setting(connection, net_from);
    if (value && !database::net_from(connection)) {
        return {{Verdict::wrong, "settings",
                 std::string(net_from) + " is \"" + *value +
                     "\", which is not a day, so it does not count; set it: tallvex-admin settings " +
                     std::string(net_from) + " " + common::date_text(period.today)}};
    }
    if (value) return {{Verdict::good, "settings", std::string(net_from) + " " + *value}};
    std::int64_t sales = 0;
    double sum = 0;
    const cash::Window window{common::moment_text({period.from, {}}),
                              common::moment_text({common::add_days(period.today, 1), {}}), period.from};
    for (const auto& drawer : connection.query("select stcode, code from cash")) {
        for (const auto& sale : connection.query(
                 cash::rows_statement(cash::discount_period, cash::Movement::discounts,
                                      {drawer.integer("stcode"), drawer.integer("code")}, window))) {
            ++sales;
            sum += sale.number("pdis");
        }
    }
    if (sales == 0) return {};
    return {
        {Verdict::note, "settings",
         std::to_string(sales) + " cash sales since " + common::date_text(period.from) +
             " have an invoice discount, " + common::Amount(sum).text() +
             " in all, which the expected cash of their drawers still contains: a right count is short by "
             "it. If no other program adds up this shop's cash, have it taken off from today on: "
             "tallvex-admin settings " +
             std::string(net_from) + " " + common::date_text(period.today)}};
}

void add_settings(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<SettingsOptions>();
    CLI::App* command = program.add_subcommand(
        "settings", tool.help("Shows the settings of the tills and what each does, or sets one",
                              "يعرض إعدادات الأجهزة وما يفعله كل منها، أو يغير واحدا منها"));
    auto* name =
        command->add_option("name", options->name, tool.help("The setting to set", "الإعداد الذي يتغير"));
    command->add_option("value", options->value, tool.help("Its new value", "قيمته الجديدة"))->needs(name);
    command->callback([options, &tool] {
        if (!options->name.empty() && options->value.empty()) throw CLI::RequiredError("value");
        const auto connection = open_shop(tool);
        if (options->name.empty()) {
            list_settings(*connection, tool);
        } else {
            set(*connection, *options, tool);
        }
    });
}

}  // namespace admin

// tallvex-admin check: looks the shop over and says what is wrong and what to do about it.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "admin/checks.h"
#include "admin/commands.h"
#include "admin/opening_stock.h"
#include "admin/shop.h"
#include "admin/shop_files.h"

namespace admin {

namespace {

struct Options {
    int days = 31;
    bool accept_stock = false;
};

std::string_view word_of(Verdict verdict) {
    switch (verdict) {
        case Verdict::good:
            return "ok     ";
        case Verdict::note:
            return "note   ";
        case Verdict::wrong:
            return "WRONG  ";
    }
    return "";
}

void accept_stock(Tool& tool) {
    const auto connection = open_shop(tool);
    remember_opening_stock(*connection, tool.clock.now());
    connection->settle();
    tool.out << "the present stock is what later checks start from\n";
}

void run(const Options& options, Tool& tool) {
    std::int64_t wrong = 0;
    const auto say = [&](const Findings& findings) {
        for (const Finding& finding : findings) {
            tool.out << word_of(finding.verdict) << finding.subject << ": " << finding.text << '\n';
            if (finding.verdict == Verdict::wrong) ++wrong;
        }
        tool.out << std::flush;
    };
    const Place place = read_place(tool.folder);
    const auto connection = open_place(tool.folder, place);
    say({{Verdict::good, "connection", place.server + ", " + place.database}});
    say(check_schema(*connection));
    say(check_settings(*connection, read_version(tool.folder)));
    say(check_ports(*connection));
    const common::Date today = tool.clock.now().date;
    const Period period{common::add_days(today, -options.days), today};
    say(check_invoices(*connection, period));
    say(check_stock(*connection));
    say(check_log(log_file(tool.folder), period));
    if (wrong != 0)
        throw Refused(std::to_string(wrong) + (wrong == 1 ? " thing is wrong" : " things are wrong"));
}

}  // namespace

void add_check(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "check", "Looks over connection, schema, settings, store, drawer, ports, saved invoices and stock");
    command->add_option("--days", options->days, "How many days back invoices and log are looked at")
        ->check(CLI::Range(0, 100000))
        ->capture_default_str();
    command->add_flag("--accept-stock", options->accept_stock,
                      "Instead of checking, take the present stock as counted: later checks start from it");
    command->callback([options, &tool] { options->accept_stock ? accept_stock(tool) : run(*options, tool); });
}

}  // namespace admin

// Saves that tills have not finished: the check that names them, and tallvex-admin unfinished, which finishes
// or undoes one for a till that is gone.
#include "sales/unfinished.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "admin/checks.h"
#include "admin/shop.h"
#include "admin/tool.h"
#include "startup/shop_files.h"

namespace admin {

using database::JournalEntry;

namespace {

struct UnfinishedOptions {
    std::int64_t finish = 0;
    std::int64_t undo = 0;
};

// Older saves are not running any more, unless a printer holds one up.
bool is_left(const JournalEntry& entry, const common::Moment& now) {
    constexpr double minute = 60;
    return common::seconds_between(entry.begun, now) >= minute;
}

std::string describe(const JournalEntry& entry) {
    return log_name(entry, sales::resumption_of(entry.kind)) + ", begun " + common::moment_text(entry.begun) +
           " at the till of store " + std::to_string(entry.store) + ", cash point " +
           std::to_string(entry.drawer);
}

JournalEntry find(const std::vector<JournalEntry>& entries, std::int64_t id) {
    for (const JournalEntry& entry : entries)
        if (entry.id == id) return entry;
    throw Refused("there is no unfinished save " + std::to_string(id) +
                  "; the number is the first of its line in: tallvex-admin unfinished");
}

void settle(const UnfinishedOptions& options, Tool& tool) {
    const auto connection = open_shop(tool);
    const auto entries = database::unfinished_saves(*connection);
    const std::int64_t id = options.finish != 0 ? options.finish : options.undo;
    if (id == 0) {
        for (const JournalEntry& entry : entries)
            tool.out << entry.id << "  " << describe(entry) << '\n';
        if (entries.empty()) tool.out << "no save is unfinished\n";
        return;
    }
    JournalEntry entry = find(entries, id);
    const database::Resumption* how = sales::resumption_of(entry.kind);
    if (how == nullptr) throw Refused("this program does not know saves of the kind " + entry.kind);
    if (!is_left(entry, tool.clock.now()))
        throw Refused("its till may still be at work; try again in a minute");
    startup::ActivityLog log(log_file(tool.folder).parent_path().parent_path(), tool.clock);
    const std::string name = describe(entry);
    if (options.finish != 0)
        database::finish(*connection, log, entry, *how);
    else
        database::undo(*connection, log, entry, *how);
    tool.out << name << (options.finish != 0 ? ": finished\n" : ": undone\n");
    if (describe(entry) != name)
        tool.out << "another till had used its number; it is saved as " << log_name(entry, how)
                 << ", and its printed receipt is void\n";
}

}  // namespace

Findings check_unfinished(database::Connection& connection, const common::Moment& now) {
    Findings findings;
    for (const JournalEntry& entry : database::unfinished_saves(connection)) {
        if (!is_left(entry, now)) continue;
        findings.push_back(
            {Verdict::wrong, "unfinished saves",
             describe(entry) +
                 ": saved in part; that till asks about it when it starts, or finish or undo it "
                 "with tallvex-admin unfinished (" +
                 std::to_string(entry.id) + ")"});
    }
    if (findings.empty()) findings.push_back({Verdict::good, "unfinished saves", "none"});
    return findings;
}

void add_unfinished(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<UnfinishedOptions>();
    CLI::App* command = program.add_subcommand(
        "unfinished",
        tool.help("Lists saves that were interrupted; finishes or undoes one for a till that is gone",
                  "يعرض عمليات الحفظ التي انقطعت، ويكمل إحداها أو يتراجع عنها إذا لم يعد جهازها موجودا"));
    CLI::Option* finish = command->add_option("--finish", options->finish,
                                              tool.help("Writes what is missing of the save of this number",
                                                        "يكتب ما نقص من عملية الحفظ بهذا الرقم"));
    command
        ->add_option("--undo", options->undo,
                     tool.help("Takes back what was written of the save of this number",
                               "يلغي ما كتب من عملية الحفظ بهذا الرقم"))
        ->excludes(finish);
    command->callback([options, &tool] { settle(*options, tool); });
}

}  // namespace admin

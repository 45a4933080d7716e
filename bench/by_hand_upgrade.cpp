#include "bench/by_hand_upgrade.h"

#include <fmt/format.h>

#include <unordered_set>

#include "common/text.h"
#include "database/embedded/moments.h"
#include "database/schema/schema.h"

namespace bench {

namespace {

// The next word of a statement in lower case: a name without its brackets, or the text up to the next blank.
std::string next_word(std::string_view& text) {
    const auto ends = [](char c) { return c == ' ' || c == '(' || c == ',' || c == '\n'; };
    while (!text.empty() && ends(text.front()))
        text.remove_prefix(1);
    std::string word;
    while (!text.empty() && !ends(text.front())) {
        if (text.front() != '[' && text.front() != ']') word += text.front();
        text.remove_prefix(1);
    }
    if (word.starts_with("dbo.")) word.erase(0, 4);
    return common::lower_ascii(word);
}

bool is_made_anew(const std::string& table) {
    return table == "tmp_item" || table == "tmp_acc";
}

}  // namespace

HandUpgrade::HandUpgrade(HandEngine& engine) : engine_(engine) {
    for (const database::UpgradeEntry& entry : database::upgrade_entries()) {
        std::string_view text = entry.statement;
        const std::string verb = next_word(text);
        const std::string what = next_word(text);
        const std::string table = next_word(text);
        const std::string how = next_word(text);
        if (verb == "create" && what == "table") {
            if (is_made_anew(table))
                rebuilt_.push_back(table);
            else
                expected_.push_back(table);
        } else if (verb == "alter" && how == "add") {
            expected_.push_back(table + "." + next_word(text));
        } else if (verb == "alter" && how == "alter") {
            next_word(text);  // "column"
            const std::string column = next_word(text);
            if (is_made_anew(table) || (table == "users" && column == "perm"))
                rebuilt_.push_back(table);
            else
                expected_.push_back(table + "." + column);
        }
    }
    for (const char* table : {"tmp_acc", "tmp_item", "users"}) {
        const HandRun row(
            engine_.prepare(fmt::format("select sql from sqlite_schema where lower(name) = '{}'", table)));
        const std::string drop_and_create = fmt::format("drop table {}; {};", table, row.text(0));
        forms_.push_back(
            {table, "begin immediate; " + drop_and_create + " commit",
             fmt::format("begin immediate; create temp table rebuilt as select * from {0}; {1} insert into "
                         "{0} select * from temp.rebuilt; drop table temp.rebuilt; commit",
                         table, drop_and_create)});
    }
    catalogue_ = engine_.prepare(
        "select lower(m.name), lower(c.name), c.type from sqlite_schema m, pragma_table_info(m.name) c where "
        "m.type = "
        "'table'");
    probes_.push_back(
        engine_.prepare("update items set num1 = 1 where num1 < 1 or num1 > 1 or num1 is null"));
    for (const char* table : {"inv_d", "purdata", "f_q", "modify", "tmp_tran"})
        probes_.push_back(engine_.prepare(
            fmt::format("update {0} set edate = {1} where edate < {1} or edate > {1} or edate is null", table,
                        database::embedded::ticks_of({common::no_expiry, {}}))));
    for (const char* text :
         {"select orphans from \"own.state\"", "select * from stocks", "select * from cash",
          "select * from shift where cash_no is null", "select max(pay_id) from vencuspay",
          "select * from vencuspay where pay_id is null"})
        probes_.push_back(engine_.prepare(text));
}

bool HandUpgrade::run() {
    std::unordered_set<std::string> present;
    for (HandRun row(catalogue_); row.row(); row.next()) {
        present.insert(row.text(0));
        present.insert(row.text(0) + "." + row.text(1));
    }
    bool complete = true;
    for (const std::string& name : expected_)
        complete = complete && present.contains(name);
    for (const std::string& table : rebuilt_)
        for (const Rebuild& form : forms_)
            if (form.table == table)
                engine_.run(is_made_anew(table) ? form.drop_and_create.c_str() : form.with_rows.c_str());
    for (sqlite3_stmt* probe : probes_)
        for (HandRun row(probe); row.row();)
            row.next();
    engine_.make_durable();
    return complete;
}

}  // namespace bench

// The checks of schema, settings, stores, drawers and users.
#include "admin/checks.h"
#include "common/numbers.h"
#include "common/text.h"
#include "database/schema/schema.h"
#include "startup/shop_version.h"

namespace admin {

using database::Connection;
using database::Sql;

namespace {

constexpr std::string_view add_or_restore =
    "start the till once, which adds what later versions need; where that does not help, restore a backup";

// Advice for a table that only tills write; they work without it.
constexpr std::string_view till_may_create =
    "a till whose login may create tables adds it at its next start; until then ";
std::string_view without_table(std::string_view table) {
    if (table == "till_claim") {
        return "two tills that save at the same moment may print one number or sell the last piece twice, "
               "which the cashier is told after printing";
    }
    if (table == "till_number") {
        return "two tills that write at the same moment may give two transfers, vouchers, bank rows or "
               "walk-in customers one number";
    }
    return "the tills work without it, as versions before it did";
}

class SettingsCheck {
  public:
    SettingsCheck(Connection& connection, std::string_view version)
        : connection_(connection), version_(version) {}

    Findings run() {
        const auto rows = connection_.query("select * from basic");
        if (rows.empty()) {
            add(Verdict::wrong, "settings",
                "the table basic has no row; make the shop anew or restore a backup");
        } else {
            if (rows.size() > 1) {
                add(Verdict::wrong, "settings",
                    "the table basic has " + std::to_string(rows.size()) +
                        " rows; keep one and delete the others");
            }
            settings(rows.front());
            drawers(rows.front());
        }
        return std::move(findings_);
    }

  private:
    void add(Verdict verdict, std::string subject, std::string text) {
        findings_.push_back({verdict, std::move(subject), std::move(text)});
    }

    std::int64_t count(const Sql& statement) { return database::integer_of(connection_.scalar(statement)); }

    void stamp(const std::string& stamped, const std::string& own) {
        if (own.empty() || stamped == own) return;
        const std::string differs =
            "the shop was last used by version \"" + stamped + "\", this one is \"" + own + "\"; ";
        if (startup::is_older(stamped, own)) {
            add(Verdict::note, "settings",
                differs + "the next start of a till updates it, on a server that of the server's own till");
        } else {
            add(Verdict::wrong, "settings",
                differs + "install the same version on every till, starting with the server's");
        }
    }

    void settings(const database::Row& basic) {
        const std::size_t before = findings_.size();
        const double ceiling = basic.number("max_dis");
        if (ceiling < 0 || ceiling > 100) {
            add(Verdict::wrong, "settings",
                "the discount ceiling max_dis is " + common::shortest_text(ceiling) +
                    "; set a percentage from 0 to 100");
        }
        stamp(std::string(common::trim(basic.text("cr_v"))), std::string(common::trim(version_)));
        if (common::trim(basic.text("aname")).empty()) {
            add(Verdict::note, "settings", "the shop has no name (aname); receipts begin with a blank line");
        }
        if (findings_.size() == before) add(Verdict::good, "settings", basic.text("aname"));
    }

    void drawers(const database::Row& basic) {
        const std::size_t before = findings_.size();
        const std::int64_t store = basic.integer("st_d");
        if (count(Sql("select count(*) from stocks where code = ") + store) == 0) {
            add(Verdict::wrong, "store",
                "the workstation's store (st_d) is " + std::to_string(store) +
                    ", which is not in the table stocks; nobody can sign in");
        } else {
            add(Verdict::good, "store", std::to_string(store));
        }
        std::string drawers;
        for (const auto& row :
             connection_.query(Sql("select code from cash where stcode = ") + store + " order by code"))
            drawers += (drawers.empty() ? "" : ", ") + std::to_string(row.integer("code"));
        if (drawers.empty()) {
            add(Verdict::wrong, "drawer",
                "store " + std::to_string(store) +
                    " has no drawer; add a row to the table cash, or nobody can sign in");
        }
        const std::int64_t main_store = basic.integer("mst");
        const std::int64_t main_drawer = basic.integer("mcash");
        if (count(Sql("select count(*) from cash where stcode = ") + main_store +
                  " and code = " + main_drawer) == 0) {
            add(Verdict::wrong, "drawer",
                "the main drawer (mst " + std::to_string(main_store) + ", mcash " +
                    std::to_string(main_drawer) +
                    ") does not exist; cash of closed shifts would be moved to nowhere");
        }
        if (findings_.size() == before + 1) {
            add(Verdict::good, "drawer",
                drawers + " in store " + std::to_string(store) +
                    "; a till needs one of these as its cash point");
        }
    }

    Connection& connection_;
    std::string_view version_;
    Findings findings_;
};

}  // namespace

Findings check_schema(Connection& connection) {
    Findings findings;
    for (const database::Missing& missing : database::missing_parts(connection)) {
        const std::string what =
            missing.column.empty() ? "the table " + missing.table + " is missing; "
                                   : "the table " + missing.table + " has no column " + missing.column + "; ";
        if (missing.is_optional() && missing.column.empty())
            findings.push_back(
                {Verdict::note, "schema",
                 what + std::string(till_may_create) + std::string(without_table(missing.table))});
        else
            findings.push_back({Verdict::wrong, "schema", what + std::string(add_or_restore)});
    }
    if (findings.empty()) findings.push_back({Verdict::good, "schema", "every table and column is there"});
    return findings;
}

Findings check_settings(Connection& connection, std::string_view version) {
    return SettingsCheck(connection, version).run();
}

Findings check_users(Connection& connection) {
    Findings findings;
    const auto add = [&findings](Verdict verdict, std::string text) {
        findings.push_back({verdict, "users", std::move(text)});
    };
    const auto rows = connection.query("select * from users");
    if (rows.empty()) {
        add(Verdict::wrong, "there is no user; add one: tallvex-admin users add NAME --set all");
        return findings;
    }
    for (const auto& row : rows) {
        if (!common::trim(row.text("pass")).empty()) continue;
        add(Verdict::note, "user " + row.text("code") + " (" + row.text("name") +
                               ") has no password: tallvex-admin users password " + row.text("code"));
    }
    try {
        connection.query("select code from [user] where code = 0");
    } catch (const database::Error& error) {
        if (error.is_connection_lost()) throw;
        add(Verdict::note,
            "nobody can change a password at the till, whose statement names [user]: tallvex-admin sql "
            "\"create "
            "view [user] as select * from users\"");
    }
    add(Verdict::good, std::to_string(rows.size()));
    return findings;
}

}  // namespace admin

// The check of the tills' journal: whether rows were changed or removed.
#include "admin/checks.h"
#include "audit/chain.h"

namespace admin {

Findings check_journal(database::Connection& connection, const audit::Place& place) {
    Findings findings;
    const std::int64_t rows = audit::verify(connection, place, [&](const audit::Break& found) {
        const std::string row =
            "row " + std::to_string(found.number) + " of till " + std::to_string(found.till);
        const std::string moment = common::moment_text(found.moment);
        std::string text;
        if (found.missing == 0)
            text = row + " (" + moment + ") was changed, or one before it was put in";
        else if (found.is_end && found.missing == found.number - 1)
            text = "all " + std::to_string(found.missing) + " rows of till " + std::to_string(found.till) +
                   " are missing, as after restoring a backup from before them";
        else if (found.is_end)
            text = "the last " + std::to_string(found.missing) + " rows of till " +
                   std::to_string(found.till) + " are missing; what is there ends at " + moment;
        else
            text = std::to_string(found.missing) + " rows are missing before " + row + " (" + moment + ")";
        findings.push_back({Verdict::wrong, "journal",
                            text + "; a backup of before shows what stood there: look there who could write "
                                   "the database"});
    });
    if (findings.empty())
        findings.push_back(
            {Verdict::good, "journal", std::to_string(rows) + " rows, none changed or missing"});
    return findings;
}

}  // namespace admin

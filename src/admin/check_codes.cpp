// The check of the roll printer's codes, and what it offers.
#include "admin/checks.h"
#include "printing/printer_text.h"

namespace admin {

using database::Connection;
using printing::PrinterCodes;

Findings check_printer_codes(Connection& connection) {
    const std::size_t missing = PrinterCodes::load(connection).missing_signs().size();
    if (missing == 0) return {{Verdict::good, "printer codes", "Arabic and Latin letters, digits and signs"}};
    return {
        {Verdict::note, "printer codes",
         "the table codes has no row for " + std::to_string(missing) +
             " of the Latin letters and signs (33 to 126); in Arabic names they print as Arabic letters. "
             "If the printer has them at their usual places, tallvex-admin check --add-codes adds the rows"}};
}

std::size_t add_printer_codes(Connection& connection) {
    const std::vector<int> missing = PrinterCodes::load(connection).missing_signs();
    for (const int wc : missing) {
        const auto forms = printing::default_codes().find(wc);
        if (!forms) continue;
        connection.execute(database::Sql("insert into codes (wc,pc,pc1) values (") + wc + "," +
                           int{forms->joined} + "," + int{forms->unjoined} + ")");
    }
    return missing.size();
}

}  // namespace admin

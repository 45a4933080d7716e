// The rows behind a figure of a report: invoices, lines, documents of suppliers, debts, goods, movements of
// cash, changes of a closed day; and the lines of a document among them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "reports/report.h"
#include "sales/invoice_key.h"

namespace reports {

struct DocumentKey {
    bool is_purchase = false;
    sales::InvoiceIdentity identity;
};

struct BehindRow {
    std::vector<std::string> cells;
    std::optional<DocumentKey> document = {};
};

struct Behind {
    std::string title;
    std::vector<std::string> headings;
    std::vector<int> figures;  // the columns that hold figures
    int name_column = 0;       // takes the width that the others leave
    std::vector<BehindRow> rows;
    std::string sum;      // with its caption; counts the rows that are not shown, too
    bool is_cut = false;  // there are more than most_rows
    static constexpr int most_rows = 20'000;
};

// The rows behind the figures of a report's row.
Behind rows_behind(database::Connection& connection, const Request& request, const TableRow& row);
Behind lines_of(database::Connection& connection, const DocumentKey& document);

}  // namespace reports

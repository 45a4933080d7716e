#include "ui/purchases/papers.h"

#include <algorithm>

#include "common/numbers.h"
#include "purchases/typed_line.h"
#include "sales/items.h"

namespace ui {

using common::Amount;
using printing::Align;
using purchases::PurchaseKind;
using purchases::Receipt;

// Item, unit, quantity, cost of a unit, discount, value, expiry.
const std::array<std::string_view, 7> receipt_headings{"الصنف", "الوحدة", "الكمية",  "تكلفة الوحدة",
                                                       "الخصم", "القيمة", "الصلاحية"};
// Kind, number, date, supplier, the supplier's invoice, net, what went back.
const std::array<std::string_view, 7> receipts_headings{"النوع",         "رقم",    "التاريخ", "المورد",
                                                        "فاتورة المورد", "الصافي", "رجع منها"};

namespace {

template <typename Headings>
void add_columns(printing::Report& report, const Headings& headings, std::initializer_list<double> shares,
                 std::initializer_list<std::size_t> amounts) {
    for (const double share : shares) {
        const std::size_t column = report.columns.size();
        const bool is_amount = std::find(amounts.begin(), amounts.end(), column) != amounts.end();
        report.columns.push_back(
            {std::string(headings[column]), is_amount ? Align::end : Align::start, share});
    }
}

template <typename Cells>
void add_row(printing::Report& report, const Cells& cells) {
    report.rows.emplace_back(cells.begin(), cells.end());
}

std::string part_text(double part) {
    if (part <= 0) return "";
    return part >= 1 ? "كلها" : common::format_decimals(part * 100, 0) + "%";
}

}  // namespace

std::string_view name_of(PurchaseKind kind) {
    return kind == PurchaseKind::supply ? "توريد" : "مرتجع لمورد";
}

std::array<std::string, 7> cells_of(const purchases::Line& line) {
    return {line.name,
            std::string(sales::unit_name(line.unit_level)),
            common::shortest_text(line.quantity),
            common::format_amount(line.price),
            purchases::discount_text(line.discount),
            line.value().text(),
            line.expiry ? common::date_text(*line.expiry) : std::string()};
}

std::array<std::string, 7> cells_of(const purchases::SavedRow& row) {
    return {std::string(name_of(row.kind)),
            std::to_string(row.number),
            common::date_text(row.date),
            row.supplier_name,
            row.invoice,
            row.net.text(),
            part_text(row.back)};
}

printing::Report paper_of(const Receipt& receipt, std::int64_t number, const std::string& supplier,
                          const std::string& store, const signin::Session& session) {
    printing::Report report =
        printing::headed((receipt.is_return() ? "return-" : "receipt-") + std::to_string(number), session);
    report.title = std::string(name_of(receipt.kind)) + " رقم " + std::to_string(number);
    report.captions = {{"المورد", supplier},
                       {"التاريخ", common::date_text(receipt.date)},
                       {"فاتورة المورد", receipt.invoice},
                       {"المخزن", store}};
    if (!receipt.note.empty()) report.captions.emplace_back("ملاحظات", receipt.note);
    add_columns(report, receipt_headings, {3, 0.9, 1, 1.2, 1, 1.3, 1.2}, {2, 3, 4, 5});
    for (const purchases::Line& line : receipt.lines)
        add_row(report, cells_of(line));
    report.totals = {{"الإجمالي", receipt.total().text()}};
    if (!receipt.discount.is_zero()) report.totals.emplace_back("الخصم", receipt.discount.text());
    if (!receipt.tax.is_zero()) report.totals.emplace_back("الضريبة", receipt.tax.text());
    report.totals.emplace_back("الصافي", receipt.net().text());
    report.signatures = {"المورد", "أمين المخزن"};
    return report;
}

printing::Report paper_of(const std::vector<purchases::SavedRow>& rows, const purchases::Period& period,
                          const signin::Session& session) {
    printing::Report report = printing::headed("receipts", session);
    report.title = "البضاعة الواردة والمرتجعة";
    report.captions = {{"من تاريخ", common::date_text(period.from)},
                       {"إلى تاريخ", common::date_text(period.to)}};
    add_columns(report, receipts_headings, {1.2, 0.8, 1.2, 2.6, 1.4, 1.3, 1}, {5});
    Amount supplied;
    Amount returned;
    for (const purchases::SavedRow& row : rows) {
        (row.kind == PurchaseKind::supply ? supplied : returned) += row.net;
        add_row(report, cells_of(row));
    }
    report.totals = {
        {"توريد", supplied.text()}, {"مرتجع", returned.text()}, {"الصافي", (supplied - returned).text()}};
    return report;
}

printing::Report paper_of(const accounts::VendorStatement& statement, const std::string& supplier,
                          const common::Date& start, const common::Date& end,
                          const signin::Session& session) {
    printing::Report report = printing::headed("supplier", session);
    report.title = "كشف حساب مورد";
    report.captions = {
        {"المورد", supplier}, {"من تاريخ", common::date_text(start)}, {"إلى تاريخ", common::date_text(end)}};
    add_columns(report, accounts::statement_headings, {1.2, 1.2, 1.2, 1.3, 3, 1.8}, {1, 2, 3});
    for (const accounts::StatementRow& row : statement.rows)
        add_row(report, row.cells());
    report.totals = {{"رصيد سابق", statement.brought_forward.text()},
                     {"إجمالي دائن", statement.credits.text()},
                     {"إجمالي مدين", statement.debits.text()},
                     {"المستحق للمورد", statement.closing.text()}};
    return report;
}

}  // namespace ui

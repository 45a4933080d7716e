#include "printing/invoice_report.h"

#include "common/numbers.h"
#include "common/words.h"
#include "printing/layout_receipt.h"

namespace printing {

namespace {

constexpr std::string_view walk_in = "عميل نقدي";  // cash customer

// Above the speller's reach the figure stands in the place of the words: "فقط 40000.00 جنيها لا غير".
std::string words_of(double amount) {
    try {
        return common::amount_in_words(static_cast<float>(amount));
    } catch (const common::OverflowError&) {
        return "فقط " + common::format_amount(amount) + " جنيها لا غير";
    }
}

void add_table(Report& report, const std::vector<LayoutRow>& rows, const ReceiptSettings& settings,
               bool units) {
    report.columns.push_back({"م", Align::centre, 0.5});
    if (settings.show_item_code) report.columns.push_back({"كود", Align::centre, 1});
    report.columns.push_back({"اسم الصنف", Align::start, 4});
    if (units) report.columns.push_back({"الوحدة", Align::centre, 1});
    report.columns.push_back({"كمية", Align::end, 0.9});
    report.columns.push_back({"سعر", Align::end, 1.1});
    report.columns.push_back({"الاجمالي", Align::end, 1.3});
    for (const LayoutRow& row : rows) {
        std::vector<std::string> cells = {std::to_string(report.rows.size() + 1)};
        if (settings.show_item_code) cells.push_back(row.item_code);
        cells.push_back(row.item_name);
        if (units) cells.push_back(row.unit);
        cells.insert(cells.end(), {row.quantity, row.price, row.total});
        report.rows.push_back(std::move(cells));
    }
}

}  // namespace

Report invoice_report(const Receipt& receipt, Form form, const ReceiptSettings& settings,
                      const std::vector<LayoutRow>& rows, const std::filesystem::path& logo) {
    const bool cash = form == Form::cash_page;
    Report report;
    report.name = "invoice-" + std::to_string(receipt.number);
    report.store_name = receipt.store_name;
    report.second_store_name = receipt.second_store_name;
    if (!receipt.telephone.empty()) report.telephone = "Tel : " + receipt.telephone;
    report.logo = logo;
    report.title = invoice_kind(receipt);

    report.captions.emplace_back("رقم الفاتورة", std::to_string(receipt.number));
    report.captions.emplace_back(
        "التاريخ", common::date_text(receipt.date) + "  " + common::twelve_hour_text(receipt.time));
    report.captions.emplace_back("العميل",
                                 receipt.customer.empty() ? std::string(walk_in) : receipt.customer);
    if (!receipt.salesman.empty()) report.captions.emplace_back("البائع", receipt.salesman);
    if (cash) {
        report.captions.emplace_back("اسم المستخدم", receipt.user_name);
        report.captions.emplace_back("رقم الورديه", std::to_string(receipt.shift_number));
    }

    add_table(report, rows, settings, !cash);

    // As on a receipt: without a discount there is one net.
    const std::string discount = common::format_amount(receipt.discount);
    const bool discounted = discount != "0.00";
    if (discounted) {
        report.totals.emplace_back("الصافي قبل الخصم", common::format_amount(receipt.total));
        report.totals.emplace_back("خـــــــصم", discount);
    }
    report.main_total = static_cast<int>(report.totals.size());
    report.totals.emplace_back(discounted ? "الصافي بعد الخصم" : "الصــــافي",
                               common::format_amount(receipt.net));
    if (cash) {
        report.totals.emplace_back("المدفـــوع", common::format_amount(receipt.paid));
        report.totals.emplace_back("المتبقـــي", common::format_amount(receipt.remaining));
    }
    report.words = words_of(receipt.net);
    if (!settings.rec_note.empty()) report.footers.push_back(settings.rec_note);
    for (const std::string& line : receipt.credit_lines) {
        if (!line.empty()) report.footers.push_back(line);
    }
    if (!cash) report.signatures = {"البائع", "المستلم"};
    return report;
}

}  // namespace printing

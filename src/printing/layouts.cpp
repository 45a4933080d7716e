#include "printing/layouts.h"

#include <algorithm>

#include "common/amount_in_words.h"
#include "common/numbers.h"
#include "common/text.h"
#include "database/recordset.h"
#include "printing/ports_offered.h"

namespace printing {

using database::quoted;
using database::Sql;

namespace {

constexpr std::size_t column_width = 100;

// The price as entered or after the line's discount; not from the rounded total, which would print 70.00 for
// 0.450 kg at 69.99.
std::string printed_price(const ReceiptLine& line, const ReceiptSettings& settings) {
    const bool computed = !settings.price_as_entered && line.quantity != 0;
    return common::format_amount(computed ? line.price - line.discount / line.quantity : line.price);
}

std::vector<LayoutRow> rows_in(const database::Result& table) {
    std::vector<std::pair<std::int64_t, LayoutRow>> numbered;
    for (const auto& row : table) {
        numbered.emplace_back(row.integer("st"), LayoutRow{row.text("f1"), row.text("f2"), row.text("f3"),
                                                           row.text("f4"), row.text("f5"), row.text("f6")});
    }
    // A server promises no order.
    std::stable_sort(numbered.begin(), numbered.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<LayoutRow> rows;
    for (auto& [number, row] : numbered)
        rows.push_back(std::move(row));
    return rows;
}

}  // namespace

std::vector<LayoutRow> layout_rows(const Receipt& receipt, Form form, const ReceiptSettings& settings) {
    // The plain and the compact layout do not show units.
    const bool units = settings.show_unit && form != Form::reprint && form != Form::no_telephone;
    const auto cell = [](const std::string& text) { return common::left(text, column_width); };
    std::vector<LayoutRow> rows;
    for (const ReceiptLine& line : receipt.lines) {
        rows.push_back({cell(line.item_name), printed_price(line, settings),
                        common::shortest_text(line.quantity), line.total.text(),
                        units ? cell(line.unit_name) : std::string(), cell(line.item_code)});
    }
    return rows;
}

Sql LayoutRows::condition() const {
    if (!cash_point_) return Sql(" where [user] = ") + quoted(user_);
    return Sql(" where f18=") + quoted(std::to_string(*cash_point_)) + " and [user] = " + quoted(user_);
}

std::vector<LayoutRow> LayoutRows::write(const std::vector<LayoutRow>& written) {
    std::vector<database::Command> commands = {Sql("delete from [print]") + condition()};
    database::Recordset rows(connection_, Sql("select * from [print]") + condition());
    int number = 0;
    for (const LayoutRow& row : written) {
        rows.add();
        rows.set("f1", row.item_name);
        rows.set("F2", row.price);
        rows.set("f3", row.quantity);
        rows.set("f4", row.total);
        if (!row.unit.empty()) rows.set("f5", row.unit);
        rows.set("f6", row.item_code);
        rows.set("st", ++number);
        if (cash_point_) rows.set("f18", std::to_string(*cash_point_));
        rows.set("user", user_);
        commands.push_back(rows.take_update());
    }
    commands.emplace_back(Sql("select * from [print]") + condition());
    return rows_in(connection_.run_all(commands).back().result);
}

namespace {

namespace label {
constexpr std::string_view number = "بون رقم";                    // receipt number
constexpr std::string_view date = "التاريخ";                      // date
constexpr std::string_view time = "الوقت";                        // time
constexpr std::string_view user = "اسم المستخدم : ";              // user name
constexpr std::string_view shift = "رقم الورديه : ";              // shift number
constexpr std::string_view salesman = "البائع : ";                // salesman
constexpr std::string_view customer = "العميل : ";                // customer
constexpr std::string_view balance = "الرصيد الجديد";             // new balance
constexpr std::string_view before_discount = "الصافي قبل الخصم";  // net before discount
constexpr std::string_view discount = "خـــــــصم";               // discount
constexpr std::string_view after_discount = "الصافي بعد الخصم";   // net after discount
constexpr std::string_view net = "الصــــافي";                    // net
constexpr std::string_view compact_net = "الصافي";
constexpr std::string_view paid = "المدفـــوع";
constexpr std::string_view remaining = "المتبقـــي";

constexpr std::string_view invoice = "فاتورة ";
constexpr std::string_view returns = "مرتجع ";
constexpr std::string_view sales = "مبيعات ";
constexpr std::string_view walk_in = "عميل نقدي";  // cash customer
}  // namespace label

std::string_view payment_word(Payment payment) {
    switch (payment) {
        case Payment::account:
            return "اجل";  // deferred
        case Payment::card:
            return "ااتمان";  // credit
        case Payment::tips:
            return "اكراميات";
        case Payment::cash:
            break;
    }
    return "نقدي";
}

struct Totals {
    std::vector<Caption> rows;
    std::size_t net = 0;  // its place in the rows
};

// Without a discount there is only one net.
Totals totals_of(const Receipt& receipt, bool with_payment) {
    Totals totals;
    const auto add = [&totals](std::string_view name, common::Amount amount) {
        totals.rows.emplace_back(name, amount.text());
    };
    const bool discounted = !receipt.discount.is_zero();
    if (discounted) {
        add(label::before_discount, receipt.total);
        add(label::discount, receipt.discount);
    }
    totals.net = totals.rows.size();
    add(discounted ? label::after_discount : label::net, receipt.net);
    if (with_payment) {
        add(label::paid, receipt.paid);
        add(label::remaining, receipt.remaining);
        if (receipt.balance) add(label::balance, *receipt.balance);
    }
    return totals;
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

std::string invoice_kind(const Receipt& receipt) {
    std::string kind(label::invoice);
    kind += receipt.kind == Kind::return_ ? label::returns : label::sales;
    return kind += payment_word(receipt.payment);
}

LayoutReceipt layout_receipt(const Receipt& receipt, Form form, int line_width,
                             const ReceiptSettings& settings, std::vector<LayoutRow> rows) {
    LayoutReceipt layout;
    layout.settings = settings;
    layout.roll = roll_of(line_width);
    layout.store_name = receipt.store_name;
    layout.second_store_name = receipt.second_store_name;
    layout.kind = invoice_kind(receipt);
    layout.number = {std::string(label::number), std::to_string(receipt.number)};
    const auto detail = [&layout](std::string_view name, const std::string& value) {
        if (!value.empty()) layout.details.emplace_back(name, value);
    };
    detail(label::date, common::date_text(receipt.date));
    detail(label::time, common::twelve_hour_text(receipt.time));
    detail(label::user, receipt.user_name);
    detail(label::shift, std::to_string(receipt.shift_number));
    detail(label::salesman, receipt.salesman);
    layout.rows = std::move(rows);
    if (form == Form::no_telephone) {
        layout.totals.emplace_back(label::compact_net, receipt.net.text());
        return layout;
    }
    if (receipt.payment == Payment::account) detail(label::customer, receipt.customer);
    if (!receipt.telephone.empty()) layout.telephone = telephone_line(receipt.telephone);
    Totals totals = totals_of(receipt, form != Form::reprint);
    layout.totals = std::move(totals.rows);
    layout.net = totals.net;
    layout.note = settings.rec_note;
    if (settings.show_barcode) layout.code = receipt.code;
    layout.credit_lines = receipt.credit_lines;
    return layout;
}

LayoutReceipt slip_layout(const Report& report, int line_width, const ReceiptSettings& settings) {
    LayoutReceipt layout;
    layout.settings = settings;
    layout.roll = roll_of(line_width);
    layout.store_name = report.store_name;
    layout.second_store_name = report.second_store_name;
    layout.telephone = report.telephone;
    layout.logo = report.logo;
    layout.kind = report.title;
    layout.details = report.captions;
    layout.totals = report.totals;
    const std::size_t last = report.totals.empty() ? 0 : report.totals.size() - 1;
    layout.net = report.main_total < 0 ? last : static_cast<std::size_t>(report.main_total);
    layout.note = report.words;
    for (std::size_t i = 0; i < std::min(report.signatures.size(), layout.credit_lines.size()); ++i)
        layout.credit_lines[i] = "\n" + report.signatures[i] + " : " + std::string(30, '.');
    return layout;
}

LayoutReceipt test_layout(const std::string& store_name, int line_width, const ReceiptSettings& settings) {
    const Report page = test_report(store_name);
    LayoutReceipt layout = slip_layout(page, line_width, settings);
    for (const auto& row : page.rows)
        layout.rows.push_back({row.at(0), {}, {}, row.at(1), {}, {}});
    layout.qr = qr_code("https://example.com/0123456789");
    layout.code = "0123456789";
    return layout;
}

Report invoice_report(const Receipt& receipt, Form form, const ReceiptSettings& settings,
                      const std::vector<LayoutRow>& rows, const std::filesystem::path& logo) {
    const bool cash = form == Form::cash_page;
    Report report;
    report.name = "invoice-" + std::to_string(receipt.number);
    report.store_name = receipt.store_name;
    report.second_store_name = receipt.second_store_name;
    if (!receipt.telephone.empty()) report.telephone = telephone_line(receipt.telephone);
    report.logo = logo;
    report.title = invoice_kind(receipt);

    report.captions.emplace_back("رقم الفاتورة", std::to_string(receipt.number));
    report.captions.emplace_back(
        label::date, common::date_text(receipt.date) + "  " + common::twelve_hour_text(receipt.time));
    report.captions.emplace_back("العميل",
                                 receipt.customer.empty() ? std::string(label::walk_in) : receipt.customer);
    if (!receipt.salesman.empty()) report.captions.emplace_back("البائع", receipt.salesman);
    if (cash) {
        report.captions.emplace_back("اسم المستخدم", receipt.user_name);
        report.captions.emplace_back("رقم الوردية", std::to_string(receipt.shift_number));
    }
    add_table(report, rows, settings, !cash && settings.show_unit);
    Totals totals = totals_of(receipt, cash);
    report.totals = std::move(totals.rows);
    report.main_total = static_cast<int>(totals.net);
    report.words = common::invoice_words(receipt.net);
    if (!settings.rec_note.empty()) report.footers.push_back(settings.rec_note);
    for (const std::string& line : receipt.credit_lines) {
        if (!line.empty()) report.footers.push_back(line);
    }
    if (!cash) report.signatures = {"البائع", "المستلم"};
    return report;
}

std::filesystem::path logo_file(std::string_view logo, const std::filesystem::path& program_folder) {
    if (logo.empty()) return {};
    const std::filesystem::path file = program_folder / logo;
    std::error_code ignored;
    return std::filesystem::is_regular_file(file, ignored) ? file : std::filesystem::path();
}

}  // namespace printing

#include "printing/layout_receipt.h"

#include "common/numbers.h"
#include "printing/ports_offered.h"

namespace printing {

namespace {

namespace label {
constexpr std::string_view number = "بون رقم";                    // receipt number
constexpr std::string_view date = "التاريخ";                      // date
constexpr std::string_view time = "الوقت";                        // time
constexpr std::string_view user = "اسم المستخدم : ";              // user name
constexpr std::string_view shift = "رقم الورديه : ";              // shift number
constexpr std::string_view salesman = "البائع : ";                // salesman
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

void add_totals(LayoutReceipt& layout, const Receipt& receipt, Form form) {
    const auto add = [&layout](std::string_view name, double amount) {
        layout.totals.emplace_back(name, common::format_amount(amount));
    };
    if (form == Form::no_telephone) {
        add(label::compact_net, receipt.net);
        return;
    }
    // Without a discount there is one net, and no need to tell before from after.
    const bool discounted = common::format_amount(receipt.discount) != "0.00";
    if (discounted) {
        add(label::before_discount, receipt.total);
        add(label::discount, receipt.discount);
    }
    layout.net = layout.totals.size();
    add(discounted ? label::after_discount : label::net, receipt.net);
    if (form == Form::reprint) return;
    add(label::paid, receipt.paid);
    add(label::remaining, receipt.remaining);
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
    layout.paper_width = line_width == narrow_columns ? 58 : 80;
    layout.store_name = receipt.store_name;
    layout.second_store_name = receipt.second_store_name;
    const bool compact = form == Form::no_telephone;
    if (!receipt.telephone.empty() && !compact) layout.telephone = "Tel : " + receipt.telephone;
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
    add_totals(layout, receipt, form);
    if (!compact) {
        layout.note = settings.rec_note;
        layout.credit_lines = receipt.credit_lines;
    }
    return layout;
}

std::filesystem::path logo_file(const Receipt& receipt, const std::filesystem::path& program_folder) {
    if (receipt.logo.empty()) return {};
    const std::filesystem::path file = program_folder / receipt.logo;
    std::error_code ignored;
    return std::filesystem::is_regular_file(file, ignored) ? file : std::filesystem::path();
}

}  // namespace printing

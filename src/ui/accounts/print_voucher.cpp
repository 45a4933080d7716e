#include "ui/accounts/print_voucher.h"

#include "accounts/voucher_records.h"
#include "printing/report_printer.h"
#include "signin/session.h"

namespace ui {

printing::Report report_of(const accounts::PrintedVoucher& voucher, const signin::Session& session) {
    printing::Report report = printing::headed("voucher", session);
    report.title = voucher.title;
    report.captions = {{"رقم الإيصال", voucher.number},
                       {"التاريخ", common::date_text(voucher.date)},
                       {"الاسم", voucher.party},
                       {"طريقة الدفع", voucher.method}};
    if (!voucher.place.empty()) report.captions.emplace_back("الخزينة أو البنك", voucher.place);
    if (!voucher.note.empty()) report.captions.emplace_back("ملاحظات", voucher.note);
    report.captions.emplace_back("المستخدم", session.user_name);
    report.totals = {{"الرصيد قبل", voucher.balance_before.text()},
                     {"المبلغ", voucher.amount.text()},
                     {"الرصيد بعد", voucher.balance_after.text()}};
    report.main_total = 1;
    report.words = voucher.words;
    report.signatures = {"المستلم", "الكاشير"};
    report.paper = printing::Paper::a5;
    return report;
}

bool print_on_page(const Context& context, const accounts::PrintedVoucher& voucher) {
    return context.reports.print(report_of(voucher, context.session));
}

bool print_voucher(const Context& context, const accounts::PrintedVoucher& voucher) {
    return context.reports.print_slip(report_of(voucher, context.session));
}

}  // namespace ui

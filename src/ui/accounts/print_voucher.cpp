#include "ui/accounts/print_voucher.h"

#include "accounts/printed_voucher.h"
#include "common/numbers.h"
#include "printing/messages.h"
#include "printing/receipt.h"
#include "printing/report_printer.h"
#include "printing/text_report.h"
#include "signin/session.h"
#include "ui/printing/report_of.h"
#include "ui/widgets/guard.h"

namespace ui {

printing::Report report_of(const accounts::PrintedVoucher& voucher, const signin::Session& session) {
    printing::Report report = headed("voucher", session);
    report.title = voucher.title;
    report.captions = {{"رقم الإيصال", voucher.number},
                       {"التاريخ", common::date_text(voucher.date)},
                       {"الاسم", voucher.party},
                       {"طريقة الدفع", voucher.method}};
    if (!voucher.place.empty()) report.captions.emplace_back("الخزينة أو البنك", voucher.place);
    if (!voucher.note.empty()) report.captions.emplace_back("ملاحظات", voucher.note);
    report.captions.emplace_back("المستخدم", session.user_name);
    report.totals = {{"الرصيد قبل", common::format_amount(voucher.balance_before)},
                     {"المبلغ", common::format_amount(voucher.amount)},
                     {"الرصيد بعد", common::format_amount(voucher.balance_after)}};
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
    if (!context.printer_choice.is_text_port()) return print_on_page(context, voucher);
    bool printed = false;
    guarded(context.services, "PrintVoucher", [&] {
        const auto codes = printing::PrinterCodes::load(context.connection);
        const auto& choice = context.printer_choice;
        printed = context.services.devices.write_port(
            choice.receipt_port,
            printing::text_report(report_of(voucher, context.session), choice.line_width, codes));
        if (!printed) {
            context.services.log.log_event("voucher not printed: " + choice.receipt_port, "print");
            context.services.prompts.message(printing::message::report_failed, common::Icon::exclamation);
        }
    });
    return printed;
}

}  // namespace ui

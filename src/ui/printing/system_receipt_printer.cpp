#include "ui/printing/system_receipt_printer.h"

#include <exception>

#include "printing/invoice_report.h"
#include "printing/layout_receipt.h"
#include "printing/layout_rows.h"
#include "printing/messages.h"
#include "printing/pages/output.h"
#include "printing/pages/receipt_page.h"
#include "printing/pages/report_page.h"
#include "printing/print_to_port.h"
#include "printing/qr.h"
#include "ui/printing/preview.h"

namespace printing::pages {

namespace {

constexpr std::string_view log_code = "print";

bool is_full_page(Form form) {
    return form == Form::cash_page || form == Form::standard_page;
}

}  // namespace

bool SystemReceiptPrinter::print(const Receipt& receipt, Form form) {
    try {
        Receipt printed = receipt;
        // A receipt printed again keeps the invoice's date and says when it came out.
        if (form == Form::reprint) printed.time = services_.clock.now().time;
        return choice_.is_text_port() && !is_full_page(form) ? print_text(printed, form)
                                                             : print_pages(printed, form);
    } catch (const std::exception& error) {
        return failed(message::printer_failed, error.what());
    } catch (...) {
        return failed(message::printer_failed, "unknown error");
    }
}

bool SystemReceiptPrinter::print_text(const Receipt& receipt, Form form) {
    PrinterCodes codes = default_codes();
    try {
        codes = PrinterCodes::load(connection_);
    } catch (const std::exception& error) {
        // The printer needs no database; the built-in codes are those of most printers.
        services_.log.log_event(error.what(), log_code);
    }
    if (print_to_port(services_.devices, choice_, receipt, form, codes)) return true;
    return failed(message::naming(message::port_failed, choice_.receipt_port), choice_.receipt_port);
}

std::shared_ptr<const PageSet> SystemReceiptPrinter::pages(const Receipt& receipt, Form form) {
    const ReceiptSettings settings = read_receipt_settings(connection_);
    const bool full_page = is_full_page(form);
    LayoutRows table(connection_, full_page ? std::nullopt : std::optional(receipt.cash_point),
                     receipt.user_name);
    table.write(receipt, form, settings);
    std::vector<LayoutRow> rows = table.read();
    if (rows.empty()) return nullptr;
    const std::filesystem::path logo = logo_file(receipt, folder_);
    if (full_page) return std::make_shared<ReportPage>(invoice_report(receipt, form, settings, rows, logo));
    LayoutReceipt layout = layout_receipt(receipt, form, choice_.line_width, settings, std::move(rows));
    layout.logo = logo;
    if (form == Form::full) layout.qr = qr_picture(receipt);
    return std::make_shared<ReceiptPage>(std::move(layout));
}

std::filesystem::path SystemReceiptPrinter::qr_picture(const Receipt& receipt) {
    const auto shop = read_electronic_invoicing(connection_);
    if (!shop) return {};
    const std::filesystem::path file = folder_ / "qr.bmp";
    if (print_qr(qr_text(*shop, receipt), file)) return file;
    services_.log.log_event("QR code not written: " + file.string(), log_code);
    return {};
}

bool SystemReceiptPrinter::print_pages(const Receipt& receipt, Form form) {
    const std::shared_ptr<const PageSet> made = pages(receipt, form);
    if (!made) {
        services_.prompts.message(message::no_data, common::Icon::exclamation);
        return false;
    }
    if (!read_receipt_settings(connection_).preview) return send(made);
    bool printed = false;
    Preview preview(made, [&] { return printed = send(made); });
    preview.run();
    return printed;
}

bool SystemReceiptPrinter::send(const std::shared_ptr<const PageSet>& made) {
    switch (print_on_system_printer(made)) {
        case Printed::on_printer:
            return true;
        case Printed::no_printer:
            break;
        case Printed::failed:
            return failed(message::printer_failed, "system printer");
    }
    const std::filesystem::path file = kept_file(folder_, *made, services_.clock.now());
    if (save_pdf(*made, file)) return true;
    return failed(message::naming(message::file_failed, file.string()), file.string());
}

bool SystemReceiptPrinter::failed(std::string_view message, std::string_view reason) {
    services_.log.log_event("receipt not printed: " + std::string(reason), log_code);
    services_.prompts.message(std::string(message) + "\n" + std::string(message::print_again),
                              common::Icon::exclamation);
    return false;
}

}  // namespace printing::pages

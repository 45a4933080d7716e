#include "printing/pages/system_printers.h"

#include <exception>

#include "common/files.h"
#include "common/ports.h"
#include "database/error.h"
#include "printing/messages.h"
#include "printing/pages/label_page.h"
#include "printing/pages/raster.h"
#include "printing/pages/receipt_page.h"
#include "printing/pages/report_page.h"
#include "printing/pages/training_pages.h"
#include "printing/qr.h"
#include "printing/text_receipt.h"

namespace printing::pages {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view log_code = "print";
// Reset, then a pulse of 50 ms at the drawer's first pin.
constexpr std::string_view drawer_kick("\x1B@\x1Bp\0\x19\xFA", 7);

bool is_full_page(Form form) {
    return form == Form::cash_page || form == Form::standard_page;
}

struct TextForm {
    PrinterCodes codes;
    ReceiptSettings settings;
};

// Printing does not depend on the database: without it the built-in codes are used, which suit most printers.
TextForm text_form(const Workstation& workstation) {
    try {
        TextForm form;
        database::Reads reads;
        PrinterCodes::ask(reads, form.codes);
        ask_text_settings(reads, form.settings);
        reads.run(workstation.connection);
        return form;
    } catch (const std::exception& error) {
        workstation.services.log.log_event(error.what(), log_code);
        return {default_codes(), {}};
    }
}

std::shared_ptr<const PageSet> marked(const Workstation& workstation, std::shared_ptr<const PageSet> pages) {
    return workstation.is_training ? std::make_shared<TrainingPages>(std::move(pages)) : std::move(pages);
}

struct Outcome {
    bool done = true;
    fs::path kept;        // the PDF file, if there is no printer
    std::string message;  // if not done: what to show; empty if the cashier ended it
    std::string reason;   // and what to log
};

// Prints the pages on the system's printer. If there is none, keeps them as a PDF file.
Outcome print_or_keep(const Workstation& workstation, const std::shared_ptr<const PageSet>& pages,
                      const Progress& progress = {}) {
    const Outcome cancelled{false, {}, {}, {}};
    switch (print_on_system_printer(pages, progress)) {
        case Printed::on_printer:
            return {};
        case Printed::cancelled:
            return cancelled;
        case Printed::failed:
            return {false, {}, std::string(message::no_answer), "system printer"};
        case Printed::no_printer:
            break;
    }
    const fs::path file =
        kept_file(workstation.program_folder, pages->name().toStdString(), workstation.services.clock.now());
    try {
        return save_pdf(*pages, file, progress) ? Outcome{true, file, {}, {}} : cancelled;
    } catch (const std::exception& error) {
        return {false,
                {},
                database::with_reason(message::naming(message::file_failed, file.string()), error),
                error.what()};
    }
}

}  // namespace

std::shared_ptr<const PageSet> receipt_pages(const Receipt& receipt, Form form, int line_width,
                                             const ReceiptSettings& settings, std::vector<LayoutRow> rows,
                                             const fs::path& program_folder, std::optional<QrCode> qr) {
    if (rows.empty()) return nullptr;
    const fs::path logo = logo_file(receipt.logo, program_folder);
    if (is_full_page(form))
        return std::make_shared<ReportPage>(invoice_report(receipt, form, settings, rows, logo));
    LayoutReceipt layout = layout_receipt(receipt, form, line_width, settings, std::move(rows));
    layout.logo = logo;
    layout.qr = std::move(qr);
    return std::make_shared<ReceiptPage>(std::move(layout));
}

bool SystemReceiptPrinter::print(const Receipt& receipt, Form form) {
    try {
        Receipt printed = receipt;
        // A receipt printed again keeps the invoice's date and shows the time of printing.
        if (form == Form::reprint) printed.time = workstation_.services.clock.now().time;
        const bool as_text = prints_text() && !workstation_.choice.prints_pictures() && !is_full_page(form);
        return as_text ? print_text(printed, form) : print_pages(printed, form);
    } catch (const std::exception& error) {
        return failed(database::words_for(error), error.what());
    } catch (...) {
        return failed(message::no_answer, "unknown error");
    }
}

bool SystemReceiptPrinter::print_text(const Receipt& receipt, Form form) {
    const auto [codes, settings] = text_form(workstation_);
    return send_to_port(text_receipt(receipt, form, workstation_.choice.line_width, codes, settings),
                        receipt);
}

bool SystemReceiptPrinter::send_to_port(const std::string& bytes, const Receipt& receipt) {
    const std::string& port = workstation_.choice.receipt_port;
    const common::PortFault fault = workstation_.services.devices.write_port(
        port, bytes, std::string(message::receipt_title) + std::to_string(receipt.number));
    return fault == common::PortFault::none || failed(message::port_words(fault, port), port);
}

std::string SystemReceiptPrinter::drawer_command(std::string_view port) const {
    const PrinterChoice& choice = workstation_.choice;
    const bool is_at_printer = choice.prints_pictures() &&
                               common::is_same_port(port, choice.receipt_port, workstation_.program_folder);
    return is_at_printer ? std::string(drawer_kick) : ReceiptPrinter::drawer_command(port);
}

bool SystemReceiptPrinter::is_printing() const {
    return !workstation_.services.devices.port_report().under_way.empty();
}

std::shared_ptr<const PageSet> SystemReceiptPrinter::pages(const Receipt& receipt, Form form,
                                                           const ReceiptSettings& settings) {
    const bool full_page = is_full_page(form);
    LayoutRows table(workstation_.connection, full_page ? std::nullopt : std::optional(receipt.cash_point),
                     receipt.user_name);
    std::vector<LayoutRow> rows = table.write(layout_rows(receipt, form, settings));
    if (rows.empty()) return nullptr;  // and no code, which has a file
    const bool has_code = form == Form::full && settings.show_qr;
    return marked(workstation_, receipt_pages(receipt, form, workstation_.choice.line_width, settings,
                                              std::move(rows), workstation_.program_folder,
                                              has_code ? electronic_code(receipt) : std::optional<QrCode>()));
}

std::optional<QrCode> SystemReceiptPrinter::electronic_code(const Receipt& receipt) {
    const auto shop = read_electronic_invoicing(workstation_.connection);
    if (!shop) return {};
    const fs::path file = workstation_.program_folder / "qr.bmp";
    const std::string text = qr_text(*shop, receipt);
    if (print_qr(text, file)) return qr_code(text);
    workstation_.services.log.log_event("QR code not written: " + file.string(), log_code);
    return {};
}

bool SystemReceiptPrinter::print_pages(const Receipt& receipt, Form form) {
    const ReceiptSettings settings = read_receipt_settings(workstation_.connection);
    const std::shared_ptr<const PageSet> made = pages(receipt, form, settings);
    if (!made) {
        workstation_.services.prompts.message(message::no_data, common::Icon::exclamation);
        return false;
    }
    const auto send_page = [&] {
        const PrinterChoice& choice = workstation_.choice;
        if (!choice.prints_pictures() || is_full_page(form)) return send(made);
        return send_to_port(raster(*made, roll_of(choice.line_width), choice.picture), receipt);
    };
    if (!settings.preview) return send_page();
    bool printed = false;
    workstation_.show_pages(made, [&] { return printed = send_page(); });
    return printed;
}

bool SystemReceiptPrinter::send(const std::shared_ptr<const PageSet>& made) {
    const Outcome outcome = print_or_keep(workstation_, made);
    if (!outcome.kept.empty()) kept_.push_back(outcome.kept);
    return outcome.done || failed(outcome.message, outcome.reason);
}

bool SystemReceiptPrinter::failed(std::string_view message, std::string_view reason) {
    workstation_.services.log.log_event("receipt not printed: " + std::string(reason), log_code);
    workstation_.services.prompts.message(std::string(message::receipt_failed) + std::string(message) + "\n" +
                                              std::string(message::print_again),
                                          common::Icon::exclamation);
    return false;
}

std::shared_ptr<const PageSet> SystemReportPrinter::pages_of(const Report& report) const {
    return marked(workstation_, std::make_shared<ReportPage>(report));
}

bool SystemReportPrinter::print(const Report& report) {
    try {
        return print(pages_of(report), report.title);
    } catch (const std::exception& error) {
        return not_printed(database::words_for(error), error.what());
    }
}

bool SystemReportPrinter::print(const std::shared_ptr<const PageSet>& made, const std::string& title) {
    const Outcome outcome = print_or_keep(workstation_, made, progress(title));
    if (!outcome.kept.empty()) kept_.push_back(outcome.kept);
    return outcome.done || (!outcome.message.empty() && not_printed(outcome.message, outcome.reason));
}

bool SystemReportPrinter::print_slip(const Report& report) {
    const auto& [port, width, picture] = workstation_.choice;
    if (!workstation_.choice.is_text_port()) return print(report);
    try {
        std::string bytes;
        if (workstation_.choice.prints_pictures()) {
            const ReceiptSettings settings = read_receipt_settings(workstation_.connection);
            const auto slip = std::make_shared<ReceiptPage>(slip_layout(report, width, settings));
            bytes = raster(*marked(workstation_, slip), roll_of(width), picture);
        } else {
            bytes = text_report(report, width, text_form(workstation_).codes);
        }
        const common::PortFault fault = workstation_.services.devices.write_port(port, bytes, report.title);
        return fault == common::PortFault::none || not_printed(message::port_words(fault, port), port);
    } catch (const std::exception& error) {
        return not_printed(database::words_for(error), error.what());
    }
}

void SystemReportPrinter::preview(const Report& report) {
    try {
        const auto made = pages_of(report);
        workstation_.show_pages(made, [&] { return print(made, report.title); });
    } catch (const std::exception& error) {
        not_printed(database::words_for(error), error.what());
    }
}

// Each label ends with a cut.
bool SystemReportPrinter::print_on_receipts(const LabelJob& labels) {
    const PrinterChoice& choice = workstation_.choice;
    const auto made = marked(workstation_, std::make_shared<LabelPages>(labels));
    const RollWidth& roll = labels.paper.page_width == narrow_roll.paper ? narrow_roll : wide_roll;
    std::string bytes;
    for (int page = 0; page < made->count(); ++page)
        bytes +=
            raster(*made, roll, choice.prints_pictures() ? choice.picture : ReceiptPicture::raster, page);
    const common::PortFault fault =
        workstation_.services.devices.write_port(choice.receipt_port, bytes, message::labels_title);
    return fault == common::PortFault::none ||
           not_printed(message::port_words(fault, choice.receipt_port), choice.receipt_port);
}

bool SystemReportPrinter::print_labels(const LabelJob& labels) {
    try {
        if (labels.paper.is_of_receipts && workstation_.choice.is_text_port())
            return print_on_receipts(labels);
        return print(marked(workstation_, std::make_shared<LabelPages>(labels)),
                     std::string(message::labels_title));
    } catch (const std::exception& error) {
        return not_printed(database::words_for(error), error.what());
    }
}

void SystemReportPrinter::preview_labels(const LabelJob& labels) {
    try {
        const auto made = marked(workstation_, std::make_shared<LabelPages>(labels));
        workstation_.show_pages(made, [&] { return print_labels(labels); });
    } catch (const std::exception& error) {
        not_printed(database::words_for(error), error.what());
    }
}

bool SystemReportPrinter::save_pdf(const Report& report, const fs::path& file) {
    return kept(file, [&] { return pages::save_pdf(*pages_of(report), file, progress(report.title)); });
}

bool SystemReportPrinter::save_csv(const Report& report, const fs::path& file) {
    return kept(file, [&] {
        common::replace_file(file, report_csv(report), common::shop_file_mode);
        return true;
    });
}

Progress SystemReportPrinter::progress(const std::string& title) const {
    return workstation_.show_progress ? workstation_.show_progress(title) : Progress();
}

bool SystemReportPrinter::kept(const fs::path& file, const std::function<bool()>& write) {
    try {
        return write();
    } catch (const std::exception& error) {
        return failed(database::with_reason(message::naming(message::file_failed, file.string()), error),
                      error.what());
    }
}

bool SystemReportPrinter::not_printed(std::string_view message, std::string_view reason) {
    return failed(std::string(message::report_failed) + std::string(message), reason);
}

bool SystemReportPrinter::failed(std::string_view message, std::string_view reason) {
    workstation_.services.log.log_event("report not printed: " + std::string(reason), log_code);
    workstation_.services.prompts.message(message, common::Icon::exclamation);
    return false;
}

}  // namespace printing::pages

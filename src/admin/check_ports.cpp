// The checks of the receipt printer and the drawer.
#include <QPrinterInfo>
#include <filesystem>
#include <system_error>

#include "admin/checks.h"
#include "admin/qt_program.h"
#include "common/named_values.h"
#include "common/ports.h"
#include "common/text.h"
#include "printing/receipt.h"
#include "printing/workstation_printer.h"

namespace admin {

namespace fs = std::filesystem;

namespace {

Finding port_finding(const std::string& subject, const std::string& port, const fs::path& folder,
                     const std::string& group, Verdict missing) {
    using common::PortFault;
    const std::string path = common::port_path(port);
    const std::string named = path == port ? port : port + " (" + path + ")";
    std::error_code failed;
    switch (common::port_fault(port, folder)) {
        case PortFault::none:
            return {Verdict::good, subject,
                    fs::exists(folder / path, failed) ? named : named + " will be made as a file"};
        case PortFault::not_a_port:
            return {Verdict::wrong, subject,
                    named +
                        " is no device and no receipt file, and is never written to; choose a device, or a "
                        "new file whose name ends in .txt, .prn or .bin"};
        case PortFault::shared_printer:
            return {Verdict::wrong, subject,
                    named +
                        " is a printer of another computer; add it to the system's printers (lpadmin -p NAME "
                        "-v smb://host/printer, then lpoptions -d NAME) and set the port to win"};
        case PortFault::unknown_name:
            return {Verdict::wrong, subject,
                    named + " stands for no device; choose com1 to com9, lpt1 to lpt3, or a path"};
        case PortFault::denied:
            return {missing, subject,
                    named + " may not be written; let this user: sudo usermod -aG " + group +
                        " $USER, then sign in to the system again"};
        default:
            return {missing, subject,
                    named + " is not there; switch the device on and plug it in, or choose another port"};
    }
}

// The system's printer, which prints receipts if no port is set.
Finding check_system_printer() {
    const QtProgram program;
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    if (printer.isNull()) {
        return {
            Verdict::note, "printer",
            "no port is set (basic.print) and the system has no default printer: receipts are kept as PDF "
            "files "
            "in the till's folder Receipts; set a printer up (lpadmin, then lpoptions -d NAME), or a port on "
            "the till's printer screen"};
    }
    return {Verdict::good, "printer", "the system's printer " + printer.printerName().toStdString()};
}

}  // namespace

Findings check_ports(database::Connection& connection, const fs::path& folder) {
    Findings findings;
    const auto rows = connection.query("select * from basic");
    if (rows.empty()) return findings;  // reported by the check of the settings
    const std::string printer(common::trim(rows.front().text("print")));
    if (!printing::PrinterChoice{printer}.is_text_port()) {
        findings.push_back(check_system_printer());
    } else {
        findings.push_back(port_finding("printer", printer, folder, "lp", Verdict::wrong));
    }
    for (std::int64_t cash_point = 0; cash_point <= 9; ++cash_point) {
        const auto chosen = printing::read_printer_choice(common::printer_file(folder, cash_point));
        if (chosen && chosen->is_text_port())
            findings.push_back(port_finding("printer of cash point " + std::to_string(cash_point),
                                            chosen->receipt_port, folder, "lp", Verdict::wrong));
    }
    const std::string drawer(common::trim(rows.front().text("cash")));
    if (drawer.empty()) {
        findings.push_back(
            {Verdict::note, "drawer port", "none is set (basic.cash); the drawer will not open by itself"});
    } else {
        findings.push_back(port_finding("drawer port", drawer, folder, "dialout", Verdict::note));
    }
    return findings;
}

}  // namespace admin

// The checks of the receipt printer and the drawer.
#include <unistd.h>

#include <QPrinterInfo>
#include <filesystem>
#include <system_error>

#include "admin/checks.h"
#include "admin/qt_program.h"
#include "common/ports.h"
#include "common/text.h"
#include "printing/receipt.h"

namespace admin {

namespace fs = std::filesystem;

namespace {

Finding port_finding(const std::string& subject, const std::string& port, const std::string& group,
                     Verdict missing) {
    const std::string path = common::port_path(port);
    const std::string named = path == port ? port : port + " (" + path + ")";
    std::error_code failed;
    if (!fs::exists(path, failed)) {
        const fs::path folder = fs::absolute(path, failed).parent_path();
        const bool device = path.starts_with("/dev/");
        if (!device && fs::is_directory(folder, failed) && access(folder.c_str(), W_OK) == 0) {
            return {Verdict::good, subject, named + " will be made as a file"};
        }
        return {missing, subject,
                named + " is not there; switch the device on and plug it in, or choose another port"};
    }
    if (access(path.c_str(), W_OK) != 0) {
        return {missing, subject,
                named + " may not be written; let this user: sudo usermod -aG " + group +
                    " $USER, then sign in to the system again"};
    }
    return {Verdict::good, subject, named};
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

Findings check_ports(database::Connection& connection) {
    Findings findings;
    const auto rows = connection.query("select * from basic");
    if (rows.empty()) return findings;  // said by the check of the settings
    const std::string printer(common::trim(rows.front().text("print")));
    if (!printing::PrinterChoice{printer}.is_text_port()) {
        findings.push_back(check_system_printer());
    } else {
        findings.push_back(port_finding("printer", printer, "lp", Verdict::wrong));
    }
    const std::string drawer(common::trim(rows.front().text("cash")));
    if (drawer.empty()) {
        findings.push_back(
            {Verdict::note, "drawer port", "none is set (basic.cash); the drawer will not open by itself"});
    } else {
        findings.push_back(port_finding("drawer port", drawer, "dialout", Verdict::note));
    }
    return findings;
}

}  // namespace admin

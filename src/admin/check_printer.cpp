// The check of the system's printer, which prints receipts where no port is set.
#include <QPrinterInfo>

#include "admin/checks.h"
#include "admin/qt_program.h"

namespace admin {

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

}  // namespace admin

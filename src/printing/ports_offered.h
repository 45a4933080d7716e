// The printer choice: two lists of the same ports, the first for printers of 48 columns, the second for 40.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "common/devices.h"
#include "printing/printer_codes.h"
#include "printing/receipt.h"
#include "printing/report.h"

namespace printing {

inline constexpr int wide_columns = 48;    // chosen from the first list; 80 mm rolls
inline constexpr int narrow_columns = 40;  // chosen from the second list; 58 mm rolls

struct PortOffer {
    std::string port;        // what becomes the receipt port: "win", "com1", "/dev/usb/lp0", a path
    std::string device;      // the node or file behind it; empty for "win"
    bool reachable = false;  // it can be written to now
};

// Both lists: "win" (the system's printer), the ports of the DOS kind, then the printer devices that this
// workstation has and no name covers, and the port in use when it is none of them. `devices` is the folder of
// the device nodes.
std::vector<PortOffer> ports_offered(const PrinterChoice& in_use,
                                     const std::filesystem::path& devices = "/dev");

// The choice that an offer of the list of that many columns makes.
PrinterChoice choose(const PortOffer& offer, int columns);

// Prints the test page on the port. False when it did not take it, and for "win", which test_report() tests.
bool print_test(common::Devices& devices, const PrinterChoice& choice, const PrinterCodes& codes);

// The test page of the system's printer, for a ReportPrinter.
Report test_report(const std::string& store_name);

}  // namespace printing

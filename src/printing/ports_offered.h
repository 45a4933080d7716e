// The ports that receipts can go to, and their test pages.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "common/services.h"
#include "printing/receipt.h"
#include "printing/report.h"

namespace printing {

struct PortOffer {
    std::string port;    // the receipt port if it is chosen: "win", "com1", "/dev/usb/lp0", a path
    std::string device;  // the node or file behind it; empty for "win"
    common::PortFault fault = common::PortFault::missing;  // why it cannot be written to now
};

// Lists "win" (the system's printer), the DOS-style ports, then the printer devices of this workstation that
// no such name covers, and the port in use if it is not among them. `folder` is the shop's folder, `devices`
// the folder of the device nodes.
std::vector<PortOffer> ports_offered(const PrinterChoice& in_use, const std::filesystem::path& folder,
                                     const std::filesystem::path& devices = "/dev");

// The test page of the system's printer.
Report test_report(const std::string& store_name);

}  // namespace printing

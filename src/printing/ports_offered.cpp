#include "printing/ports_offered.h"

#include <algorithm>

#include "common/ports.h"
#include "common/text.h"

namespace printing {

namespace fs = std::filesystem;

namespace {

// Serial lines (ttyS*) are left out: their nodes exist even without a device behind them.
std::vector<std::string> device_nodes(const fs::path& devices) {
    std::vector<std::string> nodes;
    for (const auto& [folder, prefix] : {std::pair{devices / "usb", "lp"}, std::pair{devices, "ttyUSB"},
                                         std::pair{devices, "ttyACM"}, std::pair{devices, "lp"}}) {
        std::error_code failed;
        for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
             entry.increment(failed)) {
            if (entry->path().filename().string().starts_with(prefix))
                nodes.push_back(entry->path().string());
        }
    }
    std::sort(nodes.begin(), nodes.end());
    return nodes;
}

}  // namespace

std::vector<PortOffer> ports_offered(const PrinterChoice& in_use, const fs::path& folder,
                                     const fs::path& devices) {
    std::vector<PortOffer> offers = {{PrinterChoice::system_printer, "", common::PortFault::none}};
    const auto is_offered = [&offers](std::string_view device) {
        return std::any_of(offers.begin(), offers.end(),
                           [device](const PortOffer& offer) { return offer.device == device; });
    };
    const auto offer = [&](const std::string& port, const std::string& node) {
        std::error_code ignored;
        const bool is_missing_device = node.starts_with(devices.string() + "/") && !fs::exists(node, ignored);
        offers.push_back(
            {port, node, is_missing_device ? common::PortFault::missing : common::port_fault(node, folder)});
    };
    // Port names stand for nodes under /dev; tests put another folder in its place.
    const auto node_of = [&devices](const std::string& port) {
        const std::string path = common::port_path(port);
        return path.starts_with("/dev/") ? (devices / path.substr(5)).string() : path;
    };
    for (const std::string& port : common::known_ports())
        offer(port, node_of(port));
    for (const std::string& node : device_nodes(devices)) {
        if (!is_offered(node)) offer(node, node);
    }
    const std::string used = std::string(common::trim(in_use.receipt_port));
    if (in_use.is_text_port() && !used.empty() && !is_offered(node_of(used))) offer(used, node_of(used));
    return offers;
}

Report test_report(const std::string& store_name) {
    Report report;
    report.name = "test";
    report.store_name = store_name;
    report.title = "تجربة الطابعة";  // printer test
    report.columns = {{"الحروف", Align::start, 2}, {"الأرقام", Align::end, 1}};
    report.rows = {{"ابتثجحخدذرزسشصضطظعغفقكلمنهوي", "0123456789"},
                   {"أبجد هوز حطي كلمن سعفص قرشت", "12345.50"},
                   {"لا لأ لإ لآ", "-0.25"}};
    report.paper = Paper::a5;
    report.orientation = Orientation::landscape;
    return report;
}

}  // namespace printing

#include "printing/workstation_printer.h"

#include <map>
#include <string>
#include <system_error>

#include "common/files.h"
#include "common/text.h"

namespace printing {

namespace fs = std::filesystem;

namespace {

constexpr std::pair<ReceiptPicture, std::string_view> picture_names[] = {
    {ReceiptPicture::raster, "raster"}, {ReceiptPicture::bit_image, "bit image"}};

// "name = value" on lines of their own. Names that this version does not know do no harm.
std::map<std::string, std::string, std::less<>> values_of(std::string_view text) {
    std::map<std::string, std::string, std::less<>> values;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const auto sign = line.find('=');
        if (sign == line.npos) continue;
        values.emplace(common::trim(line.substr(0, sign)), common::trim(line.substr(sign + 1)));
    }
    return values;
}

}  // namespace

fs::path printer_file(const fs::path& program_folder, std::int64_t cash_point) {
    return program_folder / ("printer-" + std::to_string(cash_point) + ".txt");
}

std::optional<PrinterChoice> read_printer_choice(const fs::path& file) {
    std::string text;
    try {
        text = common::read_file(file);
    } catch (const std::system_error&) {
        return std::nullopt;
    }
    const auto values = values_of(text);
    const auto port = values.find("port");
    const auto width = values.find("width");
    if (port == values.end() || port->second.empty() || width == values.end()) return std::nullopt;
    PrinterChoice choice{port->second};
    for (const auto& [picture, name] : picture_names) {
        const auto kept = values.find("picture");
        if (kept != values.end() && kept->second == name) choice.picture = picture;
    }
    for (const RollWidth& roll : {wide_roll, narrow_roll}) {
        choice.line_width = roll.columns;
        if (width->second == std::to_string(roll.columns)) return choice;
    }
    return std::nullopt;
}

void keep_printer_choice(const fs::path& file, const PrinterChoice& choice) {
    std::string text =
        "port = " + choice.receipt_port + "\nwidth = " + std::to_string(choice.line_width) + "\n";
    for (const auto& [picture, name] : picture_names) {
        if (picture == choice.picture) text += "picture = " + std::string(name) + "\n";
    }
    common::replace_file(file, text, common::shop_file_mode);
}

}  // namespace printing

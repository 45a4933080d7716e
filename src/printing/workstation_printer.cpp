#include "printing/workstation_printer.h"

#include <string>

#include "common/named_values.h"

namespace printing {

namespace fs = std::filesystem;

namespace {

constexpr std::pair<ReceiptPicture, std::string_view> picture_names[] = {
    {ReceiptPicture::raster, "raster"}, {ReceiptPicture::bit_image, "bit image"}};

}  // namespace

std::optional<PrinterChoice> read_printer_choice(const fs::path& file) {
    const auto values = common::read_named_values(file);
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
    common::NamedValues values = {{"port", choice.receipt_port},
                                  {"width", std::to_string(choice.line_width)}};
    for (const auto& [picture, name] : picture_names) {
        if (picture == choice.picture) values["picture"] = name;
    }
    common::keep_named_values(file, values);
}

}  // namespace printing

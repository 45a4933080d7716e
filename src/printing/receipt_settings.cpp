#include "printing/receipt_settings.h"

namespace printing {

namespace {

constexpr int smallest_font = 4;
constexpr int largest_font = 24;

}  // namespace

ReceiptSettings read_receipt_settings(database::Connection& connection) {
    ReceiptSettings settings;
    const auto rows = connection.query("select * from basic ");
    if (rows.empty()) return settings;
    const auto& row = rows.front();
    settings.rec_note = row.text("rec_note");
    settings.preview = row.integer("bon_prv") == 1;
    settings.price_as_entered = row.integer("aft_dsc") == 1;
    settings.show_item_code = row.integer("item_code") == 1;
    if (!row.text("bon_font").empty()) settings.font = row.text("bon_font");
    const auto size = row.integer("bon_font_s");
    if (size >= smallest_font && size <= largest_font) settings.font_size = static_cast<int>(size);
    return settings;
}

}  // namespace printing

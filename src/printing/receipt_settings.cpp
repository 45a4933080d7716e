#include "printing/receipt_settings.h"

#include "database/till_settings.h"

namespace printing {

namespace setting = database::setting;

ReceiptSettings read_receipt_settings(database::Connection& connection) {
    ReceiptSettings settings;
    database::Reads reads;
    ask_receipt_settings(reads, settings);
    reads.run(connection);
    return settings;
}

void ask_receipt_settings(database::Reads& reads, ReceiptSettings& settings) {
    reads.add("select * from basic ", [&settings](const database::Result& rows) {
        if (rows.empty()) return;
        const auto& row = rows.front();
        settings.rec_note = row.text("rec_note");
        settings.preview = row.integer("bon_prv") == 1;
        settings.price_as_entered = row.integer("aft_dsc") == 1;
        settings.show_item_code = row.integer("item_code") == 1;
        if (!row.text("bon_font").empty()) settings.font = row.text("bon_font");
        const auto size = row.integer("bon_font_s");
        if (size >= smallest_font && size <= largest_font) settings.font_size = static_cast<int>(size);
    });
    database::ask_yes_or_no(reads, {{setting::receipt_unit, &settings.show_unit},
                                    {setting::receipt_qr, &settings.show_qr},
                                    {setting::receipt_barcode, &settings.show_barcode},
                                    {setting::text_unit, &settings.text_unit},
                                    {setting::printer_barcode, &settings.text_barcode}});
}

void ask_text_settings(database::Reads& reads, ReceiptSettings& settings) {
    database::ask_yes_or_no(reads, {{setting::text_unit, &settings.text_unit},
                                    {setting::printer_barcode, &settings.text_barcode}});
}

}  // namespace printing

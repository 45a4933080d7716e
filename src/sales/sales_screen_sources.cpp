// The sales screen's lines that another store supplies.
#include "common/text.h"
#include "sales/item_checks.h"
#include "sales/item_lookup.h"
#include "sales/messages.h"
#include "sales/pricing.h"
#include "sales/sales_screen.h"
#include "sales/sales_screen_guard.h"
#include "sales/scan.h"

namespace sales {

std::optional<SourceItem> SalesScreen::source_item(std::string_view typed) {
    return guarded("find a line's source", std::optional<SourceItem>(), [&]() -> std::optional<SourceItem> {
        const auto refuse = [this](std::string_view text) {
            services_.prompts.message(text);
            return std::nullopt;
        };
        if (frozen()) return std::nullopt;
        if (invoice_.is_return()) return refuse(message::no_source_line);
        const Entry entry = read_entry(typed);
        if (entry.form == EntryForm::empty) {
            if (!current_row_ || *current_row_ >= invoice_.lines.size())
                return refuse(message::no_source_line);
            const Line& line = invoice_.lines[*current_row_];
            if (line.is_general() || !line.stock_kept) return refuse(message::no_source_line);
            return SourceItem{*line.item_code, line.name,      line.quantity, line.factor,
                              line.unit_code,  line.unit_name, current_row_};
        }
        if (entry.form != EntryForm::code && entry.form != EntryForm::scale_label)
            return refuse(message::no_source_line);
        const Lookup lookup = look_up(connection_, entry.text);
        if (lookup.found == Found::shared_barcode) return refuse(message::shared_barcode);
        if (lookup.found == Found::nothing) return refuse(message::wrong_code);
        const Item& item = lookup.item;
        if (const auto refusal = item_refusal(item, false)) return refuse(*refusal);
        if (item.sale_only) return refuse(message::no_source_line);
        const double quantity = entry.form == EntryForm::scale_label ? entry.quantity : 1;
        return SourceItem{item.code,   item.name,       quantity,
                          item.factor, item.unit_level, std::string(unit_name(item.unit_level)),
                          std::nullopt};
    });
}

bool SalesScreen::EnterItemFrom(std::string_view text, std::int64_t source_store) {
    return guarded("enter an item from another store", false, [&] {
        if (frozen() || invoice_.is_return()) return false;
        // A receipt brought back only to be looked at makes way for the next customer.
        if (shows_saved_receipt() && !recalled_edited_) {
            const common::Date today = server_date();
            reset_invoice();
            invoice_.date = today;
            draw_number();
        }
        return enter(text, source_store);
    });
}

}  // namespace sales

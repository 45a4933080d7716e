#include "goods/pick.h"

#include "common/messages.h"
#include "sales/messages.h"

namespace goods {

namespace {

sales::Lookup look_up(database::Connection& connection, const sales::Entry& entry) {
    if (entry.form != sales::EntryForm::chosen_item) return sales::look_up_item(connection, entry.text);
    const auto item = sales::load_item(connection, entry.number, entry.unit_level);
    return item ? sales::Lookup{sales::Found::item, *item} : sales::Lookup();
}

// Returns false for a quantity alone, a discount or a receipt: they name no item.
bool names_item(sales::EntryForm form) {
    using sales::EntryForm;
    return form == EntryForm::code || form == EntryForm::scale_label || form == EntryForm::chosen_item;
}

}  // namespace

Picked pick_item(database::Connection& connection, const sales::Entry& entry) {
    using Outcome = Picked::Outcome;
    if (entry.form == sales::EntryForm::empty) return {};
    if (!names_item(entry.form)) return {Outcome::refused, {}, common::message::wrong_code};
    if (entry.form == sales::EntryForm::scale_label && entry.quantity_typed)
        return {Outcome::refused, {}, sales::message::label_has_quantity};
    const sales::Lookup found = look_up(connection, entry);
    if (found.found == sales::Found::nothing && !entry.name.empty()) return {Outcome::words, {}, {}};
    if (const auto refusal = sales::lookup_refusal(found.found)) return {Outcome::refused, {}, *refusal};
    if (const auto refusal = sales::factor_refusal(found.item)) return {Outcome::refused, {}, *refusal};
    const bool has_quantity = entry.quantity_typed || entry.form == sales::EntryForm::scale_label;
    return {Outcome::item, {found.item, has_quantity ? entry.quantity : 1, has_quantity}, {}};
}

}  // namespace goods

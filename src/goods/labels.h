// What stands on the labels of items: name, retail price and barcode of a unit.
#pragma once

#include <optional>
#include <vector>

#include "database/connection.h"
#include "goods/item_card.h"
#include "goods/item_list.h"
#include "printing/labels.h"

namespace goods {

// One label for each item, of its base unit, in the order of the names. An item without a barcode shows its
// code there; the till reads that too.
std::vector<printing::Label> labels_of(database::Connection& connection, const ItemFilter& filter);

// One label of an item, in the unit of the barcode; none if the shop does not have the item.
std::vector<printing::Label> label_of(database::Connection& connection, std::int64_t item,
                                      const std::optional<CardBarcode>& barcode);

}  // namespace goods

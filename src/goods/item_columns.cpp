// The columns of an items file.
#include "goods/item_lines.h"

namespace goods {

const std::vector<ItemColumn>& item_columns() {
    static const std::vector<ItemColumn> columns = {
        {"code", "whole number, new to the shop (needed)"},
        {"name", "up to 100 characters (needed)"},
        {"maker", "name of the maker; added when it is new"},
        {"group", "name of the group; added when it is new"},
        {"description", "free text"},
        {"minimum", "smallest stock wanted"},
        {"service", "1 for what is sold without stock"},
        {"pack", "base units in a pack"},
        {"carton", "base units in a carton"},
        {"price11", "cost of a unit"},
        {"price12", "retail price of a unit (needed)"},
        {"price13", "wholesale price of a unit"},
        {"price14", "price of a unit at level 4"},
        {"price15", "price of a unit at level 5"},
        {"price21", "cost of a pack"},
        {"price22", "retail price of a pack"},
        {"price23", "wholesale price of a pack"},
        {"price24", "price of a pack at level 4"},
        {"price25", "price of a pack at level 5"},
        {"price31", "cost of a carton"},
        {"price32", "retail price of a carton"},
        {"price33", "wholesale price of a carton"},
        {"price34", "price of a carton at level 4"},
        {"price35", "price of a carton at level 5"},
        {"barcode", "barcodes of the unit, | between"},
        {"pack_barcode", "barcodes of the pack"},
        {"carton_barcode", "barcodes of the carton"},
        {"stock", "opening stock in base units"},
        {"expiry", "expiry date of that stock, year/month/day; empty for none"},
        {"store", "code of the store that holds it; empty for the workstation's store"},
    };
    return columns;
}

}  // namespace goods

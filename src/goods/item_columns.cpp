// The columns of an items file.
#include "goods/item_lines.h"

namespace goods {

const std::vector<ItemColumn>& item_columns() {
    static const std::vector<ItemColumn> columns = {
        {"code", "whole number, new to the shop (needed)", {"كود", "كود الصنف"}},
        {"name", "up to 100 characters (needed)", {"الاسم", "اسم الصنف", "الصنف"}},
        {"maker", "name of the maker; added when it is new", {"الشركة"}},
        {"group", "name of the group; added when it is new", {"المجموعة", "النوع", "التصنيف"}},
        {"description", "free text", {"الوصف"}},
        {"minimum", "smallest stock wanted", {"الحد الأدنى"}},
        {"service", "1 for what is sold without stock", {"يباع بدون كميات"}},
        {"pack", "base units in a pack", {"وحدات العبوة"}},
        {"carton", "base units in a carton", {"وحدات الكرتونة"}},
        {"price11", "cost of a unit", {"التكلفة", "سعر التكلفة", "سعر الشراء"}},
        {"price12", "retail price of a unit (needed)", {"قطاعي", "سعر البيع", "سعر القطاعي", "السعر"}},
        {"price13", "wholesale price of a unit", {"جملة", "سعر الجملة"}},
        {"price14", "price of a unit at level 4", {"سعر 4"}},
        {"price15", "price of a unit at level 5", {"سعر 5"}},
        {"price21", "cost of a pack", {"التكلفة عبوة"}},
        {"price22", "retail price of a pack", {"قطاعي عبوة", "سعر بيع العبوة", "سعر العبوة"}},
        {"price23", "wholesale price of a pack", {"جملة عبوة"}},
        {"price24", "price of a pack at level 4", {"سعر 4 عبوة"}},
        {"price25", "price of a pack at level 5", {"سعر 5 عبوة"}},
        {"price31", "cost of a carton", {"التكلفة كرتونة"}},
        {"price32", "retail price of a carton", {"قطاعي كرتونة", "سعر بيع الكرتونة", "سعر الكرتونة"}},
        {"price33", "wholesale price of a carton", {"جملة كرتونة"}},
        {"price34", "price of a carton at level 4", {"سعر 4 كرتونة"}},
        {"price35", "price of a carton at level 5", {"سعر 5 كرتونة"}},
        {"barcode", "barcodes of the unit, | between", {"الباركود", "باركود الوحدة"}},
        {"pack_barcode", "barcodes of the pack", {"باركود العبوة"}},
        {"carton_barcode", "barcodes of the carton", {"باركود الكرتونة"}},
        {"stock", "opening stock in base units", {"الرصيد", "الكمية", "الرصيد الافتتاحي"}},
        {"expiry",
         "expiry date of that stock, year/month/day; empty for none",
         {"الصلاحية", "تاريخ الصلاحية"}},
        {"store", "code of the store that holds it; empty for the workstation's store", {"كود المخزن"}},
    };
    return columns;
}

}  // namespace goods

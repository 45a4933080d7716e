// What the screens of goods in and of suppliers say.
#pragma once

#include <string_view>

namespace purchases::message {

inline constexpr std::string_view choose_supplier = "اختر المورد";        // choose the supplier
inline constexpr std::string_view no_such_supplier = "المورد غير موجود";  // there is no such supplier
// Behind a refused supplier: press "new supplier" for one that is not listed.
inline constexpr std::string_view press_new_supplier = "\nإذا كان موردا جديدا فاضغط زر مورد جديد";
inline constexpr std::string_view no_lines = "لا توجد أصناف في الفاتورة";  // there are no items in it
inline constexpr std::string_view no_such_item = "الصنف غير موجود";        // there is no such item
// The date lies in the future; the day is frozen.
inline constexpr std::string_view future_date = "تاريخ الفاتورة لم يأت بعد";
// A service: it is sold without stock, so none can be taken in.
inline constexpr std::string_view service = "هذا صنف يباع بدون كميات، لا يدخل المخزن";
// The card does not say how many units the pack holds.
inline constexpr std::string_view no_factor = "كارت الصنف لا يذكر عدد الوحدات في هذه العبوة";
inline constexpr std::string_view wrong_quantity =
    "الكمية غير صحيحة. اكتب عددا أكبر من صفر، بثلاثة أرقام عشرية على الأكثر";
inline constexpr std::string_view wrong_cost = "التكلفة غير صحيحة";          // the cost is not correct
inline constexpr std::string_view wrong_discount = "الخصم غير صحيح";         // the discount is not correct
inline constexpr std::string_view discount_above = "الخصم أكبر من القيمة";   // more than the value
inline constexpr std::string_view wrong_expiry = "تاريخ الصلاحية غير صحيح";  // the expiry date is not valid
inline constexpr std::string_view wrong_price = "سعر البيع غير صحيح";        // the selling price
inline constexpr std::string_view wrong_margin = "نسبة الربح غير صحيحة";     // the margin
inline constexpr std::string_view too_much = "القيمة أكبر من المسموح";       // beyond what a column takes
// The most that may go back is …
inline constexpr std::string_view most_returnable = "أقصى كمية يمكن إرجاعها هي ";
// "Of the item … the store holds only … of this batch".
inline constexpr std::string_view batch_holds_before = "الموجود بالمخزن من هذه الدفعة لصنف ";
inline constexpr std::string_view batch_holds_between = " هو ";
inline constexpr std::string_view no_such_receipt = "الفاتورة غير موجودة";  // there is no such document
// Everything on it has been returned or taken back.
inline constexpr std::string_view nothing_left = "رجع كل ما في هذه الفاتورة من قبل";

// On a return that was started from a receipt: the item is not on it.
inline constexpr std::string_view not_of_receipt = "الصنف غير موجود في فاتورة التوريد";
// A percent of discount and the total of the line cannot both be typed.
inline constexpr std::string_view percent_and_total =
    "اكتب قيمة السطر مع خصم بالقيمة، أو تكلفة الوحدة مع خصم بالنسبة";

// Questions before a save: items that cost nothing, are they free goods; items that are not sold above their
// cost, items whose wholesale or other price comes down with retail so as not to be above it, items whose
// expiry date is past, save all the same.
inline constexpr std::string_view free_goods = "تكلفة هذه الأصناف صفر:";
inline constexpr std::string_view ask_free_goods = "هل هي بضاعة مجانية؟";
inline constexpr std::string_view below_cost = "سعر البيع لا يزيد على التكلفة:";
inline constexpr std::string_view lowered_with_retail =
    "سعر الجملة أو سعر آخر ينخفض مع القطاعي الجديد حتى لا يزيد عليه:";
inline constexpr std::string_view expired = "الصلاحية منتهية:";
inline constexpr std::string_view ask_all_the_same = "هل تحفظ كما هو؟";
// The day is closed; what is written into it will be shown as changed since. Save all the same?
inline constexpr std::string_view ask_closed_day =
    "هذا اليوم مقفل، وستظهر الفاتورة فيه كتغيير بعد الإقفال. هل تحفظها بهذا التاريخ؟";
// "The supplier's invoice … was entered before, under number …. Save it again?"
inline constexpr std::string_view same_invoice_before = "فاتورة المورد ";
inline constexpr std::string_view same_invoice_between = " مسجلة من قبل برقم ";
inline constexpr std::string_view same_invoice_after = ". هل تحفظها مرة أخرى؟";

// An earlier document was not saved. Go on with it?
inline constexpr std::string_view ask_draft = "توجد فاتورة لم تحفظ من قبل. هل تكملها؟";
// "The document that was open has been saved under number …".
inline constexpr std::string_view draft_saved = "الفاتورة التي كانت مفتوحة محفوظة برقم ";
// What was typed is not saved. Drop it?
inline constexpr std::string_view ask_drop = "الفاتورة لم تحفظ. هل تلغيها؟";

// Suppliers. In the journal: "supplier: …".
inline constexpr std::string_view supplier = "مورد: ";
inline constexpr std::string_view enter_name = "ادخل الاسم";               // enter the name
inline constexpr std::string_view duplicate_supplier = "الكود لمورد آخر";  // another supplier has the code
// An account customer has the code, so the goods of the supplier would stand on his statement.
inline constexpr std::string_view code_of_customer = "الكود لعميل آجل، اختر كودا آخر";
// Another office has changed the card meanwhile; nothing was saved. What changed:
inline constexpr std::string_view changed_meanwhile =
    "تم تعديل البيانات من مكتب آخر ولم يتم الحفظ. افتح الكارت من جديد. ما تغير:";

// To choose from: all suppliers, all stores.
inline constexpr std::string_view all_suppliers = "كل الموردين";
inline constexpr std::string_view all_stores = "كل المخازن";

// The proposal of orders.
inline constexpr std::string_view wrong_weeks = "عدد الأسابيع من 1 إلى 52";  // weeks from 1 to 52

// Notes that are written on documents and vouchers: counter entry of receipt …; payment of receipt …; refund
// for return ….
inline constexpr std::string_view counter_note = "عكس التوريد رقم ";
inline constexpr std::string_view payment_note = "سداد التوريد رقم ";
inline constexpr std::string_view refund_note = "قيمة المرتجع رقم ";

}  // namespace purchases::message

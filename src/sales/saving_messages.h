// What the cashier hears while an invoice is saved.
#pragma once

#include <string_view>

namespace sales::saving_message {

// The invoice has no lines.
inline constexpr std::string_view empty_invoice = "لا توجد أصناف في البون";
// A receipt cannot be saved without opening a new shift.
inline constexpr std::string_view no_shift = "لا يمكن حفظ البون بدون فتح ورديه جديده";
// Choose the store.
inline constexpr std::string_view choose_store = "اختار المخزن";
// "The quantity of item … is not enough": the item's name stands between.
inline constexpr std::string_view quantity_of = "كميه الصنف ";
inline constexpr std::string_view not_enough = " لا تكفي";
// Enter the permit data.
inline constexpr std::string_view enter_permit = "أدخل بيانات الاذن";
// This receipt number was already entered for the same customer.
inline constexpr std::string_view number_used = "سبق ادخال نفس رقم الايصال لنفس العميل";
// Choose the customer / the account customer no longer exists.
inline constexpr std::string_view choose_customer = "اختار العميل";
inline constexpr std::string_view customer_gone = "العميل غير موجود";
// The cash customer's name does not exist.
inline constexpr std::string_view walk_in_gone = "اسم العميل النقدي غير موجود";
// Choose the tips customer / he, or the bank, no longer exists / choose the bank / enter the card's
// reference.
inline constexpr std::string_view choose_tips = "اختار عميل الاكراميات";
inline constexpr std::string_view tips_gone = "عميل الاكراميات غير موجود";
inline constexpr std::string_view bank_gone = "البنك غير موجود";
inline constexpr std::string_view choose_bank = "اختار البنك";
inline constexpr std::string_view enter_reference = "أدخل الرقم المرجعي لبطاقة الائتمان";
// What was typed is too long: the field's name stands before it.
inline constexpr std::string_view too_long = ": النص أطول من المسموح";
inline constexpr std::string_view permit_field = "رقم الإذن";
inline constexpr std::string_view note_field = "ملاحظات";
inline constexpr std::string_view holder_field = "صاحب البطاقة";
inline constexpr std::string_view reference_field = "رقم مرجعي";
inline constexpr std::string_view name_field = "اسم الصنف";
// More is returned than was sold and not yet returned, of item …
inline constexpr std::string_view returned_too_much = "الكمية المرتجعة أكبر من المباعة للصنف ";
// The invoice could not be saved; nothing was written.
inline constexpr std::string_view not_saved = "لم يتم حفظ البون ولم يسجل منه شيء، حاول مرة أخرى";
// "Invoice number …" "was saved in part only. The last step finished:" … "Do not save it again; tell the
// manager."
inline constexpr std::string_view partly_number = "البون رقم ";
inline constexpr std::string_view partly_saved = " تم حفظ جزء منه فقط. آخر خطوة تمت: ";
inline constexpr std::string_view partly_advice = "\nلا تحفظه مرة أخرى وأبلغ المدير";

// "This receipt was saved in part. It cannot be changed or saved again: cancel it and tell the manager."
inline constexpr std::string_view partly_stays =
    "هذا البون تم حفظ جزء منه، لا يمكن تعديله أو حفظه مرة أخرى. ألغ البون وأبلغ المدير";

}  // namespace sales::saving_message

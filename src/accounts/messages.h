// What the screens of customers and vouchers say, each text with its English meaning.
#pragma once

#include <string_view>

#include "common/messages.h"

namespace accounts::message {

// Account customers.
inline constexpr std::string_view enter_code = "ادخل كود العميل";      // enter the customer code
inline constexpr std::string_view enter_customer = "ادخل اسم العميل";  // enter the customer name
inline constexpr std::string_view duplicate_code = "رقم العميل مكرر";  // customer number duplicated
inline constexpr std::string_view wrong_code = "كود العميل غير صحيح";  // the customer code is not correct
inline constexpr std::string_view only_view = "البيانات للعرض فقط";    // the data are for viewing only
// There is no price class of this number or name.
inline constexpr std::string_view no_such_class = "لا توجد فئة سعر بهذا الرقم أو الاسم";
// "The customer code is too high for quotations. The highest that they hold is …"
inline constexpr std::string_view code_too_high =
    "كود العميل أكبر مما تقبله عروض الأسعار. أكبر كود مسموح به هو ";

// Tips receivers.
inline constexpr std::string_view enter_name = "ادخل الاسم";              // enter the name
inline constexpr std::string_view duplicate_receiver = "الكود مكرر";      // the code is duplicated
inline constexpr std::string_view no_such_receiver = "البيان غير موجود";  // the entry does not exist

// Vouchers.
inline constexpr std::string_view enter_number = "ادخل الرقم";    // enter the number
inline constexpr std::string_view enter_bank = "ادخل اسم البنك";  // enter the bank's name
inline constexpr std::string_view choose_party = "اختر الاسم";    // choose the party
inline constexpr std::string_view no_such_party =
    "الاسم المختار غير موجود";  // the chosen party does not exist
// Sorry, a voucher with the same number was added before.
inline constexpr std::string_view duplicate_voucher = "عفوا تم إضافة إيصال بنفس الرقم من قبل";
// The voucher does not exist.
inline constexpr std::string_view no_such_voucher = "الإيصال غير موجود";
// Another workstation has changed the voucher: nothing was written.
inline constexpr std::string_view voucher_changed = "تم تعديل الإيصال من جهاز آخر .. لم يتم الحفظ";
// "Voucher number …" "was saved in part only. The last step finished:" … "You are asked at the next voucher
// whether to complete it." or, without a journal, "Do not save it again; tell the manager."
inline constexpr std::string_view voucher_number = "الإيصال رقم ";
inline constexpr std::string_view voucher_partly_saved = " تم حفظ جزء منه فقط. آخر خطوة تمت: ";
inline constexpr std::string_view voucher_asked_again = "\nسيسألك البرنامج عن إكماله عند حفظ الإيصال التالي";
inline constexpr std::string_view voucher_partly_advice = "\nلا تحفظه مرة أخرى وأبلغ المدير";
// Saving was undone: nothing of the voucher is written.
inline constexpr std::string_view voucher_undone = "تم التراجع عن الحفظ، ولم يسجل من الإيصال شيء";
// An earlier voucher has just been finished or undone: look at the list of vouchers, then save this one.
inline constexpr std::string_view look_at_vouchers =
    "انتهى أمر الإيصال السابق. راجع الإيصالات بزر تعديل إيصال، ثم احفظ هذا الإيصال";

// Statement.
inline constexpr std::string_view balance_on = "الرصيد في ";           // balance on
inline constexpr std::string_view arrears_of = "توجد متأخرات بمبلغ ";  // there are arrears of
inline constexpr std::string_view no_arrears = "لا توجد متأخرات";      // no arrears
inline constexpr std::string_view discount = "خصم";                    // discount
// Of a vendor: goods taken in, invoice …; goods returned, number …; the vendor's own invoice …; number ….
inline constexpr std::string_view supply_number = "توريد رقم ";
inline constexpr std::string_view vendor_return_number = "مرتجع للمورد رقم ";
inline constexpr std::string_view vendor_invoice_number = "فاتورة المورد ";
inline constexpr std::string_view numbered = " رقم ";
inline constexpr std::string_view end_before_start =
    "نهاية المدة قبل بدايتها";  // the end lies before the start

}  // namespace accounts::message

// The texts that several subsystems show, each with its English meaning.
#pragma once

#include <string_view>

namespace common::message {

inline constexpr std::string_view wrong_amount = "المبلغ غير صحيح";  // not a number, below zero or too large
inline constexpr std::string_view too_fine = "المبلغ لا يقبل أكثر من رقمين عشريين";  // more than two decimals
// Write the number without commas, and the fraction after a point.
inline constexpr std::string_view no_comma = "اكتب الرقم بدون فواصل، والكسر بعد نقطة";
inline constexpr std::string_view no_minus = "لا تكتب علامة السالب هنا";      // do not write a minus here
inline constexpr std::string_view text_too_long = "النص أطول من المسموح به";  // longer than the column
inline constexpr std::string_view wrong_date = "التاريخ غير صحيح";            // the date is not valid
inline constexpr std::string_view enter_value = "ادخل القيمة";                // enter the value
inline constexpr std::string_view enter_drawer = "ادخل الخزينة";              // enter the drawer
inline constexpr std::string_view choose_store = "اختار المخزن";              // choose the store
// There is no such drawer in this branch; it may have been deleted.
inline constexpr std::string_view no_such_drawer = "الخزينة غير موجودة في هذا الفرع";
inline constexpr std::string_view wrong_code = "الكود غير صحيح";  // the code is not correct
inline constexpr std::string_view no_such_customer =
    "العميل غير موجود";  // the account customer does not exist
// The cash customer's name does not exist.
inline constexpr std::string_view no_such_cash_customer = "اسم العميل النقدي غير موجود";
// The name that was typed is not in the list.
inline constexpr std::string_view not_in_list = "الاسم المكتوب غير موجود في القائمة";
inline constexpr std::string_view no_such_bank = "البنك غير موجود";  // the bank does not exist

}  // namespace common::message

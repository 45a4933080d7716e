// What printing says to the cashier.
#pragma once

#include <string_view>

namespace printing::message {

// There is no data to print.
inline constexpr std::string_view no_data = "لا توجد بيانات للطباعه";
// The receipt was not printed: the printer on port ... does not answer. It can be printed again.
inline constexpr std::string_view port_failed = "لم يطبع البون : الطابعة لا تستجيب على المنفذ ";
// The receipt was not printed: the printer does not answer.
inline constexpr std::string_view printer_failed = "لم يطبع البون : الطابعة لا تستجيب";
// It can be printed again.
inline constexpr std::string_view print_again = "يمكن إعادة الطباعة";
// The report was not printed: the printer does not answer.
inline constexpr std::string_view report_failed = "لم يطبع التقرير : الطابعة لا تستجيب";
// The file could not be written: ...
inline constexpr std::string_view file_failed = "تعذر حفظ الملف : ";

}  // namespace printing::message

// What printing says to the cashier.
#pragma once

#include <string>
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

// A message that ends in a name; paths and ports read from the left.
inline std::string naming(std::string_view message, std::string_view name) {
    return std::string(message) + "\u200E" + std::string(name);
}

}  // namespace printing::message

// What printing says to the cashier.
#pragma once

#include <string>
#include <string_view>

#include "common/services.h"

namespace printing::message {

// There is no data to print.
inline constexpr std::string_view no_data = "لا توجد بيانات للطباعه";
// The receipt with the number ..., the test page: what is printed, in the line about printing.
inline constexpr std::string_view receipt_title = "البون رقم ";
inline constexpr std::string_view test_title = "صفحة التجربة";
// What was not done: the receipt, the report, the test page was not printed, the drawer did not open.
inline constexpr std::string_view receipt_failed = "لم يطبع البون : ";
inline constexpr std::string_view report_failed = "لم يطبع التقرير : ";
inline constexpr std::string_view labels_title = "ملصقات";  // labels
inline constexpr std::string_view test_failed = "لم تطبع صفحة التجربة : ";
inline constexpr std::string_view drawer_failed = "لم يفتح الدرج : ";
// The printer does not answer.
inline constexpr std::string_view no_answer = "الطابعة لا تستجيب";
// The printer does not answer on port ...
inline constexpr std::string_view no_answer_on = "الطابعة لا تستجيب على المنفذ ";
// Writing to port ... is not permitted.
inline constexpr std::string_view port_denied = "غير مسموح بالكتابة على المنفذ ";
// The port of the settings is no printer and no file of receipts: ...
inline constexpr std::string_view not_a_port = "المنفذ المسجل ليس طابعة ولا ملف بونات : ";
// A printer of another computer cannot be printed to directly. Set it up in the system's printers, then
// choose "the system's printer": ...
inline constexpr std::string_view shared_printer =
    "لا يطبع مباشرة على طابعة جهاز آخر. عرفها في طابعات النظام ثم اختر طابعة النظام : ";
// There is no port of this name; there are com1 to com9 and lpt1 to lpt3: ...
inline constexpr std::string_view unknown_port =
    "لا يوجد منفذ بهذا الاسم، المتاح com1 إلى com9 و lpt1 إلى lpt3 : ";
// The disk is full, port ...
inline constexpr std::string_view port_disk_full = "القرص ممتلئ، المنفذ ";
// It can be printed again.
inline constexpr std::string_view print_again = "يمكن إعادة الطباعة";
// The file could not be written: ...
inline constexpr std::string_view file_failed = "تعذر حفظ الملف : ";

// A letter size of the receipt: from 4 to 24.
inline constexpr std::string_view wrong_font_size = "حجم الخط من 4 إلى 24";
// The shop's database has no place yet for units, codes and the QR code: the till must be started once by one
// who may create tables.
inline constexpr std::string_view no_place_for_switches =
    "اختيارات الوحدة والباركود ورمز QR لا مكان لها بعد في قاعدة البيانات. يلزم تشغيل البرنامج مرة بصلاحية "
    "إنشاء الجداول";
// The file is not a picture that can be read: ...
inline constexpr std::string_view not_a_picture = "الملف ليس صورة يمكن قراءتها : ";

// A message that ends with a name; paths and ports are written from left to right.
inline std::string naming(std::string_view message, std::string_view name) {
    return std::string(message) + "\u200E" + std::string(name);
}

// Why a port took nothing.
inline std::string port_words(common::PortFault fault, std::string_view port) {
    switch (fault) {
        case common::PortFault::denied:
            return naming(port_denied, port);
        case common::PortFault::not_a_port:
            return naming(not_a_port, port);
        case common::PortFault::shared_printer:
            return naming(shared_printer, port);
        case common::PortFault::unknown_name:
            return naming(unknown_port, port);
        case common::PortFault::disk_full:
            return naming(port_disk_full, port);
        default:
            return naming(no_answer_on, port);
    }
}

}  // namespace printing::message

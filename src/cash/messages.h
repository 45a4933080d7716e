// What the cash screens say, each text with its English meaning.
#pragma once

#include <string_view>

namespace cash::message {

// Shifts.
inline constexpr std::string_view complete_data = "أكمل البيانات";  // complete the data
// The actual balance of the shift must be entered.
inline constexpr std::string_view counted_needed = "لابد من ادخال الرصيد الفعلي للورديه";
// Do you want to close the current shift?
inline constexpr std::string_view close_question = "هل تريد اغلاق الورديه الحاليه ؟";
// The current shift has already been closed.
inline constexpr std::string_view already_closed = "الورديه الحاليه سبق اغلاقها ";
inline constexpr std::string_view check_printer = "تأكد من إعدادات الطابعه";  // check the printer settings
// A new shift has started; the drawer's balance is ... zero or less, no cash was transferred from it.
inline constexpr std::string_view started_with = "تم بدء وردية جديدة .. رصيد الخزينه -- ";
inline constexpr std::string_view nothing_moved = " -- صفر أو أقل لم يتم تحويل النقديه منها";
// Enter a whole number of pieces.
inline constexpr std::string_view wrong_pieces = "اكتب عدد القطع رقما صحيحا";
// The time of the shift change is not a valid time.
inline constexpr std::string_view no_time = "وقت الوردية غير صحيح";
// The time of the shift change lies in the future: check the clock.
inline constexpr std::string_view in_the_future = "وقت الوردية بعد الوقت الحالي .. راجع التاريخ والساعة";
// The time lies before the start of the last shift: check the clock.
inline constexpr std::string_view before_last_start =
    "الوقت قبل بداية الوردية السابقة .. راجع التاريخ والساعة";
// The time lies before the end of the last shift: check the clock.
inline constexpr std::string_view before_last_end = "الوقت قبل نهاية الوردية السابقة .. راجع التاريخ والساعة";
// Ends both messages: not possible before that moment.
inline constexpr std::string_view not_before = "\nغير ممكن قبل : ";
// Another workstation has started this shift already; its row was kept.
inline constexpr std::string_view started_elsewhere =
    "تم بدء هذه الوردية من جهاز آخر .. لم يتم تسجيل وردية جديدة";

// The change of the shift was undone: the shift is as it was.
inline constexpr std::string_view change_undone = "تم التراجع، والوردية كما كانت";
// An earlier change of the shift is not finished. / It is settled now: look at the shift, then go on.
inline constexpr std::string_view change_unfinished =
    "تغيير الوردية لم يكتمل بعد. أعد المحاولة ليسألك البرنامج عنه";
inline constexpr std::string_view look_at_shift = "انتهى أمر التغيير السابق. راجع الوردية ثم أكمل";

// Before a shift start empties other drawers: the cash of these drawers will be transferred to the main
// drawer; its shift is open, after such a drawer; do you want to transfer it?
inline constexpr std::string_view others_emptied = "ستحول إلى الخزينة الرئيسية نقدية هذه الأدراج :\n";
inline constexpr std::string_view in_its_shift = " .. ورديته مفتوحة";
inline constexpr std::string_view others_question = "هل تريد تحويلها ؟";

// Transfers: "transfer from" the named drawer.
inline constexpr std::string_view transfer_from = "تحويل من ";

// Reports: "shift report number :" after the number; "cashier's report of the day" before the date.
inline constexpr std::string_view shift_report_title = " تقرير ورديه رقم :";
inline constexpr std::string_view day_report_title = "تقرير الكاشير عن يوم ";

// Invoice discounts of the shift / of the day that are not taken off the expected cash, so a right count is
// short by them; and those that are taken off.
inline constexpr std::string_view shift_discounts = "خصومات البونات في الوردية";
inline constexpr std::string_view day_discounts = "خصومات البونات في اليوم";
inline constexpr std::string_view shift_discounts_taken_off = "خصومات البونات في الوردية (مطروحة)";
inline constexpr std::string_view day_discounts_taken_off = "خصومات البونات في اليوم (مطروحة)";

// Actual balance, expected balance, difference.
inline constexpr std::string_view counted_cash = "الرصيد الفعلي";
inline constexpr char counted_cash_field[] = "الرصيد ال&فعلي";
inline constexpr std::string_view expected_cash = "الرصيد الدفتري";
inline constexpr std::string_view difference = "الفرق";
inline constexpr std::string_view not_counted = "لم يجرد";  // not counted
inline constexpr std::string_view no_figure = "—";

// Daily statement: how many movements are on unknown drawers and so in no figure.
inline constexpr std::string_view stray_movements =
    "توجد حركات على خزائن غير معرفة لم تدخل في الكشف .. عددها ";
inline constexpr std::string_view all = "الكل";  // all
inline constexpr std::string_view drawer = "الخزينة";

// Expenses.
inline constexpr std::string_view enter_main_heading = "ادخل المصروف الرئيسي";  // enter the main expense
inline constexpr std::string_view enter_sub_heading = "ادخل المصروف الفرعي";    // enter the sub expense
inline constexpr std::string_view another_expense = "تسجيل مصروف أخر";          // record another expense?

// Counted cash: enter it; the day has been counted / not yet, at what time; the day lies in the future.
inline constexpr std::string_view day_counted = "تم جرد الخزينة في هذا اليوم";
inline constexpr std::string_view day_not_counted = "لم يتم جرد الخزينة في هذا اليوم";
inline constexpr std::string_view counted_at = " .. الساعة ";
inline constexpr std::string_view moved_since_count = "حركة بعد الجرد";  // movements after the count
inline constexpr std::string_view enter_counted = "أدخل الرصيد الفعلي";
inline constexpr std::string_view future_day = "لا يمكن جرد الخزينة ليوم لم يأت بعد";
// The expected balance has changed since the screen was shown: look at the difference and record again.
inline constexpr std::string_view expected_changed =
    "تغير الرصيد الدفتري منذ عرض الشاشة .. راجع الفرق ثم سجل مرة أخرى";

}  // namespace cash::message

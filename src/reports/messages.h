// What the owner is told about reports and closed days.
#pragma once

#include <string_view>

namespace reports::message {

// The day has not come yet. / The day is closed already.
inline constexpr std::string_view day_to_come = "هذا اليوم لم يأت بعد";
inline constexpr std::string_view day_is_closed = "هذا اليوم مقفل من قبل";
// A till has not finished saving, and what stops it; a drawer whose shift is open.
inline constexpr std::string_view unfinished_save = "لم يكتمل حفظ: ";
inline constexpr std::string_view shift_is_open = "أغلق الوردية المفتوحة أولا: ";
// What the till's journal says of it: the day that was closed.
inline constexpr std::string_view day_closed = "إقفال يوم ";
// The end of the period lies before its beginning.
inline constexpr std::string_view wrong_period = "تاريخ النهاية قبل تاريخ البداية";

}  // namespace reports::message

// What a cashier is told about a database error that he can do something about.
#pragma once

#include <exception>
#include <optional>
#include <string_view>

namespace database {

namespace message {

// "The connection to the database was lost. Check the network, then try again."
inline constexpr std::string_view connection_lost =
    "انقطع الاتصال بقاعدة البيانات. راجع الشبكة ثم حاول مرة أخرى";
// "The database did not answer in time. Try again."
inline constexpr std::string_view timed_out = "لم ترد قاعدة البيانات في الوقت المحدد. حاول مرة أخرى";
// "The disk is full. Nothing more can be saved until there is room on it."
inline constexpr std::string_view disk_full = "القرص ممتلئ. لا يمكن الحفظ قبل توفير مساحة عليه";
// "The database may only be read. Tell the person in charge."
inline constexpr std::string_view read_only = "قاعدة البيانات للقراءة فقط. أبلغ المسئول";
// "The database is busy at another till. Try again."
inline constexpr std::string_view busy = "قاعدة البيانات مشغولة من جهاز آخر. حاول مرة أخرى";
// "Another till changed the same record meanwhile. Try again."
inline constexpr std::string_view changed_meanwhile = "تم تعديل نفس السجل من جهاز آخر. حاول مرة أخرى";

}  // namespace message

// The text for an `Error` of one of these causes; nothing for any other error.
std::optional<std::string_view> words_for(const std::exception& error);

}  // namespace database

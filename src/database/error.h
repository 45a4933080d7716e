// The one error of the database layer, and what a cashier is told about it.
#pragma once

#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

namespace database {

class Error : public std::runtime_error {
  public:
    // What a cashier can be told and do something about; everything else is `other`.
    enum class Kind {
        other,
        server_missing,  // nobody answers at the server's address
        no_driver,
        login_refused,
        not_encrypted,     // the server cannot encrypt the log-in
        database_missing,  // or closed to this login
        file_missing,
        file_is_folder,
        file_unreadable,
        file_damaged,  // or no shop at all
        read_only,
        disk_full,
        busy,  // another program holds the shop file
        connection_lost,
        timed_out,
        changed_meanwhile,  // another till wrote the same row
    };

    Error(std::string sqlstate, const std::string& text, std::string statement, Kind kind)
        : std::runtime_error(text),
          sqlstate_(std::move(sqlstate)),
          statement_(std::move(statement)),
          kind_(kind) {}
    // For errors that the SQLSTATE describes completely.
    Error(std::string sqlstate, const std::string& text, std::string statement)
        : Error(sqlstate, text, std::move(statement), kind_of(sqlstate)) {}

    Kind kind() const { return kind_; }
    // Five characters: "08001" no server, "08S01" connection lost, "28000" wrong password, "42000" a
    // statement that cannot run, "23000" a key violated, "HYT00" time-out, "HY000" other.
    const std::string& sqlstate() const { return sqlstate_; }
    // The statement that failed; empty if there was none. The server's own text is what().
    const std::string& statement() const { return statement_; }
    // Returns true if the database is out of reach, so that the next statement would fail as well.
    bool is_connection_lost() const { return sqlstate_.starts_with("08"); }

  private:
    static Kind kind_of(std::string_view sqlstate);

    std::string sqlstate_;
    std::string statement_;
    Kind kind_;
};

// A batch that stopped. The statements before position() have run; those after it have not. If the connection
// was lost or the answer came late, later ones may have run as well.
class BatchError : public Error {
  public:
    BatchError(const Error& error, std::size_t position) : Error(error), position_(position) {}
    std::size_t position() const { return position_; }

  private:
    std::size_t position_;
};

// The SQLSTATE for a row whose key already exists.
inline constexpr std::string_view key_violated = "23000";

// Each text is a sentence with the cause and a sentence with what to do.
namespace message {

// "The connection to the database was lost. Check the network, then try again."
inline constexpr std::string_view connection_lost =
    "انقطع الاتصال بقاعدة البيانات. راجع الشبكة ثم حاول مرة أخرى";
// "The database did not answer in time. Try again."
inline constexpr std::string_view timed_out = "لم ترد قاعدة البيانات في الوقت المحدد. حاول مرة أخرى";
// "The disk is full. Nothing more can be saved until there is room on it."
inline constexpr std::string_view disk_full = "القرص ممتلئ. لا يمكن الحفظ قبل توفير مساحة عليه";
// "The database may only be read. Tell the person in charge."
inline constexpr std::string_view read_only = "قاعدة البيانات للقراءة فقط. أبلغ المدير";
// "The database is damaged. Stop working and tell the person in charge."
inline constexpr std::string_view damaged = "قاعدة البيانات تالفة. أوقف العمل وأبلغ المدير";
// "The server refused the till's log-in. Tell the person in charge."
inline constexpr std::string_view login_refused = "الخادم رفض دخول هذا الجهاز. أبلغ المدير";
// "The database is busy at another till. Try again."
inline constexpr std::string_view busy = "قاعدة البيانات مشغولة من جهاز آخر. حاول مرة أخرى";
// "Another till changed the same record meanwhile. Try again."
inline constexpr std::string_view changed_meanwhile = "تم تعديل نفس السجل من جهاز آخر. حاول مرة أخرى";
// "A file or folder may not be written. Tell the person in charge."
inline constexpr std::string_view may_not_write = "غير مسموح بالكتابة في الملف أو المجلد. أبلغ المدير";
// The reason is in the activity log.
inline constexpr std::string_view see_log = "السبب مسجل في سجل البرنامج";

}  // namespace message

// Returns true if the statement may have run although its answer never came. A statement that found the
// database busy did not run.
bool may_have_run(const std::exception& error);

// The line of the activity log for an action that failed.
std::string log_line(std::string_view action, const std::exception& error);

// The text for an `Error` or a `std::system_error` of one of these causes; see_log for any other error.
std::string_view words_for(const std::exception& error);

// The cause alone, for an action that must not be tried again.
std::string_view cause_of(const std::exception& error);

// What could not be done, with the cause and what to do on a line below it.
std::string with_reason(std::string_view what_failed, const std::exception& error);

}  // namespace database

// Reads and writes the files in the program's folder and in the working folder. Names are found in any case.
// Writing replaces a file in one step: a kill or a power cut leaves the old file or the new one, never a
// part. Every function throws StartUpError if it cannot do its work; the activity log alone never throws.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "common/clock.h"
#include "common/services.h"
#include "startup/connection_file.h"
#include "startup/reasons.h"

namespace startup {

inline constexpr std::string_view connection_file_name = "datacon24.stk";
inline constexpr std::string_view version_file_name = "merlo-ver.txt";
inline constexpr std::string_view credit_file_name = "Data.dat";
inline constexpr std::string_view password_file_name = "sa.pwd";
inline constexpr std::string_view logs_folder_name = "Logs";
inline constexpr std::string_view log_file_name = "hm_log.qzv";
inline constexpr std::string_view fatal_file_name = "prg_.err";
inline constexpr std::size_t version_record_length = 50;

// The entry of a folder with this name, exactly as spelt or else in another case.
std::optional<std::filesystem::path> find_file(const std::filesystem::path& folder, std::string_view name);

// The shop's folder: the first of these that holds a connection file. TALLVEX_HOME names one; then comes the
// working directory; and if TALLVEX_HOME is not set, the folder that TALLVEX_SHOP names (the launcher takes
// it from this machine's settings). If none holds such a file, the folder of TALLVEX_HOME or the working
// directory.
std::filesystem::path shop_folder();

// Where a shop is made if there is none: the folder of TALLVEX_HOME or TALLVEX_SHOP, else the working
// directory.
std::filesystem::path new_shop_folder();

// The program folder of the shop in a folder, with version file, log and password file: TALLVEX_HOME if it is
// set, else the shop's folder if it has a version file, else the executable's folder.
std::filesystem::path home_of(const std::filesystem::path& folder);

// The connection file of the working directory.
bool has_connection_file(const std::filesystem::path& folder);
ConnectionRecord read_connection_file(const std::filesystem::path& folder);
std::filesystem::path write_connection_file(const std::filesystem::path& folder,
                                            const ConnectionRecord& record);
// Replaces the server's address in the connection file of a folder.
void write_server_address(const std::filesystem::path& folder, std::string_view address);

// The version string of the program folder: a record of 50 characters, without the blanks at its ends. A file
// that was written with an editor is read too: its first line, in UTF-8 or code page 1256. A version that is
// empty or longer than the record is refused.
std::string read_version_file(const std::filesystem::path& folder);
void write_version_file(const std::filesystem::path& folder, std::string_view version);

// The supplier-credit lines of the working directory. Missing lines, or a missing file, give empty lines;
// further lines are ignored. A file that is not valid UTF-8 is read as code page 1256.
using CreditLines = std::array<std::string, 3>;
CreditLines read_credit_file(const std::filesystem::path& folder);
void write_credit_file(const std::filesystem::path& folder, const CreditLines& lines);

// The password of the login "sa": the environment variable TALLVEX_SA_PASSWORD, or else the first line of
// "sa.pwd" in the program folder. A file that anyone but its owner may use is refused.
std::string read_sa_password(const std::filesystem::path& program_folder);
// Writes "sa.pwd", readable only by its owner.
void write_sa_password(const std::filesystem::path& program_folder, std::string_view password);

// Creates the "Logs" folder if it is missing; returns its path.
std::filesystem::path ensure_logs_folder(const std::filesystem::path& program_folder);

// Overwrites the fatal-error record: three texts of 100, 150 and 150 characters in code page 1256. Start-up
// writes the first, the message.
void write_fatal_error(const std::filesystem::path& program_folder, std::string_view message);

// A line is the message, "  ----  ", a code, "  ----  " and the moment as "yyyy/MM/dd HH:mm", in UTF-8. Line
// ends in a message become blanks. Every call opens the file, appends in one piece and closes it. A line that
// cannot be written is lost; nothing else happens.
class ActivityLog final : public common::Log {
  public:
    ActivityLog(std::filesystem::path program_folder, common::Clock& clock)
        : folder_(std::move(program_folder)), clock_(clock) {}
    void log_event(std::string_view message, std::string_view code) override;

  private:
    std::filesystem::path folder_;
    std::filesystem::path file_;  // of the last line; looked up again if it is gone
    common::Clock& clock_;
};

}  // namespace startup

#include "startup/shop_files.h"

#include <fmt/format.h>
#include <sys/stat.h>

#include <cstdlib>
#include <random>
#include <system_error>

#include "common/code_page.h"
#include "common/files.h"
#include "common/text.h"
#include "startup/messages.h"
#include "startup/workstation.h"

namespace startup {

namespace fs = std::filesystem;

namespace {

std::mt19937 fresh_random() {
    return std::mt19937(std::random_device{}());
}

// The path of an existing file in any case, or of the file to be created.
fs::path file_in(const fs::path& folder, std::string_view name) {
    return find_file(folder, name).value_or(folder / name);
}

std::string with_name(std::string_view reason, const fs::path& file) {
    return std::string(reason) + file.filename().string();
}

std::string read_whole(const fs::path& file) {
    try {
        return common::read_file(file);
    } catch (const std::system_error& error) {
        const bool is_missing = error.code() == std::errc::no_such_file_or_directory;
        throw StartUpError(error.what(),
                           with_name(is_missing ? message::file_missing : message::file_unreadable, file));
    }
}

void replace_whole(const fs::path& file, std::string_view bytes, unsigned mode = 0660) {
    try {
        common::replace_file(file, bytes, mode);
    } catch (const std::system_error& error) {
        throw StartUpError(error.what(), with_name(message::file_unwritable, file));
    }
}

std::string_view first_line(std::string_view text) {
    std::string_view line = text.substr(0, text.find('\n'));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::string padded(std::string_view text, std::size_t width) {
    std::string bytes = common::to_code_page_1256(text);
    bytes.resize(width, ' ');
    return bytes;
}

}  // namespace

std::optional<fs::path> find_file(const fs::path& folder, std::string_view name) {
    std::error_code error;
    if (fs::exists(folder / name, error)) return folder / name;
    std::optional<fs::path> found;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string other = entry->path().filename().string();
        // Of several spellings take the alphabetically first, so that every start takes the same one.
        if (common::equal_ignoring_case(other, name) && (!found || other < found->filename().string())) {
            found = entry->path();
        }
    }
    return found;
}

fs::path shop_folder() {
    std::error_code gone;
    fs::path working = fs::current_path(gone);
    if (gone) working = ".";
    const auto home = named_home();
    for (const fs::path& folder : {home.value_or(working), working})
        if (has_connection_file(folder)) return folder;
    // Whoever misspelt the name of a folder must not get another shop.
    if (home) return *home;
    const auto configured = named_folder("TALLVEX_SHOP");
    return configured && has_connection_file(*configured) ? *configured : working;
}

fs::path new_shop_folder() {
    for (const char* variable : {"TALLVEX_HOME", "TALLVEX_SHOP"})
        if (auto folder = named_folder(variable)) return *folder;
    return shop_folder();
}

fs::path home_of(const fs::path& folder) {
    return !named_home() && find_file(folder, version_file_name) ? folder : program_folder();
}

bool has_connection_file(const fs::path& folder) {
    return find_file(folder, connection_file_name).has_value();
}

ConnectionRecord read_connection_file(const fs::path& folder) {
    return decode_connection(read_whole(file_in(folder, connection_file_name)));
}

fs::path write_connection_file(const fs::path& folder, const ConnectionRecord& record) {
    std::mt19937 random = fresh_random();
    const fs::path file = file_in(folder, connection_file_name);
    replace_whole(file, encode_connection(record, random));
    return file;
}

void write_server_address(const fs::path& folder, std::string_view address) {
    std::mt19937 random = fresh_random();
    const fs::path file = file_in(folder, connection_file_name);
    replace_whole(file, with_address(read_whole(file), address, random));
}

std::string read_version_file(const fs::path& folder) {
    const fs::path file = file_in(folder, version_file_name);
    const std::string text = common::from_utf8_or_1256(read_whole(file));
    const std::string version(common::trim(first_line(text)));
    const std::size_t length = common::code_points(version).size();
    if (length == 0 || length > version_record_length) {
        throw StartUpError(file.string() + ": its version has " + std::to_string(length) +
                               " characters instead of 1 to " + std::to_string(version_record_length),
                           with_name(message::version_file_length, file));
    }
    return version;
}

void write_version_file(const fs::path& folder, std::string_view version) {
    const std::string record = padded(version, version_record_length);
    if (common::trim_right(common::from_code_page_1256(record)) != common::trim_right(version)) {
        throw StartUpError("the version string does not fit its record",
                           std::string(message::text_too_long) + std::string(version));
    }
    replace_whole(file_in(folder, version_file_name), record);
}

CreditLines read_credit_file(const fs::path& folder) {
    CreditLines lines;
    const auto file = find_file(folder, credit_file_name);
    if (!file) return lines;
    const std::string text = common::from_utf8_or_1256(read_whole(*file));
    std::string_view rest = text;
    for (std::string& line : lines) {
        line = first_line(rest);
        const auto end = rest.find('\n');
        if (end == rest.npos) break;
        rest.remove_prefix(end + 1);
    }
    return lines;
}

void write_credit_file(const fs::path& folder, const CreditLines& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    replace_whole(file_in(folder, credit_file_name), text);
}

std::string read_sa_password(const fs::path& program_folder) {
    if (const char* given = std::getenv("TALLVEX_SA_PASSWORD")) return given;
    const auto file = find_file(program_folder, password_file_name);
    if (!file) {
        throw StartUpError("neither TALLVEX_SA_PASSWORD nor " +
                               (program_folder / password_file_name).string() +
                               " gives the password of the login",
                           std::string(message::no_password));
    }
    struct stat form {};
    if (stat(file->c_str(), &form) == 0 && (form.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw StartUpError(file->string() + ": may be used by others than its owner",
                           std::string(message::password_file_open));
    }
    return std::string(first_line(read_whole(*file)));
}

void write_sa_password(const fs::path& program_folder, std::string_view password) {
    replace_whole(file_in(program_folder, password_file_name), std::string(password) + "\n",
                  S_IRUSR | S_IWUSR);
}

fs::path ensure_logs_folder(const fs::path& program_folder) {
    const fs::path logs = file_in(program_folder, logs_folder_name);
    std::error_code error;
    if (!fs::exists(program_folder, error)) {
        throw StartUpError(
            program_folder.string() + ": " + (error ? error.message() : "there is no such folder"),
            std::string(error ? message::shop_folder_closed : message::no_shop_folder) +
                program_folder.string());
    }
    fs::create_directory(logs, error);
    if (!fs::is_directory(logs)) {
        throw StartUpError(logs.string() + ": cannot be created: " + error.message(),
                           with_name(message::file_unwritable, logs));
    }
    return logs;
}

void write_fatal_error(const fs::path& program_folder, std::string_view message) {
    replace_whole(file_in(program_folder, fatal_file_name), padded(message, 100) + std::string(300, ' '));
}

namespace {

std::string on_one_line(std::string_view text) {
    std::string line(text);
    for (char& c : line) {
        if (c == '\n' || c == '\r' || c == '\0') c = ' ';
    }
    return line;
}

}  // namespace

void ActivityLog::log_event(std::string_view message, std::string_view code) {
    constexpr std::string_view between = "  ----  ";
    const common::Moment now = clock_.now();
    const std::string line =
        fmt::format("{}{}{}{}{} {:02}:{:02}\n", on_one_line(message), between, on_one_line(code), between,
                    common::date_text(now.date), now.time.hour, now.time.minute);
    if (!file_.empty() && common::append_to_file(file_, line)) return;
    const auto folder = find_file(folder_, logs_folder_name);
    if (!folder) return;
    file_ = file_in(*folder, log_file_name);
    common::append_to_file(file_, line);
}

}  // namespace startup

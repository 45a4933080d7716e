#include "startup/connection_file.h"

#include <algorithm>

#include "common/code_page.h"
#include "common/text.h"
#include "database/embedded/open.h"
#include "database/sqlserver/encryption.h"
#include "database/sqlserver/open.h"
#include "startup/messages.h"
#include "startup/reasons.h"
#include "startup/shop_files.h"

namespace startup {

namespace {

struct Field {
    std::size_t offset;
    std::size_t width;
};
constexpr Field server_field{0, 50};
constexpr Field database_field{50, 50};
constexpr Field address_field{100, 100};

// The key and three fillers before the text, three fillers after it.
constexpr std::size_t before_text = 4;
constexpr std::size_t after_text = 3;
constexpr int least_key = 5;
constexpr int greatest_key = 15;

// Codes wrap around within one byte, so that every character of the page comes back under any key.
char shifted(char c, int by) {
    return static_cast<char>(static_cast<unsigned char>(c) + by);
}

// The trimmed text without one "C" at its end.
std::string without_last_c(std::string_view text) {
    text = common::trim(text);
    if (text.ends_with('C') || text.ends_with('c')) text.remove_suffix(1);
    return std::string(text);
}

std::string_view field_of(std::string_view record, Field field) {
    return record.substr(field.offset, field.width);
}

void require_record(std::string_view bytes) {
    if (bytes.size() >= connection_record_length) return;
    throw StartUpError("the connection file has " + std::to_string(bytes.size()) + " bytes, a record has " +
                           std::to_string(connection_record_length),
                       std::string(message::connection_file_short) + "datacon24.stk");
}

// A name as a person could have given it. ";" would begin another part of the connection string.
bool is_name(std::string_view text) {
    const auto is_strange = [](char c) {
        return static_cast<unsigned char>(c) < ' ' || c == '\x7F' || c == ';';
    };
    return std::none_of(text.begin(), text.end(), is_strange);
}

void require_names(const ConnectionRecord& record) {
    const bool is_blank = common::trim(record.server).empty() || common::trim(record.database).empty();
    if (!is_blank && is_name(record.server) && is_name(record.database) && is_name(record.address)) return;
    throw StartUpError(is_blank ? "the connection file names no server or no database"
                                : "the connection file is damaged: its names cannot be read",
                       std::string(message::connection_file_damaged) + "datacon24.stk");
}

// The line after the record.
constexpr std::string_view encryption_mark = "Encryption=";
std::string encryption_after(std::string_view bytes) {
    std::string_view rest = bytes.substr(connection_record_length);
    if (!rest.starts_with(encryption_mark)) return {};
    rest.remove_prefix(encryption_mark.size());
    const std::string_view word = common::trim(rest.substr(0, rest.find('\n')));
    return word == database::encryption::everything || word == database::encryption::off ? std::string(word)
                                                                                         : std::string();
}

}  // namespace

std::string unscramble(std::string_view field) {
    const std::string_view stored = common::trim_blanks(field);
    if (stored.size() <= before_text + after_text) return {};
    const int key = static_cast<unsigned char>(stored.front());
    std::string plain(stored.substr(before_text, stored.size() - before_text - after_text));
    for (char& c : plain)
        c = shifted(c, -key);
    return common::from_code_page_1256(plain);
}

std::string scramble(std::string_view text, std::size_t width, std::mt19937& random) {
    const std::string plain = common::to_code_page_1256(text);
    if (common::from_code_page_1256(plain) != text) {
        throw StartUpError("a text for the connection file has characters outside code page 1256",
                           std::string(message::text_not_arabic_page) + std::string(text));
    }
    if (plain.size() + before_text + after_text > width) {
        throw StartUpError("a text for the connection file is longer than its field",
                           std::string(message::text_too_long) + std::string(text));
    }
    const int key = std::uniform_int_distribution(least_key, greatest_key)(random);
    // Any filler will do except a blank, because reading trims blanks at both ends.
    const auto fillers = [&random](std::size_t count) {
        std::string made;
        for (std::size_t i = 0; i < count; ++i) {
            made += static_cast<char>(std::uniform_int_distribution<int>('A', 'Z')(random));
        }
        return made;
    };
    std::string stored(1, static_cast<char>(key));
    stored += fillers(before_text - 1);
    for (const char c : plain)
        stored += shifted(c, key);
    stored += fillers(after_text);
    stored.resize(width, ' ');
    return stored;
}

ConnectionRecord decode_connection(std::string_view bytes) {
    require_record(bytes);
    ConnectionRecord record{unscramble(field_of(bytes, server_field)),
                            unscramble(field_of(bytes, database_field)),
                            unscramble(field_of(bytes, address_field)), encryption_after(bytes)};
    require_names(record);
    return record;
}

std::string encode_connection(const ConnectionRecord& record, std::mt19937& random) {
    return scramble(record.server, server_field.width, random) +
           scramble(record.database, database_field.width, random) +
           scramble(record.address, address_field.width, random) +
           (record.encryption.empty() ? "" : std::string(encryption_mark) + record.encryption + "\n");
}

std::string with_address(std::string bytes, std::string_view address, std::mt19937& random) {
    require_record(bytes);
    bytes.replace(address_field.offset, address_field.width, scramble(address, address_field.width, random));
    return bytes;
}

bool DataSource::is_embedded() const {
    return common::equal_ignoring_case(data_source, embedded_source);
}

DataSource data_source_of(const ConnectionRecord& record) {
    DataSource source;
    source.server = without_last_c(record.server);
    const auto backslash = source.server.find('\\');
    const std::string instance = backslash == std::string::npos ? "" : source.server.substr(backslash);
    // A field that was never filled in is not an address either.
    const std::string_view address = common::trim(record.address);
    const bool is_known = address != no_address && !address.empty();
    // The second "C" is dropped here, from an address too.
    source.data_source = without_last_c(is_known ? std::string(address) + instance : source.server);
    return source;
}

std::string connection_string(const ConnectionRecord& record, std::string_view password) {
    return "Provider=SQLOLEDB.1;Password=" + std::string(password) +
           ";Persist Security Info=True;User ID=sa;Initial Catalog= " + record.database +
           ";Data Source=" + data_source_of(record).data_source +
           (record.encryption.empty() ? "" : ";Encryption=" + record.encryption);
}

std::unique_ptr<database::Connection> open_connection(const std::string& connection_string,
                                                      const std::filesystem::path& folder) {
    DataSource source;
    source.data_source = common::trim(database::connection_part(connection_string, "Data Source"));
    if (!source.is_embedded()) return database::open_sqlserver(connection_string);
    const std::string file(common::trim(database::connection_part(connection_string, "Initial Catalog")));
    if (file.empty())
        throw database::Error("08001", "The connection names no shop file.", "",
                              database::Error::Kind::file_missing);
    return database::open_embedded(folder / file);
}

std::unique_ptr<database::Connection> open_shop(const ConnectionRecord& record,
                                                const std::filesystem::path& program_folder,
                                                const std::filesystem::path& working_folder,
                                                const OpenConnection& open) {
    const bool needs_password = !data_source_of(record).is_embedded();
    return open(connection_string(record, needs_password ? read_sa_password(program_folder) : std::string()),
                working_folder);
}

std::filesystem::path shop_file(const ConnectionRecord& record, const std::filesystem::path& working_folder) {
    return working_folder / common::trim(record.database);
}

}  // namespace startup

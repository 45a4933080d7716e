#include "support/tds_values.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "common/text.h"
#include "database/value.h"

namespace test::tds {

using database::Value;

namespace {

// Names of types on the wire.
enum Token : std::uint8_t {
    int_n = 0x26,
    datetime2_n = 0x2A,
    bit_n = 0x68,
    numeric_n = 0x6C,
    float_n = 0x6D,
    money_n = 0x6E,
    datetime_n = 0x6F,
    n_text = 0x63,
    nvarchar = 0xE7,
};

// Arabic_CI_AS: language, flags, sort order.
const std::string collation("\x01\x04\xd0\x00\x00", 5);
constexpr int longest_text = 4000;  // characters of an nvarchar(n)
constexpr std::uint16_t no_limit = 0xFFFF;
constexpr std::uint64_t null_of_any_length = 0xFFFFFFFFFFFFFFFF;
constexpr double money_unit = 10000;

long days_since(const common::Date& date, const common::Date& zero) {
    return common::days_from_epoch(date) - common::days_from_epoch(zero);
}

int milliseconds_of(const common::TimeOfDay& time) {
    return ((time.hour * 60 + time.minute) * 60 + time.second) * 1000 + time.millisecond;
}

common::TimeOfDay time_of(long long milliseconds) {
    const auto seconds = static_cast<int>(milliseconds / 1000);
    return {seconds / 3600, seconds / 60 % 60, seconds % 60, static_cast<int>(milliseconds % 1000)};
}

constexpr common::Date datetime_zero{1900, 1, 1};
constexpr common::Date datetime2_zero{1, 1, 1};

std::string datetime_cell(const common::Moment& moment) {
    const int milliseconds = milliseconds_of(moment.time);
    const int ticks = (milliseconds * 3 + 5) / 10;  // of 1/300 s
    return little(static_cast<std::int32_t>(days_since(moment.date, datetime_zero))) + little(ticks);
}

std::string money_cell(double amount) {
    const auto units = static_cast<std::int64_t>(std::llround(amount * money_unit));
    return little(static_cast<std::int32_t>(units >> 32)) + little(static_cast<std::uint32_t>(units));
}

std::string numeric_cell(const Type& type, const Value& value) {
    double scaled = database::number_of(value);
    for (int i = 0; i < type.scale; ++i)
        scaled *= 10;
    const auto whole = std::holds_alternative<std::int64_t>(value) && type.scale == 0
                           ? database::integer_of(value)
                           : std::llround(scaled);
    std::string digits = little(static_cast<std::uint64_t>(whole < 0 ? -whole : whole));
    digits.resize(type.precision <= 9 ? 4 : type.precision <= 19 ? 8 : type.precision <= 28 ? 12 : 16, '\0');
    return byte(whole < 0 ? 0 : 1) + digits;
}

std::string counted(std::string bytes) {
    return byte(static_cast<int>(bytes.size())) + bytes;
}

std::string text_cell(const Type& type, const Value& value) {
    const bool large = type.kind == Type::large_text;
    if (database::is_null(value)) return large ? little(null_of_any_length) : little(no_limit);
    const std::string bytes = wide(database::text_of(value));
    if (!large) return little(static_cast<std::uint16_t>(bytes.size())) + bytes;
    std::string cell = little(static_cast<std::uint64_t>(bytes.size()));
    if (!bytes.empty()) cell += little(static_cast<std::uint32_t>(bytes.size())) + bytes;
    return cell + little(std::uint32_t{0});
}

// The numbers in the brackets of "numeric(18, 2)".
std::vector<int> arguments_of(std::string_view declared) {
    std::vector<int> numbers;
    const auto open = declared.find('(');
    if (open == declared.npos) return numbers;
    int number = -1;
    for (const char c : declared.substr(open + 1)) {
        if (c >= '0' && c <= '9') {
            number = std::max(number, 0) * 10 + (c - '0');
        } else if (number >= 0) {
            numbers.push_back(number);
            number = -1;
        }
    }
    return numbers;
}

}  // namespace

Type type_of(std::string_view declared) {
    const std::string lower = common::lower_ascii(common::trim(declared));
    const std::string name = lower.substr(0, lower.find_first_of("( "));
    const std::vector<int> arguments = arguments_of(lower);
    static const std::pair<const char*, Type> known[] = {
        {"bigint", {Type::whole, 8}},     {"int", {Type::whole, 4}},
        {"smallint", {Type::whole, 2}},   {"tinyint", {Type::whole, 1}},
        {"bit", {Type::bit, 1}},          {"float", {Type::number, 8}},
        {"real", {Type::number, 4}},      {"money", {Type::money, 8}},
        {"smallmoney", {Type::money, 8}}, {"datetime", {Type::moment, 8}},
        {"datetime2", {Type::moment, 8}}, {"smalldatetime", {Type::moment, 8}},
        {"date", {Type::moment, 8}},      {"time", {Type::moment, 8}},
        {"ntext", {Type::large_text, 0}}, {"text", {Type::large_text, 0}},
    };
    for (const auto& [word, type] : known)
        if (name == word) return type;
    if (name == "numeric" || name == "decimal") {
        Type type{Type::numeric, 0, 18, 0};
        if (!arguments.empty()) type.precision = std::clamp(arguments[0], 1, 18);
        if (arguments.size() > 1) type.scale = std::min(arguments[1], type.precision);
        return type;
    }
    if (lower.find("(max)") != lower.npos) return {Type::large_text, 0};
    return {Type::text, arguments.empty() ? longest_text : std::min(arguments[0], longest_text)};
}

Type type_of(const std::vector<const Value*>& values) {
    bool text = false, number = false, moment = false, wide_whole = false, whole = false;
    std::size_t longest = 0;
    for (const Value* value : values) {
        if (const auto* words = std::get_if<std::string>(value)) {
            text = true;
            longest = std::max(longest, words->size());
        } else if (const auto* integer = std::get_if<std::int64_t>(value)) {
            whole = true;
            wide_whole |= *integer < std::numeric_limits<std::int32_t>::min() ||
                          *integer > std::numeric_limits<std::int32_t>::max();
        } else if (std::holds_alternative<double>(*value)) {
            number = true;
        } else if (std::holds_alternative<common::Moment>(*value)) {
            moment = true;
        }
    }
    if (text || (moment && (whole || number)))
        return longest > longest_text ? Type{Type::large_text, 0} : Type{Type::text, longest_text};
    if (moment) return {Type::moment, 8};
    if (number) return {Type::number, 8};
    return {Type::whole, wide_whole ? 8 : 4};
}

std::string type_info(const Type& type) {
    switch (type.kind) {
        case Type::whole:
            return byte(int_n) + byte(type.size);
        case Type::bit:
            return byte(bit_n) + byte(1);
        case Type::number:
            return byte(float_n) + byte(type.size);
        case Type::money:
            return byte(money_n) + byte(8);
        case Type::numeric:
            return byte(numeric_n) + byte(static_cast<int>(numeric_cell(type, Value()).size())) +
                   byte(type.precision) + byte(type.scale);
        case Type::moment:
            return byte(datetime_n) + byte(8);
        case Type::text:
            return byte(nvarchar) + little(static_cast<std::uint16_t>(type.size * 2)) + collation;
        case Type::large_text:
            return byte(nvarchar) + little(no_limit) + collation;
    }
    return {};
}

std::string cell(const Type& type, const Value& value) {
    if (type.kind == Type::text || type.kind == Type::large_text) return text_cell(type, value);
    if (database::is_null(value)) return byte(0);
    switch (type.kind) {
        case Type::whole:
            return counted(
                little(database::integer_of(value)).substr(0, static_cast<std::size_t>(type.size)));
        case Type::bit:
            return counted(byte(database::number_of(value) != 0 ? 1 : 0));
        case Type::number:
            return counted(type.size == 4 ? little(static_cast<float>(database::number_of(value)))
                                          : little(database::number_of(value)));
        case Type::money:
            return counted(money_cell(database::number_of(value)));
        case Type::numeric:
            return counted(numeric_cell(type, value));
        default:
            return counted(datetime_cell(database::moment_of(value)));
    }
}

namespace {

std::int64_t whole_of(std::string_view bytes) {
    switch (bytes.size()) {
        case 1:
            return static_cast<unsigned char>(bytes[0]);
        case 2:
            return Reader(bytes).number<std::int16_t>();
        case 4:
            return Reader(bytes).number<std::int32_t>();
        case 8:
            return Reader(bytes).number<std::int64_t>();
        default:
            throw Malformed();
    }
}

long long unsigned_of(std::string_view bytes) {
    long long value = 0;
    for (auto at = bytes.rbegin(); at != bytes.rend(); ++at)
        value = value << 8 | static_cast<unsigned char>(*at);
    return value;
}

Value datetime2_of(std::string_view bytes, int scale) {
    constexpr std::size_t date_bytes = 3;
    if (bytes.size() < date_bytes) throw Malformed();
    const std::string_view clock = bytes.substr(0, bytes.size() - date_bytes);
    long long units = unsigned_of(clock);
    for (int i = scale; i < 3; ++i)
        units *= 10;
    for (int i = 3; i < scale; ++i)
        units /= 10;
    const long days = static_cast<long>(unsigned_of(bytes.substr(clock.size())));
    return common::Moment{common::add_days(datetime2_zero, days), time_of(units)};
}

Value text_of_any_length(Reader& reader) {
    const auto total = reader.number<std::uint64_t>();
    if (total == null_of_any_length) return {};
    std::string bytes;
    while (const auto piece = reader.number<std::uint32_t>())
        bytes += reader.take(piece);
    return narrow(bytes);
}

}  // namespace

Value parameter(Reader& reader) {
    const auto token = reader.number<std::uint8_t>();
    switch (token) {
        case int_n:
        case float_n: {
            reader.take(1);
            const std::string_view bytes = reader.take(reader.number<std::uint8_t>());
            if (bytes.empty()) return {};
            return token == int_n ? Value(whole_of(bytes)) : Value(Reader(bytes).number<double>());
        }
        case datetime2_n: {
            const int scale = reader.number<std::uint8_t>();
            const std::string_view bytes = reader.take(reader.number<std::uint8_t>());
            return bytes.empty() ? Value() : datetime2_of(bytes, scale);
        }
        case nvarchar: {
            const auto most = reader.number<std::uint16_t>();
            reader.take(collation.size());
            if (most == no_limit) return text_of_any_length(reader);
            const auto length = reader.number<std::uint16_t>();
            if (length == no_limit) return {};
            const std::string_view bytes = reader.take(length);
            return narrow(bytes);
        }
        case n_text: {
            reader.take(4 + collation.size());
            const auto length = reader.number<std::uint32_t>();
            if (length == std::numeric_limits<std::uint32_t>::max()) return {};
            return narrow(reader.take(length));
        }
        default:
            throw std::runtime_error("a parameter of a type that the test server does not know: " +
                                     std::to_string(token));
    }
}

}  // namespace test::tds

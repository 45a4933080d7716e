// Values as JSON, for texts that a later version of the program may read. The fields of a structure are
// listed once, with TALLVEX_JSON, and are written and read by that list. Texts are read with the library
// nlohmann-json. They are written here without its tree of values, because every save and every change of an
// invoice writes one.
#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "common/amount.h"
#include "common/date_time.h"

// In the structure's own namespace. A field missing from a text keeps the structure's default, so fields with
// their default are left out.
#define TALLVEX_JSON(Type, ...)                                                    \
    inline void write_json(common::JsonWriter& to, const Type& from) {             \
        static const Type plain{};                                                 \
        to.begin_object();                                                         \
        NLOHMANN_JSON_EXPAND(NLOHMANN_JSON_PASTE(TALLVEX_JSON_WRITE, __VA_ARGS__)) \
        to.end_object();                                                           \
    }                                                                              \
    inline void from_json(const nlohmann::json& from, Type& to) {                  \
        static const Type plain{};                                                 \
        NLOHMANN_JSON_EXPAND(NLOHMANN_JSON_PASTE(TALLVEX_JSON_READ, __VA_ARGS__))  \
    }
#define TALLVEX_JSON_WRITE(name) to.field(#name, from.name, plain.name);
#define TALLVEX_JSON_READ(name) to.name = from.value(#name, plain.name);

namespace common {

// Appends one value after the other to a text. Bytes that are no UTF-8 become replacement characters, numbers
// that are not finite become null.
class JsonWriter {
  public:
    // Fields of these names are left out of all structures.
    explicit JsonWriter(std::initializer_list<std::string_view> left_out = {}) : left_out_(left_out) {}
    const std::string& text() const { return text_; }

    void value(std::string_view text);
    void value(const std::string& text) { value(std::string_view(text)); }
    void value(const char* text) { value(std::string_view(text)); }
    void value(double number);
    void value(bool is_true) { text_ += is_true ? "true" : "false"; }
    void value(std::nullopt_t) { text_ += "null"; }
    template <std::integral T>
    void value(T number) {
        text_ += std::to_string(number);
    }
    template <typename T>
    requires std::is_enum_v<T>
    void value(T choice) { value(static_cast<std::int64_t>(choice)); }
    template <typename T>
    void value(const std::optional<T>& from) {
        if (from)
            value(*from);
        else
            value(std::nullopt);
    }
    template <typename T>
    void value(const std::vector<T>& from) {
        begin('[');
        for (const T& one : from)
            element(one);
        end(']');
    }
    template <typename A, typename B>
    void value(const std::pair<A, B>& from) {
        list(from.first, from.second);
    }
    template <typename T>
    void value(const std::map<std::string, T>& from) {
        begin_object();
        for (const auto& [name, one] : from) {
            element(name);
            text_ += ':';
            value(one);
        }
        end_object();
    }
    // A tree of values of the library.
    template <std::same_as<nlohmann::json> T>
    void value(const T& tree) {
        text_ += tree.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    }
    // A structure with TALLVEX_JSON, or another type with a write_json of its own.
    template <typename T>
    requires requires(JsonWriter& to, const T& from) { write_json(to, from); }
    void value(const T& from) { write_json(*this, from); }

    template <typename... T>
    void list(const T&... all) {
        begin('[');
        (element(all), ...);
        end(']');
    }
    void begin_object() { begin('{'); }
    void end_object() { end('}'); }
    // A field of a structure, unless it has its default value.
    template <typename T>
    void field(std::string_view name, const T& from, const T& plain) {
        if (is_plain(from, plain) || is_left_out(name)) return;
        name_field(name);
        value(from);
    }

  private:
    // Structures within a structure are not compared.
    template <typename T>
    static bool is_plain(const T& from, const T& plain) {
        if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T> || std::is_same_v<T, std::string>)
            return from == plain;
        else
            return false;
    }
    template <typename T>
    static bool is_plain(const std::optional<T>& from, const std::optional<T>& plain) {
        return !from && !plain;
    }
    template <typename T>
    static bool is_plain(const std::vector<T>& from, const std::vector<T>& plain) {
        return from.empty() && plain.empty();
    }
    bool is_left_out(std::string_view name) const;
    void begin(char bracket);
    void end(char bracket);
    void separate();
    void name_field(std::string_view name);
    template <typename T>
    void element(const T& from) {
        separate();
        value(from);
    }

    std::vector<std::string_view> left_out_;
    std::string text_;
    bool is_first_ = true;  // in the innermost object or list
};

template <typename T>
std::string json_text(const T& value) {
    JsonWriter writer;
    writer.value(value);
    return writer.text();
}
// Throws std::exception if the text does not hold such a value.
template <typename T>
T from_json_text(std::string_view text) {
    return nlohmann::json::parse(text).get<T>();
}

TALLVEX_JSON(Date, year, month, day)
TALLVEX_JSON(TimeOfDay, hour, minute, second, millisecond)
TALLVEX_JSON(Moment, date, time)

inline void write_json(JsonWriter& to, Amount from) {
    to.value(from.hundredths());
}
inline void from_json(const nlohmann::json& from, Amount& to) {
    to = Amount::of_hundredths(from.get<std::int64_t>());
}

}  // namespace common

namespace nlohmann {

// An empty optional is null.
template <typename T>
struct adl_serializer<std::optional<T>> {
    static void from_json(const json& from, std::optional<T>& to) {
        if (from.is_null())
            to.reset();
        else
            to = from.get<T>();
    }
};

}  // namespace nlohmann

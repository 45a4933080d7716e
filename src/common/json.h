// Values as JSON (the library nlohmann-json), for texts that a later version of the program may read. The
// fields of a structure are listed once, with TALLVEX_JSON, and are written and read by that list.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "common/amount.h"
#include "common/date_time.h"

// In the structure's own namespace. A field that a text lacks keeps the structure's default, so fields that have
// it are left out: every save, and every change of an invoice, writes such texts.
#define TALLVEX_JSON(Type, ...)                                                    \
    inline void to_json(nlohmann::json& to, const Type& from) {                    \
        static const Type plain{};                                                 \
        to = nlohmann::json::object();                                             \
        NLOHMANN_JSON_EXPAND(NLOHMANN_JSON_PASTE(TALLVEX_JSON_WRITE, __VA_ARGS__)) \
    }                                                                              \
    inline void from_json(const nlohmann::json& from, Type& to) {                  \
        static const Type plain{};                                                 \
        NLOHMANN_JSON_EXPAND(NLOHMANN_JSON_PASTE(TALLVEX_JSON_READ, __VA_ARGS__))  \
    }
#define TALLVEX_JSON_WRITE(field) \
    if (!common::is_plain(from.field, plain.field)) to[#field] = from.field;
#define TALLVEX_JSON_READ(field) to.field = from.value(#field, plain.field);

namespace common {

// Whether a field is as in a new structure. Structures within it are not compared.
template <typename T>
bool is_plain(const T& value, const T& plain) {
    if constexpr (std::is_arithmetic_v<T> || std::is_enum_v<T> || std::is_same_v<T, std::string>)
        return value == plain;
    else
        return false;
}
template <typename T>
bool is_plain(const std::optional<T>& value, const std::optional<T>& plain) {
    return !value && !plain;
}
template <typename T>
bool is_plain(const std::vector<T>& value, const std::vector<T>& plain) {
    return value.empty() && plain.empty();
}

}  // namespace common

namespace nlohmann {

// Nothing is null.
template <typename T>
struct adl_serializer<std::optional<T>> {
    static void to_json(json& to, const std::optional<T>& from) {
        if (from)
            to = *from;
        else
            to = nullptr;
    }
    static void from_json(const json& from, std::optional<T>& to) {
        if (from.is_null())
            to.reset();
        else
            to = from.get<T>();
    }
};

}  // namespace nlohmann

namespace common {

// A value as a text. Bytes that are no UTF-8 become replacement characters.
template <typename T>
std::string json_text(const T& value) {
    return nlohmann::json(value).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}
// Throws std::exception for a text that holds no such value.
template <typename T>
T from_json_text(std::string_view text) {
    return nlohmann::json::parse(text).get<T>();
}

TALLVEX_JSON(Date, year, month, day)
TALLVEX_JSON(TimeOfDay, hour, minute, second, millisecond)
TALLVEX_JSON(Moment, date, time)

inline void to_json(nlohmann::json& to, Amount from) {
    to = from.hundredths();
}
inline void from_json(const nlohmann::json& from, Amount& to) {
    to = Amount::of_hundredths(from.get<std::int64_t>());
}

}  // namespace common

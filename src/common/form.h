// A form described once, as a table of its fields. Screens build, show and read the form by this table
// (ui/widgets/form.h); logic checks, loads and stores it by the same table (database/form.h).
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "common/date_time.h"

namespace common {

enum class FieldKind {
    text,     // free text
    digits,   // text that reads from the left: a telephone number, an e-mail address
    code,     // a whole number above 0, as it was typed
    amount,   // money, as it was typed
    date,     // a calendar date
    choice,   // one entry of a list, by its code
    options,  // one of a few buttons
    check,    // a check box
    search,   // text whose Enter searches
    figure    // a figure that is only shown
};

struct FieldOption {
    int value = 0;
    const char* caption = "";
};

// Row, first column and number of columns on the grid of the form.
struct FieldPlace {
    int row = 0;
    int column = 0;
    int columns = 1;
};

struct FieldDescription {
    const char* name = "";     // object name of the field on the screen
    const char* caption = "";  // "&" before the letter that leads to the field
    FieldKind kind = FieldKind::text;
    FieldPlace place{};
    std::string_view column{};   // in the table; empty if the form's logic stores the field itself
    std::string_view missing{};  // said if the field is empty; itself empty if the field may be left so
    std::string_view wrong{};    // said of a code that is not a valid one
    int longest = 0;             // characters that can be typed; 0 for the usual limit of the kind
    std::span<const FieldOption> options{};
};

using FieldValue = std::variant<std::monostate, std::string, std::optional<std::int64_t>, bool, Date>;

// One field of a form whose values are kept in a struct; without a member the screen deals with it itself.
template <typename Values>
struct FormField {
    std::variant<std::monostate, std::string Values::*, std::optional<std::int64_t> Values::*, bool Values::*,
                 Date Values::*>
        member;
    FieldDescription description;
};

template <typename Values>
using FormTable = std::span<const FormField<Values>>;

// Reading and setting a member. Not inlined, because GCC 12 would then warn about text members that the
// struct lacks.
//
// The value of a field; std::monostate for a field without a member.
template <typename Values>
[[gnu::noinline]] FieldValue value_of(const FormField<Values>& field, const Values& values) {
    return std::visit(
        [&](auto member) -> FieldValue {
            if constexpr (std::is_same_v<decltype(member), std::monostate>) {
                return {};
            } else {
                return values.*member;
            }
        },
        field.member);
}

// Sets a field that has a member; the value must be of the member's type.
template <typename Values>
[[gnu::noinline]] void set_value(const FormField<Values>& field, Values& values, FieldValue value) {
    std::visit(
        [&](auto member) {
            if constexpr (!std::is_same_v<decltype(member), std::monostate>) {
                using Member = std::remove_cvref_t<decltype(values.*member)>;
                values.*member = std::get<Member>(std::move(value));
            }
        },
        field.member);
}

}  // namespace common

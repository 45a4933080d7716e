// Why a form was not saved: the field at fault and what the cashier is told.
#pragma once

#include <string>
#include <string_view>

namespace common {

struct Refusal {
    std::string_view field;  // object name of the field that gets the focus; empty if no field is at fault
    std::string text;

    Refusal(std::string_view field_name, std::string_view reason) : field(field_name), text(reason) {}
};

}  // namespace common

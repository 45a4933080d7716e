// Cells that may be null.
#pragma once

#include <optional>
#include <string_view>

#include "database/connection.h"

namespace goods {

inline std::optional<double> number_or_none(const database::Row& row, std::string_view column) {
    if (row.null(column)) return std::nullopt;
    return row.number(column);
}

inline database::Value or_null(const std::optional<double>& number) {
    return number ? database::Value(*number) : database::Value(database::Null{});
}

}  // namespace goods

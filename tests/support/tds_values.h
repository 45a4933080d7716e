// Columns and values of the server's protocol: types, cells of rows, parameters of calls.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "database/value.h"
#include "support/tds_bytes.h"

namespace test::tds {

// A column's type as the protocol knows it.
struct Type {
    enum Kind { whole, bit, number, money, numeric, moment, text, large_text } kind = text;
    int size = 8;        // bytes of a whole number, a number or a moment; characters of a text
    int precision = 18;  // of a numeric
    int scale = 0;
};

// The type of a declaration such as "nvarchar(100)", "int", "real", "numeric(18, 2)"; nvarchar(4000) for an
// unknown one.
Type type_of(std::string_view declared);
// A type that holds all of the values, for a column that is not from a table.
Type type_of(const std::vector<const database::Value*>& values);

// A type and a value of it on the wire. A value of another type is converted as the server would.
std::string type_info(const Type& type);
std::string cell(const Type& type, const database::Value& value);

// Reads a parameter of a call with its type.
database::Value parameter(Reader& reader);

}  // namespace test::tds

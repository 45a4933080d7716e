#include "database/form.h"

#include "common/messages.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"

namespace database {

using common::FieldDescription;
using common::FieldKind;
using common::FieldValue;
using common::Refusal;

FieldValue field_value(const FieldDescription& field, const Row& row) {
    switch (field.kind) {
        case FieldKind::amount:
            return common::format_amount(row.number(field.column));
        case FieldKind::date:
            return row.moment(field.column).date;
        case FieldKind::choice:
            return row.null(field.column) ? std::optional<std::int64_t>()
                                          : std::optional(row.integer(field.column));
        case FieldKind::options:
        case FieldKind::check:
            return row.integer(field.column) == 1;
        default:
            return row.text(field.column);
    }
}

Value cell_of(const FieldDescription& field, const FieldValue& value) {
    switch (field.kind) {
        case FieldKind::code: {
            const auto code = common::read_code(std::get<std::string>(value));
            return code ? Value(*code) : Value(Null{});
        }
        case FieldKind::amount:
            return common::read_amount(std::get<std::string>(value)).value.value();
        case FieldKind::date:
            return common::Moment{std::get<common::Date>(value), {}};
        case FieldKind::choice: {
            const auto& code = std::get<std::optional<std::int64_t>>(value);
            return code ? Value(*code) : Value(Null{});
        }
        case FieldKind::options:
        case FieldKind::check:
            return std::int64_t{std::get<bool>(value) ? 1 : 0};
        default:
            return std::get<std::string>(value);
    }
}

std::optional<Refusal> check_missing(const FieldDescription& field, const FieldValue& value) {
    if (field.missing.empty()) return std::nullopt;
    const auto* text = std::get_if<std::string>(&value);
    const auto* choice = std::get_if<std::optional<std::int64_t>>(&value);
    const bool missing = (text != nullptr && common::trim(*text).empty()) || (choice != nullptr && !*choice);
    return missing ? std::optional(Refusal(field.name, field.missing)) : std::nullopt;
}

std::optional<Refusal> check_format(const FieldDescription& field, const FieldValue& value,
                                    const TextLimits& limits) {
    if (std::holds_alternative<std::monostate>(value)) return std::nullopt;
    std::string_view wrong;
    switch (field.kind) {
        case FieldKind::code: {
            const auto& text = std::get<std::string>(value);
            if (!common::trim(text).empty() && !common::read_code(text)) wrong = field.wrong;
            break;
        }
        case FieldKind::amount:
            wrong = common::read_amount(std::get<std::string>(value)).refusal;
            break;
        case FieldKind::date:
            if (!common::is_valid(std::get<common::Date>(value))) wrong = common::message::wrong_date;
            break;
        case FieldKind::text:
        case FieldKind::digits:
            if (!limits.fits(field.column, std::get<std::string>(value)))
                wrong = common::message::text_too_long;
            break;
        default:
            break;
    }
    return wrong.empty() ? std::nullopt : std::optional(Refusal(field.name, wrong));
}

}  // namespace database

#include "shop/list_editor.h"

#include <algorithm>

#include "common/text.h"
#include "database/choices.h"
#include "database/form.h"
#include "database/next_number.h"
#include "database/recordset.h"
#include "database/transaction.h"
#include "shop/messages.h"
#include "signin/permissions.h"

namespace shop {

using common::FieldKind;
using common::FieldValue;
using common::Refusal;
using database::Sql;

namespace {

std::string trimmed_name(const ListRow& row) {
    return std::string(common::trim(std::get<std::string>(row.values.front())));
}

FieldValue empty_value(const common::FieldDescription& field, const common::Date& today) {
    switch (field.kind) {
        case FieldKind::choice:
            return std::optional<std::int64_t>();
        case FieldKind::check:
            return false;
        case FieldKind::date:
            return today;
        case FieldKind::amount:
            return std::string("0.00");
        default:
            return std::string();
    }
}

}  // namespace

void ListEditor::open(const ListDescription& list) {
    list_ = &list;
    rows_.clear();
    for (const database::Row& row : connection_.query(Sql(list.all)))
        rows_.push_back(row_of(row));
    parents_.clear();
    if (list.parent.empty()) return;
    const ListDescription& parent = list_named(list.parent);
    parents_ =
        database::choices(connection_.query(Sql(parent.all)), parent.key, parent.fields.front().column);
}

ListRow ListEditor::row_of(const database::Row& row) const {
    ListRow read;
    read.code = row.integer(list_->key);
    if (!list_->parent.empty()) read.parent = row.integer(list_->parent_column);
    for (const common::FieldDescription& field : list_->fields)
        read.values.push_back(database::field_value(field, row));
    return read;
}

ListRow ListEditor::new_row() const {
    ListRow row;
    for (const common::FieldDescription& field : list_->fields)
        row.values.push_back(empty_value(field, services_.clock.now().date));
    return row;
}

std::vector<std::string> ListEditor::cells(const ListRow& row) const {
    std::vector<std::string> texts = {std::to_string(row.code)};
    for (const FieldValue& value : row.values) {
        if (const auto* text = std::get_if<std::string>(&value))
            texts.push_back(*text);
        else if (const auto* date = std::get_if<common::Date>(&value))
            texts.push_back(common::date_text(*date));
        else if (const auto* ticked = std::get_if<bool>(&value))
            texts.emplace_back(*ticked ? "نعم" : "");
        else if (const auto* choice = std::get_if<std::optional<std::int64_t>>(&value))
            texts.push_back(common::name_of(parents_, choice->value_or(0)));
    }
    return texts;
}

std::optional<Refusal> ListEditor::check(const ListRow& row) const {
    const database::TextLimits limits(connection_, list_->table);
    for (std::size_t i = 0; i < list_->fields.size(); ++i)
        if (auto refusal = database::check_missing(list_->fields[i], row.values[i])) return refusal;
    for (std::size_t i = 0; i < list_->fields.size(); ++i) {
        if (auto refusal = database::check_format(list_->fields[i], row.values[i], limits)) return refusal;
        const auto* text = std::get_if<std::string>(&row.values[i]);
        if (text != nullptr && common::printable(*text) != *text)
            return Refusal(list_->fields[i].name, message::name_not_plain);
    }
    std::vector<ListRow> others;
    std::ranges::copy_if(rows_, std::back_inserter(others), [&](const ListRow& other) {
        return other.code != row.code || (list_->is_counted_in_parent() && other.parent != row.parent);
    });
    for (const ListRow& other : others)
        if (other.parent == row.parent && common::equal_ignoring_case(trimmed_name(other), trimmed_name(row)))
            return Refusal("list_name", std::string(message::name_taken) + trimmed_name(row));
    return list_->check != nullptr ? list_->check(row, others) : std::nullopt;
}

std::optional<Refusal> ListEditor::save(ListRow& row, const ListRow& read) {
    for (FieldValue& value : row.values)
        if (auto* text = std::get_if<std::string>(&value)) *text = std::string(common::trim(*text));
    if (!list_->parent.empty()) row.parent = std::get<std::optional<std::int64_t>>(row.values[1]).value_or(0);
    if (auto refusal = check(row)) return refusal;
    if (!signin::authorise_change(session_, services_.prompts, signin::Action::edit_lists))
        return Refusal({}, {});
    std::optional<Refusal> refusal;
    database::in_transaction(connection_, [&] { refusal = write(row, read); });
    if (refusal) {
        open(*list_);
        return refusal;
    }
    connection_.make_durable();
    note(read.code == 0 ? "إضافة" : "تعديل", row);
    open(*list_);
    return std::nullopt;
}

std::optional<Refusal> ListEditor::write(ListRow& row, const ListRow& read) {
    database::hold_numbers(connection_);
    if (read.code == 0) {
        Sql highest(list_->highest);
        if (list_->is_counted_in_parent()) highest = highest + list_->where_parent + row.parent;
        row.code = database::integer_of(connection_.scalar(highest)) + 1;
    } else if (auto refusal = changed_since(read)) {
        return refusal;
    }
    database::Recordset target(connection_, narrowed(list_->row, row));
    if (read.code == 0) {
        target.add();
        target.set(list_->key, row.code);
    }
    for (std::size_t i = 0; i < list_->fields.size(); ++i)
        target.set(list_->fields[i].column, database::cell_of(list_->fields[i], row.values[i]));
    target.update();
    if (read.code == 0 && list_->added != nullptr) list_->added(connection_);
    return std::nullopt;
}

std::optional<Refusal> ListEditor::changed_since(const ListRow& read) {
    const auto found = connection_.query(narrowed(list_->row, read));
    if (found.empty()) return Refusal({}, message::row_is_gone);
    const ListRow now = row_of(found.front());
    if (now == read) return std::nullopt;
    std::string text(message::row_was_changed);
    const auto before = cells(read);
    const auto after = cells(now);
    for (std::size_t i = 1; i < before.size(); ++i) {
        if (before[i] == after[i]) continue;
        std::string caption = list_->fields[i - 1].caption;
        std::erase(caption, '&');
        text += "\n" + caption + ": " + after[i];
    }
    return Refusal({}, text);
}

std::optional<Refusal> ListEditor::erase(const ListRow& row) {
    if (!signin::authorise_change(session_, services_.prompts, signin::Action::edit_lists))
        return Refusal({}, {});
    std::optional<Refusal> refusal;
    database::in_transaction(connection_, [&] {
        refusal = changed_since(row);
        if (refusal) return;
        if (const std::string where = uses(row); !where.empty())
            refusal.emplace(std::string_view(), std::string(message::row_is_used) + where);
        else
            connection_.execute(narrowed(list_->erase, row));
    });
    if (!refusal) {
        connection_.make_durable();
        note("حذف", row);
    }
    open(*list_);
    return refusal;
}

Sql ListEditor::narrowed(database::Fragment statement, const ListRow& row) const {
    Sql sql = Sql(statement) + row.code;
    if (list_->is_counted_in_parent()) sql = sql + list_->and_parent + row.parent;
    return sql;
}

std::string ListEditor::uses(const ListRow& row) {
    std::vector<std::string_view> places;
    for (const Reference& reference : list_->references) {
        Sql find = Sql(reference.find) + row.code;
        if (!reference.and_parent.text().empty()) find = find + reference.and_parent + row.parent;
        const bool is_used = !connection_.query(find).empty();
        if (is_used && std::ranges::find(places, reference.words) == places.end())
            places.push_back(reference.words);
    }
    std::string text;
    for (const std::string_view place : places)
        text += (text.empty() ? "" : "، ") + std::string(place);
    return text;
}

void ListEditor::note(std::string_view what, const ListRow& row) {
    session_.note({.kind = audit::Kind::list_changed,
                   .what = std::string(list_->caption) + ": " + std::string(what) + " " +
                           std::to_string(row.code) + " " + trimmed_name(row)});
}

}  // namespace shop

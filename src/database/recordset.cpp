#include "database/recordset.h"

#include <algorithm>

#include "common/text.h"

namespace database {

namespace {

// The embedded engine's number of a row. No column can have this name.
constexpr std::string_view row_id = "$rowid";

bool is_name_character(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '$' || static_cast<unsigned char>(c) >= 0x80;
}

// Reads "select * from [dbo].[table]" word by word.
class Opening {
  public:
    explicit Opening(std::string_view text) : text_(text) {}

    bool word(std::string_view expected) {
        skip_blanks();
        if (!common::equal_ignoring_case(text_.substr(at_, expected.size()), expected)) return false;
        at_ += expected.size();
        return true;
    }

    std::string name() {
        skip_blanks();
        std::string found;
        if (at_ < text_.size() && text_[at_] == '[') {
            const auto end = text_.find(']', at_);
            if (end == text_.npos) return {};
            found = text_.substr(at_ + 1, end - at_ - 1);
            at_ = end + 1;
        } else {
            while (at_ < text_.size() && is_name_character(text_[at_]))
                found += text_[at_++];
        }
        if (at_ < text_.size() && text_[at_] == '.') {
            ++at_;
            return name();  // the part before was the schema
        }
        return found;
    }

    std::size_t position() const { return at_; }

  private:
    void skip_blanks() {
        while (at_ < text_.size() && static_cast<unsigned char>(text_[at_]) <= ' ')
            ++at_;
    }
    std::string_view text_;
    std::size_t at_ = 0;
};

void add_bracketed(std::string& text, std::string_view name) {
    text.append(1, '[').append(name).append(1, ']');
}

// Columns of these types cannot be compared on the server.
bool is_comparable(std::string_view type) {
    for (const std::string_view large : {"text", "ntext", "image", "xml"}) {
        if (common::equal_ignoring_case(type, large)) return false;
    }
    return true;
}

// A column of seven digits stores 4.6 as a nearby number, and must be compared as such.
bool is_rounded(std::string_view type) {
    return common::equal_ignoring_case(type, "real");
}

}  // namespace

Recordset::Recordset(Connection& connection, const Sql& statement)
    : connection_(connection), statement_(statement) {
    Opening opening(statement_.text());
    if (opening.word("select") && opening.word("*") && opening.word("from")) table_ = opening.name();
    if (table_.empty()) {
        throw Error("42000", "A recordset opens on \"select * from\" one table.", statement_.text());
    }
}

const Connection::Table& Recordset::shape() {
    if (!shape_) shape_ = connection_.description(table_);
    return *shape_;
}

std::size_t Recordset::column_at(std::string_view column) {
    const auto& columns = shape().columns;
    // Columns are usually set in the same order.
    if (pending_.size() < inserted_.size()) {
        const std::size_t next = inserted_[pending_.size()];
        if (common::equal_ignoring_case(columns[next], column)) return next;
    }
    for (std::size_t at = 0; at < columns.size(); ++at) {
        if (common::equal_ignoring_case(columns[at], column)) return at;
    }
    throw Error("42S22", "Invalid column name '" + std::string(column) + "'.", statement_.text());
}

Value* Recordset::pending(std::size_t column) {
    if (column >= places_.size() || places_[column] == 0) return nullptr;
    return &values_[places_[column] - 1];
}

void Recordset::load() {
    if (loaded_) return;
    const std::string_view written = statement_.text();
    std::string text;
    text.reserve(written.size() + 1 + row_id.size());
    const std::size_t behind_all = connection_.is_embedded() ? written.find('*') + 1 : 0;
    text.append(written, 0, behind_all);
    if (behind_all > 0) text.append(",").append(row_id);
    text.append(written, behind_all);
    std::vector<Row> read = connection_.run(text, {}).result.release();
    const std::size_t width = shape().columns.size();
    rows_.clear();
    rows_.reserve(read.size());
    for (Row& row : read) {
        Record record{std::move(row).release(), Null{}};
        if (connection_.is_embedded()) {
            record.id = record.cells.back();
            record.cells.pop_back();
        }
        // A column that was added after the table was described is not written.
        record.cells.resize(width);
        rows_.push_back(std::move(record));
    }
    loaded_ = true;
}

bool Recordset::empty() {
    load();
    return rows_.empty();
}

std::size_t Recordset::size() {
    load();
    return rows_.size();
}

bool Recordset::at_end() {
    load();
    return position_ >= rows_.size();
}

void Recordset::leave_row() {
    if (!pending_.empty() || adding_) {
        throw Error("HY010", "The row has changes; update() or cancel() comes first.", statement_.text());
    }
}

void Recordset::move_first() {
    leave_row();
    position_ = 0;
}

void Recordset::move_next() {
    leave_row();
    if (!at_end()) ++position_;
}

void Recordset::move_to(std::size_t row) {
    leave_row();
    position_ = row;
}

Recordset::Record& Recordset::current() {
    load();
    if (position_ >= rows_.size()) throw Error("24000", "There is no current row.", statement_.text());
    return rows_[position_];
}

Value Recordset::get(std::string_view column) {
    const std::size_t at = column_at(column);
    if (const Value* set = pending(at)) return *set;
    if (adding_) return Null{};
    return current().cells[at];
}

void Recordset::add() {
    leave_row();
    adding_ = true;
}

void Recordset::set(std::string_view column, Value value) {
    const std::size_t at = column_at(column);
    if (!adding_) current();
    if (Value* set = pending(at)) {
        *set = std::move(value);
        return;
    }
    places_.resize(shape().columns.size());
    pending_.push_back(at);
    places_[at] = pending_.size();
    values_.push_back(std::move(value));
}

void Recordset::cancel() {
    for (const std::size_t at : pending_)
        places_[at] = 0;
    pending_.clear();
    values_.clear();
    adding_ = false;
}

void Recordset::update() {
    if (!adding_ && pending_.empty()) return;
    const Command command = adding_ ? insert_command() : update_command();
    const std::int64_t changed = connection_.run(command.text(), command.values()).changed;
    if (command.must_change() && changed == 0) throw Connection::unchanged(command);
    count_as_written();
}

Command Recordset::take_update() {
    // A new row is not kept until the others are read, so its values can be moved.
    std::vector<Value> values;
    const bool is_kept = !adding_ || loaded_;
    if (!is_kept) values.swap(values_);
    Command command = adding_ ? insert_command() : update_command();
    if (!is_kept) command.values_ = std::move(values);
    count_as_written();
    values_.reserve(inserted_.size());
    return command;
}

// If the rows have not been read yet, a new one will be among them; else it is appended, without the values
// that the server filled in.
void Recordset::count_as_written() {
    if (!adding_) {
        write_into(current());
    } else if (loaded_) {
        Record record{std::vector<Value>(shape().columns.size()), Null{}};
        write_into(record);
        rows_.push_back(std::move(record));
        position_ = rows_.size() - 1;
    }
    cancel();
}

void Recordset::write_into(Record& record) {
    record.written.resize(record.cells.size());
    for (std::size_t i = 0; i < pending_.size(); ++i) {
        record.cells[pending_[i]] = values_[i];
        record.written[pending_[i]] = true;
    }
}

Command Recordset::command_of(std::string text, std::vector<Value> values) {
    Command command;
    command.text_ = std::move(text);
    command.values_ = std::move(values);
    return command;
}

Command Recordset::insert_command() {
    if (insert_.empty() || inserted_ != pending_) {
        insert_ = "insert into ";
        add_bracketed(insert_, table_);
        const char* before = " (";
        for (const std::size_t at : pending_) {
            add_bracketed(insert_ += before, shape().columns[at]);
            before = ",";
        }
        before = ") values (?";
        for (std::size_t i = 0; i < pending_.size(); ++i) {
            insert_ += before;
            before = ",?";
        }
        insert_ += pending_.empty() ? " default values" : ")";
        inserted_ = pending_;
    }
    return command_of(insert_, values_);
}

Command Recordset::update_command() {
    Record& record = current();
    const auto& [columns, types, key] = shape();
    std::vector<Value> values;
    values.reserve(pending_.size() + record.cells.size() + 1);
    // A row number identifies one row by itself.
    std::string text;
    text.reserve(40 * (record.cells.size() + 2));
    text = is_null(record.id) ? "update top (1) " : "update ";
    add_bracketed(text, table_);
    const char* before = " set ";
    for (const std::size_t at : pending_) {
        add_bracketed(text += before, columns[at]);
        text += "=?";
        before = ",";
    }
    values.insert(values.end(), values_.begin(), values_.end());
    before = " where ";
    if (!is_null(record.id)) {
        text.append(before).append(row_id).append("=?");
        values.push_back(record.id);
        before = " and ";
    }
    // Comparing all former values detects every change by another till. Among rows that are equal in all of
    // them it makes no difference which one is written.
    for (std::size_t at = 0; at < record.cells.size(); ++at) {
        if (!is_comparable(types[at])) continue;
        add_bracketed(text += before, columns[at]);
        before = " and ";
        if (is_null(record.cells[at])) {
            text += " is null";
            continue;
        }
        if (record.is_written(at) || is_rounded(types[at]))
            text.append("=convert(").append(types[at]).append(",?)");
        else
            text += "=?";
        values.push_back(record.cells[at]);
    }
    return command_of(std::move(text), std::move(values)).that_must_change();
}

}  // namespace database

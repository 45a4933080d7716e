#include "database/recordset.h"

#include <algorithm>

#include "common/text.h"

namespace database {

namespace {

// Stands for a row of the embedded engine as long as it exists; no column of its name can be.
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

std::string bracketed(std::string_view name) {
    return "[" + std::string(name) + "]";
}

// Columns of these types cannot be compared on the server.
bool is_comparable(std::string_view type) {
    for (const std::string_view large : {"text", "ntext", "image", "xml"}) {
        if (common::equal_ignoring_case(type, large)) return false;
    }
    return true;
}

// A column of seven digits holds 4.6 as a number beside it, and is compared with what it holds.
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
    if (!shape_) shape_ = connection_.describe(table_);
    return *shape_;
}

std::size_t Recordset::column_at(std::string_view column) {
    const auto& columns = shape().columns;
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const std::string& name) {
        return common::equal_ignoring_case(name, column);
    });
    if (found == columns.end()) {
        throw Error("42S22", "Invalid column name '" + std::string(column) + "'.", statement_.text());
    }
    return static_cast<std::size_t>(found - columns.begin());
}

void Recordset::load() {
    if (loaded_) return;
    std::string text = statement_.text();
    if (connection_.is_embedded()) text.replace(text.find('*'), 1, "*,$rowid");
    const Result result = connection_.run(text, {}).result;
    const std::size_t width = shape().columns.size();
    rows_.clear();
    rows_.reserve(result.size());
    for (const Row& row : result) {
        Record record{row.cells(), Null{}};
        if (connection_.is_embedded()) {
            record.id = record.cells.back();
            record.cells.pop_back();
        }
        // A column added since the table was described is not ours to write.
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

void Recordset::move_last() {
    leave_row();
    load();
    position_ = rows_.empty() ? 0 : rows_.size() - 1;
}

Recordset::Record& Recordset::current() {
    load();
    if (position_ >= rows_.size()) throw Error("24000", "There is no current row.", statement_.text());
    return rows_[position_];
}

Value Recordset::get(std::string_view column) {
    const std::size_t at = column_at(column);
    for (const auto& [pending, value] : pending_) {
        if (pending == at) return value;
    }
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
    for (auto& [pending, former] : pending_) {
        if (pending == at) {
            former = std::move(value);
            return;
        }
    }
    pending_.emplace_back(at, std::move(value));
}

void Recordset::cancel() {
    pending_.clear();
    adding_ = false;
}

void Recordset::update() {
    if (adding_) {
        insert_row();
    } else if (!pending_.empty()) {
        update_row();
    }
    pending_.clear();
    adding_ = false;
}

void Recordset::insert_row() {
    std::string columns, marks;
    std::vector<Value> values;
    for (const auto& [at, value] : pending_) {
        columns += (columns.empty() ? "" : ",") + bracketed(shape().columns[at]);
        marks += marks.empty() ? "?" : ",?";
        values.push_back(value);
    }
    const std::string text =
        "insert into " + bracketed(table_) +
        (values.empty() ? " default values" : " (" + columns + ") values (" + marks + ")");
    connection_.run(text, values);
    // Rows not read yet will be read with the new one; rows already read get it appended, without what the
    // server filled in by itself.
    if (!loaded_) return;
    Record record{std::vector<Value>(shape().columns.size()), Null{}};
    for (const auto& [at, value] : pending_) {
        record.cells[at] = value;
        record.written.insert(at);
    }
    rows_.push_back(std::move(record));
    position_ = rows_.size() - 1;
}

void Recordset::update_row() {
    Record& record = current();
    std::string sets, where;
    std::vector<Value> values;
    for (const auto& [at, value] : pending_) {
        sets += (sets.empty() ? "" : ",") + bracketed(shape().columns[at]) + "=?";
        values.push_back(value);
    }
    if (!is_null(record.id)) {
        where = std::string(row_id) + "=?";
        values.push_back(record.id);
    }
    // All former values: whatever another till changed since is seen, and among rows that are equal in all of
    // them it makes no difference which one is written.
    for (std::size_t at = 0; at < record.cells.size(); ++at) {
        if (!is_comparable(shape().types[at])) continue;
        where += (where.empty() ? "" : " and ") + bracketed(shape().columns[at]);
        if (is_null(record.cells[at])) {
            where += " is null";
        } else {
            const std::string& type = shape().types[at];
            where += record.written.contains(at) || is_rounded(type) ? "=convert(" + type + ",?)" : "=?";
            values.push_back(record.cells[at]);
        }
    }
    // A row's own number names one row already.
    const std::string text = std::string("update ") + (is_null(record.id) ? "top (1) " : "") +
                             bracketed(table_) + " set " + sets + (where.empty() ? "" : " where " + where);
    if (connection_.run(text, values).changed == 0) {
        throw Error("40001", "The row was changed or deleted by another workstation.", text);
    }
    for (const auto& [at, value] : pending_) {
        record.cells[at] = value;
        record.written.insert(at);
    }
}

}  // namespace database

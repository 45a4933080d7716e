#include "accounts/voucher_rows.h"

#include "common/json.h"
#include "database/next_number.h"
#include "database/recordset.h"

namespace database {

static void write_json(common::JsonWriter& to, const Value& from) {
    std::visit(
        [&to](const auto& cell) {
            if constexpr (std::is_same_v<std::decay_t<decltype(cell)>, Null>)
                to.value(std::nullopt);
            else
                to.value(cell);
        },
        from);
}

}  // namespace database

namespace accounts {

using database::Recordset;
using database::Sql;
using database::Value;

namespace {

Value value_of(const nlohmann::json& cell) {
    if (cell.is_number_integer()) return cell.get<std::int64_t>();
    if (cell.is_number()) return cell.get<double>();
    if (cell.is_string()) return cell.get<std::string>();
    if (cell.is_object()) return cell.get<common::Moment>();
    return database::Null{};
}

}  // namespace

void insert_voucher(database::Connection& connection, const VoucherRecord& record, std::int64_t id) {
    Recordset row(connection, "select * from vencuspay");
    row.add();
    set_columns(row, record, std::nullopt);
    row.set("pay_id", id);
    row.update();
}

void VoucherRows::write() {
    journal_.once(static_cast<int>(VoucherStep::voucher),
                  [this] { return save_.former ? rewrite_row() : add_row(); });
    finished_ = VoucherStep::voucher;
    journal_.once(static_cast<int>(VoucherStep::balance), [this] { return move_party(); });
    finished_ = VoucherStep::balance;
}

void VoucherRows::undo() {
    journal_.undo(
        [this](int step, const std::string& noted) { take_back(static_cast<VoucherStep>(step), noted); });
}

void VoucherRows::take_back(VoucherStep step, const std::string& noted) {
    const VoucherKey key = save_.key();
    if (step == VoucherStep::balance) {
        move_balance(connection_, key.party_kind, key.party, -common::from_json_text<double>(noted));
    } else if (save_.former) {
        restore_row(noted);
    } else {
        const std::int64_t id = noted.empty() ? key.id : std::stoll(noted);
        connection_.execute(Sql("delete from vencuspay where pay_id = ") + id + " and vcode = " + key.party +
                            " and ztype = " + static_cast<int>(key.party_kind) +
                            " and chkno = " + database::quoted(key.number));
    }
}

// Returns the number that the voucher has got.
std::string VoucherRows::add_row() {
    database::hold_numbers(connection_);
    const Sql same_number = Sql("select count(*) from vencuspay where pay_id = ") + save_.id;
    id_ =
        database::integer_of(connection_.scalar(same_number)) == 0 ? save_.id : next_voucher_id(connection_);
    insert_voucher(connection_, save_.record, id_);
    return std::to_string(id_);
}

// Returns the cells that the row had.
std::string VoucherRows::rewrite_row() {
    const auto found = find_voucher(connection_, save_.record.kind, *save_.former);
    if (!found) throw database::Error("02000", "the voucher is gone", "vencuspay");
    std::map<std::string, Value> cells;
    const auto columns = connection_.description("vencuspay")->columns;
    for (const std::string& column : columns)
        cells[column] = found->row.value(column);
    Recordset row(connection_, found->statement);
    move_to(row, *save_.former);
    set_columns(row, save_.record, method_of(found->row));
    row.set("pay_id", save_.id);
    row.update();
    return common::json_text(cells);
}

void VoucherRows::restore_row(const std::string& noted) {
    Recordset row(connection_, find_statement(save_.record.kind, save_.key()));
    move_to(row, save_.key());
    const nlohmann::json cells = nlohmann::json::parse(noted);
    for (const auto& [column, cell] : cells.items())
        row.set(column, value_of(cell));
    row.update();
}

std::string VoucherRows::move_party() {
    const VoucherRecord& record = save_.record;
    const VoucherKey key = save_.key();
    const double by =
        effect_on_balance(record.kind, record.party_kind, record.method, key.amount.value()) - save_.moved;
    balance_ = move_balance(connection_, key.party_kind, key.party, by);
    return common::json_text(by);
}

}  // namespace accounts

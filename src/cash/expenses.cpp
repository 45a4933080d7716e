#include "cash/expenses.h"

#include "cash/messages.h"
#include "common/messages.h"
#include "common/typed.h"
#include "database/form.h"

namespace cash {

using common::FieldKind;
using common::FormField;
using common::Refusal;
using database::Sql;

namespace {

constexpr std::string_view drawer_field = "expense_drawer";
constexpr std::string_view value_field = "expense_value";

constexpr FormField<Expense> expense_fields[] = {
    // store, drawer
    {&Expense::store,
     {"expense_store", "ال&مخزن", FieldKind::choice, {0, 0}, "stcode", message::complete_data}},
    {&Expense::drawer,
     {drawer_field.data(), "الخ&زينة", FieldKind::choice, {0, 1}, "cash_n", common::message::enter_drawer}},
    // main heading, sub heading
    {&Expense::main_heading,
     {"expense_main", "المصروف ال&رئيسي", FieldKind::choice, {1, 0}, "mcode", message::enter_main_heading}},
    {&Expense::sub_heading,
     {"expense_sub", "المصروف ال&فرعي", FieldKind::choice, {1, 1}, "scode", message::enter_sub_heading}},
    // value, date
    {&Expense::value, {value_field.data(), "ال&قيمة", FieldKind::amount, {2, 0}, "Value"}},
    {&Expense::date, {"expense_date", "ال&تاريخ", FieldKind::date, {2, 1}, "expdate"}},
    // notes
    {&Expense::notes, {"expense_notes", "م&لاحظات", FieldKind::text, {3, 0, 2}, "notes", "", "", 200}},
};

}  // namespace

common::FormTable<Expense> expense_form() {
    return expense_fields;
}

void Expenses::open() {
    expense = {};
    drawers_of_.reset();
    sub_headings_of_.reset();
    stores_ = database::load_stores(connection_);
    main_headings_ = database::choices(connection_.query("select * from mainx"));
    sub_headings_.clear();
    choose_store(session_.store_code);
    if (contains(drawers_, session_.cash_point)) expense.drawer = session_.cash_point;
    expense.date = services_.clock.now().date;
    done_ = false;
}

void Expenses::choose_store(std::optional<std::int64_t> store) {
    expense.store = store;
    if (store == drawers_of_) return;
    expense.drawer.reset();
    drawers_.clear();
    if (store) drawers_ = database::load_drawers(connection_, *store);
    drawers_of_ = store;
}

void Expenses::choose_main_heading(std::optional<std::int64_t> heading) {
    expense.main_heading = heading;
    if (heading == sub_headings_of_) return;
    expense.sub_heading.reset();
    sub_headings_.clear();
    if (heading) {
        sub_headings_ =
            database::choices(connection_.query(Sql("select * from subx where mcode=") + *heading));
    }
    sub_headings_of_ = heading;
}

std::optional<Refusal> Expenses::check() const {
    if (auto refusal =
            database::check(expense_form(), expense, database::TextLimits(connection_, "dailyexp")))
        return refusal;
    if (common::read_amount(expense.value).value.is_zero())
        return Refusal{value_field, std::string(common::message::enter_value)};
    // Looked up again: a drawer may have been deleted while the screen was open.
    if (!contains(database::load_drawers(connection_, *expense.store), *expense.drawer))
        return Refusal{drawer_field, std::string(common::message::no_such_drawer)};
    return std::nullopt;
}

std::optional<Refusal> Expenses::save() {
    if (auto refusal = check()) return refusal;
    database::Recordset row(connection_, "select * from dailyexp");
    row.add();
    row.set("time_", database::Value(services_.clock.now()));
    database::store(expense_form(), expense, row);
    row.update();
    connection_.make_durable();

    done_ = !services_.prompts.question(message::another_expense, common::Icon::question);
    if (!done_) expense.value = "0.00";
    return std::nullopt;
}

}  // namespace cash

#include "cash/expenses.h"

#include "cash/messages.h"
#include "common/numbers.h"
#include "database/recordset.h"

namespace cash {

void Expenses::open() {
    stores_ = database::load_stores(connection_);
    main_headings_ = load_main_headings(connection_);
    sub_headings_.clear();
    main_heading_.reset();
    sub_heading_.reset();
    choose_store(session_.store_code);
    if (contains(drawers_, session_.cash_point)) drawer_ = session_.cash_point;
    date = services_.clock.now().date;
    value = "0.00";
    notes.clear();
    done_ = false;
}

void Expenses::choose_store(std::int64_t store) {
    store_ = store;
    drawers_ = database::load_drawers(connection_, store);
    drawer_.reset();
}

void Expenses::choose_main_heading(std::int64_t heading) {
    main_heading_ = heading;
    sub_headings_ = load_sub_headings(connection_, heading);
    sub_heading_.reset();
}

bool Expenses::refuse(std::string_view text) {
    services_.prompts.message(text, common::Icon::critical);
    return false;
}

bool Expenses::save() {
    if (!drawer_) return refuse(message::enter_drawer);
    if (!main_heading_) return refuse(message::enter_main_heading);
    if (!sub_heading_) return refuse(message::enter_sub_heading);
    // A value below half a hundredth is 0; what is no number is said to be none.
    const auto amount = read_amount(value);
    if (!amount) {
        value = "0.00";
        return refuse(message::no_amount);
    }
    if (*amount == 0) return refuse(message::enter_value);
    // Looked up again: a drawer may have been deleted while the screen stood open.
    if (!contains(database::load_drawers(connection_, store_), *drawer_))
        return refuse(message::no_such_drawer);

    database::Recordset expenses(connection_, "select * from dailyexp");
    expenses.add();
    expenses.set("time_", database::Value(services_.clock.now()));
    expenses.set("Value", *amount);
    expenses.set("notes", notes);
    expenses.set("expdate", date);
    expenses.set("stcode", store_);
    expenses.set("mcode", *main_heading_);
    expenses.set("scode", *sub_heading_);
    expenses.set("cash_n", *drawer_);
    expenses.update();
    connection_.make_durable();

    if (services_.prompts.question(message::another_expense, common::Icon::question)) {
        value = "0.00";
    } else {
        done_ = true;
    }
    return true;
}

}  // namespace cash

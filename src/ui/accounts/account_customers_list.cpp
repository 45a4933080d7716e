#include "ui/accounts/account_customers_list.h"

#include "accounts/customer_list.h"
#include "common/numbers.h"
#include "ui/accounts/customer_card_sheet.h"
#include "ui/accounts/account_statement_screen.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

std::vector<Person> account_customers(const Context& context) {
    std::vector<Person> people;
    guarded(context.services, "AccountCustomers", [&] {
        for (const accounts::CustomerRow& row : accounts::list_customers(context.connection)) {
            people.push_back({row.code,
                              {"\u200e" + QString::number(row.code), qt(row.name), "\u200e" + qt(row.phone),
                               "\u200e" + qt(common::format_amount(row.balance))}});
        }
    });
    return people;
}

bool open_card(QWidget* host, const Context& context, accounts::CardMode mode, std::int64_t code) {
    CustomerCardSheet screen(host, context);
    bool opened = false;
    guarded(context.services, "CustomerCard", [&] { opened = screen.open(mode, code); });
    return opened && screen.run() == 1;
}

}  // namespace

AccountCustomers::AccountCustomers(QWidget* host, const Context& context)
    : PeopleList(host, "customers", "عملاء الآجل", {"كود", "الاسم", "التليفون", "الرصيد"}, 1,
                 [context] { return account_customers(context); }) {
    setObjectName("account_customers");
    set_card_width(860);
    add_action("customers_view", "&عرض  Enter", true, [this, context](std::int64_t code) {
        return open_card(this, context, accounts::CardMode::view, code);
    });
    add_action("customers_edit", "&تعديل", true, [this, context](std::int64_t code) {
        return open_card(this, context, accounts::CardMode::edit, code);
    });
    add_action("customers_new", "عميل &جديد", false, [this, context](std::int64_t) {
        return open_card(this, context, accounts::CardMode::add, 0);
    });
    add_action("customers_statement", "&كشف حساب", true, [this, context](std::int64_t code) {
        Form39 screen(this, context);
        if (guarded(context.services, "AccountStatement", [&] { screen.open(code); })) screen.run();
        return false;
    });
    add_back();
    reload();
}

}  // namespace ui

#include "ui/accounts/people_list.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "accounts/parties.h"
#include "common/amount.h"
#include "common/numbers.h"
#include "common/search.h"
#include "ui/accounts/account_statement_screen.h"
#include "ui/accounts/customer_card_sheet.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

PeopleList::PeopleList(QWidget* host, const QString& name, const QString& title, const QStringList& headings,
                       int stretch, std::function<std::vector<Person>()> load)
    : Sheet(host, title), load_(std::move(load)), name_(name), pause_([this] { narrow(); }) {
    search_ = text_field(name + "_search");
    set_hint(search_, "كود أو جزء من الاسم");
    body()->addWidget(captioned("&بحث", search_));
    list_ = new ListTable(name + "_list", headings, stretch);
    list_->setMinimumHeight(px(340));
    body()->addWidget(list_, 1);
    count_ = label({}, "side");
    count_->setObjectName(name + "_count");
    body()->addWidget(count_);
    buttons_ = new QHBoxLayout;
    buttons_->setSpacing(px(10));
    body()->addLayout(buttons_);

    connect(search_, &QLineEdit::textChanged, this, [this] { pause_.begin(); });
    connect(list_, &ListTable::left_upwards, search_, qOverload<>(&QWidget::setFocus));
    connect(list_, &ListTable::row_taken, this, [this] {
        if (!actions_.empty()) act(actions_.front());
    });
}

void PeopleList::add_action(const char* name, const QString& caption, bool needs_person, Action action) {
    actions_.push_back({needs_person, std::move(action)});
    const std::size_t at = actions_.size() - 1;
    QPushButton* button = foot_button(buttons_, name, caption, 1, [this, at] { act(actions_[at]); });
    if (at == 0) set_role(button, "main");
}

void PeopleList::add_back() {
    foot_button(buttons_, qPrintable(name_ + "_back"), "&رجوع", 1, [this] { leave(0); });
}

void PeopleList::take_focus() {
    search_->setFocus();
}

void PeopleList::reload() {
    people_ = load_();
    sought_.clear();
    std::vector<QStringList> rows;
    for (const Person& person : people_) {
        rows.push_back(person.cells);
        sought_.push_back(common::folded(utf8(person.cells.mid(1).join('\n'))));
    }
    list_->say_when_empty(people_.empty() ? "القائمة فارغة · أضف أول اسم بالزر أسفلها"
                                          : "لا يوجد ما يطابق البحث · اكتب جزءا أقصر من الاسم");
    list_->show_rows(std::move(rows));
    narrow();
}

void PeopleList::narrow() {
    const std::string typed = utf8(search_->text().trimmed());
    const auto code = common::parse_integer(typed);
    const std::vector<std::string> words = common::search_words(typed);
    list_->narrow([&](int row) {
        const auto at = static_cast<std::size_t>(row);
        return people_[at].code == code || common::contains_words(sought_[at], words);
    });
    const int found = list_->shown_count();
    count_->setText(people_.empty() ? QString("القائمة فارغة")
                    : found == 0    ? QString("لا يوجد ما يطابق البحث")
                                    : "العدد " + QString::number(found));
}

void PeopleList::act(const Offered& offered) {
    if (Sheet::top_of(window()) != this) return;
    pause_.end();
    const int row = list_->current_row();
    if (offered.needs_person && row < 0) {
        search_->setFocus();
        return;
    }
    if (offered.action(row < 0 ? 0 : people_[static_cast<std::size_t>(row)].code)) {
        reload();
        if (row >= 0) list_->choose_row(row);
    }
    if (list_->shown_count() > 0) list_->setFocus();
}

void PeopleList::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Down:
            pause_.end();
            if (list_->shown_count() > 0) list_->setFocus();
            event->accept();
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!actions_.empty()) act(actions_.front());
            event->accept();
            return;
        default:
            Sheet::keyPressEvent(event);
    }
}

namespace {

std::vector<Person> account_customers(const Context& context) {
    std::vector<Person> people;
    guarded(context.services, "AccountCustomers", [&] {
        for (const accounts::CustomerRow& row : accounts::list_customers(context.connection)) {
            people.push_back({row.code,
                              {figure(row.code), qt(row.name), figure(row.phone),
                               figure(common::Amount(row.balance).text())}});
        }
    });
    return people;
}

bool open_card(QWidget* host, const Context& context, accounts::CardMode mode, std::int64_t code) {
    CustomerCardSheet sheet(host, context);
    bool opened = false;
    guarded(context.services, "CustomerCard", [&] { opened = sheet.open(mode, code); });
    return opened && sheet.run() == 1;
}

}  // namespace

AccountCustomersList::AccountCustomersList(QWidget* host, const Context& context)
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
        AccountStatementScreen screen(this, context);
        if (guarded(context.services, "AccountStatement", [&] { screen.open(code); })) screen.run();
        return false;
    });
    add_back();
    reload();
}

namespace {

std::vector<Person> tips_receivers(const Context& context) {
    std::vector<Person> people;
    guarded(context.services, "TipsReceivers", [&] {
        for (const common::Choice& receiver : accounts::load_tips_receivers(context.connection))
            people.push_back({receiver.code, {figure(receiver.code), qt(receiver.name)}});
    });
    return people;
}

}  // namespace

TipsReceiversList::TipsReceiversList(QWidget* host, const Context& context)
    : PeopleList(host, "receivers", "عملاء الإكراميات", {"كود", "الاسم"}, 1,
                 [context] { return tips_receivers(context); }) {
    setObjectName("tips_receivers");
    set_card_width(560);
    add_action("receivers_edit", "&تعديل  Enter", true, [this, context](std::int64_t code) {
        TipsReceiverSheet sheet(this, context);
        bool opened = false;
        guarded(context.services, "TipsReceiver", [&] { opened = sheet.open_edit(code); });
        return opened && sheet.run() == 1;
    });
    add_action("receivers_add", "إ&ضافة", false, [this, context](std::int64_t) {
        TipsReceiverSheet sheet(this, context);
        return guarded(context.services, "TipsReceiver", [&] { sheet.open_new(); }) && sheet.run() == 1;
    });
    add_back();
    reload();
}

TipsReceiverSheet::TipsReceiverSheet(QWidget* host, const Context& context)
    : Sheet(host), context_(context), logic_(context.connection) {
    setObjectName("Form36");
    set_card_width(480);
    title_ = label({}, "title");
    title_->setObjectName("receiver_title");
    body()->addWidget(title_);
    FieldGrid grid(1, 14);
    form_.add(accounts::tips_receiver_form(), grid);
    body()->addLayout(grid.layout());
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    QPushButton* save = foot_button(row, "receiver_save", "&حفظ", 2, [this] { this->save(); });
    set_role(save, "main");
    foot_button(row, "receiver_close", "إ&غلاق", 1, [this] { leave(0); });
    body()->addSpacing(px(4));
    body()->addLayout(row);
    form_.lead_on(accounts::tips_receiver_form(), save);
}

void TipsReceiverSheet::open_new() {
    logic_.open_new();
    show_entry();
}

bool TipsReceiverSheet::open_edit(std::int64_t receiver) {
    if (!form_.accept(logic_.open_edit(receiver), context_.services.prompts)) return false;
    show_entry();
    return true;
}

void TipsReceiverSheet::show_entry() {
    title_->setText(qt(logic_.title()));
    form_.show(logic_.fields);
    set_fixed(form_.field("receiver_code"), logic_.is_editing());
}

void TipsReceiverSheet::take_focus() {
    form_.field("receiver_name")->setFocus();
    form_.line("receiver_name")->selectAll();
}

void TipsReceiverSheet::save() {
    if (Sheet::top_of(window()) != this) return;
    if (form_.save(context_.services, "SaveTipsReceiver", logic_.fields, [this] { return logic_.save(); }))
        leave(1);
}

}  // namespace ui

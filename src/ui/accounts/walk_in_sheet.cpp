#include "ui/accounts/walk_in_sheet.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "sales/sales_desk.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// "A walk-in customer is recorded on cash receipts only."
constexpr std::string_view walk_in_on_account = "العميل النقدي يسجل على البون النقدي فقط";

}  // namespace

using accounts::CashCustomer;

WalkInSheet::WalkInSheet(QWidget* host, const Context& context, sales::SalesDesk& desk)
    : Sheet(host, "العميل النقدي"), context_(context), desk_(desk), logic_(context.connection) {
    setObjectName("Cust_cash");
    set_card_width(780);
    FieldGrid grid(2, 10);
    form_.add(accounts::walk_in_form(), grid);
    grid.layout()->setColumnStretch(0, 2);
    grid.layout()->setColumnStretch(1, 3);
    body()->addLayout(grid.layout());

    results_ = new ListTable("walk_ins", {"الاسم", "التليفون", "البريد الإلكتروني", "كود"}, 0);
    results_->setMinimumHeight(px(260));
    results_->say_when_empty("اكتب جزءا من الاسم أو التليفون ثم Enter للبحث عن عميل سابق");
    body()->addWidget(results_, 1);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    confirm_ = foot_button(row, "walk_in_confirm", "&موافق", 2, [this] { confirm(); });
    set_role(confirm_, "main");
    without_ = foot_button(row, "walk_in_none", "&بدون عميل", 1, [this] {
        desk_.header().choose_walk_in(std::nullopt);
        leave(1);
    });
    foot_button(row, "walk_in_back", "&رجوع", 1, [this] { leave(0); });
    body()->addLayout(row);

    connect(form_.line("walk_in_code"), &QLineEdit::returnPressed, this, &WalkInSheet::enter_code);
    const auto enter_searches = [this](std::string_view field, Search by, QWidget* next) {
        connect(form_.line(field), &QLineEdit::returnPressed, this,
                [this, field, by, next] { search(by, field, next); });
    };
    enter_searches("walk_in_name", &CashCustomer::search_names, form_.field("walk_in_phone"));
    enter_searches("walk_in_phone", &CashCustomer::search_phones, form_.field("walk_in_mail"));
    enter_searches("walk_in_mail", &CashCustomer::search_mails, confirm_);
    connect(results_, &ListTable::row_taken, this, &WalkInSheet::choose);
    connect(results_, &ListTable::left_upwards, form_.field("walk_in_name"), qOverload<>(&QWidget::setFocus));
}

bool WalkInSheet::open() {
    if (desk_.invoice().payment == sales::PaymentOption::account) {
        context_.services.prompts.message(walk_in_on_account, common::Icon::exclamation);
        return false;
    }
    logic_.open();
    const auto& chosen = desk_.invoice().walk_in;
    without_->setEnabled(chosen.has_value());
    if (chosen) {
        logic_.fields.code = std::to_string(chosen->code);
        // Load a stored customer first, so that corrections made on this invoice remain corrections.
        if (!chosen->is_new) logic_.enter_code();
        logic_.fields = {std::to_string(chosen->code), chosen->name, chosen->phone, chosen->mail};
    }
    form_.show(logic_.fields);
    return true;
}

void WalkInSheet::take_focus() {
    form_.field("walk_in_name")->setFocus();
    form_.line("walk_in_name")->selectAll();
}

void WalkInSheet::show_results() {
    std::vector<QStringList> rows;
    for (const accounts::WalkInCustomer& found : logic_.results()) {
        rows.push_back({qt(found.name), figure(found.phone), figure(found.mail), figure(found.code)});
    }
    results_->say_when_empty("لا يوجد عميل بهذه البيانات · أكمل بياناته لتسجيله عميلا جديدا");
    results_->show_rows(std::move(rows));
}

void WalkInSheet::search(Search by, std::string_view field, QWidget* next) {
    form_.read(logic_.fields);
    guarded(context_.services, "SearchWalkIn", [&] { (logic_.*by)(); });
    show_results();
    // A new customer may have no telephone or e-mail: an empty field lists everybody and typing goes on.
    const bool browsing = field == "walk_in_name" || !form_.line(field)->text().trimmed().isEmpty();
    QWidget* to = browsing && results_->shown_count() > 0 ? results_ : next;
    to->setFocus();
}

void WalkInSheet::enter_code() {
    if (!form_.save(context_.services, "LoadWalkIn", logic_.fields, [this] { return logic_.enter_code(); }))
        return;
    form_.show(logic_.fields);
    form_.field("walk_in_name")->setFocus();
}

void WalkInSheet::choose(int row) {
    logic_.choose(static_cast<std::size_t>(row));
    form_.show(logic_.fields);
    confirm_->setFocus();
}

void WalkInSheet::confirm() {
    if (Sheet::top_of(window()) != this) return;
    if (!form_.save(context_.services, "ChooseWalkIn", logic_.fields, [this] { return logic_.confirm(); }))
        return;
    desk_.header().choose_walk_in(logic_.confirmed());
    leave(1);
}

void WalkInSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down && results_->shown_count() > 0) {
        results_->setFocus();
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

}  // namespace ui

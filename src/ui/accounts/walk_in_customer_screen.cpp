#include "ui/accounts/walk_in_customer_screen.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/text.h"
#include "sales/sales_desk.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/form_fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/messages.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

Cust_cash::Cust_cash(QWidget* host, const Context& context, sales::SalesDesk& desk)
    : Sheet(host, "العميل النقدي"),
      context_(context),
      desk_(desk),
      logic_(context.connection, context.services) {
    setObjectName("Cust_cash");
    set_card_width(780);
    code_ = new AmountField("walk_in_code");
    code_->setMaxLength(10);
    name_ = text_field("walk_in_name");
    phone_ = moment_field("walk_in_phone");  // a number, which reads from the left
    phone_->setMaxLength(300);
    mail_ = moment_field("walk_in_mail");
    mail_->setMaxLength(300);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(14));
    grid->setVerticalSpacing(px(10));
    grid->addWidget(captioned("&كود", code_), 0, 0);
    grid->addWidget(captioned("ال&اسم", name_), 0, 1);
    grid->addWidget(captioned("ال&تليفون", phone_), 1, 0);
    grid->addWidget(captioned("البري&د الإلكتروني", mail_), 1, 1);
    grid->setColumnStretch(0, 2);
    grid->setColumnStretch(1, 3);
    body()->addLayout(grid);

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

    connect(code_, &QLineEdit::returnPressed, this, &Cust_cash::enter_code);
    connect(name_, &QLineEdit::returnPressed, this,
            [this] { search(&accounts::CashCustomer::search_names, name_, phone_); });
    connect(phone_, &QLineEdit::returnPressed, this,
            [this] { search(&accounts::CashCustomer::search_phones, phone_, mail_); });
    connect(mail_, &QLineEdit::returnPressed, this,
            [this] { search(&accounts::CashCustomer::search_mails, mail_, confirm_); });
    connect(results_, &ListTable::row_taken, this, &Cust_cash::choose);
    connect(results_, &ListTable::left_upwards, name_, qOverload<>(&QWidget::setFocus));
}

bool Cust_cash::open() {
    if (desk_.invoice().payment == sales::PaymentOption::account) {
        context_.services.prompts.message(message::walk_in_on_account, common::Icon::exclamation);
        return false;
    }
    logic_.open();
    const auto& chosen = desk_.invoice().walk_in;
    without_->setEnabled(chosen.has_value());
    if (chosen) {
        logic_.code = std::to_string(chosen->code);
        // A stored customer is loaded first, so that what was corrected on this invoice stays a correction.
        if (!chosen->is_new) logic_.enter_code();
        logic_.name = chosen->name;
        logic_.phone = chosen->phone;
        logic_.mail = chosen->mail;
    }
    show_fields();
    return true;
}

void Cust_cash::take_focus() {
    name_->setFocus();
    name_->selectAll();
}

void Cust_cash::read_fields() {
    logic_.code = utf8(code_->text());
    logic_.name = common::trim(utf8(name_->text()));
    logic_.phone = common::trim(utf8(phone_->text()));
    logic_.mail = common::trim(utf8(mail_->text()));
}

void Cust_cash::show_fields() {
    code_->setText(qt(logic_.code));
    name_->setText(qt(logic_.name));
    phone_->setText(qt(logic_.phone));
    mail_->setText(qt(logic_.mail));
}

void Cust_cash::show_results() {
    std::vector<QStringList> rows;
    for (const accounts::WalkIn& found : logic_.results()) {
        rows.push_back({qt(found.name), "\u200e" + qt(found.phone), "\u200e" + qt(found.mail),
                        "\u200e" + QString::number(found.code)});
    }
    results_->say_when_empty("لا يوجد عميل بهذه البيانات · أكمل بياناته لتسجيله عميلا جديدا");
    results_->show_rows(rows);
}

void Cust_cash::search(Search by, QLineEdit* field, QWidget* next) {
    read_fields();
    guarded(context_.services, "SearchWalkIn", [&] { (logic_.*by)(); });
    show_results();
    // An empty phone or e-mail belongs to a new customer who gave none; the list still shows everybody.
    const bool browsing = field == name_ || !field->text().trimmed().isEmpty();
    if (browsing && results_->rowCount() > 0) {
        results_->setFocus();
    } else {
        next->setFocus();
    }
}

void Cust_cash::enter_code() {
    read_fields();
    bool found = false;
    guarded(context_.services, "LoadWalkIn", [&] { found = logic_.enter_code(); });
    if (found) {
        show_fields();
        name_->setFocus();
    } else {
        code_->setFocus();
        code_->selectAll();
    }
}

void Cust_cash::choose(int row) {
    logic_.choose(static_cast<std::size_t>(row));
    show_fields();
    confirm_->setFocus();
}

void Cust_cash::confirm() {
    if (Sheet::top_of(window()) != this) return;
    read_fields();
    std::optional<accounts::WalkIn> chosen;
    guarded(context_.services, "ChooseWalkIn", [&] { chosen = logic_.confirm(); });
    if (!chosen) {
        (logic_.name.empty() ? name_ : code_)->setFocus();
        return;
    }
    desk_.header().choose_walk_in(
        sales::WalkInCustomer{chosen->code, chosen->is_new, chosen->name, chosen->phone, chosen->mail});
    leave(1);
}

void Cust_cash::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down && results_->rowCount() > 0) {
        results_->setFocus();
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

}  // namespace ui

#include "ui/accounts/tips_receiver_screen.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/text.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/form_fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

Form36::Form36(QWidget* host, const Context& context)
    : Sheet(host), context_(context), logic_(context.connection, context.services) {
    setObjectName("Form36");
    set_card_width(480);
    title_ = label({}, "title");
    title_->setObjectName("receiver_title");
    body()->addWidget(title_);
    code_ = new AmountField("receiver_code");
    code_->setMaxLength(10);
    name_ = text_field("receiver_name");
    body()->addWidget(captioned("&كود", code_));
    body()->addWidget(captioned("ال&اسم", name_));
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    QPushButton* save = foot_button(row, "receiver_save", "&حفظ", 2, [this] { this->save(); });
    set_role(save, "main");
    foot_button(row, "receiver_close", "إ&غلاق", 1, [this] { leave(0); });
    body()->addSpacing(px(4));
    body()->addLayout(row);
    enter_leads_on({code_, name_, save});
}

void Form36::open_new() {
    logic_.open_new();
    show_entry();
}

bool Form36::open_edit(std::int64_t receiver) {
    if (!logic_.open_edit(receiver)) return false;
    show_entry();
    return true;
}

void Form36::show_entry() {
    title_->setText(qt(logic_.title()));
    code_->setText(qt(logic_.code));
    set_fixed(code_, logic_.is_editing());
    name_->setText(qt(logic_.name));
}

void Form36::take_focus() {
    name_->setFocus();
    name_->selectAll();
}

void Form36::save() {
    if (Sheet::top_of(window()) != this) return;
    logic_.code = utf8(code_->text());
    logic_.name = common::trim(utf8(name_->text()));
    bool saved = false;
    guarded(context_.services, "SaveTipsReceiver", [&] { saved = logic_.save(); });
    if (saved) {
        leave(1);
        return;
    }
    // A name that was given and refused for its length is typed again too; what else is wrong is the code.
    const bool wrong_code = !logic_.name.empty() && !logic_.is_editing();
    (wrong_code ? code_ : name_)->setFocus();
}

namespace {

std::vector<Person> tips_receivers(const Context& context) {
    std::vector<Person> people;
    guarded(context.services, "TipsReceivers", [&] {
        accounts::TipsReceiver logic(context.connection, context.services);
        logic.open_new();
        for (const common::Choice& receiver : logic.receivers())
            people.push_back({receiver.code, {"\u200e" + QString::number(receiver.code), qt(receiver.name)}});
    });
    return people;
}

}  // namespace

TipsReceivers::TipsReceivers(QWidget* host, const Context& context)
    : PeopleList(host, "receivers", "عملاء الأكراميات", {"كود", "الاسم"}, 1,
                 [context] { return tips_receivers(context); }) {
    setObjectName("tips_receivers");
    set_card_width(560);
    add_action("receivers_edit", "&تعديل  Enter", true, [this, context](std::int64_t code) {
        Form36 screen(this, context);
        bool opened = false;
        guarded(context.services, "TipsReceiver", [&] { opened = screen.open_edit(code); });
        return opened && screen.run() == 1;
    });
    add_action("receivers_add", "إ&ضافة", false, [this, context](std::int64_t) {
        Form36 screen(this, context);
        return guarded(context.services, "TipsReceiver", [&] { screen.open_new(); }) && screen.run() == 1;
    });
    add_back();
    reload();
}

}  // namespace ui

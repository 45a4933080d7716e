#include "ui/accounts/tips_receiver_sheet.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

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

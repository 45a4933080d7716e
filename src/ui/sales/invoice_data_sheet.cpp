#include "ui/sales/invoice_data_sheet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include "common/date_time.h"
#include "sales/sales_desk.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

InvoiceDataSheet::InvoiceDataSheet(QWidget* host, const Context& context, sales::SalesDesk& desk)
    : Sheet(host, "بيانات البون"), context_(context), desk_(desk) {
    setObjectName("invoice_data");
    set_card_width(560);
    const sales::Invoice& invoice = desk.invoice();

    QHBoxLayout* first = add_row();
    store_ = choice_list("data_store");
    fill_choices(store_, desk.lists().stores, invoice.store);
    date_ = moment_field("data_date");
    date_->setText(qt(common::date_text(invoice.date)));
    first->addWidget(captioned("ال&مخزن", store_), 3);
    first->addWidget(captioned("ال&تاريخ", date_), 2);

    worker_ = choice_list("data_worker");
    fill_optional_choices(worker_, desk.lists().workers, invoice.worker);
    body()->addWidget(captioned("البائ&ع", worker_));
    note_ = text_field("data_note");
    note_->setMaxLength(100);
    note_->setText(qt(invoice.note));
    body()->addWidget(captioned("ملا&حظات", note_));
    no_receipt_ = new QCheckBox("بدون طباعة &إيصال لهذا البون");
    no_receipt_->setObjectName("data_no_receipt");
    no_receipt_->setChecked(invoice.suppress_receipt);
    body()->addWidget(no_receipt_);

    const auto [confirm, back] = confirm_buttons(add_row(), "data", "موافق");
    // A list does not pass Enter on to the sheet.
    for (QComboBox* list : {store_, worker_})
        connect(list->lineEdit(), &QLineEdit::returnPressed, this, &InvoiceDataSheet::enter);
    connect(confirm, &QPushButton::clicked, this, &InvoiceDataSheet::enter);
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
}

void InvoiceDataSheet::enter() {
    const auto date = date_in(date_, context_.services.prompts);
    if (!date) return;
    bool chosen = true;
    guarded(context_.services, "InvoiceData", [&] {
        const std::int64_t store = choice_of(store_).value_or(0);
        if (store != 0 && store != desk_.invoice().store) chosen = desk_.header().choose_store(store);
        if (!chosen) return;
        desk_.header().choose_date(*date);
        desk_.header().choose_worker(choice_of(worker_).value_or(0));
        desk_.header().enter_note(utf8(note_->text().trimmed()));
        desk_.header().suppress_receipt(no_receipt_->isChecked());
    });
    if (!chosen) {
        store_->setFocus();
        return;
    }
    leave(1);
}

}  // namespace ui

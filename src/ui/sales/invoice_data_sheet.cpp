#include "ui/sales/invoice_data_sheet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/date_time.h"
#include "common/numbers.h"
#include "sales/sales_desk.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/messages.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

QComboBox* list_of(const char* name, const std::vector<common::Choice>& choices, std::int64_t chosen) {
    QComboBox* list = choice_list(name);
    for (const common::Choice& choice : choices)
        list->addItem(qt(choice.name), QVariant::fromValue<qlonglong>(choice.code));
    list->setCurrentIndex(list->findData(QVariant::fromValue<qlonglong>(chosen)));
    return list;
}

}  // namespace

InvoiceDataSheet::InvoiceDataSheet(QWidget* host, const Context& context, sales::SalesDesk& desk)
    : Sheet(host, "بيانات البون"), context_(context), desk_(desk) {
    setObjectName("invoice_data");
    set_card_width(560);
    const sales::Invoice& invoice = desk.invoice();

    auto* first = new QHBoxLayout;
    first->setSpacing(px(10));
    store_ = list_of("data_store", desk.lists().stores, invoice.store);
    date_ = moment_field("data_date");
    date_->setText(qt(common::date_text(invoice.date)));
    first->addWidget(captioned("ال&مخزن", store_), 3);
    first->addWidget(captioned("ال&تاريخ", date_), 2);
    body()->addLayout(first);

    std::vector<common::Choice> workers = desk.lists().workers;
    workers.insert(workers.begin(), {0, {}});
    worker_ = list_of("data_worker", workers, invoice.worker);
    body()->addWidget(captioned("البائ&ع", worker_));
    note_ = text_field("data_note");
    note_->setMaxLength(100);
    note_->setText(qt(invoice.note));
    body()->addWidget(captioned("ملا&حظات", note_));
    no_receipt_ = new QCheckBox("بدون طباعة &إيصال لهذا البون");
    no_receipt_->setObjectName("data_no_receipt");
    no_receipt_->setChecked(invoice.suppress_receipt);
    body()->addWidget(no_receipt_);

    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    auto* take = new KeyButton("data_confirm", "Enter", "موافق", KeyButton::Look::save);
    take->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* back = new KeyButton("data_back", "Esc", "رجوع", KeyButton::Look::tool);
    back->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    row->addWidget(take, 2);
    row->addWidget(back, 1);
    body()->addLayout(row);
    // A list keeps Enter to itself.
    for (QComboBox* list : {store_, worker_})
        connect(list->lineEdit(), &QLineEdit::returnPressed, this, &InvoiceDataSheet::confirm);
    connect(take, &QPushButton::clicked, this, &InvoiceDataSheet::confirm);
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
}

void InvoiceDataSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
            button->click();
        else
            confirm();
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

void InvoiceDataSheet::confirm() {
    // A time alone would pass for a day of the year 1900.
    const std::string typed = common::western_digits(utf8(date_->text()));
    const auto moment = common::parse_moment(typed);
    if (!moment || typed.find(':') != typed.npos || !common::is_valid(moment->date)) {
        context_.services.prompts.message(message::wrong_date);
        date_->setFocus();
        date_->selectAll();
        return;
    }
    guarded(context_.services, "InvoiceData", [&] {
        const std::int64_t store = chosen_code(store_);
        if (store != 0 && store != desk_.invoice().store) desk_.header().choose_store(store);
        desk_.header().choose_date(moment->date);
        desk_.header().choose_worker(chosen_code(worker_));
        desk_.header().enter_note(utf8(note_->text().trimmed()));
        desk_.header().suppress_receipt(no_receipt_->isChecked());
    });
    leave(1);
}

}  // namespace ui

#include "ui/sales/sheets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/date_time.h"
#include "common/numbers.h"
#include "sales/payment.h"
#include "sales/sales_desk.h"
#include "ui/printing/reports.h"
#include "ui/sales/payment_side.h"
#include "ui/sales/quick_cash.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

QString kind_text(const sales::InvoiceKey& key) {
    return key.is_sale() ? "مبيعات" : "مرتجعات";
}

}  // namespace

ReceiptsSheet::ReceiptsSheet(QWidget* host, sales::SalesDesk& desk, const Context& context)
    : Sheet(host, "بونات اليوم"), desk_(desk), context_(context), rows_(desk.receipts().receipts_today()) {
    setObjectName("receipts_screen");
    set_card_width(760);
    common::Amount sold;
    common::Amount returned;
    std::vector<QStringList> texts;
    for (const sales::ReceiptRow& row : rows_) {
        (row.identity.key.is_sale() ? sold : returned) += row.net;
        texts.push_back({figure(row.identity.key.number), figure(common::twelve_hour_text(row.identity.time)),
                         kind_text(row.identity.key), qt(sales::payment_caption(row.payment)),
                         figure(row.net.text())});
    }
    auto* sums = label(rows_.empty() ? QString("لم يحفظ أي بون على هذا الدرج اليوم")
                                     : QString("عدد البونات %1 · مبيعات %2 · مرتجعات %3")
                                           .arg(rows_.size())
                                           .arg(figure(sold.text()), figure(returned.text())),
                       "side");
    sums->setObjectName("receipts_sums");
    body()->addWidget(sums);
    table_ = new ListTable("receipts", {"رقم البون", "الوقت", "النوع", "الدفع", "الصافي"}, 2);
    table_->setMinimumHeight(px(380));
    table_->say_when_empty("لم يحفظ أي بون على هذا الدرج اليوم");
    table_->show_rows(std::move(texts));
    body()->addWidget(table_, 1);
    said_ = label({}, "side", "receipts_said");
    said_->hide();
    body()->addWidget(said_);

    QHBoxLayout* buttons = add_row();
    set_role(foot_button(buttons, "receipt_show", "&عرض البون  Enter", 1, [this] { show_receipt(); }),
             "main");
    foot_button(buttons, "receipt_reprint", "إعادة ال&طباعة", 1, [this] { reprint(); });
    foot_button(buttons, "receipt_return", "م&رتجع من هذا البون", 1, [this] { start_return(); });
    foot_button(buttons, "receipt_back", "ر&جوع", 1, [this] { leave(0); });
    connect(table_, &ListTable::row_taken, this, [this] { show_receipt(); });
}

void ReceiptsSheet::take_focus() {
    table_->setFocus();
}

const sales::ReceiptRow* ReceiptsSheet::chosen() {
    // A second press of a button is ignored while a box is open.
    if (Sheet::top_of(window()) != this) return nullptr;
    const int row = table_->current_row();
    if (row >= 0 && static_cast<std::size_t>(row) < rows_.size())
        return &rows_[static_cast<std::size_t>(row)];
    return nullptr;
}

void ReceiptsSheet::show_receipt() {
    const auto* row = chosen();
    if (row != nullptr && desk_.receipts().recall(*row)) leave(1);
}

void ReceiptsSheet::reprint() {
    if (const auto* row = chosen()) desk_.receipts().reprint(*row);
    said_->setText(kept_text(context_));
    said_->setVisible(!said_->text().isEmpty());
    table_->setFocus();
}

void ReceiptsSheet::start_return() {
    const auto* row = chosen();
    if (row != nullptr && desk_.receipts().start_return(*row)) leave(1);
}

namespace {

QFrame* figure_box(const char* role, const QString& caption, QLabel* figure) {
    auto* box = new QFrame;
    set_role(box, role);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(px(18), px(8), px(18), px(6));
    column->setSpacing(0);
    column->addWidget(label(caption, "plain"));
    figure->setFixedHeight(px(66));
    column->addWidget(figure);
    return box;
}

}  // namespace

PaymentDialog::PaymentDialog(QWidget* host, const Context& context, sales::Payment& payment,
                             const sales::Invoice& invoice, const common::Denominations& denominations)
    : Sheet(host), context_(context), payment_(payment) {
    setObjectName("Form34");
    set_card_width(940);
    QHBoxLayout* columns = add_row();
    columns->setSpacing(px(20));
    auto* fields = new QVBoxLayout;
    fields->setSpacing(px(14));
    auto* goods = new QVBoxLayout;
    auto* lines = new PaymentLines(invoice);
    connect(lines, &ListTable::row_taken, this, &PaymentDialog::take_focus);
    goods->addWidget(lines, 1);
    waiting_ = new WaitingScans(context.keys, this);
    goods->addWidget(waiting_);
    columns->addLayout(goods, 1);
    columns->addLayout(fields, 1);
    if (!payment.note().empty()) {
        QLabel* note = label(qt(payment.note()), "said", "payment_note");
        note->setWordWrap(true);
        fields->addWidget(note);
    }
    auto* net = new Figure("payment_net", "netfigure");
    net->setText(qt(payment.net().text()));
    fields->addWidget(figure_box("net", "الصافي", net));

    paid_ = new AmountField("paid");
    set_role(paid_, "large");
    paid_->setText(qt(payment.paid().text()));
    fields->addWidget(captioned("المدفوع", paid_));
    // A return pays out the net, so it needs no other amounts.
    quick_cash_ = new QuickCash("pay");
    fields->addWidget(quick_cash_);
    quick_cash_->offer(payment.net(), denominations);
    quick_cash_->setVisible(payment.note().empty());
    connect(quick_cash_, &QuickCash::taken, this, &PaymentDialog::take_cash);

    change_ = new Figure("change", "changefigure");
    change_box_ = figure_box("change", "المردود", change_);
    fields->addWidget(change_box_);

    worker_ = choice_list("salesman");
    fill_optional_choices(worker_, payment.workers(), payment.worker());
    fields->addWidget(captioned("البائ&ع", worker_));

    const auto [confirm, back] = confirm_buttons(add_row(), "payment", "تأكيد");
    connect(paid_, &QLineEdit::textChanged, this, [this](const QString& text) {
        payment_.type_paid(utf8(text));
        show_change();
        emit changed();
    });
    connect(worker_, &QComboBox::currentTextChanged, this,
            [this] { payment_.choose_worker(choice_of(worker_).value_or(0)); });
    connect(confirm, &QPushButton::clicked, this, &PaymentDialog::enter);
    connect(back, &QPushButton::clicked, this, &PaymentDialog::escape);
    show_change();
}

void PaymentDialog::escape() {
    if (waiting_->may_leave(context_.services.prompts)) leave(0);
}

void PaymentDialog::take_focus() {
    paid_->setFocus();
}

void PaymentDialog::enter() {
    if (!payment_.refusal().empty()) {
        context_.services.prompts.message(payment_.refusal());
        paid_->setFocus();
        paid_->selectAll();
        return;
    }
    if (!all_known({worker_}, context_.services.prompts)) return;
    if (!payment_.agreed(context_.services.prompts)) {
        paid_->setFocus();
        paid_->selectAll();
        return;
    }
    leave(1);
}

void PaymentDialog::keyPressEvent(QKeyEvent* event) {
    const QKeyCombination pressed(event->modifiers() & ~Qt::KeypadModifier,
                                  static_cast<Qt::Key>(event->key()));
    if (const auto button = QuickCash::button_of(pressed)) {
        take_cash(*button);
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

// Confirms with the amount of a button.
void PaymentDialog::take_cash(int button) {
    const auto amount = quick_cash_->amount(button);
    if (!amount || !quick_cash_->isVisible() || Sheet::top_of(window()) != this) return;
    paid_->setText(qt(amount->text()));
    enter();
}

void PaymentDialog::show_change() {
    // There is no change for an unreadable amount.
    const bool readable = payment_.refusal().empty();
    change_->setText(readable ? qt(payment_.change().text()) : QString("—"));
    set_state(change_box_, "short", readable && payment_.change() < common::Amount());
}

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
    no_receipt_ = new QCheckBox("بدون &طباعة هذا البون");
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
    if (!date || !all_known({store_, worker_}, context_.services.prompts)) return;
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

QuickQuantitySheet::QuickQuantitySheet(QWidget* host, const QString& item, const QString& quantity)
    : Sheet(host) {
    setObjectName("quick_quantity_sheet");
    set_card_width(360);
    QLabel* name = label(item, "figure");
    name->setWordWrap(true);
    body()->addWidget(name);
    field_ = new AmountField("quick_quantity");
    set_role(field_, "large");
    field_->setText(quantity);
    body()->addWidget(captioned("الكمية", field_));
    connect(field_, &QLineEdit::returnPressed, this, [this] { leave(1); });
}

QString QuickQuantitySheet::text() const {
    return field_->text();
}

ItemInfoSheet::ItemInfoSheet(QWidget* host, const sales::ItemInfo& info, const sales::StockShown* stock)
    : Sheet(host, qt(info.name)) {
    setObjectName("item_info_sheet");
    set_card_width(460);
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(px(10));
    int row = 0;
    const auto add = [&](const QString& caption, const char* name, const std::string& text) {
        grid->addWidget(label(caption, "plain"), row, 0);
        auto* figure = new Figure(name, "figure");
        figure->setText(qt(text));
        grid->addWidget(figure, row++, 1);
    };
    add("كود", "info_code", std::to_string(info.code));
    add("سعر التكلفة", "info_price11", info.price11);
    add("قطاعي", "info_price12", info.price12);
    add("جملة", "info_price13", info.price13);
    body()->addLayout(grid);
    QLabel* profit = label(qt(info.profit), "figure", "info_profit");
    body()->addWidget(profit);
    if (stock != nullptr) {
        body()->addWidget(rule());
        QString lines = qt(stock->quantity).trimmed();
        for (const std::string& expiry : stock->expiries)
            lines += "\n" + qt(expiry);
        QLabel* shown = label(lines, "side", "info_stock");
        body()->addWidget(shown);
    }
    auto* close = new QPushButton(tr("&رجوع"));
    close->setObjectName("info_close");
    connect(close, &QPushButton::clicked, this, [this] { leave(0); });
    body()->addWidget(close);
}

}  // namespace ui

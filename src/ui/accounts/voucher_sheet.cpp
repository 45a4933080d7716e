#include "ui/accounts/voucher_sheet.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "common/amount.h"
#include "common/typed.h"
#include "printing/receipt.h"
#include "printing/report_printer.h"
#include "signin/session.h"
#include "ui/printing/reports.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

using accounts::Method;
using accounts::PartyKind;

printing::Report report_of(const accounts::PrintedVoucher& voucher, const signin::Session& session) {
    printing::Report report = printing::headed("voucher", session);
    report.title = voucher.title;
    report.captions = {{"رقم الإيصال", voucher.number},
                       {"التاريخ", common::date_text(voucher.date)},
                       {"الاسم", voucher.party},
                       {"طريقة الدفع", voucher.method}};
    if (!voucher.place.empty()) report.captions.emplace_back("الخزينة أو البنك", voucher.place);
    // discount that does not change the balance
    if (!voucher.discount.is_zero())
        report.captions.emplace_back("خصم لا يغير الرصيد", voucher.discount.text());
    if (!voucher.note.empty()) report.captions.emplace_back("ملاحظات", voucher.note);
    report.captions.emplace_back("المستخدم", session.user_name);
    report.totals = {{"الرصيد قبل", voucher.balance_before.text()},
                     {"المبلغ", voucher.amount.text()},
                     {"الرصيد بعد", voucher.balance_after.text()}};
    report.main_total = 1;
    report.words = voucher.words;
    report.signatures = {"المستلم", "الكاشير"};
    report.paper = printing::Paper::a5;
    return report;
}

VoucherSheet::VoucherSheet(QWidget* host, const Context& context, accounts::VoucherKind kind)
    : Sheet(host), context_(context), logic_(kind, context.connection, context.session, context.services) {
    setObjectName(kind == accounts::VoucherKind::receipt ? "Form38" : "Form23");
    set_card_width(920);
    body()->setContentsMargins(px(26), px(18), px(26), px(20));
    body()->setSpacing(px(12));
    build_fields();
    build_foot();
    connect_party();
    connect_amounts();
    connect_method();
    lead_on();
}

void VoucherSheet::build_fields() {
    auto* head = new QHBoxLayout;
    title_ = label({}, "title");
    title_->setObjectName("voucher_title");
    said_ = label({}, "side");
    said_->setObjectName("voucher_said");
    head->addWidget(title_);
    head->addStretch(1);
    head->addWidget(said_);
    body()->addLayout(head);
    FieldGrid grid(3, 10);
    form_.add(accounts::voucher_form(), grid);
    form_.figure("voucher_notice")->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    form_.enlarge("voucher_amount");
    form_.field("voucher_amount")->setFixedHeight(px(62));
    body()->addLayout(grid.layout());
}

void VoucherSheet::build_foot() {
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    save_ = foot_button(row, "voucher_save", "&حفظ", 2, [this] { save(); });
    set_role(save_, "main");
    const bool roll = context_.printer_choice.is_text_port();
    print_ = foot_button(row, "voucher_print", "&طباعة", 1, [this] { print(false); });
    page_ = foot_button(row, "voucher_page", roll ? "طباعة &صفحة" : "&طباعة", 1, [this] { print(true); });
    foot_button(row, "voucher_new", "إيصال &جديد", 1, [this] { begin_new(); });
    foot_button(row, "voucher_choose", "ت&عديل إيصال", 1, [this] { choose_voucher(); });
    foot_button(row, "voucher_back", "رج&وع", 1, [this] { leave(0); });
    body()->addSpacing(px(2));
    body()->addLayout(row);
    print_->setVisible(roll);
}

void VoucherSheet::connect_party() {
    connect(form_.options("voucher_party_kind"), &Segments::chosen, this, [this](int kind) {
        guarded(context_.services, "PartyKind", [&] {
            logic_.choose_party_kind(static_cast<PartyKind>(kind));
            show_parties();
        });
        form_.field("voucher_party")->setFocus();
    });
    connect(form_.list("voucher_party"), &QComboBox::activated, this, &VoucherSheet::choose_party);
}

void VoucherSheet::connect_amounts() {
    QLineEdit* amount = form_.line("voucher_amount");
    QLineEdit* discount = form_.line("voucher_discount");
    QLineEdit* second = form_.line("voucher_second_amount");
    connect(amount, &QLineEdit::textEdited, this, [this, second](const QString& text) {
        logic_.set_amount(utf8(text));
        second->setText(qt(logic_.fields.second_amount));
    });
    connect(second, &QLineEdit::textEdited, this,
            [this](const QString& text) { logic_.set_second_amount(utf8(text)); });
    for (QLineEdit* field : {amount, discount, second})
        connect(field, &QLineEdit::editingFinished, this, [this, field] { show_as_amount(field); });
}

void VoucherSheet::show_as_amount(QLineEdit* field) {
    const common::TypedAmount read = common::read_amount(utf8(field->text()));
    if (!read.is_good() || read.value.text() == utf8(field->text())) return;
    field->setText(qt(read.value.text()));
    if (field == form_.line("voucher_amount")) {
        logic_.set_amount(read.value.text());
        form_.line("voucher_second_amount")->setText(qt(logic_.fields.second_amount));
    } else if (field == form_.line("voucher_second_amount")) {
        logic_.set_second_amount(read.value.text());
    }
}

void VoucherSheet::connect_method() {
    connect(form_.options("voucher_method"), &Segments::chosen, this, [this](int method) {
        logic_.method = static_cast<Method>(method);
        show_method();
        form_.field(logic_.method == Method::cheque ? "voucher_bank" : "voucher_drawer")->setFocus();
    });
    QComboBox* stores = form_.list("voucher_store");
    connect(stores, &QComboBox::activated, this, [this, stores] {
        const auto store = choice_of(stores);
        if (!store || store == logic_.fields.store) return;
        guarded(context_.services, "Drawers", [&] {
            logic_.choose_store(store);
            fill_choices(form_.list("voucher_drawer"), logic_.drawers(), logic_.fields.drawer);
        });
    });
}

// Enter passes the fields that are seldom changed.
void VoucherSheet::lead_on() {
    const auto chain = [this](std::initializer_list<const char*> names, QWidget* last) {
        for (auto name = names.begin(); name != names.end(); ++name) {
            QWidget* next = name + 1 == names.end() ? last : form_.field(*(name + 1));
            enter_leads_on({form_.field(*name), next});
        }
    };
    QWidget* note = form_.field("voucher_note");
    chain({"voucher_number", "voucher_date", "voucher_party", "voucher_amount", "voucher_discount",
           "voucher_second_amount", "voucher_note"},
          save_);
    chain({"voucher_store", "voucher_drawer"}, note);
    chain({"voucher_bank", "voucher_cheque_date", "voucher_cheque_owner"}, note);
    chain({"voucher_representative"}, note);
}

void VoucherSheet::open_new() {
    logic_.open_new();
    show_voucher();
}

bool VoucherSheet::open_edit(const accounts::VoucherKey& key) {
    if (!form_.accept(logic_.open_edit(key), context_.services.prompts)) return false;
    show_voucher();
    return true;
}

void VoucherSheet::show_voucher() {
    title_->setText(qt(logic_.title()));
    fill_choices(form_.list("voucher_store"), logic_.stores(), logic_.fields.store);
    fill_choices(form_.list("voucher_drawer"), logic_.drawers(), {});
    fill_choices(form_.list("voucher_bank"), logic_.banks(), {});
    show_parties();
    show_method();
    form_.show(logic_.fields);
    for (const char* amount : {"voucher_amount", "voucher_discount", "voucher_second_amount"})
        show_as_amount(form_.line(amount));
    print_->setEnabled(logic_.printed().has_value());
    page_->setEnabled(logic_.printed().has_value());
}

void VoucherSheet::show_parties() {
    form_.options("voucher_party_kind")->show_chosen(static_cast<int>(logic_.party_kind()));
    fill_choices(form_.list("voucher_party"), logic_.parties(), logic_.fields.party);
    for (const char* fixed : {"voucher_party_kind", "voucher_party"})
        set_fixed(form_.field(fixed), logic_.is_editing());
    show_party();
}

// Shows the chosen party's representative and balance.
void VoucherSheet::show_party() {
    const auto& party = logic_.fields.party;
    fill_choices(form_.list("voucher_representative"), logic_.representatives(),
                 logic_.fields.representative);
    form_.figure("voucher_balance")
        ->setText(party ? qt(common::Amount(logic_.party_balance()).text()) : QString("—"));
}

void VoucherSheet::show_method() {
    const bool cash = logic_.method == Method::cash;
    const bool cheque = logic_.method == Method::cheque;
    form_.options("voucher_method")->show_chosen(static_cast<int>(logic_.method));
    form_.figure("voucher_notice")->setText(qt(accounts::method_name(logic_.method)));
    // Shown or hidden together with their captions.
    form_.field("voucher_method")->parentWidget()->setVisible(cash || cheque);
    form_.field("voucher_notice")->parentWidget()->setVisible(!cash && !cheque);  // a notice stays one
    form_.field("voucher_drawer")->parentWidget()->setVisible(cash);
    for (const char* name : {"voucher_bank", "voucher_cheque_date", "voucher_cheque_owner"})
        form_.field(name)->parentWidget()->setVisible(cheque);
}

void VoucherSheet::choose_party() {
    const auto party = choice_of(form_.list("voucher_party"));
    if (party == logic_.fields.party) return;
    guarded(context_.services, "ChooseParty", [&] {
        logic_.choose_party(party);
        show_party();
    });
}

void VoucherSheet::save() {
    if (Sheet::top_of(window()) != this) return;
    said_->clear();
    // A party whose name was typed in full is not chosen yet when a click on the button leaves the field.
    if (!logic_.is_editing()) choose_party();
    const bool was_editing = logic_.is_editing();
    if (!form_.save(context_.services, "SaveVoucher", logic_.fields, [this] { return logic_.save(); })) {
        // A voucher that was saved in part is edited from here on, too.
        if (logic_.is_editing() != was_editing) show_voucher();
        return;
    }
    // The voucher is shown as it was saved, and is edited from here on.
    show_voucher();
    said_->setText(QString("تم الحفظ · الرصيد قبل %1 · بعد %2")
                       .arg(figure(logic_.printed()->balance_before.text()),
                            figure(logic_.printed()->balance_after.text())));
    (print_->isVisible() ? print_ : page_)->setFocus();
}

void VoucherSheet::print(bool page) {
    if (!logic_.printed() || Sheet::top_of(window()) != this) return;
    const printing::Report report = report_of(*logic_.printed(), context_.session);
    const bool printed = page ? context_.reports.print(report) : context_.reports.print_slip(report);
    if (printed) said_->setText(printed_text(context_));
}

void VoucherSheet::begin_new() {
    if (Sheet::top_of(window()) != this) return;
    said_->clear();
    guarded(context_.services, "NewVoucher", [&] { open_new(); });
    take_focus();
}

void VoucherSheet::choose_voucher() {
    if (Sheet::top_of(window()) != this) return;
    VoucherList list(this, context_, logic_.kind());
    if (!list.open() || list.run() == 0) return;
    said_->clear();
    bool opened = false;
    guarded(context_.services, "EditVoucher", [&] { opened = open_edit(list.chosen()); });
    if (opened) take_focus();
}

void VoucherSheet::take_focus() {
    form_.field(logic_.is_editing() ? "voucher_amount" : "voucher_party")->setFocus();
}

namespace {

constexpr long days_shown = 30;

}  // namespace

VoucherList::VoucherList(QWidget* host, const Context& context, accounts::VoucherKind kind)
    : Sheet(host, kind == accounts::VoucherKind::receipt ? "اختيار إيصال مقبوضات" : "اختيار إيصال مدفوعات"),
      context_(context),
      kind_(kind) {
    setObjectName("voucher_list");
    set_card_width(820);
    FieldGrid grid(2, 0);
    grid.layout()->setHorizontalSpacing(px(10));
    form_.add(accounts::voucher_period_form(), grid);
    auto* period = new QHBoxLayout;
    period->setSpacing(px(10));
    period->addLayout(grid.layout(), 2);
    auto* show_button = new QPushButton("عر&ض");
    show_button->setObjectName("vouchers_show");
    show_button->setFixedHeight(px(field_height));
    period->addWidget(show_button, 0, Qt::AlignBottom);
    count_ = label({}, "side");
    count_->setObjectName("vouchers_count");
    period->addWidget(count_, 2, Qt::AlignBottom);
    body()->addLayout(period);
    table_ = new ListTable("vouchers", {"رقم الإيصال", "التاريخ", "الاسم", "طريقة الدفع", "القيمة"}, 2);
    table_->setMinimumHeight(px(340));
    body()->addWidget(table_, 1);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    set_role(foot_button(row, "vouchers_take", "&تعديل  Enter", 2, [this] { take(table_->current_row()); }),
             "main");
    foot_button(row, "vouchers_back", "&رجوع", 1, [this] { leave(0); });
    body()->addLayout(row);
    QLineEdit* from = form_.line("vouchers_from");
    QLineEdit* to = form_.line("vouchers_to");
    enter_leads_on({from, to});
    connect(to, &QLineEdit::returnPressed, this, &VoucherList::show);
    connect(show_button, &QPushButton::clicked, this, &VoucherList::show);
    connect(table_, &ListTable::row_taken, this, &VoucherList::take);
    connect(table_, &ListTable::left_upwards, from, qOverload<>(&QWidget::setFocus));
}

bool VoucherList::open() {
    const common::Date today = context_.services.clock.now().date;
    period_ = {common::add_days(today, -days_shown), today};
    form_.show(period_);
    return list();
}

void VoucherList::take_focus() {
    if (table_->shown_count() > 0) {
        table_->setFocus();
    } else {
        form_.field("vouchers_from")->setFocus();
    }
}

void VoucherList::show() {
    if (list()) take_focus();
}

bool VoucherList::list() {
    const auto read = [this]() -> std::optional<common::Refusal> {
        vouchers_ = accounts::list_vouchers(context_.connection, kind_, period_);
        return std::nullopt;
    };
    if (!form_.save(context_.services, "ListVouchers", period_, read)) return false;
    std::reverse(vouchers_.begin(), vouchers_.end());  // the latest first
    std::vector<QStringList> rows;
    rows.reserve(vouchers_.size());
    for (const accounts::VoucherEntry& entry : vouchers_) {
        rows.push_back({figure(entry.key.number), figure(common::date_text(entry.key.date)),
                        qt(entry.party_name), qt(accounts::method_name(entry.method)),
                        figure(entry.key.amount.text())});
    }
    table_->say_when_empty("لا توجد إيصالات في هذه المدة · غير التاريخين ثم اضغط عرض");
    table_->show_rows(std::move(rows));
    count_->setText(vouchers_.empty() ? QString("لا توجد إيصالات في هذه المدة")
                                      : "عدد الإيصالات " + QString::number(vouchers_.size()));
    return true;
}

void VoucherList::take(int row) {
    if (Sheet::top_of(window()) != this) return;
    if (row < 0 || static_cast<std::size_t>(row) >= vouchers_.size()) return;
    chosen_ = vouchers_[static_cast<std::size_t>(row)].key;
    leave(1);
}

}  // namespace ui

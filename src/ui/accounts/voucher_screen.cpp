#include "ui/accounts/voucher_screen.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "common/text.h"
#include "printing/receipt.h"
#include "ui/accounts/print_voucher.h"
#include "ui/accounts/voucher_list.h"
#include "ui/printing/reports.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/form_fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/messages.h"
#include "ui/widgets/segments.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

using accounts::Method;
using accounts::PartyKind;

Form38::Form38(QWidget* host, const Context& context)
    : VoucherScreen(host, context, accounts::VoucherKind::receipt) {
    setObjectName("Form38");
}

Form23::Form23(QWidget* host, const Context& context)
    : VoucherScreen(host, context, accounts::VoucherKind::payment) {
    setObjectName("Form23");
}

VoucherScreen::VoucherScreen(QWidget* host, const Context& context, accounts::VoucherKind kind)
    : Sheet(host), context_(context), logic_(kind, context.connection, context.session, context.services) {
    set_card_width(920);
    body()->setContentsMargins(px(26), px(18), px(26), px(20));
    body()->setSpacing(px(12));
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
    build_party(grid);
    build_amounts(grid);
    build_method(grid);
    body()->addLayout(grid.layout());
    build_foot();
    connect_parts();
}

void VoucherScreen::build_party(FieldGrid& grid) {
    party_kind_ = grid.add(
        "نوع الطرف",
        new Segments("voucher_party_kind", {{static_cast<int>(PartyKind::customer), "عملاء"},
                                            {static_cast<int>(PartyKind::second_customer), "عملاء نوع ثان"},
                                            {static_cast<int>(PartyKind::vendor), "موردون"}}),
        0, 0);
    // Read from the left, whatever it holds.
    number_ = grid.add("&رقم الإيصال", digits_field("voucher_number", 100), 0, 1);
    date_ = grid.add("ال&تاريخ", moment_field("voucher_date"), 0, 2);
    party_ = grid.add("ا&سم الطرف", choice_list("voucher_party"), 1, 0, 2);
    balance_ = grid.add("الرصيد الحالي", new Figure("voucher_balance", "figure"), 1, 2);
}

void VoucherScreen::build_amounts(FieldGrid& grid) {
    auto* amount = new AmountField("voucher_amount");
    set_role(amount, "large");
    amount->setFixedHeight(px(62));
    amount_ = grid.add("ال&قيمة", amount, 2, 0);
    discount_ = grid.add("ال&خصم", new AmountField("voucher_discount"), 2, 1);
    // The part of the amount that is due already; it follows the amount until it is changed.
    second_amount_ = grid.add("المستحق &منها", new AmountField("voucher_second_amount"), 2, 2);
}

void VoucherScreen::build_method(FieldGrid& grid) {
    method_ = grid.add("طريقة الدفع",
                       new Segments("voucher_method", {{static_cast<int>(Method::cash), "نقدي"},
                                                       {static_cast<int>(Method::cheque), "شيك"}}),
                       3, 0);
    store_ = grid.add("ال&فرع", choice_list("voucher_store"), 3, 1);
    drawer_ = grid.add("الخ&زينة", choice_list("voucher_drawer"), 3, 2);
    drawer_box_ = drawer_->parentWidget();  // with its caption
    bank_ = grid.add("ال&بنك", choice_list("voucher_bank"), 4, 0);
    cheque_date_ = grid.add("تاريخ الشيك", moment_field("voucher_cheque_date"), 4, 1);
    cheque_owner_ = grid.add("صاحب الشيك", text_field("voucher_cheque_owner"), 4, 2);
    cheque_boxes_ = {bank_->parentWidget(), cheque_date_->parentWidget(), cheque_owner_->parentWidget()};
    representative_ = grid.add("المن&دوب", choice_list("voucher_representative"), 5, 0);
    note_ = grid.add("م&لاحظات", text_field("voucher_note"), 5, 1, 2);
    note_->setMaxLength(static_cast<int>(accounts::note_length));
}

void VoucherScreen::build_foot() {
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

void VoucherScreen::connect_parts() {
    enter_leads_on({number_, date_, party_, amount_, discount_, second_amount_, note_, save_});
    enter_leads_on({store_, drawer_, note_});
    enter_leads_on({bank_, cheque_date_, cheque_owner_, note_});
    enter_leads_on({representative_, note_});
    connect(party_kind_, &Segments::chosen, this, [this](int kind) {
        guarded(context_.services, "PartyKind", [&] {
            logic_.choose_party_kind(static_cast<PartyKind>(kind));
            show_party();
        });
        party_->setFocus();
    });
    connect(party_, &QComboBox::activated, this, &VoucherScreen::choose_party);
    connect(amount_, &QLineEdit::textEdited, this, [this](const QString& text) {
        logic_.set_amount(utf8(text));
        second_amount_->setText(qt(logic_.second_amount()));
    });
    connect(second_amount_, &QLineEdit::textEdited, this,
            [this](const QString& text) { logic_.set_second_amount(utf8(text)); });
    // What can be read as an amount is shown as one when its field is left; the rest waits for the save's
    // word.
    const auto formatted = [](const QLineEdit* field) -> std::optional<std::string> {
        const accounts::Amount read = accounts::read_amount(utf8(field->text()));
        if (!read.message.empty()) return std::nullopt;
        return common::format_amount(read.value);
    };
    connect(amount_, &QLineEdit::editingFinished, this, [this, formatted] {
        const auto text = formatted(amount_);
        if (!text || *text == logic_.amount()) return;
        logic_.set_amount(*text);
        amount_->setText(qt(*text));
        second_amount_->setText(qt(logic_.second_amount()));
    });
    connect(second_amount_, &QLineEdit::editingFinished, this, [this, formatted] {
        const auto text = formatted(second_amount_);
        if (!text || *text == logic_.second_amount()) return;
        logic_.set_second_amount(*text);
        second_amount_->setText(qt(*text));
    });
    connect(discount_, &QLineEdit::editingFinished, this, [this, formatted] {
        if (const auto text = formatted(discount_)) discount_->setText(qt(*text));
    });
    connect(method_, &Segments::chosen, this, [this](int method) {
        logic_.method = static_cast<Method>(method);
        show_method();
        QWidget* next = logic_.method == Method::cheque ? bank_ : drawer_;
        next->setFocus();
    });
    connect(store_, &QComboBox::activated, this, [this] {
        const auto store = choice_of(store_);
        if (!store || *store == logic_.store()) return;
        guarded(context_.services, "Drawers", [&] {
            logic_.choose_store(*store);
            fill_choices(drawer_, logic_.drawers(), logic_.drawer);
        });
    });
}

void VoucherScreen::open_new() {
    logic_.open_new();
    show_voucher();
}

bool VoucherScreen::open_edit(const accounts::VoucherKey& key) {
    if (!logic_.open_edit(key)) return false;
    show_voucher();
    return true;
}

void VoucherScreen::show_voucher() {
    title_->setText(qt(logic_.title()));
    number_->setText(qt(logic_.number));
    date_->setText(qt(common::date_text(logic_.date)));
    const auto amount = [](const std::string& text) {
        return qt(common::format_amount(accounts::read_amount(text).value));
    };
    amount_->setText(amount(logic_.amount()));
    discount_->setText(amount(logic_.discount));
    second_amount_->setText(amount(logic_.second_amount()));
    fill_choices(store_, logic_.stores(), logic_.store());
    fill_choices(drawer_, logic_.drawers(), logic_.drawer);
    fill_choices(bank_, logic_.banks(), logic_.bank);
    cheque_date_->setText(qt(common::date_text(logic_.cheque_date)));
    cheque_owner_->setText(qt(logic_.cheque_owner));
    note_->setText(qt(logic_.note));
    show_party();
    show_method();
    print_->setEnabled(logic_.printed().has_value());
    page_->setEnabled(logic_.printed().has_value());
}

void VoucherScreen::show_party() {
    party_kind_->show_chosen(static_cast<int>(logic_.party_kind()));
    set_fixed(party_kind_, logic_.is_editing());
    fill_choices(party_, logic_.parties(), logic_.party());
    set_fixed(party_, logic_.is_editing());
    fill_choices(representative_, logic_.representatives(), logic_.representative);
    balance_->setText(logic_.party() ? qt(common::format_amount(logic_.party_balance())) : QString("—"));
}

void VoucherScreen::show_method() {
    const bool cheque = logic_.method == Method::cheque;
    const bool notice = !cheque && logic_.method != Method::cash;
    method_->show_chosen(static_cast<int>(logic_.method));
    set_fixed(method_, notice);  // a discount or addition notice stays one
    drawer_box_->setVisible(logic_.method == Method::cash);
    for (QWidget* box : cheque_boxes_)
        box->setVisible(cheque);
}

void VoucherScreen::choose_party() {
    const auto party = choice_of(party_);
    if (party == logic_.party()) return;
    guarded(context_.services, "ChooseParty", [&] {
        logic_.choose_party(party);
        show_party();
    });
}

bool VoucherScreen::read_fields() {
    const auto date = date_in(date_, context_.services.prompts);
    if (!date) return false;
    if (logic_.method == Method::cheque) {
        const auto cheque_date = date_in(cheque_date_, context_.services.prompts);
        if (!cheque_date) return false;
        logic_.cheque_date = *cheque_date;
    }
    const auto text = [](const QLineEdit* field) { return std::string(common::trim(utf8(field->text()))); };
    logic_.date = *date;
    // A party typed in full and left by a click on the button has not been taken yet.
    if (choice_of(party_) != logic_.party()) {
        logic_.choose_party(choice_of(party_));
        fill_choices(representative_, logic_.representatives(), logic_.representative);
    }
    logic_.number = text(number_);
    if (text(amount_) != logic_.amount()) logic_.set_amount(text(amount_));
    if (text(second_amount_) != logic_.second_amount()) logic_.set_second_amount(text(second_amount_));
    logic_.discount = text(discount_);
    logic_.note = text(note_);
    logic_.representative = choice_of(representative_);
    logic_.drawer = choice_of(drawer_);
    logic_.bank = choice_of(bank_);
    logic_.cheque_owner = text(cheque_owner_);
    return true;
}

void VoucherScreen::save() {
    if (Sheet::top_of(window()) != this) return;
    bool saved = false;
    said_->clear();
    guarded(context_.services, "SaveVoucher", [&] { saved = read_fields() && logic_.save(); });
    if (!saved) {
        if (number_->text().trimmed() != qt(logic_.number)) number_->setText(qt(logic_.number));
        if (QWidget* field = refused_field()) field->setFocus();
        return;
    }
    // Read back as it stands now, as the one that is edited.
    show_voucher();
    said_->setText(QString("تم الحفظ · الرصيد قبل \u200e%1 · بعد \u200e%2")
                       .arg(qt(common::format_amount(logic_.printed()->balance_before)),
                            qt(common::format_amount(logic_.printed()->balance_after))));
    (print_->isVisible() ? print_ : page_)->setFocus();
}

QWidget* VoucherScreen::refused_field() const {
    if (!common::parse_moment(utf8(date_->text()))) return date_;
    if (logic_.method == Method::cheque && !common::parse_moment(utf8(cheque_date_->text())))
        return cheque_date_;
    for (QLineEdit* field : {amount_, discount_, second_amount_}) {
        if (!accounts::read_amount(utf8(field->text())).message.empty()) return field;
    }
    if (accounts::read_amount(utf8(amount_->text())).value == 0) return amount_;
    if (number_->text().trimmed().isEmpty()) return number_;
    if (logic_.method == Method::cash && !logic_.drawer) return drawer_;
    if (logic_.method == Method::cheque && !logic_.bank) return bank_;
    if (!logic_.party()) return party_;
    return number_;
}

void VoucherScreen::print(bool page) {
    if (!logic_.printed() || Sheet::top_of(window()) != this) return;
    const bool printed =
        page ? print_on_page(context_, *logic_.printed()) : print_voucher(context_, *logic_.printed());
    if (printed) said_->setText(printed_text(context_));
}

void VoucherScreen::begin_new() {
    if (Sheet::top_of(window()) != this) return;
    said_->clear();
    guarded(context_.services, "NewVoucher", [&] { open_new(); });
    take_focus();
}

void VoucherScreen::choose_voucher() {
    if (Sheet::top_of(window()) != this) return;
    VoucherList list(this, context_, logic_.kind());
    if (!list.open() || list.run() == 0) return;
    said_->clear();
    bool opened = false;
    guarded(context_.services, "EditVoucher", [&] { opened = open_edit(list.chosen()); });
    if (opened) take_focus();
}

void VoucherScreen::take_focus() {
    QWidget* first = logic_.is_editing() ? static_cast<QWidget*>(amount_) : party_;
    first->setFocus();
}

}  // namespace ui

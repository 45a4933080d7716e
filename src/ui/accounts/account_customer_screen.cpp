#include "ui/accounts/account_customer_screen.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "common/text.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/form_fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/segments.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr double row_height = 40;  // with the guarantor's row the card fills a small screen

QCheckBox* check(const QString& name, const QString& caption) {
    auto* made = new QCheckBox(caption);
    made->setObjectName(name);
    return made;
}

}  // namespace

Form7ca::Form7ca(QWidget* host, const Context& context)
    : Sheet(host), context_(context), logic_(context.connection, context.services) {
    setObjectName("Form7ca");
    set_card_width(960);
    body()->setContentsMargins(px(26), px(16), px(26), px(18));
    body()->setSpacing(px(10));
    auto* head = new QHBoxLayout;
    title_ = label({}, "title");
    title_->setObjectName("customer_title");
    head->addWidget(title_, 1);
    balance_box_ = new QWidget;
    auto* balance = new QHBoxLayout(balance_box_);
    balance->setContentsMargins(0, 0, 0, 0);
    balance->addWidget(label("الرصيد الحالي", "side"));
    balance_ = new Figure("customer_balance", "figure");
    balance->addWidget(balance_);
    head->addWidget(balance_box_);
    body()->addLayout(head);

    FieldGrid grid(4, 8);
    build_person(grid);
    build_account(grid);
    body()->addLayout(grid.layout());
    guarantor_box_ = build_guarantor();
    body()->addWidget(guarantor_box_);
    build_foot();
    connect_parts();
    // The guarantor's row comes and goes; nothing else may grow or shrink with it.
    for (QWidget* field : typed_fields()) {
        if (auto* options = qobject_cast<Segments*>(field)) {
            options->set_height(row_height);
        } else if (qobject_cast<QCheckBox*>(field) == nullptr) {
            field->setFixedHeight(px(row_height));
        }
    }
}

QList<QWidget*> Form7ca::typed_fields() const {
    return {number_,       name_,           second_name_,    third_name_,    phone_,        mobile_,
            address_,      notes_,          country_,        governorate_,   centre_,       district_,
            opening_,      side_,           representative_, group_,         class_search_, price_class_,
            second_kind_,  unsettled_,      pays_later_,     has_guarantor_, id_number_,    guarantor_,
            guarantor_id_, guarantor_phone_};
}

void Form7ca::build_person(FieldGrid& grid) {
    number_ = grid.add("&كود العميل", new AmountField("customer_number"), 0, 0);
    number_->setMaxLength(10);
    name_ = grid.add("ا&سم العميل", text_field("customer_name"), 0, 1, 3);
    second_name_ = grid.add("اسم المسئول", text_field("customer_second_name"), 1, 0);
    third_name_ = grid.add("الاسم في الإيصالات", text_field("customer_third_name"), 1, 1);
    phone_ = grid.add("ال&تليفون", digits_field("customer_phone"), 1, 2);
    mobile_ = grid.add("المو&بايل", digits_field("customer_mobile"), 1, 3);
    address_ = grid.add("الع&نوان", text_field("customer_address"), 2, 0, 2);
    notes_ = grid.add("ملاح&ظات", text_field("customer_notes"), 2, 2, 2);
    country_ = grid.add("الدولة", choice_list("customer_country"), 3, 0);
    governorate_ = grid.add("المحافظة", choice_list("customer_governorate"), 3, 1);
    centre_ = grid.add("المركز", choice_list("customer_centre"), 3, 2);
    district_ = grid.add("الحي", choice_list("customer_district"), 3, 3);
}

void Form7ca::build_account(FieldGrid& grid) {
    opening_ = grid.add("الرصيد الافتتاحي", new AmountField("customer_opening"), 4, 0);
    side_ = grid.add("طبيعة الرصيد", new Segments("customer_side", {{0, "مدين"}, {1, "دائن"}}), 4, 1);
    representative_ = grid.add("المن&دوب", choice_list("customer_representative"), 4, 2);
    group_ = grid.add("مجموعة العملاء", new AmountField("customer_group"), 4, 3);
    class_search_ = grid.add("بحث فئة السعر", text_field("customer_class_search"), 5, 0);
    set_hint(class_search_, "رقم أو جزء من الاسم");
    price_class_ = grid.add("&فئة السعر", choice_list("customer_class"), 5, 1);
    second_kind_ = check("customer_second_kind", "عميل نو&ع ثان");
    unsettled_ = check("customer_unsettled", "است&لام بدون اكمال الحساب");
    pays_later_ = check("customer_pays_later", "يعامل بدون دفع م&قدم");
    has_guarantor_ = check("customer_has_guarantor", "&ضامن");
    grid.layout()->addWidget(second_kind_, 5, 2, Qt::AlignBottom);
    grid.layout()->addWidget(has_guarantor_, 5, 3, Qt::AlignBottom);
    grid.layout()->addWidget(unsettled_, 6, 0, 1, 2);
    grid.layout()->addWidget(pays_later_, 6, 2, 1, 2);
}

QWidget* Form7ca::build_guarantor() {
    auto* box = new QWidget;
    box->setObjectName("customer_guarantor_box");
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(14));
    id_number_ = digits_field("customer_id_number");
    guarantor_ = text_field("customer_guarantor");
    guarantor_id_ = digits_field("customer_guarantor_id");
    guarantor_phone_ = digits_field("customer_guarantor_phone");
    row->addWidget(captioned("رقم بطاقة العميل", id_number_), 1);
    row->addWidget(captioned("اسم الضامن", guarantor_), 1);
    row->addWidget(captioned("رقم بطاقة الضامن", guarantor_id_), 1);
    row->addWidget(captioned("تليفون الضامن", guarantor_phone_), 1);
    return box;
}

void Form7ca::build_foot() {
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    save_ = foot_button(row, "customer_save", "&حفظ", 2, [this] { save(); });
    set_role(save_, "main");
    previous_ = foot_button(row, "customer_previous", "السابق  PgUp", 1, [this] { step(-1); });
    next_ = foot_button(row, "customer_next", "التالي  PgDn", 1, [this] { step(1); });
    close_ = foot_button(row, "customer_close", "إ&غلاق", 1, [this] { leave(0); });
    body()->addLayout(row);
}

void Form7ca::connect_parts() {
    enter_leads_on({number_, name_, second_name_, third_name_, phone_, mobile_, address_, notes_, country_,
                    governorate_, centre_, district_, opening_, representative_, group_, class_search_});
    enter_leads_on({price_class_, save_});
    connect(side_, &Segments::chosen, this, [this](int side) {
        credit_ = side == 1;
        side_->show_chosen(side);
    });
    connect(country_, &QComboBox::activated, this, [this] {
        choose_place(country_, logic_.card.country, [this](auto code) { logic_.choose_country(code); });
    });
    connect(governorate_, &QComboBox::activated, this, [this] {
        choose_place(governorate_, logic_.card.governorate,
                     [this](auto code) { logic_.choose_governorate(code); });
    });
    connect(centre_, &QComboBox::activated, this, [this] {
        choose_place(centre_, logic_.card.centre, [this](auto code) { logic_.choose_centre(code); });
    });
    connect(class_search_, &QLineEdit::returnPressed, this, &Form7ca::search_classes);
    connect(has_guarantor_, &QCheckBox::toggled, guarantor_box_, &QWidget::setVisible);
}

bool Form7ca::open(accounts::CardMode mode, std::int64_t code) {
    if (!logic_.open(mode, code)) return false;
    const bool viewing = mode == accounts::CardMode::view;
    for (QWidget* field : typed_fields())
        set_fixed(field, viewing);
    set_fixed(number_, mode != accounts::CardMode::add);
    balance_box_->setVisible(mode != accounts::CardMode::add);
    save_->setVisible(!viewing);
    previous_->setVisible(viewing);
    next_->setVisible(viewing);
    show_card();
    return true;
}

void Form7ca::show_card() {
    const accounts::CustomerCard& card = logic_.card;
    title_->setText(qt(logic_.title()).trimmed());
    balance_->setText(qt(common::format_amount(logic_.balance())));
    const std::pair<QLineEdit*, const std::string*> texts[] = {{number_, &card.number},
                                                               {name_, &card.name},
                                                               {second_name_, &card.second_name},
                                                               {third_name_, &card.third_name},
                                                               {phone_, &card.phone},
                                                               {mobile_, &card.mobile},
                                                               {address_, &card.address},
                                                               {notes_, &card.notes},
                                                               {opening_, &card.opening},
                                                               {group_, &card.group},
                                                               {id_number_, &card.id_number},
                                                               {guarantor_, &card.guarantor},
                                                               {guarantor_id_, &card.guarantor_id},
                                                               {guarantor_phone_, &card.guarantor_phone}};
    for (const auto& [field, text] : texts) {
        field->setText(qt(*text));
        field->setCursorPosition(0);
    }
    credit_ = card.is_credit;
    side_->show_chosen(credit_ ? 1 : 0);
    second_kind_->setChecked(card.is_second_kind);
    unsettled_->setChecked(card.takes_unsettled);
    pays_later_->setChecked(card.pays_later);
    has_guarantor_->setChecked(card.has_guarantor);
    guarantor_box_->setVisible(card.has_guarantor);
    class_search_->clear();
    fill_choices(representative_, logic_.representatives(), card.representative);
    fill_choices(price_class_, logic_.price_classes(), card.price_class);
    show_places();
}

void Form7ca::show_places() {
    fill_choices(country_, logic_.countries(), logic_.card.country);
    fill_choices(governorate_, logic_.governorates(), logic_.card.governorate);
    fill_choices(centre_, logic_.centres(), logic_.card.centre);
    fill_choices(district_, logic_.districts(), logic_.card.district);
}

template <typename Choose>
void Form7ca::choose_place(QComboBox* list, std::optional<std::int64_t> former, Choose choose) {
    const auto code = choice_of(list);
    if (code == former) return;  // chosen again: the places below it stay
    guarded(context_.services, "Places", [&] {
        choose(code);
        show_places();
    });
}

void Form7ca::search_classes() {
    guarded(context_.services, "SearchPriceClasses", [&] {
        logic_.search_classes(utf8(class_search_->text()));
        const auto& found = logic_.price_classes();
        // The one that was found is meant; of several the cashier chooses.
        fill_choices(price_class_, found,
                     found.size() == 1 ? std::optional(found.front().code) : logic_.card.price_class);
    });
    price_class_->setFocus();
}

void Form7ca::read_card() {
    accounts::CustomerCard& card = logic_.card;
    const auto text = [](const QLineEdit* field) { return std::string(common::trim(utf8(field->text()))); };
    card.number = text(number_);
    card.name = text(name_);
    card.address = text(address_);
    card.notes = text(notes_);
    card.opening = text(opening_);
    card.is_credit = credit_;
    card.is_second_kind = second_kind_->isChecked();
    card.phone = text(phone_);
    card.mobile = text(mobile_);
    card.second_name = text(second_name_);
    card.third_name = text(third_name_);
    card.representative = choice_of(representative_);
    card.country = choice_of(country_);
    card.governorate = choice_of(governorate_);
    card.centre = choice_of(centre_);
    card.district = choice_of(district_);
    card.group = text(group_);
    card.price_class = choice_of(price_class_);
    card.takes_unsettled = unsettled_->isChecked();
    card.pays_later = pays_later_->isChecked();
    card.has_guarantor = has_guarantor_->isChecked();
    card.id_number = text(id_number_);
    card.guarantor = text(guarantor_);
    card.guarantor_id = text(guarantor_id_);
    card.guarantor_phone = text(guarantor_phone_);
}

void Form7ca::step(int by) {
    const auto& all = logic_.customers();
    const auto shown = common::parse_integer(logic_.card.number);
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (all[at].code != shown) continue;
        const std::size_t to = at + static_cast<std::size_t>(by);  // below the first wraps beyond the last
        if (to >= all.size()) return;
        guarded(context_.services, "Customer", [&] {
            if (logic_.show(all[to].code)) show_card();
        });
        return;
    }
}

void Form7ca::save() {
    if (Sheet::top_of(window()) != this) return;
    bool saved = false;
    guarded(context_.services, "SaveCustomer", [&] {
        read_card();
        saved = logic_.save();
    });
    if (saved) {
        leave(1);
        return;
    }
    opening_->setText(qt(logic_.card.opening));
    refused_field()->setFocus();
}

QWidget* Form7ca::refused_field() const {
    if (logic_.card.number.empty()) return number_;
    if (logic_.card.name.empty()) return name_;
    if (logic_.mode() == accounts::CardMode::add &&
        (!accounts::read_code(logic_.card.number) ||
         contains(logic_.customers(), *accounts::read_code(logic_.card.number))))
        return number_;
    return name_;
}

void Form7ca::take_focus() {
    if (logic_.mode() == accounts::CardMode::view) {
        close_->setFocus();
    } else if (logic_.mode() == accounts::CardMode::add) {
        number_->setFocus();
    } else {
        name_->setFocus();
    }
}

void Form7ca::keyPressEvent(QKeyEvent* event) {
    const bool viewing = logic_.mode() == accounts::CardMode::view;
    if (viewing && (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)) {
        step(event->key() == Qt::Key_PageUp ? -1 : 1);
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

}  // namespace ui

#include "ui/accounts/customer_card_sheet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/amount.h"
#include "common/numbers.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr double row_height = least_target;  // with the guarantor's row the card fills a small screen

}  // namespace

CustomerCardSheet::CustomerCardSheet(QWidget* host, const Context& context)
    : Sheet(host), context_(context), logic_(context.connection) {
    setObjectName("Form7ca");
    set_card_width(960);
    body()->setContentsMargins(px(26), px(10), px(26), px(10));
    body()->setSpacing(px(8));
    build_head();
    FieldGrid grid(4, 4);
    form_.add(accounts::customer_form(), grid);
    set_hint(form_.line("customer_class_search"), "رقم أو جزء من الاسم");
    body()->addLayout(grid.layout());
    build_guarantor();
    build_foot();
    // The guarantor's row comes and goes; nothing else may grow or shrink with it.
    form_.set_row_height(row_height);
    connect_fields();
}

void CustomerCardSheet::build_head() {
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
}

void CustomerCardSheet::build_guarantor() {
    guarantor_box_ = new QWidget;
    guarantor_box_->setObjectName("customer_guarantor_box");
    FieldGrid grid(4, 4);
    grid.layout()->setContentsMargins(0, 0, 0, 0);
    form_.add(accounts::guarantor_form(), grid);
    guarantor_box_->setLayout(grid.layout());
    body()->addWidget(guarantor_box_);
}

void CustomerCardSheet::build_foot() {
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    save_ = foot_button(row, "customer_save", "&حفظ", 2, [this] { save(); });
    set_role(save_, "main");
    previous_ = foot_button(row, "customer_previous", "السابق  PgUp", 1, [this] { step(-1); });
    next_ = foot_button(row, "customer_next", "التالي  PgDn", 1, [this] { step(1); });
    close_ = foot_button(row, "customer_close", "إ&غلاق", 1, [this] { leave(0); });
    body()->addLayout(row);
}

void CustomerCardSheet::connect_fields() {
    form_.lead_on(accounts::customer_form(), save_);
    for (std::size_t level = 0; level < logic_.place_fields.size(); ++level) {
        QComboBox* list = form_.list(logic_.place_fields[level]);
        connect(list, &QComboBox::activated, this, [this, level, list] {
            guarded(context_.services, "Places", [&] {
                logic_.choose_place(level, choice_of(list));
                fill_places();
            });
        });
    }
    connect(form_.line("customer_class_search"), &QLineEdit::returnPressed, this,
            &CustomerCardSheet::search_classes);
    connect(qobject_cast<QCheckBox*>(form_.field("customer_has_guarantor")), &QCheckBox::toggled,
            guarantor_box_, &QWidget::setVisible);
}

bool CustomerCardSheet::open(accounts::CardMode mode, std::int64_t code) {
    if (!form_.accept(logic_.open(mode, code), context_.services.prompts)) return false;
    const bool viewing = mode == accounts::CardMode::view;
    form_.set_all_fixed(viewing);
    set_fixed(form_.field("customer_number"), mode != accounts::CardMode::add);
    balance_box_->setVisible(mode != accounts::CardMode::add);
    save_->setVisible(!viewing);
    previous_->setVisible(viewing);
    next_->setVisible(viewing);
    show_card();
    return true;
}

void CustomerCardSheet::show_card() {
    title_->setText(qt(logic_.title()).trimmed());
    balance_->setText(qt(common::Amount(logic_.balance()).text()));
    fill_choices(form_.list("customer_representative"), logic_.representatives(), {});
    fill_choices(form_.list("customer_class"), logic_.price_classes(), {});
    fill_places();
    form_.line("customer_class_search")->clear();
    form_.show(logic_.card);
    guarantor_box_->setVisible(logic_.card.has_guarantor);
}

void CustomerCardSheet::fill_places() {
    const std::optional<std::int64_t> chosen[] = {logic_.card.country, logic_.card.governorate,
                                                  logic_.card.centre, logic_.card.district};
    for (std::size_t level = 0; level < logic_.place_fields.size(); ++level)
        fill_choices(form_.list(logic_.place_fields[level]), logic_.places(level), chosen[level]);
}

void CustomerCardSheet::search_classes() {
    QComboBox* list = form_.list("customer_class");
    guarded(context_.services, "SearchPriceClasses", [&] {
        logic_.card.price_class = choice_of(list);
        const auto refused = logic_.search_classes(utf8(form_.line("customer_class_search")->text()));
        if (!form_.accept(refused, context_.services.prompts)) return;
        fill_choices(list, logic_.price_classes(), logic_.card.price_class);
        list->setFocus();
    });
}

void CustomerCardSheet::step(int by) {
    const auto& all = logic_.customers();
    const auto shown = common::parse_integer(logic_.card.number);
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (all[at].code != shown) continue;
        const std::size_t to = at + static_cast<std::size_t>(by);  // below the first wraps beyond the last
        if (to >= all.size()) return;
        guarded(context_.services, "Customer", [&] {
            if (form_.accept(logic_.show(all[to].code), context_.services.prompts)) show_card();
        });
        return;
    }
}

void CustomerCardSheet::save() {
    if (Sheet::top_of(window()) != this) return;
    if (form_.save(context_.services, "SaveCustomer", logic_.card, [this] { return logic_.save(); }))
        leave(1);
}

void CustomerCardSheet::take_focus() {
    if (logic_.mode() == accounts::CardMode::view) {
        close_->setFocus();
    } else if (logic_.mode() == accounts::CardMode::add) {
        form_.field("customer_number")->setFocus();
    } else {
        form_.field("customer_name")->setFocus();
    }
}

void CustomerCardSheet::keyPressEvent(QKeyEvent* event) {
    const bool viewing = logic_.mode() == accounts::CardMode::view;
    if (viewing && (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)) {
        step(event->key() == Qt::Key_PageUp ? -1 : 1);
        event->accept();
        return;
    }
    Sheet::keyPressEvent(event);
}

}  // namespace ui

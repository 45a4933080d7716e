#include "ui/cash/cash_panel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "cash/messages.h"
#include "common/date_time.h"
#include "common/messages.h"
#include "common/typed.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr double figure_width = 150;  // room for the largest, so that the decimals line up

}  // namespace

CashPanel::CashPanel(const Context& context, QWidget* parent)
    : QWidget(parent), context_(context), logic_(context.connection, context.session, context.services) {
    setObjectName("cash_panel");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(8));
    build_fields();
    counted_ = new AmountField("cash_counted");
    set_role(counted_, "large");
    counted_->setFixedHeight(px(62));
    column->addWidget(captioned(qt(cash::message::counted_cash_field), counted_));

    difference_box_ = new QFrame;
    set_role(difference_box_, "change");
    auto* inside = new QHBoxLayout(difference_box_);
    inside->setContentsMargins(0, px(4), px(14), px(4));
    difference_caption_ = label(qt(cash::message::difference), "plain");
    difference_caption_->setObjectName("cash_difference_caption");
    inside->addWidget(difference_caption_);
    inside->addStretch(1);
    difference_ = new Figure("cash_difference", "total");
    difference_->setMinimumWidth(px(figure_width));
    inside->addWidget(difference_);
    column->addWidget(difference_box_);
    const auto of_movement = [](cash::Movement movement) {
        return label(qt(cash::term(movement).caption), "side");
    };
    moved_since_ = add_figure("cash_moved_since", label(qt(cash::message::moved_since_count), "side"));
    position_ = add_figure("cash_position", label("رصيد الخزينة", "side"));
    card_sales_ = add_figure("cash_card_sales", of_movement(cash::Movement::card_sales));
    uncollected_ = add_figure("cash_uncollected", of_movement(cash::Movement::uncollected));
    discounts_caption_ = label({}, "side", "cash_discounts_caption");
    discounts_ = add_figure("cash_discounts", discounts_caption_);

    note_ = label({}, "side");
    note_->setObjectName("cash_note");
    column->addWidget(note_);
    foot_ = new QHBoxLayout;
    foot_->setSpacing(px(10));
    confirm_ = foot_button(foot_, "cash_confirm", "ت&سجيل الجرد", 2, [this] { confirm(); });
    set_role(confirm_, "main");
    column->addLayout(foot_);

    connect(counted_, &QLineEdit::textEdited, this, [this] { show_difference(); });
    connect(counted_, &QLineEdit::returnPressed, confirm_, qOverload<>(&QWidget::setFocus));
}

void CashPanel::build_fields() {
    store_ = choice_list("cash_store");
    drawer_ = choice_list("cash_drawer");
    day_ = moment_field("cash_day");
    expected_ = new Figure("cash_expected", "total");
    for (QComboBox* list : {store_, drawer_})
        list->setMinimumContentsLength(6);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(px(10));
    grid->setVerticalSpacing(px(6));
    grid->addWidget(captioned("ال&مخزن", store_), 0, 0);
    grid->addWidget(captioned("الخ&زينة", drawer_), 0, 1);
    grid->addWidget(captioned("ال&تاريخ", day_), 1, 0);
    grid->addWidget(captioned(qt(cash::message::expected_cash), expected_), 1, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    static_cast<QVBoxLayout*>(layout())->addLayout(grid);

    connect(store_, &QComboBox::activated, this, [this] {
        const auto store = choice_of(store_);
        if (!store || *store == logic_.store()) return;
        guarded(context_.services, "CashPanel", [&] { logic_.choose_store(*store); });
        fill_choices(drawer_, logic_.drawers(), logic_.drawer());
        show_state();
    });
    connect(drawer_, &QComboBox::activated, this, [this] {
        const auto drawer = choice_of(drawer_);
        if (!drawer || *drawer == logic_.drawer()) return;
        guarded(context_.services, "CashPanel", [&] { logic_.choose_drawer(*drawer); });
        show_state();
    });
    connect(day_, &QLineEdit::editingFinished, this, &CashPanel::choose_day);
}

QLabel* CashPanel::add_figure(const char* name, QLabel* caption) {
    auto* row = new QHBoxLayout;
    row->addWidget(caption);
    row->addStretch(1);
    auto* figure = new Figure(name, "figure");
    figure->setMinimumWidth(px(figure_width));
    figure->setFixedHeight(px(30));
    row->addWidget(figure);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    return figure;
}

void CashPanel::open() {
    logic_.open();
    fill_choices(store_, logic_.stores(), logic_.store());
    fill_choices(drawer_, logic_.drawers(), logic_.drawer());
    show_state();
}

void CashPanel::refresh() {
    guarded(context_.services, "CashPanel", [&] { logic_.refresh(); });
    show_state();
}

QWidget* CashPanel::first_field() {
    return counted_;
}

void CashPanel::show_state() {
    const auto& count = logic_.count();
    counted_->setText(qt(count ? count->counted.text() : std::string("0.00")));
    day_->setText(qt(common::date_text(logic_.day())));
    position_->setText(
        qt(logic_.hides_expected() ? std::string(cash::message::no_figure) : logic_.position().text()));
    card_sales_->setText(qt(logic_.card_sales().text()));
    uncollected_->setText(qt(logic_.uncollected().text()));
    show_discounts();
    QString note = qt(count ? cash::message::day_counted : cash::message::day_not_counted);
    if (count && count->at) {
        if (count->at->date != logic_.day()) note += " .. " + figure(common::date_text(count->at->date));
        note += qt(cash::message::counted_at) + figure(common::twelve_hour_text(count->at->time));
    }
    note_->setText(note);
    show_difference();
}

// The discounts of a day are either all deducted or not at all.
void CashPanel::show_discounts() {
    const cash::InvoiceDiscounts& discounts = logic_.discounts();
    const bool beside = !discounts.taken_off || !discounts.beside.is_zero();
    discounts_caption_->setText(
        qt(beside ? cash::message::day_discounts : cash::message::day_discounts_taken_off));
    discounts_->setText(qt((beside ? discounts.beside : *discounts.taken_off).text()));
}

// A recorded count is compared with the cash expected at its time, a typed one with the cash expected now.
// Before either there is a dash, because all the cash would look like a shortage.
void CashPanel::show_difference() {
    const auto typed = common::read_amount(utf8(counted_->text()));
    const auto& count = logic_.count();
    const bool recorded = count && !counted_->isModified();
    const bool hidden = logic_.hides_expected();
    const bool any = recorded || (!hidden && counted_->isModified() && typed.is_good());
    const common::Amount expected = recorded ? count->expected() : logic_.expected();
    const common::Amount difference = recorded ? count->difference
                                      : any    ? typed.value - expected
                                               : common::Amount();
    const bool is_short = difference < common::Amount();
    expected_->setText(qt(hidden ? std::string(cash::message::no_figure) : expected.text()));
    moved_since_->setText(recorded ? qt(count->moved_since.text()) : qt(cash::message::no_figure));
    difference_->setText(any ? qt(difference.text()) : qt(cash::message::no_figure));
    difference_caption_->setText(is_short               ? "عجز"
                                 : difference.is_zero() ? qt(cash::message::difference)
                                                        : "زيادة");
    difference_box_->setProperty("short", is_short);
    for (QWidget* part : {static_cast<QWidget*>(difference_box_), static_cast<QWidget*>(difference_)}) {
        part->style()->unpolish(part);
        part->style()->polish(part);
    }
}

void CashPanel::choose_day() {
    const auto day = common::read_date(utf8(day_->text()));
    if (day == logic_.day()) return;
    const Sheet* top = Sheet::top_of(window());
    if (top == nullptr || !top->isAncestorOf(this)) return;  // Esc closed the sheet
    if (!day) {
        day_->setText(qt(common::date_text(logic_.day())));  // first, for the message takes the focus away
        context_.services.prompts.message(common::message::wrong_date, common::Icon::critical);
        return;
    }
    guarded(context_.services, "CashPanel", [&] { logic_.choose_day(*day); });
    show_state();
}

void CashPanel::confirm() {
    if (!all_known({store_, drawer_}, context_.services.prompts)) return;
    // A hasty Enter must not record the whole drawer as a shortage; an empty drawer is counted by typing 0.
    if (!counted_->isModified()) {
        if (!logic_.count())
            context_.services.prompts.message(cash::message::enter_counted, common::Icon::critical);
        counted_->setFocus();
        return;
    }
    logic_.counted = utf8(counted_->text());
    std::optional<common::Refusal> refusal;
    const bool ran = guarded(context_.services, "CountedCash", [&] { refusal = logic_.confirm(); });
    if (refusal) context_.services.prompts.message(refusal->text, common::Icon::critical);
    if (!ran || refusal) {
        show_difference();
        counted_->setFocus();
        return;
    }
    show_state();
}

CashCountSheet::CashCountSheet(QWidget* host, const Context& context) : Sheet(host, "جرد الخزينة") {
    setObjectName("cash_count");
    set_card_width(520);
    panel_ = new CashPanel(context);
    body()->addWidget(panel_);
    foot_button(panel_->foot(), "cash_count_back", "&رجوع", 1, [this] { leave(0); });
}

void CashCountSheet::take_focus() {
    panel_->first_field()->setFocus();
}

}  // namespace ui

#include "ui/counting/needs_page.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <span>

#include "common/typed.h"
#include "database/choices.h"
#include "signin/permissions.h"
#include "ui/counting/columns.h"
#include "ui/counting/texts.h"
#include "ui/printing/report_foot.h"
#include "ui/purchases/proposal_view.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

constexpr Column low_columns[] = {{"كود", 0.8, true},  {"الصنف", 3, false},      {"المجموعة", 1.6, false},
                                  {"الرصيد", 1, true}, {"الحد الأدنى", 1, true}, {"ينقص", 1, true}};
constexpr Column expiring_columns[] = {
    {"صالح حتى", 1.2, true}, {"باق", 0.9, true},  {"كود", 0.8, true},    {"الصنف", 3, false},
    {"المخزن", 1.4, false},  {"الكمية", 1, true}, {"القيمة", 1.1, true},  // the last, only with cost
};

constexpr std::int64_t all_stores = 0;
// The number of days is not correct.
constexpr std::string_view wrong_days = "عدد الأيام غير صحيح";
constexpr double most_days = 3650;

std::span<const Column> columns_of(int view, bool sees_cost) {
    if (view == 0) return low_columns;
    const std::span<const Column> all(expiring_columns);
    return sees_cost ? all : all.first(all.size() - 1);
}

}  // namespace

NeedsPage::NeedsPage(const Context& context)
    : Page("needs_page"),
      context_(context),
      sees_cost_(signin::allows(context.session, signin::Action::see_cost)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    auto* head = new QHBoxLayout;
    head->addWidget(label("النواقص والصلاحية", "title"));
    head->addStretch(1);
    view_ = new Segments("needs_view", {{low, "النواقص"}, {expiring, "الصلاحية"}, {orders, "الطلبات"}});
    view_->set_height(least_target);
    view_->show_chosen(low);
    connect(view_, &Segments::chosen, this, [this](int view) { show_view(view); });
    head->addWidget(view_);
    column->addLayout(head);
    column->addWidget(lists_ = build_lists(), 1);
    column->addWidget(orders_ = new ProposalView(context), 1);
    orders_->hide();
}

QWidget* NeedsPage::build_lists() {
    auto* lists = new QWidget;
    auto* column = new QVBoxLayout(lists);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    auto* choices = new QHBoxLayout;
    choices->setSpacing(px(10));
    choices->addWidget(captioned("الم&خزن", store_ = choice_list("needs_store")), 1);
    days_ = new AmountField("needs_days");
    days_->setText(QString::number(counting::days_ahead));
    choices->addWidget(days_part_ = captioned("تنت&هي خلال أيام", days_));
    days_part_->hide();
    QPushButton* show = field_button(choices, "needs_show", "عر&ض", [this] { show_view(view_->value()); });
    enter_leads_on({store_, show});
    connect(days_, &QLineEdit::returnPressed, this, [this] { show_view(view_->value()); });
    choices->addStretch(1);
    column->addLayout(choices);
    tables_[low] = new ListTable("needs_low", headings_of(columns_of(low, sees_cost_)), 1);
    tables_[low]->say_when_empty("لا يوجد صنف رصيده أقل من الحد الأدنى");
    tables_[expiring] = new ListTable("needs_expiring", headings_of(columns_of(expiring, sees_cost_)), 3);
    tables_[expiring]->say_when_empty("لا توجد بضاعة منتهية أو تنتهي في هذه المدة");
    for (ListTable* table : tables_) {
        column->addWidget(table, 1);
        connect(table, &ListTable::left_upwards, store_, qOverload<>(&QWidget::setFocus));
    }
    tables_[expiring]->hide();
    // What is past its date stands out.
    tables_[expiring]->set_look([this](int row, int) {
        return rows_[static_cast<std::size_t>(row)][1].starts_with('-') ? CellLook::strong : CellLook::plain;
    });
    auto* foot = new QHBoxLayout;
    foot->addWidget(note_ = label({}, "side", "needs_note"), 1);
    add_report_buttons(
        foot, "needs", context_, [this] { return paper(); }, note_);
    column->addLayout(foot);
    return lists;
}

void NeedsPage::open() {
    const auto chosen = stores_.empty() ? std::optional(all_stores) : choice_of(store_);
    stores_ = database::load_stores(context_.connection);
    stores_.insert(stores_.begin(), {all_stores, "كل المخازن"});
    fill_choices(store_, stores_, chosen ? chosen : std::optional(all_stores));
    show_chosen();
}

void NeedsPage::show_list(PageList list) {
    view_->show_chosen(list == PageList::low_stock ? low : expiring);
    fill_choices(store_, stores_, all_stores);
    days_->setText(QString::number(counting::days_ahead));
    show_chosen();
    take_focus();
}

std::optional<std::int64_t> NeedsPage::store() const {
    const auto chosen = choice_of(store_);
    return chosen == all_stores ? std::nullopt : chosen;
}

void NeedsPage::show_view(int view) {
    if (!all_known({store_}, context_.services.prompts)) return;
    view_->show_chosen(view);
    if (guarded(context_.services, "Needs", [this] { show_chosen(); })) take_focus();
}

void NeedsPage::show_chosen() {
    const bool are_orders = view_->value() == orders;
    lists_->setHidden(are_orders);
    orders_->setVisible(are_orders);
    if (are_orders)
        orders_->open();
    else
        refresh();
}

void NeedsPage::refresh() {
    const int view = view_->value();
    days_part_->setVisible(view == expiring);
    for (const int one : {low, expiring})
        tables_[one]->setVisible(one == view);
    rows_.clear();
    value_ = {};
    if (view == low)
        show_low();
    else
        show_expiring();
}

void NeedsPage::show_low() {
    for (const auto& item : counting::read_low_stock(context_.connection, store()))
        rows_.push_back({std::to_string(item.item), item.name, item.group, quantity_text(item.held),
                         quantity_text(item.minimum), quantity_text(item.missing())});
    tables_[low]->show_rows(cells_of(rows_, low_columns));
    note_->setText("عدد الأصناف " + figure(static_cast<qlonglong>(rows_.size())));
}

void NeedsPage::show_expiring() {
    const auto days = common::read_number(utf8(days_->text()), wrong_days);
    if (!days.is_good() || days.value > most_days) {
        tables_[expiring]->show_rows({});
        note_->clear();
        context_.services.prompts.message(days.is_good() ? wrong_days : days.refusal);
        return days_->setFocus();
    }
    const common::Date today = context_.services.clock.now().date;
    const common::Date until = common::add_days(today, static_cast<long>(days.value));
    for (const auto& batch : counting::read_expiring(context_.connection, until, store())) {
        rows_.push_back({common::date_text(batch.expiry), std::to_string(batch.days_left(today)),
                         std::to_string(batch.item), batch.name, batch.store_name,
                         quantity_text(batch.held)});
        if (sees_cost_) rows_.back().push_back(batch.value().text());
        value_ += batch.value();
    }
    tables_[expiring]->show_rows(cells_of(rows_, expiring_columns));
    QString said = "عدد التواريخ " + figure(static_cast<qlonglong>(rows_.size()));
    if (sees_cost_) said += " · القيمة " + figure(value_.text());
    note_->setText(said);
}

printing::Report NeedsPage::paper() const {
    const bool is_low = view_->value() == low;
    printing::Report report = printing::headed(is_low ? "low-stock" : "expiring", context_.session);
    report.title = is_low ? "أصناف رصيدها أقل من الحد الأدنى" : "بضاعة منتهية أو قريبة الانتهاء";
    report.captions = {{"المخزن", common::name_of(stores_, store().value_or(all_stores))},
                       {"في", common::date_text(context_.services.clock.now().date)}};
    add_columns(report, columns_of(view_->value(), sees_cost_));
    report.rows = rows_;
    report.totals = {{"عدد السطور", std::to_string(rows_.size())}};
    if (!is_low && sees_cost_) report.totals.emplace_back("القيمة", value_.text());
    return report;
}

void NeedsPage::take_focus() {
    if (view_->value() == orders) return orders_->take_focus();
    ListTable* table = tables_[view_->value()];
    if (table->shown_count() > 0)
        table->setFocus();
    else
        store_->setFocus();
}

}  // namespace ui

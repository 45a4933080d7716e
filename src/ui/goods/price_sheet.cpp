#include "ui/goods/price_sheet.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "common/numbers.h"
#include "goods/item_card.h"
#include "goods/labels.h"
#include "ui/goods/label_sheet.h"
#include "ui/printing/report_foot.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// Nobody reads more rows before agreeing; the sums count all.
constexpr std::size_t most_shown = 5000;
// Saved. Print shelf labels with the new retail prices?
constexpr std::string_view ask_labels =
    "تم حفظ الأسعار. هل تطبع ملصقات جديدة للأصناف التي تغير سعر القطاعي لها؟";
// Nobody prints more in one go.
constexpr std::size_t most_labels = 1000;
// Item, name, which price, from, to, difference, warning.
constexpr std::array<const char*, 7> change_headings = {"كود", "الاسم", "السعر", "من",
                                                        "إلى", "الفرق", "تنبيه"};
constexpr int new_price_column = 4;
constexpr int warning_column = 6;

std::array<std::string, 7> cells_of(const goods::PlannedPrice& change) {
    return {std::to_string(change.price.item), change.name,
            std::string(goods::level_name(change.price.price_level)) + " " +
                std::string(sales::unit_name(change.price.unit_level)),
            common::format_amount(change.from), common::format_amount(change.price.price),
            common::format_amount(change.price.price - change.from),
            // below the cost; comes down with retail
            change.is_below_cost            ? "أقل من التكلفة"
            : change.is_lowered_with_retail ? "ينخفض مع القطاعي"
                                            : ""};
}

}  // namespace

PriceSheet::PriceSheet(QWidget* host, const Context& context, const goods::ItemFilter& filter,
                       std::size_t items)
    : Sheet(host, "تعديل أسعار " +
                      qt(common::counted(static_cast<long long>(items), {"صنف", "صنفين", "أصناف", "صنفا"}))),
      context_(context),
      logic_(context.connection, context.session, context.services.prompts, context.services.clock) {
    setObjectName("price_sheet");
    body()->setContentsMargins(px(24), px(12), px(24), px(14));
    body()->setSpacing(px(10));
    logic_.filter = filter;
    build_choices();
    changes_ = new ListTable("prices_changes", text_list(change_headings), 1);
    changes_->setMinimumHeight(px(280));
    changes_->say_when_empty("اختر التغيير ثم اعرض ما سيتغير قبل حفظه");
    changes_->set_look([this](int row, int column) {
        const bool is_below = logic_.changes()[static_cast<std::size_t>(row)].is_below_cost;
        return column == new_price_column || (is_below && column == warning_column) ? CellLook::strong
                                                                                    : CellLook::plain;
    });
    body()->addWidget(changes_, 1);
    said_ = label({}, "side", "prices_said");
    body()->addWidget(said_);
    QHBoxLayout* row = add_row();
    show_ = foot_button(row, "prices_show", "عر&ض التغييرات", 2, [this] { show_changes(); });
    apply_ = foot_button(row, "prices_apply", "&حفظ الأسعار", 2, [this] { apply(); });
    for (QPushButton* button : {show_, apply_})
        set_role(button, "main");
    add_report_buttons(
        row, "prices", context_, [this] { return paper(); }, said_);
    foot_button(row, "prices_back", "&رجوع", 1, [this] { leave(0); });
    forget_changes();
}

void PriceSheet::build_choices() {
    auto* first = new QHBoxLayout;
    first->setSpacing(px(12));
    using goods::PriceRule;
    rule_ = new Segments("prices_rule", {{static_cast<int>(PriceRule::raise), "زيادة"},
                                         {static_cast<int>(PriceRule::lower), "تخفيض"},
                                         {static_cast<int>(PriceRule::margin), "ربح على التكلفة"},
                                         {static_cast<int>(PriceRule::round), "تقريب فقط"}});
    rule_->show_chosen(static_cast<int>(PriceRule::raise));
    first->addWidget(captioned("التغيير", rule_), 4);
    percent_ = new AmountField(QString::fromUtf8(goods::percent_field.data()));
    percent_box_ = captioned("&النسبة %", percent_);
    first->addWidget(percent_box_, 1);
    step_ = new Segments("prices_step", {{0, "بلا"}, {5, "0.05"}, {25, "0.25"}, {50, "0.50"}, {100, "1.00"}});
    step_->show_chosen(0);
    first->addWidget(captioned("التقريب إلى", step_), 4);
    body()->addLayout(first);
    auto* second = new QHBoxLayout;
    second->setSpacing(px(22));
    const auto box = [&](const char* name, std::string_view caption, bool is_set) {
        auto* made = new QCheckBox(qt(caption));
        made->setObjectName(name);
        made->setChecked(is_set);
        made->setMinimumHeight(px(least_target));
        second->addWidget(made);
        connect(made, &QCheckBox::toggled, this, [this] { forget_changes(); });
        return made;
    };
    constexpr const char* level_names[] = {"", "prices_level_2", "prices_level_3", "prices_level_4",
                                           "prices_level_5"};
    constexpr const char* unit_names[] = {"prices_unit_1", "prices_unit_2", "prices_unit_3"};
    for (int level = sales::retail_level; level <= goods::price_levels; ++level) {
        const auto at = static_cast<std::size_t>(level) - 1;
        level_boxes_[at] = box(level_names[at], goods::level_name(level), level == sales::retail_level);
    }
    second->addStretch(1);
    for (int unit = 1; unit <= goods::units; ++unit) {
        const auto at = static_cast<std::size_t>(unit) - 1;
        unit_boxes_[at] = box(unit_names[at], sales::unit_name(unit), true);
    }
    body()->addLayout(second);
    connect(rule_, &Segments::chosen, this, [this](int rule) {
        rule_->show_chosen(rule);
        percent_box_->setEnabled(rule != static_cast<int>(PriceRule::round));
        forget_changes();
    });
    connect(step_, &Segments::chosen, this, [this](int step) {
        step_->show_chosen(step);
        forget_changes();
    });
    connect(percent_, &QLineEdit::textEdited, this, [this] { forget_changes(); });
    connect(percent_, &QLineEdit::returnPressed, this, [this] { show_changes(); });
}

void PriceSheet::read_choice() {
    goods::PriceChoice choice;
    choice.rule = static_cast<goods::PriceRule>(rule_->value());
    choice.percent = utf8(percent_->text());
    choice.step = step_->value();
    choice.unit_levels.clear();
    choice.price_levels.clear();
    for (int unit = 1; unit <= goods::units; ++unit)
        if (unit_boxes_[static_cast<std::size_t>(unit) - 1]->isChecked()) choice.unit_levels.insert(unit);
    for (int level = sales::retail_level; level <= goods::price_levels; ++level)
        if (level_boxes_[static_cast<std::size_t>(level) - 1]->isChecked()) choice.price_levels.insert(level);
    logic_.choice = std::move(choice);
}

void PriceSheet::forget_changes() {
    logic_.forget();
    changes_->show_rows({});
    said_->clear();
    apply_->setEnabled(false);
}

void PriceSheet::show_changes() {
    if (Sheet::top_of(window()) != this) return;
    std::optional<common::Refusal> refusal;
    guarded(context_.services, "PlanPrices", [&] {
        read_choice();
        refusal = logic_.work_out();
        repaint_rows();
    });
    if (refusal) return refuse(*refusal);
    if (!logic_.changes().empty()) apply_->setFocus();
}

void PriceSheet::repaint_rows() {
    std::vector<QStringList> rows;
    for (const goods::PlannedPrice& change : logic_.changes()) {
        if (rows.size() == most_shown) break;
        rows.push_back(text_list(cells_of(change), {0, 3, 4, 5}));
    }
    changes_->say_when_empty("لا توجد أسعار تتغير");
    changes_->show_rows(std::move(rows));
    QString said = "أصناف " + QString::number(logic_.items()) + "، أسعار تتغير " +
                   QString::number(logic_.changes().size());
    if (logic_.changes().size() > most_shown) said += "، يعرض أول " + QString::number(most_shown);
    if (logic_.below_cost() > 0) said += "، أقل من التكلفة " + QString::number(logic_.below_cost());
    if (logic_.lowered_with_retail() > 0)
        said += "، تنخفض مع القطاعي حتى لا تزيد عليه " + QString::number(logic_.lowered_with_retail());
    if (logic_.left_out() > 0) said += "، تبقى كما هي " + QString::number(logic_.left_out());
    said_->setText(said);
    apply_->setEnabled(!logic_.changes().empty());
}

printing::Report PriceSheet::paper() const {
    using printing::Align;
    printing::Report report = printing::headed("price-changes", context_.session);
    report.title = "تغييرات الأسعار قبل حفظها";
    constexpr double shares[] = {0.9, 3, 1.6, 1, 1, 1, 1.3};
    for (std::size_t column = 0; column < change_headings.size(); ++column)
        report.columns.push_back(
            {change_headings[column],
             column == 0 || (column >= 3 && column < warning_column) ? Align::end : Align::start,
             shares[column]});
    for (const goods::PlannedPrice& change : logic_.changes()) {
        const auto cells = cells_of(change);
        report.rows.emplace_back(cells.begin(), cells.end());
    }
    report.totals = {{"أسعار تتغير", std::to_string(report.rows.size())}};
    return report;
}

void PriceSheet::apply() {
    if (Sheet::top_of(window()) != this) return;
    std::optional<common::Refusal> refusal;
    goods::ItemFilter changed;
    for (const goods::PlannedPrice& change : logic_.changes())
        if (change.price.price_level == sales::retail_level) changed.marked.insert(change.price.item);
    const bool ended = guarded(context_.services, "ApplyPrices", [&] { refusal = logic_.apply(); });
    if (refusal) return refuse(*refusal);
    if (!ended) return;
    guarded(context_.services, "Labels", [&] {
        if (changed.marked.empty() || changed.marked.size() > most_labels) return;
        if (!context_.services.prompts.question(ask_labels)) return;
        LabelSheet(this, context_, goods::labels_of(context_.connection, changed)).run();
    });
    leave(1);
}

// A refusal without text has been shown already.
void PriceSheet::refuse(const common::Refusal& refusal) {
    if (!refusal.text.empty()) context_.services.prompts.message(refusal.text, common::Icon::critical);
    if (refusal.field != goods::percent_field) return;
    percent_->setFocus();
    percent_->selectAll();
}

void PriceSheet::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedWidth(std::min(width() - px(24), px(1180)));
}

void PriceSheet::take_focus() {
    percent_->setFocus();
}

}  // namespace ui

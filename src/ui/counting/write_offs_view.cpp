#include "ui/counting/write_offs_view.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "signin/permissions.h"
#include "ui/counting/texts.h"
#include "ui/printing/report_foot.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

constexpr Column all_columns[] = {
    {"محضر", 0.8, true},   {"التاريخ", 1.2, true},  {"المخزن", 1.4, false}, {"الصنف", 3, false},
    {"الكمية", 0.9, true}, {"صالح حتى", 1.2, true}, {"السبب", 2, false},    {"القيمة", 1.1, true},
    // the last only for who may see costs
};

// "Write a counter entry to this report? Its goods come back into the stock."
constexpr std::string_view ask_reverse = "عكس المحضر كله؟ تعود أصنافه إلى رصيد المخزن. محضر رقم ";

}  // namespace

WriteOffsView::WriteOffsView(const Context& context)
    : context_(context), sees_cost_(signin::allows(context.session, signin::Action::see_cost)) {
    setObjectName("write_offs");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    auto* period = new QHBoxLayout;
    period->setSpacing(px(10));
    period->addWidget(captioned("من &تاريخ", start_ = moment_field("write_offs_start")));
    period->addWidget(captioned("إلى تاري&خ", end_ = moment_field("write_offs_end")));
    QPushButton* show = field_button(period, "write_offs_show", "عر&ض", [this] { show_period(); });
    enter_leads_on({start_, end_, show});
    period->addStretch(1);
    column->addLayout(period);
    table_ = new ListTable("write_offs_rows", headings_of(columns()), 3);
    table_->say_when_empty("لا توجد محاضر تالف في هذه المدة");
    connect(table_, &ListTable::left_upwards, start_, qOverload<>(&QWidget::setFocus));
    column->addWidget(table_, 1);
    auto* foot = new QHBoxLayout;
    reverse_ = foot_button(foot, "write_offs_reverse", "ع&كس المحضر", 0, [this] { reverse(); });
    foot->addWidget(note_ = label({}, "side", "write_offs_note"), 1);
    add_report_buttons(
        foot, "write_offs", context_, [this] { return paper(); }, note_);
    column->addLayout(foot);
}

std::span<const Column> WriteOffsView::columns() const {
    const std::span<const Column> all(all_columns);
    return sees_cost_ ? all : all.first(all.size() - 1);
}

void WriteOffsView::open() {
    if (!is_open_) {
        to_ = context_.services.clock.now().date;
        from_ = {to_.year, to_.month, 1};
        start_->setText(qt(common::date_text(from_)));
        end_->setText(qt(common::date_text(to_)));
        is_open_ = true;
    }
    rows_ = counting::read_write_offs(context_.connection, from_, to_);
    table_->show_rows(cells_of(texts_of_rows(), columns()));
    reverse_->setEnabled(!rows_.empty());
    QString said = "عدد السطور " + figure(static_cast<qlonglong>(rows_.size()));
    if (sees_cost_) said += " · القيمة " + figure(counting::value_of(rows_).text());
    note_->setText(said);
}

void WriteOffsView::show_period() {
    const auto from = date_in(start_, context_.services.prompts);
    if (!from) return;
    const auto to = date_in(end_, context_.services.prompts);
    if (!to) return;
    from_ = *from;
    to_ = *to;
    if (guarded(context_.services, "WriteOffs", [this] { open(); })) take_focus();
}

void WriteOffsView::reverse() {
    const int row = table_->current_row();
    if (row < 0) return;
    if (!signin::authorise_change(context_.session, context_.services.prompts, signin::Action::count_stock))
        return;
    const std::int64_t number = rows_[static_cast<std::size_t>(row)].number;
    if (!context_.services.prompts.question(std::string(ask_reverse) + std::to_string(number),
                                            common::Icon::exclamation))
        return;
    guarded(context_.services, "ReverseWriteOff", [&] {
        auto reversed = counting::reverse_write_off(context_.connection, context_.session,
                                                    context_.services.clock, number);
        if (const auto* refusal = std::get_if<common::Refusal>(&reversed))
            context_.services.prompts.message(refusal->text, common::Icon::critical);
        open();
        take_focus();
    });
}

std::vector<std::vector<std::string>> WriteOffsView::texts_of_rows() const {
    std::vector<std::vector<std::string>> rows;
    for (const counting::WriteOffRow& row : rows_)
        rows.push_back(texts_of(row));
    return rows;
}

std::vector<std::string> WriteOffsView::texts_of(const counting::WriteOffRow& row) const {
    std::vector<std::string> cells = {
        std::to_string(row.number),       common::date_text(row.moment.date), row.store_name, row.line.name,
        quantity_text(row.line.quantity), expiry_text(row.line.expiry),       row.line.reason};
    if (sees_cost_) cells.push_back(row.line.value().text());
    return cells;
}

printing::Report WriteOffsView::paper() const {
    printing::Report report = printing::headed("write-offs", context_.session);
    report.title = "محاضر التالف والمنتهي";
    report.orientation = printing::Orientation::landscape;
    report.captions = {{"من تاريخ", common::date_text(from_)}, {"إلى تاريخ", common::date_text(to_)}};
    add_columns(report, columns());
    report.rows = texts_of_rows();
    report.totals = {{"عدد السطور", std::to_string(rows_.size())}};
    if (sees_cost_) report.totals.emplace_back("القيمة", counting::value_of(rows_).text());
    report.signatures = {"أمين المخزن", "يعتمد"};
    return report;
}

void WriteOffsView::take_focus() {
    if (table_->shown_count() > 0)
        table_->setFocus();
    else
        start_->setFocus();
}

}  // namespace ui

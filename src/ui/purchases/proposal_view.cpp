#include "ui/purchases/proposal_view.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "common/amount.h"
#include "common/numbers.h"
#include "common/typed.h"
#include "sales/items.h"
#include "signin/permissions.h"
#include "ui/printing/report_foot.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// Supplier, item, sold, stock, minimum, to order, unit, value at cost.
constexpr std::array<std::string_view, 8> proposal_headings{"المورد",      "الصنف",   "المباع", "الرصيد",
                                                            "الحد الأدنى", "المطلوب", "الوحدة", "القيمة"};
constexpr int order_column = 5;
constexpr int value_column = 7;
constexpr auto no_supplier = "بدون مورد";

common::Amount value_of(const purchases::ProposedLine& line) {
    return common::Amount(line.quantity * line.cost);
}

std::array<std::string, 8> cells_of(const purchases::ProposedLine& line) {
    return {line.supplier == 0 ? no_supplier : line.supplier_name,
            line.name,
            common::shortest_text(line.sold),
            common::shortest_text(line.stock),
            common::shortest_text(line.minimum),
            common::shortest_text(line.quantity),
            std::string(sales::unit_name(line.unit_level)),
            value_of(line).text()};
}

}  // namespace

ProposalView::ProposalView(const Context& context)
    : context_(context),
      logic_(context.connection, context.services),
      shows_cost_(signin::allows(context.session, signin::Action::see_cost)) {
    setObjectName("proposal_view");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    column->addWidget(build_choices());
    table_ = new ListTable("proposal_lines", text_list(proposal_headings), 1);
    table_->setColumnHidden(value_column, !shows_cost_);
    table_->say_when_empty("لا يوجد ما يطلب الآن · الرصيد يكفي مبيعات هذه المدة والحد الأدنى");
    table_->set_look([this](int row, int cell) {
        const auto& line = logic_.lines()[static_cast<std::size_t>(row)];
        if (line.quantity == 0) return CellLook::dimmed;
        return cell == order_column ? CellLook::strong : CellLook::plain;
    });
    column->addWidget(table_, 1);
    column->addWidget(build_foot());
    connect(table_, &ListTable::left_upwards, form_.field("proposal_weeks"), qOverload<>(&QWidget::setFocus));
    connect(table_, &ListTable::row_chosen, this, &ProposalView::choose_row);
    connect(table_, &ListTable::row_taken, quantity_, qOverload<>(&QWidget::setFocus));
}

QWidget* ProposalView::build_choices() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    FieldGrid grid(3, 0);
    grid.layout()->setHorizontalSpacing(px(10));
    form_.add(purchases::proposal_form(), grid);
    row->addLayout(grid.layout(), 1);
    QPushButton* show = field_button(row, "proposal_show", "عر&ض", [this] { show_proposal(); });
    set_role(show, "main");
    form_.lead_on(purchases::proposal_form(), show);
    return bar;
}

QWidget* ProposalView::build_foot() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(8));
    chosen_ = label("ال&كمية المطلوبة", "side", "proposal_chosen");
    quantity_ = new AmountField("proposal_quantity");
    quantity_->setFixedSize(px(90), px(least_target));
    chosen_->setBuddy(quantity_);
    row->addWidget(chosen_);
    row->addWidget(quantity_);
    connect(quantity_, &QLineEdit::returnPressed, this, [this] { set_quantity(); });
    note_ = label({}, "side", "proposal_note");
    row->addWidget(note_, 1);
    add_report_buttons(
        row, "proposal", context_, [this] { return paper(); }, note_);
    return bar;
}

void ProposalView::open() {
    logic_.open();
    fill_choices(form_.list("proposal_store"), logic_.stores(), logic_.fields.store);
    fill_choices(form_.list("proposal_supplier"), logic_.suppliers(), logic_.fields.supplier);
    form_.show(logic_.fields);
    logic_.show();
    repaint_lines(0);
}

void ProposalView::show_proposal() {
    if (!form_.save(context_.services, "Proposal", logic_.fields, [this] { return logic_.show(); })) return;
    repaint_lines(0);
    take_focus();
}

void ProposalView::repaint_lines(int chosen) {
    std::vector<QStringList> rows;
    common::Amount sum;
    for (const auto& line : logic_.lines()) {
        rows.push_back(text_list(cells_of(line), {2, 3, 4, 5, 7}));
        sum += value_of(line);
    }
    const bool any = !rows.empty();
    table_->show_rows(std::move(rows));
    if (any) table_->choose_row(chosen);
    quantity_->setEnabled(any);
    choose_row(table_->current_row());
    note_->setText("عدد الأصناف " + figure(static_cast<qlonglong>(logic_.lines().size())) +
                   (shows_cost_ ? "، القيمة " + figure(sum.text()) : QString()));
}

void ProposalView::choose_row(int row) {
    quantity_->setText(
        row < 0 ? QString()
                : qt(common::shortest_text(logic_.lines()[static_cast<std::size_t>(row)].quantity)));
}

// Enter leads to the next line.
void ProposalView::set_quantity() {
    const int row = table_->current_row();
    if (row < 0) return;
    if (const auto refused = logic_.set_quantity(static_cast<std::size_t>(row), utf8(quantity_->text()))) {
        context_.services.prompts.message(refused->text, common::Icon::critical);
        quantity_->selectAll();
        return;
    }
    repaint_lines(std::min(row + 1, static_cast<int>(logic_.lines().size()) - 1));
    quantity_->setFocus();
    quantity_->selectAll();
}

printing::Report ProposalView::paper() const {
    using printing::Align;
    printing::Report report = printing::headed("order", context_.session);
    report.title = "مقترح الطلبات";
    report.captions = {{"مبيعات آخر", common::counted(common::read_code(logic_.fields.weeks).value_or(0),
                                                      {"أسبوع", "أسبوعين", "أسابيع", "أسبوعا"})},
                       {"المخزن", common::name_of(logic_.stores(), logic_.fields.store.value_or(0))},
                       {"المورد", common::name_of(logic_.suppliers(), logic_.fields.supplier.value_or(0))}};
    constexpr double shares[] = {2, 3, 1, 1, 1, 1, 0.9, 1.2};
    const std::size_t columns = shows_cost_ ? proposal_headings.size() : proposal_headings.size() - 1;
    for (std::size_t column = 0; column < columns; ++column)
        report.columns.push_back({std::string(proposal_headings[column]),
                                  column >= 2 && column != 6 ? Align::end : Align::start, shares[column]});
    common::Amount sum;
    for (const auto& line : logic_.lines()) {
        if (line.quantity == 0) continue;
        const auto cells = cells_of(line);
        report.rows.emplace_back(cells.begin(), cells.begin() + static_cast<std::ptrdiff_t>(columns));
        sum += value_of(line);
    }
    report.totals = {{"عدد الأصناف", std::to_string(report.rows.size())}};
    if (shows_cost_) report.totals.emplace_back("القيمة", sum.text());
    return report;
}

void ProposalView::take_focus() {
    if (table_->shown_count() > 0)
        table_->setFocus();
    else
        form_.field("proposal_weeks")->setFocus();
}

}  // namespace ui

#include "ui/reports/report_page.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/printing/progress.h"
#include "ui/printing/report_foot.h"
#include "ui/printing/reports.h"
#include "ui/reports/chart.h"
#include "ui/reports/rows_sheet.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// Nobody reads more rows, and to make and forget the texts of 100,000 takes half a second each.
constexpr std::size_t most_shown = 5000;

// The label of a row and its figures. Texts among them are not set as figures.
QStringList cells_of(const std::vector<std::string>& texts, const reports::Table& table) {
    QStringList cells = text_list(texts);
    for (int i = 1; i < cells.size(); ++i)
        if (table.columns[static_cast<std::size_t>(i - 1)].format != reports::Format::text)
            cells[i] = figure(cells[i]);
    return cells;
}

}  // namespace

ReportPage::ReportPage(const Context& context)
    : Page("report_page"),
      context_(context),
      logic_(context.connection, context.session, context.services.clock) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(8));
    column->addWidget(build_choices());
    title_ = label({}, "total", "report_title");
    column->addWidget(title_);
    chart_ = new Chart("report_chart");
    connect(chart_, &Chart::row_taken, this, &ReportPage::open_row);
    column->addWidget(chart_);
    table_place_ = new QVBoxLayout;
    column->addLayout(table_place_, 1);
    column->addWidget(build_foot());
}

QWidget* ReportPage::build_choices() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    FieldGrid grid(6, 0);
    grid.layout()->setHorizontalSpacing(px(8));
    form_.add(reports::desk_form(), grid);
    // The names of reports and periods stand whole, also on a screen 1024 wide.
    form_.list("report_kind")->setMinimumWidth(px(220));
    for (const char* day : {"report_start", "report_end"})
        form_.field(day)->setFixedWidth(px(113));
    for (const int column : {3, 4})
        grid.layout()->setColumnStretch(column, 0);
    form_.list("report_store")->setMinimumWidth(px(115));
    row->addLayout(grid.layout(), 1);
    QPushButton* show = field_button(row, "report_show", "عر&ض", [this] { show_report(); });
    set_role(show, "main");
    form_.lead_on(reports::desk_form(), show);
    connect(form_.list("report_preset"), &QComboBox::activated, this, &ReportPage::take_preset);
    connect(form_.list("report_kind"), &QComboBox::activated, this, &ReportPage::show_report);
    return bar;
}

QWidget* ReportPage::build_foot() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    note_ = label({}, "side", "report_note");
    note_->setWordWrap(true);  // the name of a saved file is long
    row->addWidget(note_, 1);
    const auto button = [&](const char* name, const QString& caption, std::function<void()> action) {
        QPushButton* made = foot_button(row, name, caption, 0, std::move(action));
        made->setMinimumHeight(px(least_target));
        return made;
    };
    button("report_open", "التف&اصيل", [this] {
        if (table_ != nullptr) open_row(table_->current_row() - 1);
    });
    add_report_buttons(
        row, "report", context_, [this] { return logic_.paper(); }, note_);
    button("report_pdf", "ملف &PDF", [this] {
        guarded(context_.services, "KeepReport", [&] {
            const QString kept = keep_report(context_, logic_.paper(), ReportFile::pdf);
            if (!kept.isEmpty()) note_->setText(kept);
        });
    });
    return bar;
}

void ReportPage::open() {
    logic_.open();
    fill_choices(form_.list("report_kind"), logic_.kinds(), logic_.fields.kind);
    fill_choices(form_.list("report_preset"), logic_.presets(), logic_.fields.preset);
    fill_choices(form_.list("report_store"), logic_.stores(), logic_.fields.store);
    form_.show(logic_.fields);
    show_report();
}

void ReportPage::take_preset() {
    if (!form_.accept(form_.read(logic_.fields), context_.services.prompts)) return;
    logic_.take_preset();
    form_.show(logic_.fields);
    show_report();
}

void ReportPage::show_report() {
    if (Sheet::top_of(window()) != nullptr) return;
    if (!form_.save(context_.services, "Report", logic_.fields, [this] { return logic_.choose(); })) return;
    form_.show(logic_.fields);
    guarded(context_.services, "Report", [&] {
        // "The report is being made", "part … of …"
        const auto progress = show_progress("جار إعداد التقرير", {"جزء %1 من %2", ""});
        if (logic_.make(progress)) repaint_table();
    });
}

void ReportPage::repaint_table() {
    const reports::Table& table = logic_.table();
    title_->setText(qt(logic_.kind().caption) + "  ·  \u200f" + qt(logic_.period_text()));
    note_->clear();
    chart_->show_table(table, table.rows.empty() ? QString() : qt(table.columns[table.charted].heading));
    auto* made = new ListTable("report_table", text_list(table.headings()), 0);
    made->say_when_empty("لا توجد بيانات في هذه المدة · اختر مدة أخرى");
    made->verticalHeader()->setDefaultSectionSize(px(least_target));
    std::vector<QStringList> rows;
    if (!table.rows.empty()) rows.push_back(cells_of(table.total_cells(), table));
    const std::size_t shown = std::min(table.rows.size(), most_shown);
    for (std::size_t at = 0; at < shown; ++at)
        rows.push_back(cells_of(table.cells(table.rows[at]), table));
    if (shown < table.rows.size())
        note_->setText("يعرض أول " + QString::number(shown) + " سطر من " +
                       QString::number(table.rows.size()) + "، وفي الطباعة والملف كل السطور");
    made->set_look([](int row, int) { return row == 0 ? CellLook::strong : CellLook::plain; });
    made->show_rows(std::move(rows));
    if (!table.rows.empty()) made->choose_row(1);
    connect(made, &ListTable::row_taken, this, [this](int row) { open_row(row - 1); });
    connect(made, &ListTable::left_upwards, form_.field("report_kind"), qOverload<>(&QWidget::setFocus));
    const bool had_focus = table_ != nullptr && table_->hasFocus();
    delete table_;
    table_ = made;
    table_place_->addWidget(table_);
    auto* show = findChild<QPushButton*>("report_show");
    setTabOrder(form_.field("report_store"), show);
    setTabOrder(show, chart_);
    // A chart without columns takes no focus.
    setTabOrder(chart_->focusPolicy() == Qt::NoFocus ? static_cast<QWidget*>(show) : chart_, table_);
    setTabOrder(table_, findChild<QPushButton*>("report_open"));
    if (had_focus) table_->setFocus();
}

void ReportPage::open_row(int row) {
    if (row < 0 || row >= static_cast<int>(logic_.table().rows.size()) || Sheet::top_of(window()) != nullptr)
        return;
    guarded(context_.services, "RowsBehind",
            [&] { RowsSheet(window(), context_, logic_.rows_behind(static_cast<std::size_t>(row))).run(); });
}

void ReportPage::take_focus() {
    if (table_ != nullptr && table_->shown_count() > 0)
        table_->setFocus();
    else
        form_.field("report_kind")->setFocus();
}

}  // namespace ui

#include "ui/cash/daily_statement_screen.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "common/date_time.h"
#include "common/messages.h"
#include "common/numbers.h"
#include "common/typed.h"
#include "printing/report_printer.h"
#include "ui/cash/figure_ledger.h"
#include "ui/printing/reports.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr auto first_figure = static_cast<int>(cash::Figure::cash_sales);
constexpr int first_sum = 4;  // cash sales, in the day summary

}  // namespace

DailyStatementScreen::DailyStatementScreen(QWidget* host, const Context& context)
    : Sheet(host), context_(context), logic_(context.connection, context.session, context.services) {
    setObjectName("daily_statement");
    body()->setContentsMargins(px(22), px(8), px(22), px(8));
    body()->setSpacing(px(6));
    body()->addWidget(build_choices());
    const bool with_discounts = logic_.has_discounts();
    statement_ = new FigureLedger("statement", statement_ledger(with_discounts));
    summary_ = new FigureLedger("summary", summary_ledger(with_discounts));
    summary_->hide();
    body()->addWidget(statement_);
    body()->addWidget(summary_);
    body()->addWidget(build_journal_bar());
    body()->addWidget(note_);
    journal_ = new ListTable("journal", text_list(cash::journal_headings), 4);
    // A long note must not take the room of other columns.
    journal_->horizontalHeader()->setSectionResizeMode(7, QHeaderView::Stretch);
    journal_->setMinimumHeight(px(84));  // one line below the headings
    body()->addWidget(journal_, 1);
    row_note_ = label({}, "side");
    row_note_->setObjectName("journal_note");
    row_note_->setWordWrap(true);
    body()->addWidget(row_note_);
    connect(journal_, &ListTable::row_chosen, this, &DailyStatementScreen::show_row_note);

    connect(statement_, &FigureLedger::opened, this, &DailyStatementScreen::open_figure);
    for (FigureLedger* ledger : {statement_, summary_}) {
        connect(ledger, &FigureLedger::left_downwards, this, [this] {
            if (journal_->shown_count() > 0) journal_->setFocus();
        });
        connect(ledger, &FigureLedger::left_upwards, date_, qOverload<>(&QWidget::setFocus));
    }
    connect(journal_, &ListTable::left_upwards, this, &DailyStatementScreen::take_focus);
}

QWidget* DailyStatementScreen::build_choices() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(12));
    row->addWidget(label("كشف الخزينة", "title"), 0, Qt::AlignBottom);
    row->addSpacing(px(8));
    store_ = choice_list("statement_store");
    drawer_ = choice_list("statement_drawer");
    date_ = moment_field("statement_date");
    date_->setFixedWidth(px(130));
    date_->setToolTip("↑ اليوم التالي   ↓ اليوم السابق");  // up: the next day, down: the day before
    date_->installEventFilter(this);
    row->addWidget(captioned("ال&مخزن", store_), 3);
    row->addWidget(captioned("الخ&زينة", drawer_), 3);
    row->addWidget(captioned("ال&تاريخ", date_));
    auto* show = new QPushButton("&عرض");
    show->setObjectName("statement_show");
    show->setFixedHeight(px(field_height));
    set_role(show, "main");
    row->addWidget(show, 0, Qt::AlignBottom);
    view_ = new Segments("statement_view", {{0, "الكشف"}, {1, qt(cash::DailyStatement::summary_switch)}});
    view_->show_chosen(0);
    view_->set_height(field_height);
    row->addWidget(view_, 0, Qt::AlignBottom);

    // The store was chosen by key or mouse, or its name was typed in full.
    connect(store_, &QComboBox::activated, this, &DailyStatementScreen::choose_store);
    connect(drawer_, &QComboBox::activated, this, &DailyStatementScreen::choose_drawer);
    connect(store_->lineEdit(), &QLineEdit::returnPressed, drawer_, qOverload<>(&QWidget::setFocus));
    connect(drawer_->lineEdit(), &QLineEdit::returnPressed, date_, qOverload<>(&QWidget::setFocus));
    connect(date_, &QLineEdit::returnPressed, this, [this] {
        if (choose_date()) take_focus();
    });
    // A date is also taken when the focus leaves the field, unless Esc closes the screen.
    connect(date_, &QLineEdit::editingFinished, this, [this] {
        if (Sheet::top_of(window()) == this && date_->text() != qt(common::date_text(logic_.date)))
            choose_date();
    });
    connect(show, &QPushButton::clicked, this, [this] { choose_date(); });
    connect(view_, &Segments::chosen, this, [this](int view) {
        logic_.summary_shown = view == 1;
        view_->show_chosen(view);
        alone_->setChecked(false);
        show_parts();
    });
    return bar;
}

// The figures leave the journal a few lines of a small screen. Without them it has all of it.
void DailyStatementScreen::show_parts() {
    statement_->setVisible(!logic_.summary_shown && !alone_->isChecked());
    summary_->setVisible(logic_.summary_shown && !alone_->isChecked());
}

QWidget* DailyStatementScreen::build_journal_bar() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    std::vector<std::pair<int, QString>> filters;
    for (const auto name : cash::journal_filters)
        filters.emplace_back(static_cast<int>(filters.size()), qt(name));
    filter_ = new Segments("journal_filter", filters);
    filter_->show_chosen(0);
    row->addWidget(filter_);
    count_ = label({}, "side");
    count_->setObjectName("journal_count");
    row->addWidget(count_);
    row->addStretch(1);
    alone_ = foot_button(row, "journal_alone", "الحركات &فقط", 0, [this] { show_parts(); });
    alone_->setCheckable(true);
    note_ = label({}, "side");
    note_->setObjectName("statement_note");
    note_->hide();
    QPushButton* buttons[] = {foot_button(row, "statement_print", "&طباعة", 0, [this] { print(); }),
                              foot_button(row, "statement_preview", "معاي&نة", 0, [this] { preview(); }),
                              foot_button(row, "statement_back", "&رجوع", 0, [this] { leave(0); })};
    set_role(buttons[0], "main");
    for (QPushButton* button : {alone_, buttons[0], buttons[1], buttons[2]})
        button->setFixedHeight(px(least_target));
    connect(filter_, &Segments::chosen, this, [this](int filter) {
        guarded(context_.services, "Journal", [&] {
            logic_.choose_filter(static_cast<cash::JournalFilter>(filter));
            show_journal();
        });
        filter_->show_chosen(static_cast<int>(logic_.filter()));
    });
    return bar;
}

bool DailyStatementScreen::open() {
    if (!logic_.open()) return false;
    show_choices();
    show_figures();
    show_journal();
    return true;
}

template <typename Choice>
void DailyStatementScreen::change(Choice choice) {
    bool shown = false;
    guarded(context_.services, "DailyStatement", [&] {
        choice();
        shown = logic_.show();
    });
    if (!shown) take_back();
    show_choices();
    if (!shown) return;
    show_figures();
    show_journal();
}

void DailyStatementScreen::take_back() {
    logic_.date = shown_.date;
    guarded(context_.services, "DailyStatement", [&] {
        if (logic_.store() != shown_.store) logic_.choose_store(shown_.store);
    });
    logic_.choose_drawer(shown_.drawer);
}

void DailyStatementScreen::show_choices() {
    shown_ = {logic_.store(), logic_.drawer(), logic_.date};
    fill_choices(store_, logic_.stores(), logic_.store());
    fill_choices(drawer_, logic_.drawers(), logic_.drawer());
    date_->setText(qt(common::date_text(logic_.date)));
}

void DailyStatementScreen::choose_store() {
    const auto store = choice_of(store_);
    if (!store || *store == logic_.store()) return;
    change([&] { logic_.choose_store(*store); });
}

void DailyStatementScreen::choose_drawer() {
    const auto drawer = choice_of(drawer_);
    if (!drawer || *drawer == logic_.drawer()) return;
    change([&] { logic_.choose_drawer(*drawer); });
}

bool DailyStatementScreen::choose_date() {
    if (!all_known({store_, drawer_}, context_.services.prompts)) return false;
    const auto typed = common::read_date(utf8(date_->text()));
    if (!typed) {
        // Restore the date first: the message takes the focus from the field, so that it would be read again.
        date_->setText(qt(common::date_text(logic_.date)));
        context_.services.prompts.message(common::message::wrong_date, common::Icon::critical);
        date_->setFocus();
        date_->selectAll();
        return false;
    }
    change([&] { logic_.date = *typed; });
    return true;
}

void DailyStatementScreen::step_date(long days) {
    change([&] { logic_.date = common::add_days(logic_.date, days); });
}

void DailyStatementScreen::show_figures() {
    for (std::size_t column = 0; column < cash::figure_count; ++column) {
        statement_->show_figure(static_cast<int>(column),
                                qt(logic_.figures()[static_cast<cash::Figure>(column)].text()));
    }
    const auto cells = logic_.summary().cells();
    for (std::size_t column = 0; column < cells.size(); ++column)
        summary_->show_figure(static_cast<int>(column), qt(cells[column]));
    statement_->align_figures();
    summary_->align_figures();
    note_->hide();
}

void DailyStatementScreen::show_journal() {
    std::vector<QStringList> rows;
    rows.reserve(logic_.journal().size());
    for (const cash::JournalRow& row : logic_.journal())
        rows.push_back(text_list(row.cells(), {0, 2, 5, 6}));
    journal_->say_when_empty(logic_.filter() == cash::JournalFilter::all
                                 ? "لا توجد بونات في هذا اليوم · اختر يوما آخر أو خزينة أخرى"
                                 : "لا توجد بونات من هذا النوع في هذا اليوم · اختر الكل");
    count_->setText("عدد البونات " + QString::number(rows.size()));
    journal_->show_rows(std::move(rows));
    show_row_note(journal_->current_row());
}

// The column has room only for the first words of a note. The line is shown as long as any row has a note.
void DailyStatementScreen::show_row_note(int row) {
    const auto& rows = logic_.journal();
    const auto has_note = [](const cash::JournalRow& entry) { return !entry.note.empty(); };
    row_note_->setVisible(std::any_of(rows.begin(), rows.end(), has_note));
    const bool noted = row >= 0 && static_cast<std::size_t>(row) < rows.size() &&
                       has_note(rows[static_cast<std::size_t>(row)]);
    row_note_->setText(noted ? "ملاحظات: " + qt(rows[static_cast<std::size_t>(row)].note)
                             : QString("لا توجد ملاحظات على هذا السطر"));
}

void DailyStatementScreen::open_figure(int figure) {
    guarded(context_.services, "RowsBehindFigure", [&] {
        const cash::FigureRows rows = logic_.rows_behind(static_cast<cash::Figure>(figure));
        FigureRowsSheet(this, qt(cash::figure_headings[static_cast<std::size_t>(figure)]), rows).run();
    });
}

void DailyStatementScreen::print() {
    if (Sheet::top_of(window()) != this || !all_known({store_, drawer_}, context_.services.prompts)) return;
    guarded(context_.services, "PrintDayReport", [&] {
        const bool printed = context_.reports.print(report_of(logic_.print_report(), context_.session));
        note_->setText(printed ? printed_text(context_) : QString());
        note_->setVisible(printed);
    });
}

void DailyStatementScreen::preview() {
    if (Sheet::top_of(window()) != this || !all_known({store_, drawer_}, context_.services.prompts)) return;
    guarded(context_.services, "PreviewDayReport", [&] {
        context_.reports.preview(report_of(logic_.print_report(), context_.session));
        const QString kept = kept_text(context_);
        note_->setText(kept);
        note_->setVisible(!kept.isEmpty());
    });
}

void DailyStatementScreen::take_focus() {
    if (alone_->isChecked()) {
        date_->setFocus();
    } else if (logic_.summary_shown) {
        summary_->take_focus(first_sum);
    } else {
        statement_->take_focus(first_figure);
    }
}

bool DailyStatementScreen::eventFilter(QObject* watched, QEvent* event) {
    if (watched == date_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            step_date(key == Qt::Key_Up ? 1 : -1);
            return true;
        }
    }
    return Sheet::eventFilter(watched, event);
}

void DailyStatementScreen::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1500)), std::min(height() - px(24), px(900)));
}

QStringList FigureRowsSheet::headings(const QString& what) {
    return {what, "رقم", "الوقت", "الطرف", "المبلغ"};
}

QStringList FigureRowsSheet::cells(std::string_view what, const cash::FigureRow& row) {
    return {qt(what), figure(row.number), figure(row.moment), qt(row.party),
            figure(common::format_amount(row.amount))};
}

FigureRowsSheet::FigureRowsSheet(QWidget* host, const QString& caption, const cash::FigureRows& rows,
                                 int chosen)
    : Sheet(host, caption) {
    setObjectName("figure_rows");
    set_card_width(820);
    table_ = new ListTable("figure_rows_table", headings("البيان"), 3);
    table_->setFixedHeight(px(420));
    std::vector<QStringList> texts;
    texts.reserve(rows.rows.size());
    for (const cash::FigureRow& row : rows.rows)
        texts.push_back(cells(row.kind, row));
    table_->say_when_empty("لا توجد حركات في هذا البند");
    table_->show_rows(std::move(texts));
    table_->choose_row(chosen);
    body()->addWidget(table_);

    auto* foot = new QHBoxLayout;
    foot->setSpacing(px(10));
    foot_button(foot, "figure_rows_back", "&رجوع", 0, [this] { leave(0); })->setMinimumSize(px(120), px(44));
    auto* count = label("عدد السطور " + QString::number(rows.rows.size()), "side");
    count->setObjectName("figure_rows_count");
    foot->addWidget(count);
    foot->addStretch(1);
    // Under the amounts.
    foot->addWidget(label("المجموع", "side"));
    auto* sum = new Figure("figure_rows_sum", "total");
    sum->setText(qt(rows.sum.text()));
    sum->setContentsMargins(px(10), 0, 0, 0);
    foot->addWidget(sum);
    body()->addLayout(foot);
}

void FigureRowsSheet::take_focus() {
    table_->setFocus();
}

}  // namespace ui

#include "ui/journal/journal_screen.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "signin/permissions.h"
#include "signin/session.h"
#include "ui/printing/report_foot.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int what_column = 3;
constexpr std::initializer_list<int> figures_of_events = {0, 4, 5, 6};
constexpr std::initializer_list<int> figures_of_totals = {2, 3};

template <typename Rows>
std::vector<QStringList> texts_of(const Rows& rows, std::initializer_list<int> figures) {
    std::vector<QStringList> texts;
    texts.reserve(rows.size());
    for (const auto& row : rows)
        texts.push_back(text_list(row.cells(), figures));
    return texts;
}

}  // namespace

JournalScreen::JournalScreen(QWidget* host, const Context& context)
    : Sheet(host), context_(context), logic_(context.connection) {
    setObjectName("till_journal");
    body()->setContentsMargins(px(22), px(14), px(22), px(16));
    body()->setSpacing(px(10));
    body()->addWidget(build_choices());
    events_ = new ListTable("journal_events", text_list(audit::event_headings), what_column);
    events_->say_when_empty("لا توجد أحداث في هذه المدة · اختر مدة أخرى أو الكل");
    totals_ = new ListTable("journal_totals", text_list(audit::total_headings), 1);
    totals_->say_when_empty("لا توجد أحداث في هذه المدة · اختر مدة أخرى أو الكل");
    totals_->hide();
    for (ListTable* table : {events_, totals_}) {
        table->verticalHeader()->setDefaultSectionSize(px(36));
        body()->addWidget(table, 1);
        connect(table, &ListTable::left_upwards, form_.field("journal_start"),
                qOverload<>(&QWidget::setFocus));
    }
    row_text_ = label({}, "side");
    row_text_->setObjectName("journal_row_text");
    row_text_->setWordWrap(true);
    body()->addWidget(row_text_);
    connect(events_, &ListTable::row_chosen, this, &JournalScreen::show_row_text);
    body()->addWidget(build_foot());
}

QWidget* JournalScreen::build_choices() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(12));
    row->addWidget(label("سجل الأحداث", "title"), 0, Qt::AlignBottom);
    row->addSpacing(px(8));
    FieldGrid grid(4, 0);
    grid.layout()->setHorizontalSpacing(px(12));
    form_.add(audit::review_form(), grid);
    row->addLayout(grid.layout(), 1);
    QPushButton* show = field_button(row, "journal_show", "عر&ض", [this] { show_events(); });
    set_role(show, "main");
    form_.lead_on(audit::review_form(), show);
    return bar;
}

QWidget* JournalScreen::build_foot() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    view_ = new Segments("journal_view", {{0, "الأحداث"}, {1, "الإجماليات"}});  // the events, the totals
    view_->show_chosen(0);
    view_->set_height(40);
    row->addWidget(view_);
    note_ = label({}, "side");
    note_->setObjectName("till_journal_note");
    row->addWidget(note_, 1);
    add_report_buttons(
        row, "journal", context_, [this] { return paper(); }, note_);
    foot_button(row, "journal_back", "&رجوع", 0, [this] { leave(0); });
    connect(view_, &Segments::chosen, this, [this](int view) {
        view_->show_chosen(view);
        totals_shown_ = view == 1;
        events_->setVisible(!totals_shown_);
        totals_->setVisible(totals_shown_);
        show_row_text(events_->current_row());
    });
    return bar;
}

bool JournalScreen::open() {
    if (!signin::authorise(context_.session, context_.services.prompts, signin::Action::daily_statement))
        return false;
    return guarded(context_.services, "Journal", [&] {
        context_.session.trail->write(context_.connection);
        logic_.open(context_.services.clock.now().date);
        fill_choices(form_.list("journal_user"), logic_.users(), {});
        fill_choices(form_.list("journal_kind"), logic_.kinds(), {});
        form_.show(logic_.fields);
        logic_.show();
        repaint_rows();
    });
}

void JournalScreen::show_events() {
    if (Sheet::top_of(window()) != this) return;
    if (!form_.save(context_.services, "Journal", logic_.fields, [this] { return logic_.show(); })) return;
    repaint_rows();
    take_focus();
}

void JournalScreen::repaint_rows() {
    shown_ = logic_.fields;
    events_->show_rows(texts_of(logic_.rows(), figures_of_events));
    totals_->show_rows(texts_of(logic_.totals(), figures_of_totals));
    QString said = "عدد الأحداث " + QString::number(logic_.count());
    if (logic_.count() > static_cast<std::int64_t>(logic_.rows().size()))
        said += "، يعرض أحدث " + QString::number(logic_.rows().size());  // the newest … are shown
    note_->setText(said);
    show_row_text(events_->current_row());
}

// Shows in full what does not fit into its column.
void JournalScreen::show_row_text(int row) {
    const QString text = row < 0 ? QString() : events_->model()->index(row, what_column).data().toString();
    row_text_->setText(text);
    row_text_->setVisible(!totals_shown_ && events_->fontMetrics().horizontalAdvance(text) >
                                                events_->columnWidth(what_column) - px(18));
}

printing::Report JournalScreen::paper() const {
    using printing::Align;
    printing::Report report = printing::headed("journal", context_.session);
    report.title = totals_shown_ ? "إجماليات سجل الأحداث" : "سجل الأحداث";
    report.captions = {{"من تاريخ", common::date_text(shown_.start)},
                       {"إلى تاريخ", common::date_text(shown_.end)},
                       {"المستخدم", common::name_of(logic_.users(), shown_.user.value_or(0))},
                       {"الحدث", common::name_of(logic_.kinds(), shown_.kind.value_or(0))}};
    const auto add_columns = [&](const auto& headings, std::initializer_list<double> shares,
                                 std::initializer_list<std::size_t> amounts) {
        for (const double share : shares) {
            const std::size_t column = report.columns.size();
            const bool is_amount = std::ranges::find(amounts, column) != amounts.end();
            report.columns.push_back(
                {std::string(headings[column]), is_amount ? Align::end : Align::start, share});
        }
    };
    const auto add_rows = [&](const auto& rows) {
        for (const auto& row : rows) {
            const auto cells = row.cells();
            report.rows.emplace_back(cells.begin(), cells.end());
        }
    };
    if (totals_shown_) {
        add_columns(audit::total_headings, {2, 2, 1, 1.4}, {2, 3});
        add_rows(logic_.totals());
        return report;
    }
    report.orientation = printing::Orientation::landscape;
    add_columns(audit::event_headings, {1.6, 1.2, 1.4, 3.4, 1, 0.8, 0.8, 1.2, 0.7}, {4});
    add_rows(logic_.rows());
    report.totals = {{"عدد الأحداث", std::to_string(logic_.count())}};
    return report;
}

void JournalScreen::take_focus() {
    ListTable* table = totals_shown_ ? totals_ : events_;
    if (table->shown_count() > 0)
        table->setFocus();
    else
        form_.field("journal_start")->setFocus();
}

void JournalScreen::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1500)), std::min(height() - px(24), px(900)));
}

}  // namespace ui

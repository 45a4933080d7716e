#include "ui/reports/today_page.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/reports/chart.h"
#include "ui/reports/close_days_sheet.h"
#include "ui/reports/rows_sheet.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int refresh_ms = 60'000;

QString amount(double value) {
    return figure(reports::text_of(value, reports::Format::amount));
}

// How much more or less than that.
QString compared(double today, double other) {
    if (common::Amount(other).is_zero()) return "لا مبيعات حتى هذه الساعة";  // no sales up to this hour
    const double change = reports::percent_of(today - other, other);
    return QString(change >= 0 ? "اليوم أكثر بنسبة " : "اليوم أقل بنسبة ") +
           figure(reports::text_of(std::abs(change), reports::Format::percent));
}

// The net of each row of a report.
std::vector<QStringList> nets_of(const reports::Table& table) {
    std::vector<QStringList> rows;
    for (const reports::TableRow& row : table.rows)
        rows.push_back({qt(row.label), amount(row.figures[table.charted])});
    return rows;
}

}  // namespace

TodayPage::TodayPage(const Context& context) : Page("today_page"), context_(context) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(8));
    auto* cards = new QGridLayout;
    cards->setSpacing(px(8));
    net_ = add_card(cards, 0, "today_net", "صافي مبيعات اليوم");
    count_ = add_card(cards, 1, "today_count", "عدد البونات");
    yesterday_ = add_card(cards, 2, "today_yesterday", "أمس حتى هذه الساعة");
    last_week_ = add_card(cards, 3, "today_last_week", "نفس اليوم من الأسبوع الماضي");
    column->addLayout(cards);
    chart_ = new Chart("today_chart");
    chart_->say_when_empty("لا مبيعات اليوم بعد");
    column->addWidget(chart_);
    column->addWidget(build_tables(), 1);
    column->addWidget(build_waits());
    column->addWidget(build_foot());
    connect(chart_, &Chart::row_taken, this, [this](int row) {
        open_rows(reports::KindId::sales_by_hour, today_.by_hour.rows.at(static_cast<std::size_t>(row)));
    });
    connect(&timer_, &QTimer::timeout, this, [this] {
        // Does not read while somebody works on a sheet, nor for a page that nobody sees.
        if (isVisible() && Sheet::top_of(window()) == nullptr)
            guarded(context_.services, "Today", [this] { show_today(); });
    });
    timer_.start(refresh_ms);
}

TodayPage::Card TodayPage::add_card(QGridLayout* row, int column, const char* name, const QString& caption) {
    auto* card = new QWidget;
    set_role(card, "card");
    auto* inside = new QVBoxLayout(card);
    inside->setContentsMargins(px(14), px(8), px(14), px(8));
    inside->setSpacing(px(2));
    inside->addWidget(label(caption, "caption"));
    Card made{new Figure(name, "title"), label({}, "caption", qPrintable(QString(name) + "_below"))};
    inside->addWidget(made.figure);
    inside->addWidget(made.below);
    row->addWidget(card, 0, column);
    row->setColumnStretch(column, 1);
    return made;
}

QWidget* TodayPage::build_tables() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(8));
    const auto add = [&](const char* name, const QStringList& headings, const QString& empty, int share,
                         reports::KindId kind, auto row_of) {
        auto* table = new ListTable(name, headings, 0);
        table->say_when_empty(empty);
        row->addWidget(table, share);
        connect(table, &ListTable::row_taken, this,
                [=, this](int at) { open_rows(kind, row_of(static_cast<std::size_t>(at))); });
        return table;
    };
    payments_ =
        add("today_payments", {"الدفع", "الصافي"}, "لا مبيعات بعد", 4, reports::KindId::sales_by_payment,
            [this](std::size_t at) { return today_.by_payment.rows.at(at); });
    cashiers_ =
        add("today_cashiers", {"الكاشير", "الصافي"}, "لا مبيعات بعد", 4, reports::KindId::sales_by_cashier,
            [this](std::size_t at) { return today_.by_cashier.rows.at(at); });
    drawers_ = add("today_drawers", {"الخزينة", "النقدية الآن"}, "لا توجد خزائن", 5, reports::KindId::cash,
                   [this](std::size_t at) { return reports::row_of(today_.drawers.at(at)); });
    return bar;
}

void TodayPage::open_rows(reports::KindId kind, const reports::TableRow& row) {
    if (Sheet::top_of(window()) != nullptr) return;
    guarded(context_.services, "RowsBehind", [&] {
        const auto request = reports::request_of_today(kind, context_.services.clock.now());
        RowsSheet(window(), context_, reports::rows_behind(context_.connection, request, row)).run();
    });
}

QWidget* TodayPage::build_waits() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    state_ = label({}, "side", "today_state");
    state_->setWordWrap(true);
    row->addWidget(state_, 1);
    const auto button = [&](const char* name, PageList list) {
        QPushButton* made = foot_button(row, name, {}, 0, [this, list] { links_->open(list); });
        made->setMinimumHeight(px(least_target));
        made->hide();
        return made;
    };
    low_stock_ = button("today_low_stock", PageList::low_stock);
    expiring_ = button("today_expiring", PageList::expiring_goods);
    return bar;
}

QWidget* TodayPage::build_foot() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    read_at_ = label({}, "caption", "today_read_at");
    row->addWidget(read_at_, 1);
    const auto button = [&](const char* name, const QString& caption, std::function<void()> action) {
        QPushButton* made = foot_button(row, name, caption, 0, std::move(action));
        made->setMinimumHeight(px(least_target));
        return made;
    };
    button("today_refresh", "ت&حديث", [this] { refresh(); });
    close_days_ = button("today_close_days", "إق&فال الأيام", [this] {
        guarded(context_.services, "CloseDays", [&] { CloseDaysSheet(window(), context_).run(); });
        refresh();
    });
    return bar;
}

void TodayPage::set_links(PageLinks& links) {
    links_ = &links;
}

void TodayPage::open() {
    const common::Date today = context_.services.clock.now().date;
    changed_days_ = reports::count_changed_days(context_.connection, today);
    needs_ = counting::count_needs(context_.connection, today);
    show_needs();
    show_today();
}

void TodayPage::show_today() {
    today_ = reports::read_today(context_.connection, context_.services.clock.now());
    show_figures();
}

void TodayPage::refresh() {
    guarded(context_.services, "Today", [this] { open(); });
}

void TodayPage::show_figures() {
    const double net = today_.sales.net();
    net_.figure->setText(amount(net));
    net_.below->setText("مرتجعات " + amount(today_.sales.returned));
    count_.figure->setText(figure(qlonglong(today_.sales.sales)));
    const QString average = amount(today_.sales.average());
    count_.below->setText(average.isEmpty() ? QString() : "متوسط البون " + average);
    yesterday_.figure->setText(amount(today_.yesterday.net()));
    yesterday_.below->setText(compared(net, today_.yesterday.net()));
    last_week_.figure->setText(amount(today_.same_weekday.net()));
    last_week_.below->setText(compared(net, today_.same_weekday.net()));
    chart_->show_table(today_.by_hour, "صافي المبيعات بالساعة");
    const auto keep_place = [](ListTable* table, std::vector<QStringList> rows) {
        const int row = table->current_row();
        table->show_rows(std::move(rows));
        if (row > 0 && row < table->shown_count()) table->choose_row(row);
    };
    keep_place(payments_, nets_of(today_.by_payment));
    keep_place(cashiers_, nets_of(today_.by_cashier));
    std::vector<QStringList> drawers;
    for (const reports::DrawerCash& drawer : today_.drawers)
        drawers.push_back({qt(drawer.name), figure(drawer.cash.text())});
    keep_place(drawers_, std::move(drawers));
    show_state();
}

void TodayPage::show_state() {
    QStringList waits;
    const auto add = [&](std::size_t count, const QString& text) {
        if (count > 0) waits << text + figure(qlonglong(count));
    };
    add(today_.days_to_close, "أيام لم تقفل: ");            // days that are not closed
    add(changed_days_, "أيام تغيرت بعد الإقفال: ");         // closed days that have changed
    add(today_.unfinished_saves, "عمليات حفظ لم تكتمل: ");  // unfinished saves
    const bool has_needs = !low_stock_->isHidden() || !expiring_->isHidden();
    state_->setText(!waits.isEmpty() ? waits.join("  ·  \u200f")
                    : has_needs      ? QString()
                                     : "لا شيء ينتظرك");  // nothing waits
    read_at_->setText("آخر قراءة " +
                      figure(common::time_text(context_.services.clock.now().time).substr(0, 5)));
}

void TodayPage::show_needs() {
    const auto show = [this](QPushButton* button, PageList list, const QString& text, std::size_t count) {
        button->setText(text + figure(qlonglong(count)));
        button->setVisible(count > 0 && links_ != nullptr && links_->has(list));
    };
    show(low_stock_, PageList::low_stock, "أصناف &ناقصة: ", needs_.low_items);  // items below their minimum
    // Batches that are past their date or nearly so.
    show(expiring_, PageList::expiring_goods, "منتهية أو ت&قارب الانتهاء: ", needs_.expiring_batches);
}

void TodayPage::take_focus() {
    close_days_->setFocus();
}

}  // namespace ui

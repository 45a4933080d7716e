#include "ui/counting/counting_page.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "signin/permissions.h"
#include "ui/counting/new_count_sheet.h"
#include "ui/counting/stock_count_sheet.h"
#include "ui/counting/texts.h"
#include "ui/counting/write_off_view.h"
#include "ui/counting/write_offs_view.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

// "Damaged goods were entered and not taken from the stock yet. Leave the page?"
constexpr std::string_view ask_leave = "سجلت أصناف تالفة ولم تخصم من الرصيد بعد. ترك الصفحة؟";

}  // namespace

CountingPage::CountingPage(const Context& context) : Page("counting_page"), context_(context) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    auto* head = new QHBoxLayout;
    head->addWidget(label("الجرد", "title"));
    head->addStretch(1);
    view_ = new Segments("counting_view",
                         {{counts, "الجرد"}, {write_off, "تسجيل تالف"}, {write_offs, "محاضر التالف"}});
    view_->set_height(least_target);
    view_->show_chosen(counts);
    head->addWidget(view_);
    column->addLayout(head);
    stack_ = new QStackedWidget;
    stack_->addWidget(build_counts());
    stack_->addWidget(write_off_ = new WriteOffView(context_));
    stack_->addWidget(write_offs_ = new WriteOffsView(context_));
    column->addWidget(stack_, 1);
    connect(view_, &Segments::chosen, this, [this](int view) { show_view(view); });
}

QWidget* CountingPage::build_counts() {
    auto* view = new QWidget;
    auto* column = new QVBoxLayout(view);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    table_ =
        new ListTable("stock_counts", {"رقم", "المخزن", "ما يعد", "بيان", "فتح في", "فتحه", "الحالة"}, 3);
    table_->say_when_empty("لم يفتح جرد بعد · ابدأ بزر جرد جديد");
    connect(table_, &ListTable::row_taken, this, &CountingPage::open_count);
    column->addWidget(table_, 1);
    auto* foot = new QHBoxLayout;
    set_role(foot_button(foot, "count_new", "جر&د جديد", 0, [this] { begin_count(); }), "main");
    show_ = foot_button(foot, "count_open", "&فتح  Enter", 0, [this] { open_count(table_->current_row()); });
    foot->addStretch(1);
    column->addLayout(foot);
    return view;
}

void CountingPage::open() {
    if (view_->value() == counts)
        show_counts();
    else if (view_->value() == write_off)
        write_off_->open();
    else
        write_offs_->open();
}

bool CountingPage::may_leave() {
    return !write_off_->has_unsaved() || context_.services.prompts.question(ask_leave);
}

void CountingPage::take_focus() {
    if (view_->value() == write_off)
        write_off_->take_focus();
    else if (view_->value() == write_offs)
        write_offs_->take_focus();
    else if (table_->shown_count() > 0)
        table_->setFocus();
    else
        findChild<QPushButton*>("count_new")->setFocus();
}

void CountingPage::show_view(int view) {
    view_->show_chosen(view);
    stack_->setCurrentIndex(view);
    if (guarded(context_.services, "CountingView", [this] { open(); })) take_focus();
}

void CountingPage::show_counts() {
    list_ = counting::read_counts(context_.connection);
    std::vector<QStringList> rows;
    for (const auto& count : list_)
        rows.push_back({figure(count.number), qt(count.store_name), qt(count.scope_name()), qt(count.title),
                        figure(minute_text(count.opened)), qt(count.opened_by), qt(name_of(count.state))});
    table_->show_rows(std::move(rows));
    show_->setEnabled(!list_.empty());
}

void CountingPage::begin_count() {
    if (!signin::authorise_change(context_.session, context_.services.prompts, signin::Action::count_stock))
        return;
    NewCountSheet sheet(this, context_);
    if (!guarded(context_.services, "NewCount", [&] { sheet.open(); })) return;
    const int number = sheet.run();
    if (!guarded(context_.services, "Counts", [this] { show_counts(); })) return;
    if (number > 0) open_count(0);
}

void CountingPage::open_count(int row) {
    if (row < 0 || row >= static_cast<int>(list_.size())) return;
    StockCountSheet sheet(this, context_, list_[static_cast<std::size_t>(row)]);
    if (!guarded(context_.services, "OpenCount", [&] { sheet.open(); })) return;
    sheet.run();
    if (guarded(context_.services, "Counts", [this] { show_counts(); })) {
        table_->choose_row(row);
        table_->setFocus();
    }
}

}  // namespace ui

#include "ui/counting/stock_count_sheet.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "common/typed.h"
#include "counting/booking.h"
#include "counting/write_off.h"
#include "sales/held_invoices.h"
#include "sales/items.h"
#include "signin/permissions.h"
#include "ui/counting/count_paper.h"
#include "ui/counting/texts.h"
#include "ui/goods/item_field.h"
#include "ui/printing/report_foot.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/sounds.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

// More lines than a page shows; the rest is in the differences.
constexpr int most_lines = 200;

// "Book the differences of this stock-taking? A booked one cannot be changed."
constexpr std::string_view ask_book = "ترحيل فروق هذا الجرد إلى أرصدة المخزن؟ الجرد المرحل لا يتغير.";
// "Give this stock-taking up? What was counted changes nothing then."
constexpr std::string_view ask_give_up = "إلغاء هذا الجرد؟ لن يغير ما عد شيئا في الأرصدة.";
// "Goods that nobody counted: … Does their stock become zero, or stay as it is?"
constexpr std::string_view not_counted = "أصناف لها رصيد ولم تعد: ";
constexpr std::string_view ask_not_counted = "\nهل يصبح رصيدها صفرا أم يبقى كما هو؟";
constexpr common::Choices missing_choices = {"صفر", "كما هو"};  // 0, as it is
// "Of … items goods moved between their lines: count them again, or book as it is."
constexpr auto moved = "تحرك رصيدها بين سطور عدها: ";

QString heading_of(const counting::Count& count) {
    QStringList parts = {"جرد رقم " + figure(count.number), qt(count.store_name), qt(count.scope_name())};
    if (!count.title.empty()) parts << qt(count.title);
    return parts.join(" · ");
}

}  // namespace

StockCountSheet::StockCountSheet(QWidget* host, const Context& context, const counting::Count& count)
    : Sheet(host),
      context_(context),
      count_(count),
      sees_cost_(signin::allows(context.session, signin::Action::see_cost)) {
    setObjectName("stock_count");
    body()->setContentsMargins(px(22), px(14), px(22), px(16));
    body()->setSpacing(px(8));
    auto* head = add_row();
    head->addWidget(label(heading_of(count_), "title", "stock_count_title"));
    head->addStretch(1);
    view_ =
        new Segments("stock_count_view", {{lines, "ما عد"}, {differences, "الفروق"}, {missing, "لم يعد"}});
    view_->set_height(least_target);
    view_->show_chosen(lines);
    head->addWidget(view_);
    connect(view_, &Segments::chosen, this, [this](int view) { show_view(view); });
    body()->addWidget(entry_ = build_entry());
    build_tables();
    totals_ = label({}, "side", "stock_count_totals");
    totals_->setWordWrap(true);
    body()->addWidget(totals_);
    body()->addWidget(build_foot());
}

QWidget* StockCountSheet::build_entry() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(10));
    item_ = new ItemField("count_item", context_, this);
    item_->set_store(count_.store);
    row->addWidget(captioned("ال&صنف", item_), 3);
    picked_name_ = label({}, "figure", "count_picked");
    picked_name_->setWordWrap(true);
    row->addWidget(picked_name_, 2, Qt::AlignBottom);
    expiry_ = moment_field("count_expiry");
    auto* dated = captioned("صالح &حتى", expiry_);
    dated->setFixedWidth(px(130));
    row->addWidget(dated);
    quantity_ = new AmountField("count_quantity");
    auto* counted = captioned("ال&كمية", quantity_);
    counted->setFixedWidth(px(110));
    row->addWidget(counted);
    auto* ways = new QVBoxLayout;
    ways->setSpacing(0);
    each_ = new QCheckBox("قطعة في كل &مرة");
    each_->setObjectName("count_each");
    each_->setChecked(!count_.by_date);
    again_ = new QCheckBox("&إعادة عد");
    again_->setObjectName("count_again");
    again_->setToolTip("ما يعد الآن يحل محل كل ما عد من هذا الصنف قبله");
    ways->addWidget(each_);
    if (count_.by_date)
        each_->hide();
    else
        dated->hide();
    ways->addWidget(again_);
    row->addLayout(ways);
    connect(item_, &ItemField::picked, this, &StockCountSheet::take_item);
    // Return the focus to the field, for the next scan.
    for (QCheckBox* box : {each_, again_})
        connect(box, &QCheckBox::clicked, this, [this] { take_focus(); });
    connect(item_, &ItemField::left_downwards, this, [this] { tables_[view_->value()]->setFocus(); });
    connect(quantity_, &QLineEdit::returnPressed, this, &StockCountSheet::add_picked);
    connect(expiry_, &QLineEdit::returnPressed, quantity_, qOverload<>(&QWidget::setFocus));
    // The next item is scanned while a quantity is typed: that one is counted first.
    connect(&context_.keys, &KeyQueue::scan_waiting, this, [this] {
        if (quantity_->hasFocus()) add_picked();
    });
    return bar;
}

void StockCountSheet::build_tables() {
    tables_[lines] = new ListTable(
        "count_lines",
        {"الوقت", "كود", "الصنف", "صالح حتى", "الكمية", "الوحدة", "المستخدم", "الجهاز", "نوع السطر"}, 2);
    tables_[lines]->say_when_empty("لم يعد شيء بعد · مرر أول صنف");
    QStringList headings = counting_headings(sees_cost_, false);
    tables_[differences] = new ListTable("count_differences", headings, 1);
    tables_[differences]->say_when_empty("لم يعد شيء بعد");
    tables_[missing] = new ListTable("count_missing", counting_headings(sees_cost_, true), 1);
    tables_[missing]->say_when_empty("لا يوجد صنف له رصيد ولم يعد");
    for (ListTable* table : tables_) {
        body()->addWidget(table, 1);
        table->setVisible(table == tables_[lines]);
        connect(table, &ListTable::left_upwards, this, [this] {
            if (count_.is_open()) item_->setFocus();
        });
        if (table == tables_[lines]) continue;
        table->setColumnHidden(2, !count_.by_date);
    }
    tables_[lines]->setColumnHidden(3, !count_.by_date);
    tables_[lines]->set_look([this](int row, int) {
        return lines_[static_cast<std::size_t>(row)].is_removed ? CellLook::dimmed : CellLook::plain;
    });
    tables_[differences]->set_look([this](int row, int) {
        return found_[static_cast<std::size_t>(row)].surplus() != 0 ? CellLook::strong : CellLook::plain;
    });
}

QWidget* StockCountSheet::build_foot() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(8));
    remove_ = foot_button(row, "count_remove", "حذف ال&سطر", 0, [this] { remove_line(); });
    give_up_ = foot_button(row, "count_give_up", "إل&غاء الجرد", 0, [this] { give_up(); });
    note_ = label({}, "side", "stock_count_note");
    note_->setWordWrap(true);
    row->addWidget(note_, 1);
    add_report_buttons(
        row, "stock_count", context_, [this] { return paper(); }, note_);
    book_ = foot_button(row, "count_book", "ترحي&ل الفروق", 0, [this] { book(); });
    set_role(book_, "main");
    foot_button(row, "stock_count_back", "&رجوع", 0, [this] { leave(0); });
    return bar;
}

void StockCountSheet::open() {
    forget_picked();
    refresh();
}

void StockCountSheet::take_item(const goods::Pick& pick) {
    if (!signin::authorise_change(context_.session, context_.services.prompts, signin::Action::count_stock))
        return;
    if (!count_.by_date && (each_->isChecked() || pick.quantity_typed)) {
        add({.item = pick.item.code,
             .unit_level = pick.item.unit_level,
             .quantity = common::shortest_text(pick.quantity),
             .expiry = {},
             .replaces = again_->isChecked()});
        item_->setFocus();
        return;
    }
    guarded(context_.services, "AskCounted", [&] { ask_quantity(pick); });
}

void StockCountSheet::ask_quantity(const goods::Pick& pick) {
    picked_ = pick;
    picked_name_->setText(qt(pick.item.name) + " · " + qt(sales::unit_name(pick.item.unit_level)));
    quantity_->setEnabled(true);
    quantity_->setText(qt(common::shortest_text(pick.quantity)));
    expiry_->setEnabled(true);
    if (!count_.by_date) return quantity_->setFocus();
    const auto batches = counting::read_batches(context_.connection, count_.store, pick.item.code);
    const bool dated = !batches.empty() && batches.front().expiry != common::no_expiry;
    expiry_->setText(dated ? qt(common::date_text(batches.front().expiry)) : QString());
    expiry_->setFocus();
}

void StockCountSheet::add_picked() {
    if (!picked_ || Sheet::top_of(window()) != this) return;
    counting::Counted counted{.item = picked_->item.code,
                              .unit_level = picked_->item.unit_level,
                              .quantity = utf8(quantity_->text()),
                              .expiry = {},
                              .replaces = again_->isChecked()};
    if (count_.by_date && !expiry_->text().trimmed().isEmpty()) {
        const auto date = date_in(expiry_, context_.services.prompts);
        if (!date) return;
        counted.expiry = *date;
    }
    add(counted);
}

void StockCountSheet::add(const counting::Counted& counted) {
    std::optional<common::Refusal> refusal;
    if (!guarded(context_.services, "Count", [&] {
            refusal = counting::add_line(context_.connection, context_.session, context_.services.clock,
                                         count_, counted);
        }))
        return;
    if (refusal) {
        context_.services.prompts.message(refusal->text, common::Icon::critical);
        if (refusal->field == "count_quantity" && picked_) return quantity_->setFocus();
    }
    forget_picked();
    again_->setChecked(false);
    item_->setFocus();
    guarded(context_.services, "ShowCount", [this] { refresh(); });
}

void StockCountSheet::forget_picked() {
    picked_.reset();
    picked_name_->clear();
    quantity_->clear();
    quantity_->setEnabled(false);
    expiry_->clear();
    expiry_->setEnabled(false);
}

void StockCountSheet::remove_line() {
    const int row = tables_[lines]->current_row();
    if (row < 0 || view_->value() != lines) return;
    if (!signin::authorise_change(context_.session, context_.services.prompts, signin::Action::count_stock))
        return;
    guarded(context_.services, "RemoveCounted", [&] {
        const auto refusal = counting::remove_line(context_.connection, context_.session, count_,
                                                   lines_[static_cast<std::size_t>(row)].number);
        if (refusal) context_.services.prompts.message(refusal->text, common::Icon::critical);
        refresh();
        tables_[lines]->choose_row(row);
    });
}

std::optional<bool> StockCountSheet::ask_missing() {
    const auto left = counting::read_missing(context_.connection, count_, context_.services.clock.now());
    if (left.empty()) return false;
    std::string text = std::string(not_counted) + std::to_string(left.size());
    for (std::size_t i = 0; i < std::min<std::size_t>(left.size(), 5); ++i)
        text += "\n" + left[i].name + " " + quantity_text(left[i].stock);
    if (left.size() > 5) text += "\n…";
    text += ask_not_counted;
    const auto answer = context_.services.prompts.choose(text, missing_choices, common::Icon::exclamation);
    if (answer == common::Answer::closed) return std::nullopt;
    return answer == common::Answer::yes;
}

bool StockCountSheet::confirm_booking(bool missing_are_gone) {
    auto found = counting::read_differences(context_.connection, count_);
    const auto moved_items =
        std::ranges::count_if(found, [](const auto& one) { return one.moved_meanwhile != 0; });
    if (missing_are_gone)
        std::ranges::move(counting::read_missing(context_.connection, count_, context_.services.clock.now()),
                          std::back_inserter(found));
    std::string text(ask_book);
    text += "\n" + utf8(totals_text(found, sees_cost_));
    if (moved_items > 0) text += "\n" + std::string(moved) + std::to_string(moved_items);
    return context_.services.prompts.question(text, common::Icon::exclamation);
}

void StockCountSheet::book() {
    if (!signin::authorise_change(context_.session, context_.services.prompts, signin::Action::count_stock))
        return;
    guarded(context_.services, "BookCount", [&] {
        const auto missing_are_gone = ask_missing();
        if (!missing_are_gone || !confirm_booking(*missing_are_gone)) return;
        const auto refusal = counting::book_count(context_.connection, context_.session,
                                                  context_.services.clock, count_, *missing_are_gone);
        if (refusal) context_.services.prompts.message(refusal->text, common::Icon::critical);
        view_->show_chosen(refusal ? view_->value() : differences);
        refresh();
        take_focus();
    });
}

void StockCountSheet::give_up() {
    if (!signin::authorise_change(context_.session, context_.services.prompts, signin::Action::count_stock))
        return;
    if (!context_.services.prompts.question(ask_give_up, common::Icon::exclamation)) return;
    guarded(context_.services, "GiveUpCount", [&] {
        const auto refusal =
            counting::give_up_count(context_.connection, context_.session, context_.services.clock, count_);
        if (refusal) context_.services.prompts.message(refusal->text, common::Icon::critical);
        refresh();
        take_focus();
    });
}

void StockCountSheet::show_view(int view) {
    view_->show_chosen(view);
    if (guarded(context_.services, "ShowCount", [this] { refresh(); })) take_focus();
}

// Others may count and book meanwhile, so the count itself is read again too.
void StockCountSheet::refresh() {
    if (auto read = counting::read_count(context_.connection, count_.number)) count_ = *read;
    const int view = view_->value();
    for (int one : {lines, differences, missing})
        tables_[one]->setVisible(one == view);
    if (view == lines)
        show_lines();
    else if (view == differences)
        show_differences(counting::read_differences(context_.connection, count_), false);
    else
        show_differences(counting::read_missing(context_.connection, count_, context_.services.clock.now()),
                         true);
    show_state();
}

void StockCountSheet::show_lines() {
    lines_ = counting::read_lines(context_.connection, count_, most_lines);
    std::ranges::reverse(lines_);
    std::vector<QStringList> rows;
    for (const auto& line : lines_)
        rows.push_back({figure(common::time_text(line.moment.time)), figure(line.item), qt(line.name),
                        figure(expiry_text(line.expiry)), figure(quantity_text(line.quantity / line.factor)),
                        qt(sales::unit_name(line.unit_level)), qt(line.user), qt(line.computer),
                        line.is_removed ? QString("محذوف") : qt(counting::name_of(line.kind))});
    tables_[lines]->show_rows(std::move(rows));
    totals_->setText(lines_.empty() ? QString() : "آخر سطر: " + qt(lines_.front().name));
}

void StockCountSheet::show_differences(const std::vector<counting::Difference>& found, bool is_missing) {
    found_ = found;
    std::vector<QStringList> rows;
    for (const auto& one : found_)
        rows.push_back(counting_cells(one, sees_cost_, is_missing));
    tables_[is_missing ? missing : differences]->show_rows(std::move(rows));
    totals_->setText(totals_text(found_, sees_cost_));
    note_->setText(count_.is_open() ? held_text() : QString());
}

// Goods of the list that are on held invoices: they have left the shelf but not the books.
QString StockCountSheet::held_text() const {
    constexpr int most_named = 4;
    const auto held = sales::goods_held(context_.connection, count_.store);
    QStringList names;
    std::set<std::int64_t> seen;
    for (const auto& one : found_) {
        const auto at = held.find(one.item);
        if (at == held.end() || !seen.insert(one.item).second) continue;
        names << qt(one.name) + " " + figure(quantity_text(at->second));
    }
    if (names.isEmpty()) return {};
    const bool has_more = names.size() > most_named;
    return "في فواتير معلقة: " + names.mid(0, most_named).join("، ") + (has_more ? "، …" : "");
}

void StockCountSheet::show_state() {
    const bool is_open = count_.is_open();
    entry_->setVisible(is_open);
    remove_->setVisible(is_open && view_->value() == lines);
    remove_->setEnabled(!lines_.empty());
    give_up_->setVisible(is_open);
    book_->setVisible(is_open);
    if (view_->value() == lines) note_->clear();
    if (!is_open)
        note_->setText(qt(counting::name_of(count_.state)) + " " + figure(minute_text(count_.closed)) +
                       " · " + qt(count_.closed_by));
}

printing::Report StockCountSheet::paper() const {
    return view_->value() == missing
               ? count_paper(context_.session, count_, found_, sees_cost_, true)
               : count_paper(context_.session, count_,
                             counting::read_differences(context_.connection, count_), sees_cost_, false);
}

void StockCountSheet::take_focus() {
    if (picked_)
        quantity_->setFocus();
    else if (count_.is_open())
        item_->setFocus();
    else
        tables_[view_->value()]->setFocus();
}

void StockCountSheet::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1500)), std::min(height() - px(24), px(900)));
}

}  // namespace ui

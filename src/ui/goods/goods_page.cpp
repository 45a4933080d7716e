#include "ui/goods/goods_page.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "common/numbers.h"
#include "database/choices.h"
#include "goods/labels.h"
#include "printing/report_printer.h"
#include "signin/permissions.h"
#include "signin/session.h"
#include "ui/goods/import_sheet.h"
#include "ui/goods/item_sheet.h"
#include "ui/goods/label_sheet.h"
#include "ui/goods/price_sheet.h"
#include "ui/printing/reports.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int mark_column = 0;
constexpr int name_column = 2;
constexpr int group_column = 3;
// A narrower list leaves out the group, so that names are seen whole; the filter above the list shows it.
constexpr double width_with_group = 900;
constexpr auto mark = "✓";

QStringList headings(bool shows_cost) {
    QStringList list = {"✓", "كود", "الاسم", "المجموعة", "قطاعي"};
    if (shows_cost) list << "التكلفة";
    return list << "الرصيد"
                << "الحد الأدنى";
}

QString amount(const std::optional<double>& value) {
    return value ? figure(common::format_amount(*value)) : QString();
}

QString quantity(const std::optional<double>& value) {
    return value ? figure(common::shortest_text(common::round_decimals(*value, 3))) : QString();
}

}  // namespace

GoodsPage::GoodsPage(const Context& context)
    : Page("goods_page"),
      context_(context),
      shows_cost_(signin::allows(context.session, signin::Action::see_cost)),
      pause_([this] { refresh(); }) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    column->addWidget(build_filter());
    items_ = new ListTable("goods_items", headings(shows_cost_), name_column);
    items_->horizontalHeader()->setMinimumSectionSize(px(34));  // the marks
    items_->say_when_empty("لا يوجد صنف يطابق البحث · اكتب جزءا أقصر من الاسم، أو أضف صنفا جديدا");
    items_->set_look([this](int row, int cell) {
        const goods::ListedItem& item = list_.items[static_cast<std::size_t>(row)];
        if (item.is_stopped) return CellLook::dimmed;
        return item.is_low() && cell == (shows_cost_ ? 6 : 5) ? CellLook::strong : CellLook::plain;
    });
    items_->installEventFilter(this);
    column->addWidget(items_, 1);
    column->addWidget(build_foot());
    connect(items_, &ListTable::row_taken, this, [this] { open_card(); });
    connect(items_, &ListTable::left_upwards, search_, qOverload<>(&QWidget::setFocus));
    connect(items_, &QAbstractItemView::clicked, this, [this](const QModelIndex& cell) {
        if (cell.column() == mark_column) toggle_mark();
    });
}

QWidget* GoodsPage::build_filter() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(12));
    search_ = text_field("goods_search");
    set_hint(search_, "باركود أو كود أو جزء من الاسم");
    search_->installEventFilter(this);
    row->addWidget(captioned("&بحث", search_), 3);
    group_ = choice_list("goods_group");
    row->addWidget(captioned("المجموعة", group_), 2);
    maker_ = choice_list("goods_maker");
    row->addWidget(captioned("الشركة", maker_), 2);
    connect(search_, &QLineEdit::textEdited, this, [this] { pause_.begin(); });
    for (QComboBox* list : {group_, maker_})
        connect(list, &QComboBox::currentIndexChanged, this, [this] { refresh(); });
    return bar;
}

QWidget* GoodsPage::build_foot() {
    auto* foot = new QWidget;
    auto* column = new QVBoxLayout(foot);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(6));
    auto* said = new QHBoxLayout;
    count_ = label({}, "side", "goods_count");
    said->addWidget(count_, 1);
    unmark_ = foot_button(said, "goods_unmark", "إلغاء التحديد", 0, [this] { clear_marks(); });
    column->addLayout(said);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    set_role(foot_button(row, "goods_open", "فتح ال&كارت", 2, [this] { open_card(); }), "main");
    foot_button(row, "goods_new", "جدي&د", 1, [this] { new_item(); });
    foot_button(row, "goods_copy", "نس&خة", 1, [this] { copy_item(); });
    foot_button(row, "goods_prices", "تعديل أ&سعار", 2, [this] { change_prices(); });
    foot_button(row, "goods_labels", "ملصق&ات", 1, [this] { print_labels(); });
    foot_button(row, "goods_import", "اس&تيراد", 1, [this] { import_items(); });
    foot_button(row, "goods_print", "&طباعة", 1, [this] { print(); });
    foot_button(row, "goods_csv", "ملف &CSV", 1, [this] { keep_csv(); });
    column->addLayout(row);
    return foot;
}

void GoodsPage::fill_lists() {
    const auto fill = [&](QComboBox* list, database::Fragment statement) {
        const std::int64_t chosen = choice_of(list).value_or(0);
        auto choices = database::choices(context_.connection.query(statement));
        choices.insert(choices.begin(), {0, "الكل"});
        const bool is_there = std::ranges::find(choices, chosen, &common::Choice::code) != choices.end();
        fill_choices(list, choices, is_there ? chosen : 0);
    };
    fill(group_, "select code,[name] from item_types order by [name]");
    fill(maker_, "select code,[name] from makers order by [name]");
}

void GoodsPage::open() {
    fill_lists();
    read_items();
}

void GoodsPage::read_items() {
    filter_ = {utf8(search_->text()), choice_of(group_).value_or(0), choice_of(maker_).value_or(0), {}};
    const auto chosen = chosen_item();
    list_ = goods::list_items(context_.connection, filter_);
    repaint_rows(chosen);
}

void GoodsPage::take_focus() {
    search_->setFocus();
    search_->selectAll();
}

void GoodsPage::refresh() {
    pause_.cancel();
    guarded(context_.services, "ListItems", [&] { read_items(); });
}

std::optional<std::int64_t> GoodsPage::chosen_item() const {
    const int row = items_->current_row();
    if (row < 0 || static_cast<std::size_t>(row) >= list_.items.size()) return std::nullopt;
    return list_.items[static_cast<std::size_t>(row)].code;
}

void GoodsPage::repaint_rows(std::optional<std::int64_t> chosen) {
    std::vector<QStringList> rows;
    rows.reserve(list_.items.size());
    for (const goods::ListedItem& item : list_.items) {
        QStringList row = {marked_.contains(item.code) ? mark : "", figure(item.code),
                           qt(item.name) + (item.is_stopped ? " (موقوف)" : ""), qt(item.group),
                           amount(item.price)};
        if (shows_cost_) row << amount(item.cost);
        rows.push_back(row << quantity(item.stock) << quantity(item.minimum));
    }
    items_->show_rows(std::move(rows));
    const auto found =
        std::ranges::find_if(list_.items, [&](const auto& item) { return item.code == chosen; });
    if (found != list_.items.end()) items_->choose_row(static_cast<int>(found - list_.items.begin()));
    QString said = "عدد الأصناف " + QString::number(list_.count);
    if (list_.count > list_.items.size())
        said += "، يعرض أول " + QString::number(list_.items.size()) + " · اكتب حرفا آخر لباقي الأصناف";
    if (!marked_.empty()) said += " · محدد " + QString::number(marked_.size());
    count_->setText(said);
    unmark_->setVisible(!marked_.empty());
}

void GoodsPage::toggle_mark() {
    const auto code = chosen_item();
    if (!code) return;
    if (marked_.erase(*code) == 0) marked_.insert(*code);
    repaint_rows(code);
}

void GoodsPage::clear_marks() {
    marked_.clear();
    repaint_rows(chosen_item());
    items_->setFocus();
}

// A scan leads to the card of its item; words lead to the list.
void GoodsPage::leave_search() {
    const bool is_code = !search_->text().trimmed().isEmpty();
    refresh();
    if (is_code && list_.items.size() == 1) return open_card();
    if (!list_.items.empty()) items_->setFocus();
}

void GoodsPage::resizeEvent(QResizeEvent* event) {
    Page::resizeEvent(event);
    items_->setColumnHidden(group_column, width() < px(width_with_group));
}

bool GoodsPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return Page::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == search_ && (is_enter(key) || key == Qt::Key_Down)) {
        if (is_enter(key)) {
            leave_search();
        } else {
            pause_.end();
            items_->setFocus();
        }
        return true;
    }
    if (watched == items_ && key == Qt::Key_Space) {
        toggle_mark();
        const int next = items_->current_row() + 1;
        if (next < items_->shown_count()) items_->choose_row(next);
        return true;
    }
    return Page::eventFilter(watched, event);
}

void GoodsPage::open_card() {
    const auto code = chosen_item();
    if (!code) return search_->setFocus();
    guarded(context_.services, "ItemCard", [&] {
        ItemSheet sheet(window(), context_);
        if (sheet.open(*code) && sheet.run() == 1) open();
    });
    items_->setFocus();
}

// Asked first, so that nobody types what would be refused.
bool GoodsPage::may_change() const {
    return signin::authorise_change(context_.session, context_.services.prompts, signin::Action::edit_goods);
}

void GoodsPage::new_item() {
    guarded(context_.services, "NewItem", [&] {
        if (!may_change()) return;
        ItemSheet sheet(window(), context_);
        sheet.open_new();
        if (sheet.run() == 1) open();
    });
}

void GoodsPage::copy_item() {
    const auto code = chosen_item();
    if (!code) return search_->setFocus();
    guarded(context_.services, "CopyItem", [&] {
        if (!may_change()) return;
        ItemSheet sheet(window(), context_);
        if (!sheet.open(*code)) return;
        sheet.copy_as_new();
        if (sheet.run() == 1) open();
    });
}

void GoodsPage::change_prices() {
    guarded(context_.services, "ChangePrices", [&] {
        if (!may_change()) return;
        goods::ItemFilter filter = filter_;
        filter.marked = marked_;
        PriceSheet sheet(window(), context_, filter, marked_.empty() ? list_.count : marked_.size());
        if (sheet.run() == 1) refresh();
    });
    items_->setFocus();
}

void GoodsPage::print_labels() {
    guarded(context_.services, "Labels", [&] {
        goods::ItemFilter filter;
        filter.marked = marked_;
        if (const auto code = chosen_item(); marked_.empty() && code) filter.marked = {*code};
        if (filter.marked.empty()) return;
        LabelSheet sheet(window(), context_, goods::labels_of(context_.connection, filter));
        sheet.run();
    });
    items_->setFocus();
}

void GoodsPage::import_items() {
    guarded(context_.services, "ImportSheet", [&] {
        if (!may_change()) return;
        ImportSheet sheet(window(), context_);
        if (sheet.run() == 1) open();
    });
}

printing::Report GoodsPage::paper() {
    using printing::Align;
    printing::Report report = printing::headed("items", context_.session);
    report.title = "قائمة الأصناف";
    report.captions = {{"المجموعة", utf8(group_->currentText())}, {"الشركة", utf8(maker_->currentText())}};
    if (!filter_.typed.empty()) report.captions.push_back({"بحث", filter_.typed});
    report.columns = {{"كود", Align::end, 0.8},
                      {"الاسم", Align::start, 3.4},
                      {"المجموعة", Align::start, 1.6},
                      {"قطاعي", Align::end, 1}};
    if (shows_cost_) report.columns.push_back({"التكلفة", Align::end, 1});
    report.columns.push_back({"الرصيد", Align::end, 1});
    report.columns.push_back({"الحد الأدنى", Align::end, 0.8});
    const goods::ItemList all = goods::list_items(context_.connection, filter_, goods::ListLength::all);
    for (const goods::ListedItem& item : all.items) {
        const auto number = [](const std::optional<double>& value) {
            return value ? common::shortest_text(common::round_decimals(*value, 3)) : std::string();
        };
        const auto money = [](const std::optional<double>& value) {
            return value ? common::format_amount(*value) : std::string();
        };
        std::vector<std::string> row = {std::to_string(item.code), item.name, item.group, money(item.price)};
        if (shows_cost_) row.push_back(money(item.cost));
        row.push_back(number(item.stock));
        row.push_back(number(item.minimum));
        report.rows.push_back(std::move(row));
    }
    report.totals = {{"عدد الأصناف", std::to_string(all.items.size())}};
    return report;
}

void GoodsPage::print() {
    guarded(context_.services, "PrintItems", [&] {
        if (context_.reports.print(paper())) count_->setText(printed_text(context_));
    });
}

void GoodsPage::keep_csv() {
    guarded(context_.services, "KeepItems", [&] {
        if (const QString kept = keep_report(context_, paper(), ReportFile::csv); !kept.isEmpty())
            count_->setText(kept);
    });
}

}  // namespace ui

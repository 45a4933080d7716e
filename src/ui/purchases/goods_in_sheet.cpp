#include "ui/purchases/goods_in_sheet.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "common/numbers.h"
#include "purchases/messages.h"
#include "purchases/typed_line.h"
#include "signin/permissions.h"
#include "ui/goods/item_field.h"
#include "ui/purchases/supplier_sheet.h"
#include "ui/widgets/key_button.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// Columns of the table: the value of a line, against its former cost, its profit.
constexpr int line_value = 5;
constexpr int line_change = 7;
constexpr int line_profit = 9;

// Steps that new prices are rounded to, in hundredths.
constexpr int steps[] = {5, 25, 50, 100};

QString signed_percent(double part) {
    return figure(common::format_decimals(part * 100, 1) + "%");
}

}  // namespace

GoodsInSheet::GoodsInSheet(QWidget* host, const Context& context)
    : Sheet(host),
      context_(context),
      logic_(context.connection, context.session, context.services),
      shows_cost_(signin::allows(context.session, signin::Action::see_cost)),
      sets_prices_(signin::allows(context.session, signin::Action::edit_goods)) {
    setObjectName("goods_in");
    body()->setContentsMargins(px(22), px(12), px(22), px(12));
    body()->setSpacing(px(8));
    build_head();
    build_entry();
    build_line();
    build_foot();
}

void GoodsInSheet::build_head() {
    title_ = label({}, "title", "goods_in_title");
    body()->addWidget(title_);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    FieldGrid grid(5, 0);
    grid.layout()->setHorizontalSpacing(px(10));
    head_.add(purchases::head_form(), grid);
    show_codes(head_.list("receipt_supplier"), "كود", "المورد");
    row->addLayout(grid.layout(), 1);
    new_supplier_ = field_button(row, "receipt_new_supplier", "مورد &جديد", [this] { add_supplier(); });
    body()->addLayout(row);
    for (const char* field : {"receipt_invoice", "receipt_date"})
        connect(head_.line(field), &QLineEdit::editingFinished, this, [this] { take_head(); });
    for (const char* list : {"receipt_supplier", "receipt_store"})
        connect(head_.list(list), &QComboBox::activated, this, [this] { take_head(); });
}

void GoodsInSheet::build_entry() {
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    item_ = new ItemField("receipt_item", context_, this);
    item_->setFixedHeight(px(field_height));
    row->addWidget(item_, 1);
    head_.lead_on(purchases::head_form(), item_);
    batch_ = field_button(row, "receipt_batch", "صلاحية أخر&ى", [this] {
        logic_.add_batch();
        repaint_lines();
        line_.field("line_quantity")->setFocus();
    });
    field_button(row, "receipt_remove", "حذف السط&ر", [this] {
        guarded(context_.services, "RemoveLine", [&] { logic_.remove_line(); });
        repaint_lines();
        foot_.show(logic_.foot);
        item_->setFocus();
    });
    body()->addLayout(row);
    table_ = new ListTable("receipt_lines",
                           {"الصنف", "الوحدة", "الكمية", "التكلفة", "الخصم", "القيمة", "الصلاحية",
                            "فرق التكلفة", "سعر البيع", "الربح"},
                           0);
    table_->say_when_empty("مرر باركود أول صنف أو اكتب جزءا من اسمه");
    for (const int column : {line_change, line_profit})
        table_->setColumnHidden(column, !shows_cost_);
    table_->set_look([this](int at, int column) {
        const auto line = static_cast<std::size_t>(at);
        if (line >= logic_.receipt().lines.size()) return CellLook::plain;
        const double cost = logic_.cost_of(line);
        const double former = logic_.receipt().lines[line].former_price;
        if (column == line_change && former > 0 && common::Amount(cost) != common::Amount(former))
            return cost > former ? CellLook::alarm : CellLook::good;
        if (column == line_profit && logic_.retail_of(line) > 0 && logic_.retail_of(line) <= cost)
            return CellLook::alarm;
        return column == line_value ? CellLook::strong : CellLook::plain;
    });
    body()->addWidget(table_, 1);
    connect(item_, &ItemField::picked, this, &GoodsInSheet::pick);
    connect(item_, &ItemField::left_downwards, table_, qOverload<>(&QWidget::setFocus));
    connect(table_, &ListTable::left_upwards, item_, qOverload<>(&QWidget::setFocus));
    connect(table_, &ListTable::row_chosen, this, &GoodsInSheet::choose_row);
    connect(table_, &ListTable::row_taken, this, [this] { line_.field("line_quantity")->setFocus(); });
    item_->installEventFilter(this);
    // Scans belong to the field of items, wherever the focus is; what was typed is taken over first.
    connect(&context_.keys, &KeyQueue::scan_waiting, this, [this] {
        if (Sheet::top_of(window()) == this && take_line()) item_->setFocus();
    });
}

void GoodsInSheet::build_line() {
    line_name_ = label({}, "side", "line_name");
    body()->addWidget(line_name_);
    FieldGrid grid(7, 0);
    grid.layout()->setHorizontalSpacing(px(8));
    line_.add(purchases::line_form(), grid);
    body()->addLayout(grid.layout());
    line_.lead_on(purchases::line_form(), item_);
    for (const auto& field : purchases::line_form()) {
        if (field.description.kind == common::FieldKind::choice) continue;
        connect(line_.line(field.description.name), &QLineEdit::editingFinished, this,
                [this] { take_line(); });
    }
    connect(line_.list("line_unit"), &QComboBox::activated, this, [this] { take_line(); });
    line_.field("line_retail")->setEnabled(sets_prices_);
}

QWidget* GoodsInSheet::build_margin() {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(px(8));
    percent_ = new AmountField("margin_percent");
    percent_->setFixedSize(px(80), px(least_target));
    auto* caption = label("&هامش على التكلفة %", "side");
    caption->setBuddy(percent_);
    row->addWidget(caption);
    row->addWidget(percent_);
    std::vector<std::pair<int, QString>> options;
    for (const int step : steps)
        options.emplace_back(step, qt(common::shortest_text(step / 100.0)));
    step_ = new Segments("margin_step", options);
    step_->set_height(least_target);
    step_->show_chosen(steps[1]);
    connect(step_, &Segments::chosen, step_, &Segments::show_chosen);
    row->addWidget(label("تقريب إلى", "side"));
    row->addWidget(step_);
    for (const bool all_lines : {false, true}) {
        QPushButton* button =
            foot_button(row, all_lines ? "margin_all" : "margin_line", all_lines ? "على الكل" : "على السطر",
                        0, [this, all_lines] { set_margin(all_lines); });
        button->setMinimumHeight(px(least_target));
    }
    return bar;
}

void GoodsInSheet::build_foot() {
    auto* row = new QHBoxLayout;
    row->setSpacing(px(12));
    FieldGrid grid(4, 0);
    grid.layout()->setHorizontalSpacing(px(10));
    foot_.add(purchases::foot_form(), grid);
    row->addLayout(grid.layout(), 1);
    const auto figure_of = [&](const char* object, const QString& caption, const char* role) {
        auto* sum = new Figure(object, role);
        sum->setMinimumWidth(px(110));
        row->addWidget(captioned(caption, sum), 0, Qt::AlignBottom);
        return sum;
    };
    total_ = figure_of("receipt_total", "الإجمالي", "figure");
    net_ = figure_of("receipt_net", "الصافي", "figure");
    body()->addLayout(row);
    for (const char* field : {"receipt_discount", "receipt_tax", "receipt_note"})
        connect(foot_.line(field), &QLineEdit::editingFinished, this, [this] { take_foot(); });
    connect(foot_.list("receipt_drawer"), &QComboBox::activated, this, [this] { take_foot(); });

    auto* last = new QHBoxLayout;
    last->setSpacing(px(10));
    margin_ = build_margin();
    last->addWidget(margin_);
    note_ = label({}, "side", "goods_in_note");
    last->addWidget(note_, 1);
    save_ = foot_button(last, "receipt_save", "حف&ظ", 0, [this] { save(); });
    set_role(save_, "main");
    QPushButton* back = foot_button(last, "receipt_back", "رجو&ع", 0, [this] { escape(); });
    for (QPushButton* button : {save_, back})
        button->setMinimumSize(px(100), px(least_target));
    foot_.lead_on(purchases::foot_form(), save_);
    body()->addLayout(last);
}

void GoodsInSheet::open(purchases::Receipt receipt) {
    logic_.begin(std::move(receipt));
    show_document();
}

void GoodsInSheet::show_document() {
    const purchases::Receipt& receipt = logic_.receipt();
    QString title = receipt.is_return() ? "مرتجع لمورد" : "بضاعة واردة";
    if (receipt.corrects != 0) title = "تصحيح التوريد رقم " + figure(receipt.corrects);
    if (receipt.source != 0) title = "مرتجع من التوريد رقم " + figure(receipt.source);
    title_->setText(title);
    fill_choices(head_.list("receipt_supplier"), logic_.suppliers(), {});
    fill_choices(head_.list("receipt_store"), logic_.stores(), {});
    head_.show(logic_.head);
    const bool has_former = receipt.source != 0 || receipt.corrects != 0;
    set_fixed(head_.field("receipt_supplier"), has_former);
    set_fixed(head_.field("receipt_store"), has_former);
    new_supplier_->setVisible(!has_former);
    fill_optional_choices(foot_.list("receipt_drawer"), logic_.drawers(), receipt.drawer.value_or(0));
    foot_.show(logic_.foot);
    // A return changes no prices.
    line_.field("line_retail")->setEnabled(sets_prices_ && !receipt.is_return());
    margin_->setVisible(sets_prices_ && !receipt.is_return());
    batch_->setVisible(receipt.source == 0);
    item_->set_store(receipt.store);
    repaint_lines();
}

QStringList GoodsInSheet::cells_of(std::size_t at) const {
    const purchases::Line& line = logic_.receipt().lines[at];
    const double cost = logic_.cost_of(at);
    const double sold_at = logic_.retail_of(at);
    QStringList cells = {qt(line.name),
                         qt(sales::unit_name(line.unit_level)),
                         figure(common::shortest_text(line.quantity)),
                         figure(common::format_amount(line.price)),
                         figure(purchases::discount_text(line.discount)),
                         figure(line.value().text()),
                         line.expiry ? figure(common::date_text(*line.expiry)) : QString(),
                         {},
                         sold_at > 0 ? figure(common::format_amount(sold_at)) : QString(),
                         {}};
    if (line.former_price > 0) {
        const common::Amount difference = common::Amount(cost) - common::Amount(line.former_price);
        cells[line_change] = figure((difference > common::Amount() ? "+" : "") + difference.text());
    }
    if (sold_at > 0) cells[line_profit] = signed_percent((sold_at - cost) / sold_at);
    return cells;
}

void GoodsInSheet::repaint_lines() {
    const QScopedValueRollback showing(is_showing_, true);
    std::vector<QStringList> rows;
    for (std::size_t at = 0; at < logic_.receipt().lines.size(); ++at)
        rows.push_back(cells_of(at));
    table_->show_rows(std::move(rows));
    if (!logic_.receipt().lines.empty()) table_->choose_row(static_cast<int>(logic_.row));
    show_line();
    repaint_sums();
}

void GoodsInSheet::repaint_sums() {
    total_->setText(qt(logic_.receipt().total().text()));
    net_->setText(qt(logic_.receipt().net().text()));
}

void GoodsInSheet::show_line() {
    const bool any = logic_.row < logic_.receipt().lines.size();
    fill_choices(line_.list("line_unit"), any ? logic_.units() : std::vector<common::Choice>(), {});
    line_.show(logic_.line_fields());
    line_name_->setText(any ? qt(logic_.receipt().lines[logic_.row].name) : QString("السطر المختار"));
}

void GoodsInSheet::choose_row(int row) {
    if (is_showing_ || row < 0) return;
    logic_.row = static_cast<std::size_t>(row);
    guarded(context_.services, "ShowLine", [&] { show_line(); });
}

// A refusal without words is one that the user chose.
bool GoodsInSheet::accept(const std::optional<common::Refusal>& refusal) {
    if (!refusal || refusal->text.empty()) return !refusal;
    const auto has = [&](const auto& table) {
        return std::ranges::any_of(
            table, [&](const auto& field) { return field.description.name == refusal->field; });
    };
    const FormFields& form = has(purchases::head_form())   ? static_cast<const FormFields&>(head_)
                             : has(purchases::line_form()) ? static_cast<const FormFields&>(line_)
                                                           : static_cast<const FormFields&>(foot_);
    common::Refusal said = *refusal;
    if (said.field == "receipt_supplier" && !new_supplier_->isHidden())
        said.text += std::string(purchases::message::press_new_supplier);
    form.refuse(said, context_.services.prompts);
    // Enter ends the editing of a field twice: as a key, and because the focus leaves it.
    just_refused_ = true;
    QTimer::singleShot(0, this, [this] { just_refused_ = false; });
    return false;
}

void GoodsInSheet::pick(const goods::Pick& pick) {
    std::optional<common::Refusal> refusal;
    guarded(context_.services, "AddLine", [&] { refusal = logic_.add(pick.item, pick.quantity); });
    accept(refusal);
    repaint_lines();
}

bool GoodsInSheet::take_line() {
    if (is_busy() || logic_.row >= logic_.receipt().lines.size()) return !just_refused_;
    const QScopedValueRollback taking(is_taking_, true);
    const purchases::LineFields shown = logic_.line_fields();
    purchases::LineFields typed = shown;
    std::optional<common::Refusal> refusal;
    const bool ended = guarded(context_.services, "SetLine", [&] {
        refusal = line_.read(typed);
        if (refusal || typed == shown) return;
        refusal = logic_.set_line(typed);
        if (!refusal) repaint_lines();
    });
    return accept(refusal) && ended;
}

bool GoodsInSheet::take_head() {
    if (is_busy()) return !just_refused_;
    const QScopedValueRollback taking(is_taking_, true);
    std::optional<common::Refusal> refusal;
    const bool ended = guarded(context_.services, "SetHead", [&] {
        refusal = head_.read(logic_.head);
        if (!refusal) refusal = logic_.take_head();
        if (refusal) return;
        fill_optional_choices(foot_.list("receipt_drawer"), logic_.drawers(), logic_.foot.drawer.value_or(0));
        item_->set_store(logic_.receipt().store);
    });
    return accept(refusal) && ended;
}

bool GoodsInSheet::take_foot() {
    if (is_busy()) return !just_refused_;
    const QScopedValueRollback taking(is_taking_, true);
    std::optional<common::Refusal> refusal;
    const bool ended = guarded(context_.services, "SetFoot", [&] {
        const purchases::FootFields former = logic_.foot;
        refusal = foot_.read(logic_.foot);
        if (refusal || logic_.foot == former) return;
        refusal = logic_.take_foot();
        if (!refusal) repaint_lines();
    });
    return accept(refusal) && ended;
}

void GoodsInSheet::set_margin(bool all_lines) {
    if (!take_line()) return;
    std::optional<common::Refusal> refusal;
    guarded(context_.services, "SetMargin",
            [&] { refusal = logic_.set_margin(utf8(percent_->text()), step_->value(), all_lines); });
    if (refusal) {
        context_.services.prompts.message(refusal->text, common::Icon::critical);
        percent_->setFocus();
    }
    repaint_lines();
}

void GoodsInSheet::add_supplier() {
    SupplierSheet sheet(this, context_);
    if (!guarded(context_.services, "NewSupplier", [&] { sheet.open_new(); }) || sheet.run() != 1) return;
    guarded(context_.services, "NewSupplier", [&] {
        logic_.reload_suppliers();
        fill_choices(head_.list("receipt_supplier"), logic_.suppliers(), sheet.code());
    });
    take_head();
}

void GoodsInSheet::save() {
    if (Sheet::top_of(window()) != this) return;
    if (!take_head() || !take_line() || !take_foot()) return;
    std::optional<common::Refusal> refusal;
    if (!guarded(context_.services, "SaveReceipt", [&] { refusal = logic_.save(); })) return;
    if (accept(refusal)) leave(1);
}

void GoodsInSheet::escape() {
    if (logic_.receipt().lines.empty()) return leave(0);
    if (!context_.services.prompts.question(purchases::message::ask_drop)) return;
    logic_.forget();
    leave(0);
}

// Enter in the empty field leads to the line that was entered last.
bool GoodsInSheet::eventFilter(QObject* watched, QEvent* event) {
    if (watched == item_ && event->type() == QEvent::KeyPress && item_->text().isEmpty() &&
        !logic_.receipt().lines.empty() && is_enter(static_cast<QKeyEvent*>(event)->key())) {
        line_.field("line_quantity")->setFocus();
        return true;
    }
    return Sheet::eventFilter(watched, event);
}

void GoodsInSheet::take_focus() {
    if (logic_.head.supplier)
        item_->setFocus();
    else
        head_.field("receipt_supplier")->setFocus();
}

void GoodsInSheet::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1500)), std::min(height() - px(24), px(900)));
}

}  // namespace ui

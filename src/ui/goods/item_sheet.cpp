#include "ui/goods/item_sheet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "common/amount.h"
#include "common/numbers.h"
#include "common/typed.h"
#include "goods/labels.h"
#include "ui/goods/label_sheet.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr double row_height = least_target;

// Leave the card? What was edited is not saved.
constexpr std::string_view ask_leave = "لم تحفظ التعديلات، هل تغلق الكارت بدون حفظ ؟";
constexpr std::string_view ask_remove = "هل تحذف الصنف ؟\n";

void fill_names(QComboBox* list, const std::vector<std::string>& names, const std::string& chosen) {
    std::vector<common::Choice> choices;
    for (const std::string& name : names)
        choices.push_back({static_cast<std::int64_t>(choices.size()) + 1, name});
    fill_choices(list, choices, {});
    list->setEditText(qt(chosen));
    list->lineEdit()->setCursorPosition(0);
}

}  // namespace

ItemSheet::ItemSheet(QWidget* host, const Context& context)
    : Sheet(host),
      context_(context),
      logic_(context.connection, context.session, context.services.prompts, context.services.clock) {
    setObjectName("item_sheet");
    body()->setContentsMargins(px(24), px(12), px(24), px(14));
    body()->setSpacing(px(10));
    title_ = label({}, "title", "item_title");
    body()->addWidget(title_);
    build_form();
    auto* middle = new QHBoxLayout;
    middle->setSpacing(px(24));
    middle->addWidget(build_prices(), 3);
    middle->addWidget(build_barcodes(), 2);
    body()->addLayout(middle, 1);
    build_foot();
    form_.set_row_height(row_height);
}

void ItemSheet::build_form() {
    FieldGrid grid(6, 4);
    form_.add(goods::card_form(), grid);
    group_ = grid.add("الم&جموعة", choice_list(QString::fromUtf8(goods::group_field.data())), 1, 0, 2);
    maker_ = grid.add("ال&شركة", choice_list(QString::fromUtf8(goods::maker_field.data())), 1, 2, 2);
    for (QComboBox* list : {group_, maker_})
        list->setFixedHeight(px(row_height));
    body()->addLayout(grid.layout());
    setTabOrder(form_.field("item_name"), group_);
    setTabOrder(group_, maker_);
    setTabOrder(maker_, form_.field("item_description"));
}

QWidget* ItemSheet::build_prices() {
    auto* box = new QWidget;
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(px(8));
    grid->setVerticalSpacing(px(6));
    const int first = logic_.shows_cost() ? sales::cost_level : sales::retail_level;
    for (int level = first; level <= goods::price_levels; ++level)
        grid->addWidget(label(qt(goods::level_name(level)), "caption"), 0, level);
    QWidget* former = form_.field("item_minimum");
    for (int unit = 1; unit <= goods::units; ++unit) {
        grid->addWidget(label(qt(sales::unit_name(unit)), "side"), unit, 0);
        for (int level = first; level <= goods::price_levels; ++level) {
            auto* field = new AmountField(QString::fromUtf8(goods::price_field(unit, level).data()));
            field->setFixedHeight(px(row_height));
            field->setAccessibleName(qt(goods::level_name(level)) + " " + qt(sales::unit_name(unit)));
            grid->addWidget(field, unit, level);
            prices_[static_cast<std::size_t>(unit) - 1][static_cast<std::size_t>(level) - 1] = field;
            enter_leads_on({former, field});
            former = field;
            connect(field, &QLineEdit::editingFinished, this, [this, unit, level] { follow(unit, level); });
        }
    }
    auto* hint = label("السعر الخالي يحسب من سعر القطاعي عند الحفظ", "side", "item_prices_hint");
    hint->setWordWrap(true);
    grid->addWidget(hint, goods::units + 1, 0, 1, goods::price_levels + 1);
    grid->setRowStretch(goods::units + 2, 1);
    grid->setColumnMinimumWidth(0, px(70));
    return box;
}

QWidget* ItemSheet::build_barcodes() {
    auto* box = new QWidget;
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(6));
    barcode_ = digits_field("item_barcode", 60);
    column->addWidget(captioned("&باركود جديد", barcode_));
    barcode_unit_ = new Segments("item_barcode_unit", {{1, "وحدة"}, {2, "عبوة"}, {3, "كرتونة"}});
    barcode_unit_->show_chosen(1);
    barcode_unit_->set_height(row_height);
    connect(barcode_unit_, &Segments::chosen, barcode_unit_, &Segments::show_chosen);
    column->addWidget(barcode_unit_);
    barcodes_ = new ListTable("item_barcodes", {"الباركود", "الوحدة"}, 0);
    barcodes_->setMinimumHeight(px(150));
    barcodes_->say_when_empty("لا يوجد باركود");
    column->addWidget(barcodes_, 1);
    auto* row = new QHBoxLayout;
    row->setSpacing(px(8));
    foot_button(row, "item_barcode_add", "إ&ضافة", 1, [this] { add_barcode(); });
    foot_button(row, "item_barcode_draw", "&داخلي", 1, [this] { draw_barcode(); });
    foot_button(row, "item_barcode_remove", "ح&ذف", 1, [this] { remove_barcode(); });
    foot_button(row, "item_label", "&ملصق", 1, [this] { print_label(); });
    column->addLayout(row);
    connect(barcode_, &QLineEdit::returnPressed, this, [this] {
        if (!barcode_->text().trimmed().isEmpty())
            add_barcode();
        else
            save_->setFocus();
    });
    return box;
}

void ItemSheet::build_foot() {
    auto* row = new QHBoxLayout;
    row->setSpacing(px(10));
    save_ = foot_button(row, "item_save", "&حفظ", 2, [this] {
        if (save()) leave(1);
    });
    set_role(save_, "main");
    copy_ = foot_button(row, "item_copy", "&نسخة جديدة", 1, [this] { copy(); });
    history_ = foot_button(row, "item_history", "سج&ل الأسعار", 1, [this] { show_history(); });
    remove_ = foot_button(row, "item_remove", "حذف ال&صنف", 1, [this] { remove(); });
    foot_button(row, "item_close", "إ&غلاق", 1, [this] { escape(); });
    body()->addLayout(row);
    QWidget* description = form_.field("item_description");
    enter_leads_on({form_.field("item_code"), form_.field("item_name"), group_, maker_, description,
                    form_.field("item_pack"), form_.field("item_carton"), form_.field("item_minimum")});
    enter_leads_on({prices_[goods::units - 1][goods::price_levels - 1], barcode_});
}

bool ItemSheet::open(std::int64_t code) {
    if (const auto refusal = logic_.open(code)) {
        refuse(*refusal);
        return false;
    }
    show_card();
    return true;
}

void ItemSheet::open_new() {
    logic_.open_new();
    show_card();
}

void ItemSheet::copy_as_new() {
    logic_.copy_as_new();
    show_card();
}

void ItemSheet::show_card() {
    title_->setText(logic_.is_new() ? "صنف جديد" : "كارت الصنف " + figure(logic_.code()));
    form_.show(logic_.card);
    set_fixed(form_.field("item_code"), !logic_.is_new());
    fill_names(group_, logic_.groups(), logic_.card.group);
    fill_names(maker_, logic_.makers(), logic_.card.maker);
    for (std::size_t unit = 0; unit < prices_.size(); ++unit)
        for (std::size_t level = 0; level < prices_[unit].size(); ++level)
            if (prices_[unit][level] != nullptr)
                prices_[unit][level]->setText(qt(logic_.card.prices[unit][level]));
    for (QPushButton* button : {copy_, history_, remove_})
        button->setEnabled(!logic_.is_new());
    show_barcodes();
}

void ItemSheet::show_barcodes() {
    std::vector<QStringList> rows;
    for (const goods::CardBarcode& barcode : logic_.card.barcodes)
        rows.push_back({figure(barcode.text), qt(sales::unit_name(barcode.unit_level))});
    barcodes_->show_rows(std::move(rows));
}

void ItemSheet::read_card() {
    form_.read(logic_.card);
    logic_.card.group = utf8(group_->currentText());
    logic_.card.maker = utf8(maker_->currentText());
    for (std::size_t unit = 0; unit < prices_.size(); ++unit)
        for (std::size_t level = 0; level < prices_[unit].size(); ++level)
            if (prices_[unit][level] != nullptr)
                logic_.card.prices[unit][level] = utf8(prices_[unit][level]->text().trimmed());
}

void ItemSheet::follow(int unit_level, int price_level) {
    const auto unit = static_cast<std::size_t>(unit_level) - 1;
    const auto level = static_cast<std::size_t>(price_level) - 1;
    const std::string before = logic_.card.prices[unit][level];
    read_card();
    if (logic_.follow(unit_level, price_level, before)) {
        for (std::size_t u = 0; u < prices_.size(); ++u)
            for (std::size_t l = 0; l < prices_[u].size(); ++l)
                if (prices_[u][l] != nullptr) prices_[u][l]->setText(qt(logic_.card.prices[u][l]));
    }
}

void ItemSheet::add_barcode() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "AddBarcode", [&] {
        read_card();
        if (logic_.add_barcode(utf8(barcode_->text()), barcode_unit_->value())) {
            barcode_->clear();
            show_barcodes();
            barcodes_->choose_row(static_cast<int>(logic_.card.barcodes.size()) - 1);
        }
    });
    barcode_->setFocus();
    barcode_->selectAll();
}

void ItemSheet::draw_barcode() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "DrawBarcode", [&] {
        read_card();
        if (!logic_.draw_barcode(barcode_unit_->value())) return;
        show_barcodes();
        barcodes_->choose_row(static_cast<int>(logic_.card.barcodes.size()) - 1);
    });
}

void ItemSheet::remove_barcode() {
    const int row = barcodes_->current_row();
    if (Sheet::top_of(window()) != this || row < 0) return;
    logic_.remove_barcode(static_cast<std::size_t>(row));
    show_barcodes();
}

// Prints the item as it is saved, so that no label shows a price that the till does not know.
void ItemSheet::print_label() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "Label", [&] {
        const int row = barcodes_->current_row();
        const auto chosen = row < 0 ? std::optional<goods::CardBarcode>()
                                    : logic_.card.barcodes[static_cast<std::size_t>(row)];
        read_card();
        if ((logic_.is_new() || logic_.is_changed()) && !save()) return;
        LabelSheet sheet(this, context_, goods::label_of(context_.connection, logic_.code(), chosen));
        sheet.run();
    });
}

void ItemSheet::show_history() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "PriceHistory", [&] {
        PriceHistorySheet sheet(this, qt(logic_.card.name), logic_.history());
        sheet.run();
    });
}

bool ItemSheet::save() {
    if (Sheet::top_of(window()) != this) return false;
    std::optional<common::Refusal> refusal;
    const bool ended = guarded(context_.services, "SaveItem", [&] {
        read_card();
        refusal = logic_.save();
        show_card();
    });
    if (refusal) refuse(*refusal);
    has_saved_ = has_saved_ || (ended && !refusal);
    return ended && !refusal;
}

void ItemSheet::copy() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "CopyItem", [&] {
        read_card();
        copy_as_new();
        take_focus();
    });
}

void ItemSheet::remove() {
    if (Sheet::top_of(window()) != this) return;
    std::optional<common::Refusal> refusal;
    bool is_gone = false;
    guarded(context_.services, "RemoveItem", [&] {
        if (!context_.services.prompts.question(std::string(ask_remove) + logic_.card.name,
                                                common::Icon::exclamation))
            return;
        refusal = logic_.remove();
        is_gone = !refusal;
    });
    if (refusal) refuse(*refusal);
    if (is_gone) leave(1);
}

// A refusal without text has been shown already.
void ItemSheet::refuse(const common::Refusal& refusal) {
    if (!refusal.text.empty()) context_.services.prompts.message(refusal.text, common::Icon::critical);
    if (refusal.field.empty()) return;
    auto* field = findChild<QWidget*>(qt(refusal.field));
    if (field == nullptr) return;
    field->setFocus();
    if (auto* line = qobject_cast<QLineEdit*>(field)) line->selectAll();
}

void ItemSheet::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedWidth(std::min(width() - px(24), px(1180)));
}

void ItemSheet::take_focus() {
    auto* name = form_.line("item_name");
    name->setFocus();
    name->selectAll();
}

void ItemSheet::escape() {
    read_card();
    if (logic_.is_changed() && !context_.services.prompts.question(ask_leave)) return;
    leave(has_saved_ ? 1 : 0);
}

PriceHistorySheet::PriceHistorySheet(QWidget* host, const QString& item,
                                     const std::vector<goods::PriceHistoryRow>& rows)
    : Sheet(host, "سجل أسعار " + item) {
    setObjectName("price_history_sheet");
    set_card_width(900);
    list_ = new ListTable("price_history", {"الوقت", "السعر", "من", "إلى", "بسبب", "المستخدم"}, 5);
    list_->setMinimumHeight(px(360));
    list_->say_when_empty("لم تتغير أسعار هذا الصنف");
    std::vector<QStringList> cells;
    for (const goods::PriceHistoryRow& row : rows)
        cells.push_back(
            {figure(common::moment_text(row.moment)).chopped(3),
             qt(goods::level_name(row.price.price_level)) + " " + qt(sales::unit_name(row.price.unit_level)),
             row.from ? figure(common::format_amount(*row.from)) : "—",
             figure(common::format_amount(row.price.price)), qt(row.why), qt(row.user)});
    list_->show_rows(std::move(cells));
    body()->addWidget(list_, 1);
    foot_button(add_row(), "price_history_back", "&رجوع", 1, [this] { leave(0); });
}

void PriceHistorySheet::take_focus() {
    list_->setFocus();
}

}  // namespace ui

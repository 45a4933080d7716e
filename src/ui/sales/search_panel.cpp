#include "ui/sales/search_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "sales/items.h"
#include "sales/sales_desk.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr auto nothing_sought = "اكتب أول اسم الصنف أو كوده أو مرر الباركود";

bool is_number(const QString& text) {
    return common::parse_integer(utf8(text)).has_value();
}

// The code of the entry chosen from a list, or the text typed into it.
std::string chosen_filter(const QComboBox* list) {
    const QString typed = list->currentText().trimmed();
    if (typed.isEmpty()) return {};
    const int at = list->findText(typed, Qt::MatchFixedString);
    return at < 0 ? utf8(typed) : std::to_string(list->itemData(at).toLongLong());
}

QString price(double amount) {
    return figure(common::format_amount(amount));
}

// Retail and wholesale.
QString both(const double (&prices)[2]) {
    return price(prices[0]) + " / " + price(prices[1]);
}

}  // namespace

SearchPanel::SearchPanel(QWidget* host, sales::SalesDesk& desk, const QString& name)
    : Sheet(host, "بحث عن صنف"), desk_(desk), pause_([this] { search_now(); }) {
    setObjectName("search_panel");
    setProperty(keys_property, {});  // a barcode may be scanned into the search
    const double width = std::min(1180.0, host->window()->width() * 16.0 / font().pixelSize() - 40);
    set_card_width(width);
    build_filters();
    build_table(width < 1100);

    build_units();
    QHBoxLayout* foot = add_row();
    set_role(foot_button(foot, "search_take", "ا&ختيار  Enter", 2, [this] { enter(); }), "main");
    foot_button(foot, "search_back", "ر&جوع", 1, [this] { leave(0); });

    connect(table_, &ListTable::row_chosen, this, &SearchPanel::show_units);

    connect(contains_, &QCheckBox::toggled, this, [this] { pause_.search(); });
    connect(hide_stopped_, &QCheckBox::toggled, this, [this] { pause_.search(); });
    connect(table_, &ListTable::row_taken, this, &SearchPanel::take);
    connect(table_, &ListTable::left_upwards, name_, qOverload<>(&QWidget::setFocus));
    name_->setText(name);
    search_now();
}

void SearchPanel::build_filters() {
    QHBoxLayout* filters = add_row();
    name_ = filter_field("search_name");
    number_ = filter_field("search_code");
    price_ = filter_field("search_price");
    maker_ = filter_list("search_maker", desk_.lists().makers);
    type_ = filter_list("search_type", desk_.lists().item_types);
    filters->addWidget(captioned("الا&سم", name_), 5);
    filters->addWidget(captioned("ال&كود أو الباركود", number_), 3);
    filters->addWidget(captioned("س &قطاعي", price_), 2);
    filters->addWidget(captioned("ال&شركة", maker_), 2);
    filters->addWidget(captioned("ال&نوع", type_), 2);

    auto* options = new QHBoxLayout;
    options->setSpacing(px(24));
    contains_ = new QCheckBox("في أي &موضع من الاسم");
    contains_->setObjectName("search_contains");
    hide_stopped_ = new QCheckBox("ب&دون الأصناف الموقوفة");
    hide_stopped_->setObjectName("search_hide_stopped");
    count_ = label({}, "side", "search_count");
    options->addWidget(contains_);
    options->addWidget(hide_stopped_);
    options->addStretch(1);
    options->addWidget(count_);
    body()->addLayout(options);
}

void SearchPanel::build_table(bool narrow) {
    QStringList headings = text_list(sales::search_headings);
    headings << "عبوة"
             << "كرتونة";
    table_ = new ListTable("search_results", headings, 1);
    table_->setMinimumHeight(px(330));
    table_->say_when_empty(nothing_sought);
    // On a narrow screen the name needs the space; the prices of the current row are shown below anyway.
    for (const auto at : {headings.size() - 2, headings.size() - 1})
        table_->setColumnHidden(static_cast<int>(at), narrow);
    table_->installEventFilter(this);
    body()->addWidget(table_, 1);
}

void SearchPanel::build_units() {
    units_ = new Segments("search_unit", {{1, "&وحدة"}, {2, "&عبوة"}, {3, "ك&رتونة"}});
    prices_ = label({}, "figure", "search_prices");
    QHBoxLayout* row = add_row();
    row->addWidget(label("يباع", "side"));
    row->addWidget(units_);
    row->addStretch(1);
    row->addWidget(prices_);
    connect(units_, &Segments::chosen, this, [this](int unit) {
        units_->show_chosen(unit);
        table_->setFocus();
    });
}

QLineEdit* SearchPanel::filter_field(const char* name) {
    QLineEdit* field = text_field(name);
    field->setMaxLength(100);
    connect(field, &QLineEdit::textEdited, this, [this] { pause_.begin(); });
    return field;
}

// Makers and types by name if the shop keeps names for them. A number can always be typed.
QComboBox* SearchPanel::filter_list(const char* name, const std::vector<common::Choice>& choices) {
    QComboBox* list = choice_list(name);
    list->setMinimumContentsLength(4);
    fill_optional_choices(list, choices, 0);
    connect(list, &QComboBox::currentTextChanged, this, [this] { pause_.begin(); });
    return list;
}

void SearchPanel::search_now() {
    sales::SearchFilters filters;
    filters.name = utf8(name_->text().trimmed());
    filters.name_contains = contains_->isChecked();
    filters.code = utf8(number_->text().trimmed());
    filters.price = utf8(price_->text().trimmed());
    filters.maker = chosen_filter(maker_);
    filters.type = chosen_filter(type_);
    filters.hide_stopped = hide_stopped_->isChecked();
    found_ = desk_.lines().search(filters);

    std::vector<QStringList> rows;
    rows.reserve(found_.items.size());
    for (const sales::FoundItem& item : found_.items) {
        rows.push_back({QString::number(item.code), qt(item.name) + (item.stopped ? "  (موقوف)" : ""),
                        qt(item.group), price(item.prices[0][0]), price(item.prices[0][1]),
                        figure(common::format_quantity(item.stock)), both(item.prices[1]),
                        both(item.prices[2])});
    }
    const std::string_view refusal = sales::search_refusal(filters);
    if (filters.empty())
        table_->say_when_empty(nothing_sought);
    else
        table_->say_when_empty(refusal.empty() ? "لا يوجد صنف بهذه البيانات · اكتب جزءا أقصر من الاسم"
                                               : qt(refusal));
    table_->show_rows(std::move(rows));
    show_units(table_->current_row());
    count_->setText(filters.empty() ? QString() : "عدد الأصناف " + figure(found_.count));
}

const sales::FoundItem* SearchPanel::item_at(int row) const {
    return row >= 0 && static_cast<std::size_t>(row) < found_.items.size()
               ? &found_.items[static_cast<std::size_t>(row)]
               : nullptr;
}

// Shows the retail and wholesale prices of the row's three units.
void SearchPanel::show_units(int row) {
    const sales::FoundItem* item = item_at(row);
    const int proposed = item != nullptr ? item->unit_level : 1;
    QStringList units;
    for (std::size_t at = 0; at < 3; ++at) {
        const int unit = static_cast<int>(at) + 1;
        units_->set_enabled(unit, unit == proposed || (item != nullptr && item->units[at]));
        if (item != nullptr) units << qt(sales::unit_name(unit)) + "  " + both(item->prices[at]);
    }
    units_->show_chosen(proposed);
    prices_->setText(units.join("     ·     "));
}

void SearchPanel::choose_next_unit(int step) {
    const sales::FoundItem* item = item_at(table_->current_row());
    if (item == nullptr) return;
    for (int unit = units_->value() + step; unit >= 1 && unit <= 3; unit += step) {
        if (!item->units[unit - 1]) continue;
        units_->show_chosen(unit);
        return;
    }
}

void SearchPanel::take(int row) {
    const sales::FoundItem* item = item_at(row);
    if (item == nullptr) return;
    entry_ = item->entry(units_->value());
    leave(1);
}

void SearchPanel::enter() {
    // In a filter, Enter takes the first match of what is typed now, not of the list shown before.
    pause_.end();
    // A long number in the name field was scanned: it is a barcode.
    if (found_.items.empty() && name_->hasFocus() && name_->text().size() >= 4 && is_number(name_->text())) {
        number_->setText(name_->text().trimmed());
        name_->clear();
        search_now();
    }
    take(table_->current_row());
}

void SearchPanel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down) {
        pause_.end();
        table_->setFocus();
        event->accept();
    } else {
        Sheet::keyPressEvent(event);
    }
}

// In the list the arrows that point along a row choose the unit.
bool SearchPanel::eventFilter(QObject* watched, QEvent* event) {
    if (watched == table_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Left || key == Qt::Key_Right) {
            choose_next_unit(key == Qt::Key_Left ? 1 : -1);
            return true;
        }
    }
    return Sheet::eventFilter(watched, event);
}

}  // namespace ui

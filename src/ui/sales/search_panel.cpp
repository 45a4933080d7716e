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

constexpr int pause_ms = 150;
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

QString figure(const std::string& text) {
    return "\u200e" + qt(text);
}

}  // namespace

SearchPanel::SearchPanel(QWidget* host, sales::SalesDesk& desk) : Sheet(host, "بحث عن صنف"), desk_(desk) {
    setObjectName("search_panel");
    setProperty(keys_property, {});  // a barcode may be scanned into the search
    const double width = std::min(1180.0, host->window()->width() * 16.0 / font().pixelSize() - 40);
    set_card_width(width);
    build_filters();
    build_table(width < 1100);

    connect(table_, &QTableWidget::currentCellChanged, this, [this](int row) { show_prices(row); });

    pause_.setSingleShot(true);
    pause_.setInterval(pause_ms);
    connect(&pause_, &QTimer::timeout, this, &SearchPanel::search_now);
    connect(contains_, &QCheckBox::toggled, this, &SearchPanel::search_now);
    connect(hide_stopped_, &QCheckBox::toggled, this, &SearchPanel::search_now);
    connect(table_, &ListTable::row_taken, this, &SearchPanel::take);
    connect(table_, &ListTable::left_upwards, name_, qOverload<>(&QWidget::setFocus));
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
    QStringList headings;
    for (const auto heading : sales::search_headings)
        headings << qt(heading);
    headings << "عبوة"
             << "كرتونة";
    table_ = new ListTable("search_results", headings, 1);
    table_->setMinimumHeight(px(330));
    table_->say_when_empty(nothing_sought);
    // On a narrow screen the name needs the space; the prices of the current row are shown below anyway.
    for (int at = table_->columnCount() - 2; at < table_->columnCount(); ++at)
        table_->setColumnHidden(at, narrow);
    body()->addWidget(table_, 1);
    prices_ = label({}, "figure", "search_prices");
    body()->addWidget(prices_);
}

QLineEdit* SearchPanel::filter_field(const char* name) {
    QLineEdit* field = text_field(name);
    field->setMaxLength(100);
    connect(field, &QLineEdit::textEdited, this, [this] { pause_.start(); });
    return field;
}

// Makers and types by name if the shop keeps names for them. A number can always be typed.
QComboBox* SearchPanel::filter_list(const char* name, const std::vector<common::Choice>& choices) {
    QComboBox* list = choice_list(name);
    list->setMinimumContentsLength(4);
    fill_optional_choices(list, choices, 0);
    connect(list, &QComboBox::currentTextChanged, this, [this] { pause_.start(); });
    return list;
}

void SearchPanel::search_now() {
    pause_.stop();
    sales::SearchFilters filters;
    filters.name = utf8(name_->text().trimmed());
    filters.name_contains = contains_->isChecked();
    filters.code = utf8(number_->text().trimmed());
    filters.price = utf8(price_->text().trimmed());
    filters.maker = chosen_filter(maker_);
    filters.type = chosen_filter(type_);
    filters.hide_stopped = hide_stopped_->isChecked();
    found_ = desk_.lines().search(filters);

    // Nobody reads a longer list; the count says how many matches there are.
    constexpr std::size_t most = 200;
    std::vector<QStringList> rows;
    rows.reserve(std::min(found_.size(), most));
    for (const sales::FoundItem& item : found_) {
        if (rows.size() == most) break;
        rows.push_back({QString::number(item.code), qt(item.name) + (item.stopped ? "  (موقوف)" : ""),
                        qt(item.group), figure(item.retail), figure(item.wholesale), figure(item.stock),
                        figure(item.prices[1][0]) + " / " + figure(item.prices[1][1]),
                        figure(item.prices[2][0]) + " / " + figure(item.prices[2][1])});
    }
    table_->say_when_empty(filters.empty() ? nothing_sought
                                           : "لا يوجد صنف بهذه البيانات · اكتب جزءا أقصر من الاسم");
    table_->show_rows(rows);
    show_prices(table_->currentRow());
    count_->setText(filters.empty() ? QString() : "عدد الأصناف \u200e" + QString::number(found_.size()));
}

// Shows the retail and wholesale prices of the row's three units.
void SearchPanel::show_prices(int row) {
    QStringList units;
    if (row >= 0 && static_cast<std::size_t>(row) < found_.size()) {
        const sales::FoundItem& item = found_[static_cast<std::size_t>(row)];
        for (std::size_t unit = 0; unit < 3; ++unit)
            units << qt(sales::unit_name(static_cast<int>(unit) + 1)) + "  " + figure(item.prices[unit][0]) +
                         " / " + figure(item.prices[unit][1]);
    }
    prices_->setText(units.join("     ·     "));
}

void SearchPanel::take(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= found_.size()) return;
    code_ = found_[static_cast<std::size_t>(row)].code;
    leave(1);
}

void SearchPanel::enter() {
    // From a filter Enter takes the first match of what is typed now, not of what was listed before.
    if (pause_.isActive()) search_now();
    // A number in the name field was scanned: it is a barcode.
    if (found_.empty() && name_->hasFocus() && name_->text().size() >= 4 && is_number(name_->text())) {
        number_->setText(name_->text().trimmed());
        name_->clear();
        search_now();
    }
    take(table_->currentRow());
}

void SearchPanel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down) {
        if (pause_.isActive()) search_now();
        table_->setFocus();
        event->accept();
    } else {
        Sheet::keyPressEvent(event);
    }
}

}  // namespace ui

#include "ui/stock/line_source_dialog.h"
#include "ui/widgets/fields.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "common/numbers.h"
#include "sales/sales_desk.h"
#include "sales/stock_check.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

void choose_line_source(QWidget* host, const Context& context, sales::SalesDesk& desk) {
    auto* entry = host->findChild<QLineEdit*>("entry");
    const sales::Entry typed = sales::read_entry(entry == nullptr ? std::string() : utf8(entry->text()));
    const auto item = desk.lines().source_item(typed);
    if (!item) return;
    LineSourceDialog dialog(host, context, desk, *item);
    if (dialog.run() == 0) return;
    if (item->row)
        desk.lines().set_supplier(*item->row, dialog.store());
    else if (desk.lines().EnterItem(typed, dialog.store()))
        entry->clear();
}

LineSourceDialog::LineSourceDialog(QWidget* host, const Context& context, sales::SalesDesk& desk,
                                   sales::SourceItem item)
    : Sheet(host, "مصدر الصنف"),
      context_(context),
      desk_(desk),
      item_(std::move(item)),
      logic_(context.connection, context.services.prompts, item_.code, item_.quantity, item_.factor,
             desk.invoice().store) {
    setObjectName("line_source");
    set_card_width(620);
    auto* title = label(qt(item_.name), "figure", "source_item");
    title->setWordWrap(true);
    body()->addWidget(title);
    auto* needed = label(
        "المطلوب " + figure(common::format_quantity(item_.quantity)) + " " + qt(item_.unit_name), "side");
    needed->setObjectName("source_needed");
    body()->addWidget(needed);

    std::vector<std::pair<int, QString>> units;
    for (const auto& unit : logic_.units())
        units.emplace_back(unit.code, qt(unit.name));
    std::sort(units.begin(), units.end());  // the smallest unit first, as on other screens
    units_ = new Segments("source_unit", units);
    units_->show_chosen(item_.unit_code);
    auto* unit_row = new QHBoxLayout;
    unit_row->addWidget(label("الأرصدة بوحدة", "side"));
    unit_row->addWidget(units_);
    unit_row->addStretch(1);
    body()->addLayout(unit_row);

    table_ = new ListTable("source_stores", {"كود", "المخزن", "الرصيد"}, 1);
    table_->setMinimumHeight(px(220));
    table_->say_when_empty("لا يوجد مخزن آخر");
    body()->addWidget(table_, 1);

    QHBoxLayout* buttons = add_row();
    set_role(foot_button(buttons, "source_confirm", "ت&حويل من المخزن  Enter", 1, [this] { confirm(); }),
             "main");
    foot_button(buttons, "source_selling", "من مخزن ال&بيع", 1, [this] {
        if (Sheet::top_of(window()) == this) leave(1);
    });
    foot_button(buttons, "source_back", "ر&جوع", 1, [this] { leave(0); });

    connect(units_, &Segments::chosen, this, [this](int unit) {
        units_->show_chosen(unit);
        show_stores(unit);
        table_->setFocus();
    });
    connect(table_, &ListTable::row_taken, this, [this] { confirm(); });
    show_stores(item_.unit_code);
    choose_first_store();
}

// Puts the cursor on the store that already supplies the line, or on the first one that holds enough. If
// there is none, a hasty Enter must take nothing.
void LineSourceDialog::choose_first_store() {
    table_->choose_row(-1);
    const auto& stores = logic_.stores();
    const std::int64_t now = item_.row ? desk_.invoice().lines[*item_.row].source_store : 0;
    const auto found = std::find_if(stores.begin(), stores.end(), [&](const stock::StoreHolding& store) {
        if (now != 0) return store.store == now;
        return store.store != desk_.invoice().store &&
               stock::stock_suffices(store.quantity, item_.quantity * item_.factor);
    });
    if (found != stores.end()) table_->choose_row(static_cast<int>(found - stores.begin()));
}

void LineSourceDialog::take_focus() {
    table_->setFocus();
}

void LineSourceDialog::show_stores(int unit) {
    const int cursor = table_->current_row();
    double factor = 1;
    for (const auto& offered : logic_.units()) {
        if (offered.code == unit) factor = offered.factor;
    }
    std::vector<QStringList> rows;
    for (const stock::StoreHolding& store : logic_.stores()) {
        rows.push_back({figure(store.store), qt(store.name),
                        store.store == desk_.invoice().store
                            ? QString("مخزن البيع")
                            : figure(common::format_quantity(store.quantity / factor))});
    }
    table_->show_rows(std::move(rows));
    table_->choose_row(cursor);
}

void LineSourceDialog::confirm() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "LineSource", [&] {
        const int row = table_->current_row();
        const auto& stores = logic_.stores();
        const bool chosen = row >= 0 && static_cast<std::size_t>(row) < stores.size();
        const std::int64_t store = chosen ? stores[static_cast<std::size_t>(row)].store : 0;
        const sales::Line* own = item_.row ? &desk_.invoice().lines[*item_.row] : nullptr;
        if (!logic_.confirm(store, sales::held_by_lines(desk_.invoice(), item_.code, store, own))) return;
        store_ = store;
        leave(1);
    });
    table_->setFocus();
}

}  // namespace ui

#include "ui/stock/line_source_dialog.h"
#include "ui/widgets/form_fields.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "common/numbers.h"
#include "sales/stock_check.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/segments.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

void choose_line_source(QWidget* host, const Context& context, sales::SalesScreen& screen) {
    auto* entry = host->findChild<QLineEdit*>("entry");
    const std::string typed = entry == nullptr ? std::string() : utf8(entry->text());
    const auto item = screen.source_item(typed);
    if (!item) return;
    LineSourceDialog dialog(host, context, screen, *item);
    if (dialog.run() == 0) return;
    if (item->row) {
        screen.set_line_source(
            *item->row,
            dialog.store() == 0 ? sales::SourceKind::selling_store : sales::SourceKind::other_store,
            dialog.store());
        return;
    }
    if (dialog.store() == 0 ? screen.EnterItem(typed) : screen.EnterItemFrom(typed, dialog.store()))
        entry->clear();
}

LineSourceDialog::LineSourceDialog(QWidget* host, const Context& context, sales::SalesScreen& screen,
                                   sales::SourceItem item)
    : Sheet(host, "مصدر الصنف"),
      context_(context),
      screen_(screen),
      item_(std::move(item)),
      logic_(context.connection, context.services.prompts, item_.code, item_.quantity, item_.factor,
             screen.invoice().store) {
    setObjectName("line_source");
    set_card_width(620);
    auto* title = label(qt(item_.name), "figure");
    title->setObjectName("source_item");
    title->setWordWrap(true);
    body()->addWidget(title);
    auto* needed = label(
        QString("المطلوب \u200e%1 %2").arg(qt(common::format_quantity(item_.quantity)), qt(item_.unit_name)),
        "side");
    needed->setObjectName("source_needed");
    body()->addWidget(needed);

    std::vector<std::pair<int, QString>> units;
    for (const auto& unit : logic_.units())
        units.emplace_back(unit.code, qt(unit.name));
    std::sort(units.begin(), units.end());  // the smallest first, as everywhere
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

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(px(10));
    const auto add = [&](const char* name, const QString& caption, std::function<void()> action) {
        return foot_button(buttons, name, caption, 1, std::move(action));
    };
    set_role(add("source_confirm", "ت&حويل من المخزن  Enter", [this] { confirm(); }), "main");
    add("source_selling", "من مخزن ال&بيع", [this] {
        if (Sheet::top_of(window()) == this) leave(1);
    });
    add("source_back", "ر&جوع", [this] { leave(0); });
    body()->addLayout(buttons);

    connect(units_, &Segments::chosen, this, [this](int unit) {
        units_->show_chosen(unit);
        show_stores(unit);
        table_->setFocus();
    });
    connect(table_, &ListTable::row_taken, this, [this] { confirm(); });
    show_stores(item_.unit_code);
    // The cursor begins on the store that supplies the line already, else on one that holds enough, else on
    // none, so that a hasty Enter takes nothing.
    table_->setCurrentCell(-1, -1);
    const auto& stores = logic_.stores();
    const std::int64_t now = item_.row ? screen_.invoice().lines[*item_.row].source_store : 0;
    const auto found = std::find_if(stores.begin(), stores.end(), [&](const stock::StoreHolding& store) {
        if (now != 0) return store.store == now;
        return store.store != screen_.invoice().store && store.quantity >= item_.quantity * item_.factor;
    });
    if (found != stores.end()) table_->setCurrentCell(static_cast<int>(found - stores.begin()), 0);
}

void LineSourceDialog::take_focus() {
    table_->setFocus();
}

void LineSourceDialog::show_stores(int unit) {
    const int cursor = table_->currentRow();
    double factor = 1;
    for (const auto& offered : logic_.units()) {
        if (offered.code == unit) factor = offered.factor;
    }
    std::vector<QStringList> rows;
    for (const stock::StoreHolding& store : logic_.stores()) {
        rows.push_back({"\u200e" + QString::number(store.store), qt(store.name),
                        store.store == screen_.invoice().store
                            ? QString("مخزن البيع")
                            : "\u200e" + qt(common::format_quantity(store.quantity / factor))});
    }
    table_->show_rows(rows);
    table_->setCurrentCell(cursor, 0);
}

void LineSourceDialog::confirm() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "LineSource", [&] {
        const int row = table_->currentRow();
        const auto& stores = logic_.stores();
        const bool chosen = row >= 0 && static_cast<std::size_t>(row) < stores.size();
        const std::int64_t store = chosen ? stores[static_cast<std::size_t>(row)].store : 0;
        if (!logic_.confirm(store)) return;
        const double others = taken_by_others(store);
        if (others > 0 &&
            !stock::LineSource(context_.connection, context_.services.prompts, item_.code,
                               others + item_.quantity * item_.factor, 1, screen_.invoice().store)
                 .confirm(store))
            return;
        store_ = store;
        leave(1);
    });
    table_->setFocus();
}

double LineSourceDialog::taken_by_others(std::int64_t store) const {
    const sales::Invoice& invoice = screen_.invoice();
    const sales::Line* own = item_.row ? &invoice.lines[*item_.row] : nullptr;
    return sales::held_by_lines(invoice, item_.code, store, own);
}

}  // namespace ui

#include "ui/line_source_dialog.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "common/numbers.h"
#include "sales/sales_screen.h"
#include "sales/stock_check.h"
#include "ui/fields.h"
#include "ui/guard.h"
#include "ui/list_table.h"
#include "ui/segments.h"
#include "ui/style.h"
#include "ui/text.h"

namespace ui {

namespace {

const sales::Line& line_of(const sales::SalesScreen& screen, std::size_t row) {
    return screen.invoice().lines[row];
}

}  // namespace

bool LineSourceDialog::is_possible(const sales::SalesScreen& screen) {
    const auto row = screen.current_row();
    if (!row || *row >= screen.invoice().lines.size() || screen.invoice().is_return()) return false;
    const sales::Line& line = line_of(screen, *row);
    return line.item_code && line.stock_kept && !screen.partly_saved();
}

LineSourceDialog::LineSourceDialog(QWidget* host, const Context& context, sales::SalesScreen& screen)
    : Sheet(host, "مصدر الصنف"),
      context_(context),
      screen_(screen),
      row_(*screen.current_row()),
      logic_(context.connection, context.outside.prompts, *line_of(screen, row_).item_code,
             line_of(screen, row_).quantity, line_of(screen, row_).factor, screen.invoice().store) {
    setObjectName("line_source");
    set_card_width(620);
    const sales::Line& line = line_of(screen, row_);
    auto* item = label(qt(line.name), "figure");
    item->setObjectName("source_item");
    item->setWordWrap(true);
    body()->addWidget(item);
    auto* needed = label(
        QString("المطلوب \u200e%1 %2").arg(qt(common::format_quantity(line.quantity)), qt(line.unit_name)),
        "side");
    needed->setObjectName("source_needed");
    body()->addWidget(needed);

    std::vector<std::pair<int, QString>> units;
    for (const auto& unit : logic_.units())
        units.emplace_back(unit.code, qt(unit.name));
    units_ = new Segments("source_unit", units);
    units_->show_chosen(line.unit_code);
    auto* unit_row = new QHBoxLayout;
    unit_row->addWidget(label("الأرصدة بوحدة", "side"));
    unit_row->addWidget(units_);
    unit_row->addStretch(1);
    body()->addLayout(unit_row);

    table_ = new ListTable("source_stores", {"كود", "المخزن", "الرصيد"}, 1);
    table_->setMinimumHeight(px(220));
    body()->addWidget(table_, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(px(10));
    const auto add = [&](const char* name, const QString& caption, auto action) {
        auto* made = new QPushButton(caption);
        made->setObjectName(name);
        made->setMinimumHeight(px(50));
        made->setAutoDefault(true);
        connect(made, &QPushButton::clicked, this, action);
        buttons->addWidget(made, 1);
        return made;
    };
    set_role(add("source_confirm", "ت&حويل من المخزن  Enter", [this] { confirm(); }), "main");
    add("source_selling", "من مخزن ال&بيع", [this] { from_selling_store(); });
    add("source_back", "ر&جوع", [this] { leave(0); });
    body()->addLayout(buttons);

    connect(units_, &Segments::chosen, this, [this](int unit) {
        units_->show_chosen(unit);
        show_stores(unit);
        table_->setFocus();
    });
    connect(table_, &ListTable::row_taken, this, [this] { confirm(); });
    show_stores(line.unit_code);
    // The cursor begins on the store that supplies the line already, else on one that holds enough, else on
    // none, so that a hasty Enter takes nothing.
    table_->setCurrentCell(-1, -1);
    const auto& stores = logic_.stores();
    const auto found = std::find_if(stores.begin(), stores.end(), [&](const stock::StoreHolding& store) {
        if (line.source_kind == sales::SourceKind::other_store) return store.store == line.source_store;
        return store.store != screen_.invoice().store && store.quantity >= line.base_quantity();
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
    guarded(context_.outside, "LineSource", [&] {
        const int row = table_->currentRow();
        const auto& stores = logic_.stores();
        const bool chosen = row >= 0 && static_cast<std::size_t>(row) < stores.size();
        const int store = chosen ? stores[static_cast<std::size_t>(row)].store : 0;
        if (!logic_.confirm(store)) return;
        // Other lines may already take the item from there.
        const sales::Line& line = line_of(screen_, row_);
        const double others = sales::held_by_lines(screen_.invoice(), *line.item_code, store, &line);
        if (others > 0 && !stock::LineSource(context_.connection, context_.outside.prompts, *line.item_code,
                                             others + line.base_quantity(), 1, screen_.invoice().store)
                               .confirm(store))
            return;
        screen_.set_line_source(row_, sales::SourceKind::other_store, store);
        leave(1);
    });
    table_->setFocus();
}

void LineSourceDialog::from_selling_store() {
    if (Sheet::top_of(window()) != this) return;
    screen_.set_line_source(row_, sales::SourceKind::selling_store, 0);
    leave(1);
}

}  // namespace ui

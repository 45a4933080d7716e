#include "ui/cash/figure_rows_sheet.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/numbers.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

FigureRowsSheet::FigureRowsSheet(QWidget* host, const QString& caption, const cash::FigureRows& rows)
    : Sheet(host, caption) {
    setObjectName("figure_rows");
    set_card_width(820);
    table_ = new ListTable("figure_rows_table", {"البيان", "رقم", "الوقت", "الطرف", "المبلغ"}, 3);
    table_->setFixedHeight(px(420));
    std::vector<QStringList> texts;
    texts.reserve(rows.rows.size());
    for (const cash::FigureRow& row : rows.rows) {
        texts.push_back({qt(row.kind), qt(row.number), "\u200e" + qt(row.moment), qt(row.party),
                         "\u200e" + qt(common::format_amount(row.amount))});
    }
    table_->say_when_empty("لا توجد حركات في هذا البند");
    table_->show_rows(texts);
    body()->addWidget(table_);

    auto* foot = new QHBoxLayout;
    foot->setSpacing(px(10));
    auto* back = new QPushButton("&رجوع");
    back->setObjectName("figure_rows_back");
    back->setMinimumSize(px(120), px(44));
    back->setAutoDefault(true);
    connect(back, &QPushButton::clicked, this, [this] { leave(0); });
    foot->addWidget(back);
    auto* count = label("عدد السطور " + QString::number(rows.rows.size()), "side");
    count->setObjectName("figure_rows_count");
    foot->addWidget(count);
    foot->addStretch(1);
    // Under the amounts.
    foot->addWidget(label("المجموع", "side"));
    auto* sum = new Figure("figure_rows_sum", "total");
    sum->setText(qt(rows.sum.text()));
    sum->setContentsMargins(px(10), 0, 0, 0);
    foot->addWidget(sum);
    body()->addLayout(foot);
}

void FigureRowsSheet::take_focus() {
    table_->setFocus();
}

}  // namespace ui

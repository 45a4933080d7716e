#include "ui/reports/rows_sheet.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "reports/desk.h"
#include "ui/printing/report_foot.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

QStringList cells_of(const std::vector<std::string>& texts, const std::vector<int>& figures) {
    QStringList cells = text_list(texts);
    for (const int column : figures)
        if (column < cells.size()) cells[column] = figure(cells[column]);
    return cells;
}

}  // namespace

RowsSheet::RowsSheet(QWidget* host, const Context& context, reports::Behind behind, const char* name)
    : Sheet(host, qt(behind.title)), context_(context), behind_(std::move(behind)) {
    setObjectName(name);
    const QString prefix = name;
    body()->setContentsMargins(px(22), px(14), px(22), px(16));
    body()->setSpacing(px(10));
    rows_ = new ListTable(prefix + "_table", text_list(behind_.headings), behind_.name_column);
    rows_->say_when_empty("لا توجد سجلات وراء هذا الرقم");  // no rows behind this figure
    std::vector<QStringList> texts;
    for (const reports::BehindRow& row : behind_.rows)
        texts.push_back(cells_of(row.cells, behind_.figures));
    rows_->show_rows(std::move(texts));
    connect(rows_, &ListTable::row_taken, this, &RowsSheet::open_document);
    body()->addWidget(rows_, 1);

    auto* row = add_row();
    auto* sum = label(qt(behind_.sum), "total", qPrintable(prefix + "_sum"));
    row->addWidget(sum);
    note_ = label(behind_.is_cut ? "يعرض أحدث " + qt(common::counted(reports::Behind::most_rows,
                                                                     {"سطر", "سطرين", "سطور", "سطرا"}))
                                 : QString(),
                  "side", qPrintable(prefix + "_note"));
    row->addWidget(note_, 1);
    add_report_buttons(
        row, prefix, context_, [this] { return reports::paper_of(behind_, context_.session); }, note_);
    foot_button(row, qPrintable(prefix + "_back"), "ر&جوع", 0, [this] { leave(0); });
}

void RowsSheet::open_document(int row) {
    const auto& document = behind_.rows.at(static_cast<std::size_t>(row)).document;
    if (!document || Sheet::top_of(window()) != this) return;
    guarded(context_.services, "DocumentLines", [&] {
        RowsSheet(this, context_, reports::lines_of(context_.connection, *document), "document_lines").run();
    });
}

void RowsSheet::take_focus() {
    rows_->setFocus();
}

void RowsSheet::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedSize(std::min(width() - px(24), px(1300)), std::min(height() - px(24), px(900)));
}

}  // namespace ui

#include "ui/widgets/whole_rows.h"

#include <QHeaderView>
#include <QTableView>
#include <algorithm>

namespace ui {

void show_whole_rows(QTableView* table, int row, int headings) {
    QHeaderView* header = table->horizontalHeader();
    const int all = table->viewport()->height() + header->height();
    const int count = std::max(1, (all - headings) / row);
    const int each = std::max(row, (all - headings) / count);
    table->verticalHeader()->setDefaultSectionSize(each);
    header->setFixedHeight(std::max(headings, all - count * each));
}

}  // namespace ui

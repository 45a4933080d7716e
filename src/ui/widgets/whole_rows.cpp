#include "ui/widgets/whole_rows.h"

#include <QHeaderView>
#include <QTableView>
#include <algorithm>

namespace ui {

void show_whole_rows(QTableView* table, int row, int headings) {
    QHeaderView* header = table->horizontalHeader();
    // The viewport makes room for a new height of the headings only later, but its end stays where it is.
    const int all = table->viewport()->geometry().bottom() + 1 - header->geometry().top();
    const int count = std::max(1, (all - headings) / row);
    const int each = std::max(row, (all - headings) / count);
    table->verticalHeader()->setDefaultSectionSize(each);
    header->setFixedHeight(std::max(headings, all - count * each));
}

}  // namespace ui

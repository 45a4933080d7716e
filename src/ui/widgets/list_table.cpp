#include "ui/widgets/list_table.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"

namespace ui {

ListTable::ListTable(const QString& name, const QStringList& headings, int stretch, QWidget* parent)
    : QTableWidget(0, static_cast<int>(headings.size()), parent) {
    setObjectName(name);
    set_role(this, "sheet");
    setHorizontalHeaderLabels(headings);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(px(40));
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(stretch, QHeaderView::Stretch);
    horizontalHeader()->setMinimumSectionSize(px(70));
    connect(this, &QTableWidget::cellDoubleClicked, this, [this](int row) { emit row_taken(row); });
}

void ListTable::show_rows(const std::vector<QStringList>& rows) {
    setUpdatesEnabled(false);
    clearContents();
    setRowCount(static_cast<int>(rows.size()));
    for (int row = 0; row < rowCount(); ++row) {
        const QStringList& texts = rows[static_cast<std::size_t>(row)];
        for (int column = 0; column < columnCount() && column < texts.size(); ++column) {
            auto* cell = new QTableWidgetItem(texts[column]);
            cell->setTextAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
            setItem(row, column, cell);
        }
    }
    if (rowCount() > 0) setCurrentCell(0, 0);
    setUpdatesEnabled(true);
}

void ListTable::say_when_empty(const QString& text) {
    setProperty(empty_property, text);
    viewport()->update();
}

void ListTable::paintEvent(QPaintEvent* event) {
    QTableWidget::paintEvent(event);
    if (rowCount() > 0) return;
    QPainter painter(viewport());
    painter.setPen(QColor(colour::quiet));
    const int side = px(24);
    painter.drawText(viewport()->rect().adjusted(side, 0, -side, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     property(empty_property).toString());
}

void ListTable::keyPressEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentRow() >= 0) {
        emit row_taken(currentRow());
        return;
    }
    if (event->key() == Qt::Key_Up && currentRow() <= 0) {
        emit left_upwards();
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        event->ignore();  // for the sheet, which closes
        return;
    }
    QTableWidget::keyPressEvent(event);
}

}  // namespace ui

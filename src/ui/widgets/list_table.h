// A table of texts to choose a row from, in the style of all sheets.
#pragma once

#include <QTableWidget>

namespace ui {

class ListTable : public QTableWidget {
    Q_OBJECT
  public:
    // A column that holds figures stands right-aligned and left to right; the widest text column is
    // `stretch`.
    ListTable(const QString& name, const QStringList& headings, int stretch, QWidget* parent = nullptr);
    // Replaces the rows; a cell that begins with "\u200e" is a figure.
    void show_rows(const std::vector<QStringList>& rows);
    // What stands in the table's middle while it has no row.
    void say_when_empty(const QString& text);

  signals:
    // Enter or double click on a row.
    void row_taken(int row);
    // Up on the first row.
    void left_upwards();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace ui

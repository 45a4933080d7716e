// A table of texts to choose a row from, in the style of all sheets.
#pragma once

#include <QTableWidget>

namespace ui {

class ListTable : public QTableWidget {
    Q_OBJECT
  public:
    // Column `stretch` takes the width that the others leave.
    ListTable(const QString& name, const QStringList& headings, int stretch, QWidget* parent = nullptr);
    // Replaces the rows; a cell that begins with "\u200e" is a figure.
    void show_rows(const std::vector<QStringList>& rows);
    // The text shown in the middle of the table while it has no rows.
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

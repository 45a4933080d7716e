// A list of texts to choose a row from, in the style of all sheets, quick at any length: only the rows that
// are seen are laid out and painted.
#pragma once

#include <QTableView>
#include <functional>
#include <vector>

namespace ui {

class ListModel;

// An alarming cell is red, a good one green.
enum class CellLook { plain, strong, dimmed, alarm, good };

// A row keeps its number from show_rows(), whichever rows are shown.
class ListTable : public QTableView {
    Q_OBJECT
  public:
    // Column `stretch` takes the width that the others leave.
    ListTable(const QString& name, const QStringList& headings, int stretch, QWidget* parent = nullptr);
    // Replaces the rows and shows them all, the first one chosen. Cells made by `figure` are figures, and no
    // width cuts their columns.
    void show_rows(std::vector<QStringList> rows);
    // Shows the rows that `fits` is true for, the first one chosen. Columns keep their widths.
    void narrow(const std::function<bool(int row)>& fits);
    int shown_count() const;
    // The chosen row, -1 for none.
    int current_row() const;
    void choose_row(int row);
    // How cells look; they are plain unless this says otherwise.
    void set_look(std::function<CellLook(int row, int column)> look);
    // The text shown in the middle of the table while it shows no rows.
    void say_when_empty(const QString& text);

  signals:
    // Enter or double click on a row.
    void row_taken(int row);
    // Another row was chosen by key or mouse, or the first one of new rows.
    void row_chosen(int row);
    // Up on the first row.
    void left_upwards();

  protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void choose_first();
    void measure_columns();
    void set_widths();

    // What its parts need.
    struct Column {
        int heading = 0;
        int broken_heading = 0;  // on two lines
        int cells = 0;
        bool is_of_figures = false;
        bool is_stretched = false;
        int wanted() const;
    };
    ListModel* model_;
    std::vector<Column> columns_;
};

}  // namespace ui

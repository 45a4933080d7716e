// The line grid: the lines of the invoice in its visible columns, the cursor, and editing of cells in place.
#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <array>

namespace sales {
class SalesDesk;
}

namespace ui {

class AmountField;

class LineModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    explicit LineModel(const sales::SalesDesk& desk, QObject* parent = nullptr);

    // The column of the invoice (sales::column) behind a shown column, and back; -1 if there is none.
    static int source_column(int shown);
    static int shown_column(int source);
    static constexpr int shown_count = 11;
    // Role of data(): true if a cell waits for a value (a general item's, or an offer's marked discounts).
    static constexpr int open_role = Qt::UserRole;

    // Updates the rows from the invoice.
    void refresh();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    const sales::SalesDesk& desk_;
    int rows_ = 0;
};

class LineView : public QTableView {
    Q_OBJECT
  public:
    explicit LineView(LineModel* model, QWidget* parent = nullptr);

    void set_background(const QColor& colour);
    // Makes the rows lower, so that more of them are seen; they are then lower than a finger needs.
    void set_compact(bool compact);
    // Moves the cursor to a line without a signal.
    void show_current(int row);
    // Opens an edit field over a cell with `value`, or the cell's own text if that is empty, all selected.
    void open_cell(int row, int source_column, const QString& value = {});
    bool is_editing() const { return field_ != nullptr; }
    // Commits an open cell, as moving the focus away does.
    void finish_editing() { commit(false); }
    void close_cell();

  signals:
    // The cashier moved to a line.
    void row_chosen(int row);
    // Enter or a digit on a cell that can be edited; `first` is the digit.
    void edit_wanted(int row, int source_column, const QString& first);
    // The value of a cell was entered, or its field lost the focus. The field is already closed.
    void committed(int row, int source_column, const QString& text, bool by_enter);
    void edit_cancelled(int row);
    void delete_wanted(int row);
    // Enter or a double click on the unit of the current line.
    void next_unit_wanted();
    // Esc, or Up on the first line.
    void left();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void set_widths();
    void set_heights();
    void commit(bool by_enter);
    void want_edit(const QString& first);

    AmountField* field_ = nullptr;
    int edited_row_ = -1;
    int edited_column_ = -1;
    bool quiet_ = false;
    QColor background_;
};

}  // namespace ui

// The lines of the invoice as the grid shows them: the visible columns in their order.
#pragma once

#include <QAbstractTableModel>
#include <array>

namespace sales {
class SalesDesk;
}

namespace ui {

class LineModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    explicit LineModel(const sales::SalesDesk& desk, QObject* parent = nullptr);

    // The column of the invoice (sales::column) behind a shown column, and back; -1 if there is none.
    static int source_column(int shown);
    static int shown_column(int source);
    static constexpr int shown_count = 10;
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

}  // namespace ui

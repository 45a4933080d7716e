// The rows of a list, and which of them are shown.
#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <vector>

#include "ui/widgets/list_table.h"

namespace ui {

class ListModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    ListModel(QStringList headings, QObject* parent);

    void replace(std::vector<QStringList> rows);
    void narrow(const std::function<bool(int row)>& fits);
    void set_look(std::function<CellLook(int row, int column)> look);

    // Puts headings of several words on two lines, by column, and others back on one.
    void break_headings(std::vector<bool> columns);

    // All rows, shown or not.
    const std::vector<QStringList>& rows() const { return rows_; }
    // The row that is shown at a place, and the place of a row; -1 if there is none.
    int row_at(int place) const;
    int place_of(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QStringList headings_;
    QStringList broken_headings_;
    std::vector<bool> is_broken_;  // by column
    std::vector<QStringList> rows_;
    std::vector<int> shown_;
    std::function<CellLook(int row, int column)> look_;
};

}  // namespace ui

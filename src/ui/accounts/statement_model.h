// The rows of an account statement as a table; thousands of them cost no more than those on the screen.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "accounts/account_statement.h"

namespace ui {

class StatementModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    using QAbstractTableModel::QAbstractTableModel;
    // Column of the description, which takes the room that is left.
    static constexpr int description = 4;

    void show(const std::vector<accounts::StatementRow>& rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::vector<accounts::StatementRow> rows_;
};

}  // namespace ui

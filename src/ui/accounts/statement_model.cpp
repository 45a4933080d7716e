#include "ui/accounts/statement_model.h"

#include <QFont>

#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

void StatementModel::show(const std::vector<accounts::StatementRow>& rows) {
    beginResetModel();
    rows_ = rows;
    endResetModel();
}

int StatementModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int StatementModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(accounts::statement_headings.size());
}

QVariant StatementModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const accounts::StatementRow& row = rows_[static_cast<std::size_t>(index.row())];
    const bool balance_only = row.date.empty();  // brought forward, and closing
    const int column = index.column();
    switch (role) {
        case Qt::DisplayRole: {
            const QString text = qt(row.cells()[static_cast<std::size_t>(column)]);
            return column < description && !text.isEmpty() ? "\u200e" + text : text;
        }
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        case Qt::FontRole:
            if (balance_only || column == 3) {
                QFont font;
                font.setPixelSize(px(16));
                font.setBold(true);
                return font;
            }
            return {};
        default:
            return {};
    }
}

QVariant StatementModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
    if (role == Qt::DisplayRole) return qt(accounts::statement_headings[static_cast<std::size_t>(section)]);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    return {};
}

}  // namespace ui

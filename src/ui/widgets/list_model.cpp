#include "ui/widgets/list_model.h"

#include <QColor>
#include <QFont>
#include <algorithm>
#include <numeric>

#include "ui/widgets/colours.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// On two lines about equally long, if it has several words.
QString broken(QString heading) {
    qsizetype best = -1;
    for (qsizetype at = heading.indexOf(' '); at >= 0; at = heading.indexOf(' ', at + 1))
        if (best < 0 || std::abs(2 * at - heading.size()) < std::abs(2 * best - heading.size())) best = at;
    if (best >= 0) heading[best] = '\n';
    return heading;
}

}  // namespace

ListModel::ListModel(QStringList headings, QObject* parent)
    : QAbstractTableModel(parent),
      headings_(std::move(headings)),
      is_broken_(static_cast<std::size_t>(headings_.size()), false) {
    for (const QString& heading : headings_)
        broken_headings_ << broken(heading);
}

void ListModel::replace(std::vector<QStringList> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    shown_.resize(rows_.size());
    std::iota(shown_.begin(), shown_.end(), 0);
    endResetModel();
}

void ListModel::narrow(const std::function<bool(int row)>& fits) {
    beginResetModel();
    shown_.clear();
    for (int row = 0; row < static_cast<int>(rows_.size()); ++row)
        if (fits(row)) shown_.push_back(row);
    endResetModel();
}

void ListModel::set_look(std::function<CellLook(int row, int column)> look) {
    look_ = std::move(look);
}

int ListModel::row_at(int place) const {
    return place >= 0 && place < rowCount() ? shown_[static_cast<std::size_t>(place)] : -1;
}

int ListModel::place_of(int row) const {
    const auto found = std::lower_bound(shown_.begin(), shown_.end(), row);
    return found != shown_.end() && *found == row ? static_cast<int>(found - shown_.begin()) : -1;
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    const int row = row_at(index.row());
    if (row < 0) return {};
    switch (role) {
        case Qt::DisplayRole:
            return sentence(rows_[static_cast<std::size_t>(row)].value(index.column()));
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
        case Qt::ForegroundRole:
            switch (look_ ? look_(row, index.column()) : CellLook::plain) {
                case CellLook::dimmed:
                    return QColor(colour::off);
                case CellLook::alarm:
                    return QColor(colour::alarm);
                case CellLook::good:
                    return QColor(colour::save);
                default:
                    return {};
            }
        case Qt::FontRole:
            if (look_ && look_(row, index.column()) == CellLook::strong) {
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

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    const bool is_broken = is_broken_.at(static_cast<std::size_t>(section));
    return (is_broken ? broken_headings_ : headings_).value(section);
}

void ListModel::break_headings(std::vector<bool> columns) {
    if (is_broken_ == columns) return;
    is_broken_ = std::move(columns);
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

}  // namespace ui

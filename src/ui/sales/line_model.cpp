#include "ui/sales/line_model.h"

#include "sales/sales_desk.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

namespace column = sales::column;

constexpr std::array<int, LineModel::shown_count> shown = {
    column::number,   column::code,   column::name,           column::group,
    column::quantity, column::price,  column::discount_value, column::discount_percent,
    column::total,    column::balance};

bool waits_for_typing(const sales::Line& line, int source) {
    const bool discount = source == column::discount_value || source == column::discount_percent;
    if (line.is_general()) return discount || source == column::quantity || source == column::price;
    return line.marked && discount;
}

}  // namespace

LineModel::LineModel(const sales::SalesDesk& desk, QObject* parent)
    : QAbstractTableModel(parent), desk_(desk) {}

int LineModel::source_column(int at) {
    return at < 0 || at >= shown_count ? -1 : shown[static_cast<std::size_t>(at)];
}

int LineModel::shown_column(int source) {
    for (int at = 0; at < shown_count; ++at) {
        if (shown[static_cast<std::size_t>(at)] == source) return at;
    }
    return -1;
}

void LineModel::refresh() {
    const int now = static_cast<int>(desk_.invoice().lines.size());
    if (now > rows_) {
        beginInsertRows({}, rows_, now - 1);
        rows_ = now;
        endInsertRows();
    } else if (now < rows_) {
        beginRemoveRows({}, now, rows_ - 1);
        rows_ = now;
        endRemoveRows();
    }
    if (rows_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, shown_count - 1));
}

int LineModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}
int LineModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : shown_count;
}

QVariant LineModel::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    // Until refresh() runs after an action, the invoice may be shorter than the grid.
    if (!index.isValid() || row >= desk_.invoice().lines.size()) return {};
    const int source = source_column(index.column());
    if (role == open_role) return waits_for_typing(desk_.invoice().lines[row], source);
    if (role == Qt::DisplayRole) {
        const QString text = qt(desk_.invoice().cells(row)[static_cast<std::size_t>(source)]);
        const sales::Line& line = desk_.invoice().lines[row];
        if (source != column::name || line.source_kind != sales::SourceKind::other_store) return text;
        return text + " (من " + qt(common::name_of(desk_.lists().stores, line.source_store)) + ")";
    }
    return {};
}

QVariant LineModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::DisplayRole) return qt(sales::line_heading(source_column(section)));
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    return {};
}

}  // namespace ui

#include "ui/counting/columns.h"

#include "ui/widgets/text.h"

namespace ui {

QStringList headings_of(std::span<const Column> columns) {
    QStringList texts;
    for (const Column& column : columns)
        texts << column.heading;
    return texts;
}

std::vector<QStringList> cells_of(const std::vector<std::vector<std::string>>& rows,
                                  std::span<const Column> columns) {
    std::vector<QStringList> list;
    for (const auto& row : rows) {
        QStringList cells;
        for (std::size_t i = 0; i < row.size(); ++i)
            cells << (columns[i].is_figure ? figure(row[i]) : qt(row[i]));
        list.push_back(std::move(cells));
    }
    return list;
}

void add_columns(printing::Report& report, std::span<const Column> columns) {
    for (const Column& column : columns)
        report.columns.push_back(
            {column.heading, column.is_figure ? printing::Align::end : printing::Align::start, column.share});
}

}  // namespace ui

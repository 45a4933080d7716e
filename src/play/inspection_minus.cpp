#include <QApplication>
#include <QLabel>
#include <QRegularExpression>
#include <QTableView>
#include <QTextLayout>

#include "play/inspection.h"

namespace play {

namespace {

constexpr QChar word_joiner(0x2060);  // boxes set it beside a hyphen

double middle_of(const QTextLine& line, int at) {
    int before = at;
    int after = at + 1;
    return (line.cursorToX(&before) + line.cursorToX(&after, QTextLine::Leading)) / 2;
}

}  // namespace

bool minus_stands_left(const QString& text, Qt::LayoutDirection direction) {
    static const QRegularExpression negative(R"((?<!\w)-(?=\d))");
    for (const QString& paragraph : QString(text).remove(word_joiner).split('\n')) {
        if (!paragraph.contains('-')) continue;
        QTextOption option;
        option.setTextDirection(direction);
        QTextLayout layout(paragraph, QApplication::font());
        layout.setTextOption(option);
        layout.beginLayout();
        const QTextLine line = layout.createLine();
        layout.endLayout();
        for (auto at = negative.globalMatch(paragraph); at.hasNext();) {
            const auto found = at.next();
            if (middle_of(line, static_cast<int>(found.capturedStart())) >
                middle_of(line, static_cast<int>(found.capturedEnd())))
                return false;
        }
    }
    return true;
}

// A label runs in the direction of its text, a cell in that of its table.
void inspect_minus(const QWidget* front, std::vector<std::string>& faults) {
    const auto check = [&](const QString& text, Qt::LayoutDirection direction, const QWidget* on) {
        if (!minus_stands_left(text, direction))
            faults.push_back("the minus in \"" + text.toStdString() + "\" (" + name_of(on) +
                             ") stands right of its number");
    };
    for (const auto* label : front->findChildren<QLabel*>()) {
        if (label->isVisible())
            check(label->text(), label->text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight, label);
    }
    for (const auto* table : front->findChildren<QTableView*>()) {
        if (!table->isVisible()) continue;
        for (int row = 0; row < table->model()->rowCount(); ++row) {
            for (int column = 0; column < table->model()->columnCount(); ++column) {
                const QModelIndex cell = table->model()->index(row, column);
                if (table->viewport()->rect().intersects(table->visualRect(cell)))
                    check(cell.data().toString(), table->layoutDirection(), table);
            }
        }
    }
}

}  // namespace play

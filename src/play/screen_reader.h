// Finds widgets by their object names and reads what they show.
#pragma once

#include <QString>
#include <vector>

class QAction;
class QTableView;
class QWidget;

namespace ui {
class MessageBox;
}

namespace play {

// The visible widget of that name, preferably on the sheet in front; null if there is none.
QWidget* find_widget(const QString& name);
// An entry of a menu, open or not.
QAction* find_action(const QString& name);
// The message or question box in front; null if there is none.
ui::MessageBox* open_box();
// The active window.
QWidget* front_window();

// The text of a label, field, list or button, without marks that only set the writing direction.
QString text_of(const QWidget* widget);
QString without_marks(QString text);
// The text of a cell; rows are counted from 1, a column is named by its heading.
struct Cell {
    bool found = false;
    QString text;
};
Cell cell_of(const QTableView* table, int row, const QString& heading);

// All widgets and menu entries that a play can name now.
struct Named {
    QString screen;  // the screen or sheet that it is on
    QString name;
    QString kind;
    QString caption;
};
std::vector<Named> all_named();

}  // namespace play

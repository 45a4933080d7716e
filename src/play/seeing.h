// The cashier's eyes: widgets by their object names, and what they show.
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

// The visible widget of a name, on the sheet in front where there is one; null when there is none.
QWidget* find_widget(const QString& name);
// An entry of a menu, open or not.
QAction* find_action(const QString& name);
// The message or question box in front; null when there is none.
ui::MessageBox* open_box();
// The window in use.
QWidget* front_window();

// What a widget says: a label's, field's, list's or button's text, without marks that only turn the writing.
QString text_of(const QWidget* widget);
QString without_marks(QString text);
// The text of a cell; rows are counted from 1, a column is named by its heading. Nothing when there is none.
struct Cell {
    bool found = false;
    QString text;
};
Cell cell_of(const QTableView* table, int row, const QString& heading);

// Everything that can be named in a play now: object name, kind of widget, caption.
struct Named {
    QString screen;  // the screen or sheet it stands on
    QString name;
    QString kind;
    QString caption;
};
std::vector<Named> all_named();

}  // namespace play

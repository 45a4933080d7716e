// What the screens of customers and vouchers share: their lists, dates and buttons.
#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <vector>

#include "common/date_time.h"
#include "common/prompts.h"
#include "ui/widgets/choices.h"

class QGridLayout;
class QHBoxLayout;
class QLineEdit;
class QPushButton;
class QWidget;

namespace ui {

// The fields of a card, each under its caption, in columns of one width.
class FieldGrid {
  public:
    FieldGrid(int columns, double between_rows);
    QGridLayout* layout() const { return grid_; }

    template <typename Field>
    Field* add(const QString& caption, Field* field, int row, int column, int columns = 1) {
        place(caption, field, row, column, columns);
        return field;
    }

  private:
    void place(const QString& caption, QWidget* field, int row, int column, int columns);
    QGridLayout* grid_;
};

// A field for a number that is read from the left, such as a telephone's.
QLineEdit* digits_field(const char* name, int longest = 300);

// The date that a field holds; nothing, after a message and with the focus in the field, when it holds none.
std::optional<common::Date> date_in(QLineEdit* field, common::Prompts& prompts);

// Enter in each of the fields leads to the next one.
void enter_leads_on(std::initializer_list<QWidget*> fields);

// A field whose value stands and can still be read, as on a card that is only looked at: no key or click
// changes it.
void set_fixed(QWidget* field, bool fixed);

// A button at the foot of a sheet, which Enter presses too while it has the focus.
QPushButton* foot_button(QHBoxLayout* row, const char* name, const QString& caption, int share,
                         std::function<void()> action);

}  // namespace ui

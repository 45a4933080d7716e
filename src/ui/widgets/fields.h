// The fields that screens are made of, and how they are laid out, captioned and led through by Enter.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <functional>
#include <initializer_list>
#include <optional>

#include "common/date_time.h"
#include "common/prompts.h"
#include "ui/widgets/choices.h"

class QGridLayout;
class QHBoxLayout;
class QPushButton;

namespace ui {

// The height of a field in pixels of the 1366×768 screen; a button on the same line is as high.
inline constexpr double field_height = 46;

// The least width and height of everything that can be pressed by a finger.
inline constexpr double least_target = 44;

// Dynamic property of a button that Tab passes by: the key that does the same.
inline constexpr auto key_property = "key";
// Dynamic property of a table: the text shown in its middle while it has no rows.
inline constexpr auto empty_property = "when_empty";
// Dynamic property of a table whose rows the workstation chose lower than a finger needs.
inline constexpr auto compact_property = "compact";

// A field for text or a moment that paints its own hint (set_hint).
class HintedField : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

// Focus, also by a click, selects everything in the field, so that typing replaces it.
class SelectingField : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    bool clicked_into_ = false;  // the press that brought the focus has not been released yet
};

// A field for a number, shown left to right at the right edge. Scans do not enter it.
class NumberField : public SelectingField {
  public:
    explicit NumberField(const QString& name, QWidget* parent = nullptr);
};

// A number field for an amount or quantity. It keeps whatever is typed or pasted, because dropping a comma, a
// minus or a letter would make it another number; whoever reads the field refuses it with a reason.
class AmountField : public NumberField {
    Q_OBJECT
  public:
    explicit AmountField(const QString& name, QWidget* parent = nullptr);
    // As wide as an amount, whatever the font size: columns keep their widths.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {sizeHint().width() / 2, sizeHint().height()}; }

  signals:
    void escaped();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
};

// A figure that is only shown: tabular, left to right, at the right edge by default.
class Figure : public QLabel {
  public:
    Figure(const QString& name, const char* role, QWidget* parent = nullptr);
};

// Shows a figure in the given font size, or in a smaller one if it would not fit the label.
void show_fitted(QLabel* figure, const QString& text, double largest);

QLabel* label(const QString& text, const char* role, const char* name = "");
// A thin line across a card.
QFrame* rule();
// A caption above a field. The field gets the common height, and the caption's mnemonic leads to it.
QWidget* captioned(const QString& caption, QWidget* field, QWidget* parent = nullptr);

// A field for text, right-aligned even while it is empty.
QLineEdit* text_field(const QString& name, QWidget* parent = nullptr);
// A field for a date or time, "yyyy/mm/dd" or "HH:mm:ss", aligned as a figure is.
QLineEdit* moment_field(const QString& name, QWidget* parent = nullptr);
// A field for a number that is read from the left, such as a telephone number.
QLineEdit* digits_field(const char* name, int longest = 300);
// The hint in an empty field that paints one; unlike a placeholder it is dark enough to be read.
void set_hint(QLineEdit* field, const QString& text);
// Right-aligns an existing field even while it is empty.
void begin_right(QLineEdit* field);

// A grid of captioned fields in columns of equal width.
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

// The date in a field; nothing, after a message and with the focus in the field, if it is not a date.
std::optional<common::Date> date_in(QLineEdit* field, common::Prompts& prompts);

// Returns true if every typed name is in its list. Otherwise shows a message and moves the focus to the first
// list whose name is unknown.
bool all_known(std::initializer_list<QComboBox*> lists, common::Prompts& prompts);

// Takes over what was typed into a field, as leaving the field would: a name becomes the chosen entry, a date
// takes effect.
void take_typed(QWidget* field);

// Enter in each of the fields moves the focus to the next one.
void enter_leads_on(std::initializer_list<QWidget*> fields);

// Makes a field read-only without making it look disabled: its value can be read, and no key or click changes
// it.
void set_fixed(QWidget* field, bool fixed);

// A button behind fields on their line, as high as they are. Enter presses it too while it has the focus.
QPushButton* field_button(QHBoxLayout* row, const char* name, const QString& caption,
                          std::function<void()> action);

// A button at the foot of a sheet. Enter presses it too while it has the focus.
QPushButton* foot_button(QHBoxLayout* row, const char* name, const QString& caption, int share,
                         std::function<void()> action);

}  // namespace ui

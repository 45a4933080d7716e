// The fields that screens are made of.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QLineEdit>

class QComboBox;

namespace ui {

// How high a field stands, in pixels of the 1366×768 screen; a button on the same line is as high.
inline constexpr double field_height = 46;

// The key that does what a button does, for a button that Tab passes by; a dynamic property.
inline constexpr auto key_property = "key";
// What a table says, in its middle, while it has no row; a dynamic property.
inline constexpr auto empty_property = "when_empty";

// A field for an amount or quantity: digits of either script and one decimal mark, shown left to right at the
// right edge so that decimals line up. Scans do not enter it. Everything is selected when the focus comes,
// also by a click, so that what is typed takes the place of the old amount.
class AmountField : public QLineEdit {
    Q_OBJECT
  public:
    explicit AmountField(const QString& name, QWidget* parent = nullptr);
    // As wide as an amount and no wider, whatever the size of its letters: columns keep their widths.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {sizeHint().width() / 2, sizeHint().height()}; }

  signals:
    void escaped();

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool clicked_into_ = false;  // the press that brought the focus has not been released yet
};

// A figure that is only shown: tabular, left to right, at the right edge unless told otherwise.
class Figure : public QLabel {
  public:
    Figure(const QString& name, const char* role, QWidget* parent = nullptr);
};

// Shows a figure in letters of that size, or smaller when it would not fit the label otherwise.
void show_fitted(QLabel* figure, const QString& text, double largest);

// A caption above a field, which gets the height of all fields; the caption's mnemonic leads to the field.
QWidget* captioned(const QString& caption, QWidget* field, QWidget* parent = nullptr);

QLabel* label(const QString& text, const char* role, QWidget* parent = nullptr);
// A thin line across a card.
QFrame* rule();

// A field for text, which begins at the right even while it is empty.
QLineEdit* text_field(const QString& name, QWidget* parent = nullptr);
// A field for a date or time, "yyyy/mm/dd" or "HH:mm:ss", which stands as a figure does.
QLineEdit* moment_field(const QString& name, QWidget* parent = nullptr);
// What an empty field says of itself; unlike a placeholder it is written dark enough to be read.
void set_hint(QLineEdit* field, const QString& text);
// Lets an existing field begin at the right.
void begin_right(QLineEdit* field);

// A list that is chosen from by typing a part of a name; codes stand in the items' data.
QComboBox* choice_list(const QString& name, QWidget* parent = nullptr);
// The chosen code; 0 when nothing is chosen. A name typed in full counts as chosen.
qlonglong chosen_code(const QComboBox* list);

}  // namespace ui

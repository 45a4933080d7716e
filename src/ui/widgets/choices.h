// Fields that choose: a list of names that is searched by typing, and a row of options.
#pragma once

#include <QWidget>
#include <cstdint>
#include <optional>
#include <vector>

#include "common/choice.h"

class QComboBox;
class QPushButton;

namespace ui {

// A list to choose from by typing part of a name; the codes are the items' data.
QComboBox* choice_list(const QString& name, QWidget* parent = nullptr);
// Enter in the list, and an entry that is picked with the mouse, lead on to the next field.
void lead_on(QComboBox* list, QWidget* next);
// Shows the codes beside the names, under headings, and lets a code be typed in place of the name.
void show_codes(QComboBox* list, const QString& code_heading, const QString& name_heading);
// Replaces the entries without a signal and shows the one of `chosen`, or none.
void fill_choices(QComboBox* list, const std::vector<common::Choice>& choices,
                  std::optional<std::int64_t> chosen);
// The same with an empty entry of code 0 first. It is shown if `chosen` is not in the list.
void fill_optional_choices(QComboBox* list, const std::vector<common::Choice>& choices, std::int64_t chosen);
// Shows the entry of a code without a signal; none if the list does not have it.
void show_choice(QComboBox* list, std::optional<std::int64_t> code);
// The chosen code; it may be 0. Nothing if no entry is chosen. A name typed in full counts as chosen, and a
// code if the list shows codes.
std::optional<std::int64_t> choice_of(const QComboBox* list);
// Returns true if a name was typed that is not in the list.
bool is_unknown(const QComboBox* list);

// A row of options of which one is chosen: kinds, price levels.
class Segments : public QWidget {
    Q_OBJECT
  public:
    // The options' object names are `name` and their value: "kind_0".
    Segments(const QString& name, const std::vector<std::pair<int, QString>>& options,
             QWidget* parent = nullptr);

    // Shows the option of a value as chosen, without a signal.
    void show_chosen(int value);
    void set_enabled(int value, bool enabled);
    // The value of the option shown as chosen; 0 if none is.
    int value() const;
    // In pixels of the 1366×768 screen.
    void set_height(double measure);

  signals:
    // The cashier chose an option. What is shown as chosen follows the logic afterwards.
    void chosen(int value);

  private:
    std::vector<std::pair<int, QPushButton*>> buttons_;
};

}  // namespace ui

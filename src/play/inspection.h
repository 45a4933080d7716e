// Inspects a screen for what is hard to read and for what the keyboard cannot reach.
#pragma once

#include <QRect>
#include <QWidget>
#include <string>
#include <vector>

#include "play/input_driver.h"

namespace play {

// Returns all faults of the screen, sheet or box in front, each with the object's name. Leaves the focus
// where it was.
std::vector<std::string> faults_of_screen(InputDriver& input);

// The sheet in front, or the window if no sheet lies over it. Null while a menu or list is open.
QWidget* screen_in_front();
// A widget's place in its window.
QRect place_of(const QWidget* widget);
// A widget's object name, or for one without a name its class and the nearest named widget around it.
std::string name_of(const QWidget* widget);

// Checks that Tab leads through everything that can be operated, in reading order from right to left and top
// to bottom, that the focus is always visible, and that it comes back to where it began.
void inspect_focus(QWidget* front, InputDriver& input, std::vector<std::string>& faults);

// Whether every minus in the text is drawn left of its number.
bool minus_stands_left(const QString& text, Qt::LayoutDirection direction);
// Checks it for the labels and tables in sight.
void inspect_minus(const QWidget* front, std::vector<std::string>& faults);

}  // namespace play

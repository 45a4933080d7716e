// The inspector: what a demanding eye and a hand without a mouse would find wrong with the screen in front.
#pragma once

#include <QRect>
#include <QWidget>
#include <string>
#include <vector>

#include "play/hands.h"

namespace play {

// All faults of the screen, sheet or box in front, each with the object's name; none is fine. The focus is
// where it was.
std::vector<std::string> faults_of_screen(Hands& hands);

// What is inspected: the sheet in front, or the window when no sheet lies over it. Null when a menu or list
// is open.
QWidget* screen_in_front();
// A widget's place in the window.
QRect place_of(const QWidget* widget);
// Its object name, or that of the nearest around it.
std::string name_of(const QWidget* widget);

// Tab leads through everything that acts, right to left and top to bottom, is always seen, and comes back.
void inspect_focus(QWidget* front, Hands& hands, std::vector<std::string>& faults);
// No two things of the screen answer the same Alt key.
void inspect_mnemonics(const QWidget* front, std::vector<std::string>& faults);
// Texts have the contrast of 4.5:1 that small writing needs.
void inspect_contrast(QWidget* front, std::vector<std::string>& faults);
// No caption, heading or figure is cut off, nothing hangs over the edge, an empty table says so.
void inspect_room(const QWidget* front, std::vector<std::string>& faults);

}  // namespace play

// One dress for every screen: font, direction, colours and measures.
#pragma once

#include <QSize>
#include <QString>

class QApplication;
class QWidget;

namespace ui {

// Sets direction, font and style sheet. Measures grow with the screen, so that a picture of the screen looks
// the same at 1366×768 and at 4K; they never shrink below those of 1366×768.
void dress(QApplication& application, const QSize& screen);

// The style sheet for measures of that many pixels each.
QString style_sheet(double unit);

// A measure of the 1366×768 screen in pixels of this one.
int px(double measure);

// Gives a widget the named part in the style sheet ("caption", "figure", "cap" ...), and lets it be drawn
// anew.
void set_role(QWidget* widget, const char* role);

}  // namespace ui

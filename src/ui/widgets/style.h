// The style of every screen: font, direction, colours and measures.
#pragma once

#include <QSize>
#include <QString>

class QApplication;
class QWidget;

namespace ui {

// Sets direction, font and style sheet. Measures grow with the screen, so that a picture of the screen looks
// the same at 1366×768 and at 4K; they never shrink below those of 1366×768.
void apply_style(QApplication& application, const QSize& screen);

// The style sheet with each measure scaled to `unit` pixels.
QString style_sheet(double unit);

// A measure of the 1366×768 screen in pixels of this one.
int px(double measure);

// Gives a widget a role of the style sheet ("caption", "figure", "cap" ...).
void set_role(QWidget* widget, const char* role);
// Sets a dynamic property that the style sheet tests, and styles the widget and its labels again.
void set_state(QWidget* widget, const char* property, bool value);

}  // namespace ui

// Which part of the guide belongs to which screen, or part of a screen.
#pragma once

#include <QString>
#include <utility>
#include <vector>

class QWidget;

namespace ui {

// Object names and the anchors of the guide; an inner part of a screen stands beside the screen itself.
const std::vector<std::pair<QString, QString>>& help_places();
// The anchor for the widget in use: its own, or that of the part or screen it stands on; empty when no part
// of the guide belongs to it.
QString help_place_of(const QWidget* widget);

}  // namespace ui

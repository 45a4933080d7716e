// How the help is opened: its key is the same on every screen, and each screen has its part of the guide.
#pragma once

#include <QObject>
#include <QString>
#include <utility>
#include <vector>

#include "ui/help/guide.h"

class QWidget;

namespace ui {

// The key as screens show it.
inline constexpr auto help_cap = "Ctrl H";

// Object names of screens and of parts of screens, each with the anchor of the guide that explains it.
const std::vector<std::pair<QString, QString>>& help_places(Guide guide);
// The anchor for a widget: its own, or that of the part or screen around it; empty if the guide has none.
QString help_place_of(Guide guide, const QWidget* widget);

// Opens the help at the part of the program's guide that belongs to the screen in front. Returns when the
// help is left, with the cursor where it was. Does nothing over a box, because that must be answered first.
void open_help();

// Opens the help by its key as long as the object lives; the guide is the program's from now on.
class HelpKey : public QObject {
    Q_OBJECT
  public:
    explicit HelpKey(Guide guide);
    ~HelpKey() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace ui

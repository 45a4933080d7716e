// How the help is asked for: its key, which is the same on every screen.
#pragma once

#include <QObject>

namespace ui {

// The key as screens show it.
inline constexpr auto help_cap = "Ctrl H";

// Opens the help at the part of the guide that belongs to the screen in front, and returns when it was left;
// the cursor then stands where it stood. Not over a box, which wants its answer first.
void open_help();

// Listens for the key as long as it lives.
class HelpKey : public QObject {
    Q_OBJECT
  public:
    explicit HelpKey(QObject* parent = nullptr);
    ~HelpKey() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace ui

// When a search that follows the typing is answered: once the typing pauses, so that no letter waits for it.
#pragma once

#include <QTimer>
#include <functional>

namespace ui {

class SearchPause {
  public:
    explicit SearchPause(std::function<void()> search);

    // After each letter.
    void begin();
    // Before a key or button that takes what was found: answers the letters that still wait.
    void end();
    // Answers at once.
    void search();

  private:
    std::function<void()> search_;
    QTimer timer_;
};

}  // namespace ui

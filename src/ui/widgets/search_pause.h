// Decides when a search that follows the typing is answered: once the typing pauses, so that no letter waits
// for it. A search that takes milliseconds needs only a pause that is longer than the gaps in a scanner's
// burst.
#pragma once

#include <QTimer>
#include <functional>

namespace ui {

class SearchPause {
  public:
    explicit SearchPause(std::function<void()> search);

    static constexpr int typing_ms = 100;
    static constexpr int quick_ms = 10;
    static constexpr int burst_ms = 40;
    // After each letter: the time in which another may come.
    void begin(int milliseconds = typing_ms);
    bool is_waiting() const { return timer_.isActive(); }
    // Before a key or button that takes what was found: answers the letters that still wait.
    void end();
    // Forgets the letters that wait.
    void cancel() { timer_.stop(); }
    // Answers at once.
    void search();

  private:
    std::function<void()> search_;
    QTimer timer_;
};

}  // namespace ui

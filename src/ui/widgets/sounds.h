// Sounds for what a cashier does without looking at the screen: an item was taken, something was refused, a
// question was asked.
#pragma once

#include <QObject>
#include <memory>

namespace ui {

struct ScreenChoice;

enum class Sound { taken, refused, question };

// Plays them if the workstation chose so. It notices boxes by itself. A thread of its own makes the tones and
// waits for the sound card, so that no key waits for it; if sounds come faster than it plays them, only the
// last one is played. A machine without sound stays silent.
class Sounds : public QObject {
    Q_OBJECT
  public:
    explicit Sounds(const ScreenChoice& choice);
    ~Sounds() override;

    void play(Sound sound);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Shared;
    const ScreenChoice& choice_;
    std::shared_ptr<Shared> shared_;  // with the thread, once there was a sound
};

}  // namespace ui

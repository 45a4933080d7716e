// The frame of a training: a striped border with the word around every window. No screen covers it.
#pragma once

#include <QObject>

namespace ui {

// Frames the windows that are shown as long as it lives.
class TrainingFrame : public QObject {
    Q_OBJECT
  public:
    TrainingFrame();
    ~TrainingFrame() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace ui

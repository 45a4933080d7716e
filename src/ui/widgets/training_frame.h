// The frame of a training: a striped border and the word around every window, which no screen covers.
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

// A text receipt as the paper would look.
#pragma once

#include <QImage>

#include "ui/widgets/sheet.h"

class QScrollArea;

namespace ui {

class PaperSheet : public Sheet {
    Q_OBJECT
  public:
    PaperSheet(QWidget* host, const QString& title, const QImage& paper);

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QScrollArea* area_;
};

}  // namespace ui

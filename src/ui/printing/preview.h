// Pages shown on the screen before they are printed.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "printing/pages/page_set.h"

class QLabel;
class QScrollArea;

namespace printing::pages {

// Zoom by "+" and "−" (also Ctrl and the wheel), "0" fits the width, Enter prints, Esc closes. Printing is
// done by the function that is given; the preview closes when it answers true.
class Preview final : public QDialog {
  public:
    Preview(std::shared_ptr<const PageSet> pages, std::function<bool()> print, QWidget* parent = nullptr);

    // Shows it until it is closed; the window that was worked in before then has the keys again.
    void run();
    double zoom() const { return zoom_; }
    void set_zoom(double zoom);
    void fit_width();
    void print();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void draw();

    std::shared_ptr<const PageSet> pages_;
    std::function<bool()> print_;
    double zoom_ = 1;  // 1 is the paper's own size
    QScrollArea* view_ = nullptr;
    QLabel* paper_ = nullptr;
    QLabel* zoom_label_ = nullptr;
};

}  // namespace printing::pages

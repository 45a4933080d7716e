// Pages shown on the screen before they are printed.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "printing/pages/page_set.h"

class QLabel;
class QScrollArea;

namespace ui {

// "+" and "−" zoom (also Ctrl and the wheel), "0" fits the width, Enter prints, Esc closes. The preview
// closes when `print` returns true.
class PreviewDialog final : public QDialog {
  public:
    PreviewDialog(std::shared_ptr<const printing::pages::PageSet> pages, std::function<bool()> print);

    // Shows it until it is closed. The window that was active before then gets the focus back.
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

    std::shared_ptr<const printing::pages::PageSet> pages_;
    std::function<bool()> print_;
    double zoom_ = 1;  // 1 is the paper's own size
    QScrollArea* view_ = nullptr;
    QLabel* paper_ = nullptr;
    QLabel* zoom_label_ = nullptr;
};

// Shows the pages in a preview until it is closed, and prints them with `print` on demand.
void show_preview(std::shared_ptr<const printing::pages::PageSet> pages, std::function<bool()> print);

}  // namespace ui

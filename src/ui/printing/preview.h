// Pages shown on the screen before they are printed, and how far a long print has come.
#pragma once

#include <functional>
#include <memory>

#include "printing/pages/page_set.h"
#include "ui/widgets/sheet.h"

class QLabel;
class QScrollArea;

namespace ui {

// "+" and "−" zoom (also Ctrl and the wheel), "0" fits the width, the arrows move the paper, Enter prints,
// Esc closes. The preview closes when `print` returns true.
class PreviewDialog final : public Sheet {
  public:
    PreviewDialog(QWidget* host, std::shared_ptr<const printing::pages::PageSet> pages,
                  std::function<bool()> print);

    double zoom() const { return zoom_; }
    void set_zoom(double zoom);
    void fit_width();
    void print();

  protected:
    void take_focus() override { setFocus(); }
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void build_bar();
    void show_zoom(double zoom);

    std::shared_ptr<const printing::pages::PageSet> pages_;
    std::function<bool()> print_;
    double zoom_ = 1;   // 1 is the paper's own size
    bool fits_ = true;  // the width of the view, whatever it becomes
    QScrollArea* view_ = nullptr;
    QWidget* paper_ = nullptr;
    QLabel* zoom_label_ = nullptr;
};

// Shows the pages in a preview until it is closed, and prints them with `print` on demand.
void show_preview(std::shared_ptr<const printing::pages::PageSet> pages, std::function<bool()> print);

}  // namespace ui

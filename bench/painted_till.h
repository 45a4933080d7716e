// The real sales screen on the measured shop, off screen: keys go in, painted pixels come out.
#pragma once

#include <QString>
#include <memory>
#include <string>

#include "bench/till.h"

class QWidget;
namespace ui {
class SalesWindow;
struct Context;
}  // namespace ui

namespace bench {

void press(QWidget& widget, int key, const QString& text = {},
           Qt::KeyboardModifiers modifiers = Qt::NoModifier);

// Lays out and paints all changes into the window's memory at once, without waiting for the next frame.
void paint(QWidget& window);

class PaintedTill {
  public:
    explicit PaintedTill(Till& till);
    ~PaintedTill();

    // Types the next code into the entry field, on an invoice of at most 40 lines; not timed.
    void type_code();
    // Presses Enter and waits for the painted line.
    void enter_and_paint();
    // Opens the search panel and types a name. Returns the milliseconds from the key that starts the search
    // to the painted list, without the pause in which the panel waits for further typing.
    double search_and_paint(const std::string& name);

    // Types words into the entry field. Returns the milliseconds from the last letter to the painted list
    // of matches.
    double match_and_paint(const std::string& words);

    ui::SalesWindow& window();
    const ui::Context& context() const;
    void paint();

  private:
    struct Parts;
    // Gives the entry field the focus.
    void activate();
    void clear();
    std::size_t lines() const;
    std::unique_ptr<Parts> parts_;
    const Sizes& sizes_;
    std::int64_t next_ = 0;
    unsigned long long typed_at_ = 0;
};

}  // namespace bench

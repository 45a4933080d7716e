// The real sales screen on the measured shop, off screen: keys go in, painted pixels come out.
#pragma once

#include <memory>

#include "bench/till.h"

namespace bench {

class PaintedTill {
  public:
    explicit PaintedTill(Till& till);
    ~PaintedTill();

    // Types an item code into the entry field; not timed.
    void type_code();
    // Enter, and everything up to the painted line.
    void enter_and_paint();
    // Rings up, pays and saves a sale of some lines by key.
    void sell(int lines);
    std::size_t lines() const;
    void clear();

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
    int next_item_ = 1;
};

}  // namespace bench

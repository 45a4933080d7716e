// How logic speaks to the cashier; screens show boxes, tests remember what was said.
#pragma once

#include <string_view>

namespace common {

enum class Icon { none, information, question, exclamation, critical };

class Prompts {
  public:
    virtual ~Prompts() = default;
    // A box with one button; returns when it was dismissed.
    virtual void message(std::string_view text, Icon icon = Icon::none) = 0;
    // A Yes/No box; true for Yes. Closing it counts as No.
    virtual bool question(std::string_view text, Icon icon = Icon::question) = 0;
};

}  // namespace common

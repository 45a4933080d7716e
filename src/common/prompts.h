// Message boxes. Screens show them; tests remember them.
#pragma once

#include <string_view>

namespace common {

enum class Icon { none, information, question, exclamation, critical };

class Prompts {
  public:
    virtual ~Prompts() = default;
    // Shows a box with one button and returns when it is closed.
    virtual void message(std::string_view text, Icon icon = Icon::none) = 0;
    // Shows a Yes/No box. Returns true for Yes; closing the box counts as No.
    virtual bool question(std::string_view text, Icon icon = Icon::question) = 0;
};

}  // namespace common

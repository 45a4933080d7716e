// Message boxes. Screens show them; tests remember them.
#pragma once

#include <string_view>

namespace common {

enum class Icon { none, information, question, exclamation, critical };

// The answer to a Yes/No box, which may also be closed without one.
enum class Answer { yes, no, closed };

class Prompts {
  public:
    virtual ~Prompts() = default;
    // Shows a box with one button and returns when it is closed.
    virtual void message(std::string_view text, Icon icon = Icon::none) = 0;
    virtual Answer ask(std::string_view text, Icon icon = Icon::question) = 0;
    // The same where closing the box counts as No. Returns true for Yes.
    bool question(std::string_view text, Icon icon = Icon::question) {
        return ask(text, icon) == Answer::yes;
    }
};

}  // namespace common

// Message boxes. Screens show them; tests remember them.
#pragma once

#include <string_view>

namespace common {

enum class Icon { none, information, question, exclamation, critical };

// The answer to a box with two buttons. The box may also be closed without an answer.
enum class Answer { yes, no, closed };

// The captions of such a box's buttons. Enter presses the first one, or the second if the icon warns.
struct Choices {
    std::string_view yes = "نعم";  // yes
    std::string_view no = "لا";    // no
};

class Prompts {
  public:
    virtual ~Prompts() = default;
    // Shows a box with one button and returns when it is closed.
    virtual void message(std::string_view text, Icon icon = Icon::none) = 0;
    virtual Answer choose(std::string_view text, const Choices& choices, Icon icon) = 0;
    Answer ask(std::string_view text, Icon icon = Icon::question) { return choose(text, {}, icon); }
    // The same where closing the box counts as No. Returns true for Yes.
    bool question(std::string_view text, Icon icon = Icon::question) {
        return ask(text, icon) == Answer::yes;
    }
};

}  // namespace common

#include "ui/widgets/screen_choice.h"

#include <string>

#include "common/named_values.h"

namespace ui {

namespace {

struct Kept {
    const char* name;
    const char* value;
    bool ScreenChoice::*member;
};
constexpr Kept kept[] = {{"rows", "compact", &ScreenChoice::compact_rows},
                         {"keypad", "on", &ScreenChoice::keypad},
                         {"sounds", "on", &ScreenChoice::sounds}};

}  // namespace

ScreenChoice read_screen_choice(const std::filesystem::path& file) {
    const common::NamedValues values = common::read_named_values(file);
    ScreenChoice choice;
    for (const Kept& one : kept) {
        const auto found = values.find(one.name);
        choice.*one.member = found != values.end() && found->second == one.value;
    }
    return choice;
}

void keep_screen_choice(const std::filesystem::path& file, const ScreenChoice& choice) {
    common::NamedValues values;
    for (const Kept& one : kept) {
        if (choice.*one.member) values[one.name] = one.value;
    }
    common::keep_named_values(file, values);
}

}  // namespace ui

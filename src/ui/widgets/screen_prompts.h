// Messages and questions of the logic, shown as boxes over whatever screen is in use.
#pragma once

#include "common/prompts.h"

namespace ui {

class ScreenPrompts final : public common::Prompts {
  public:
    void message(std::string_view text, common::Icon icon = common::Icon::none) override;
    bool question(std::string_view text, common::Icon icon = common::Icon::question) override;
};

}  // namespace ui

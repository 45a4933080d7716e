// A form whose fields are known only when it is built: values stand in the order of their descriptions.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "ui/widgets/form.h"

namespace ui {

// "Leave what you typed without saving it?"
inline constexpr std::string_view ask_drop = "لم تحفظ ما كتبته. هل تتركه؟";

class RecordForm : public FormFields {
  public:
    void add(std::span<const common::FieldDescription> fields, FieldGrid& grid) {
        for (const common::FieldDescription& field : fields) {
            build(field, grid);
            names_.push_back(field.name);
        }
    }
    void lead_on(QWidget* last) { FormFields::lead_on(names_, last); }
    void show(const std::vector<common::FieldValue>& values) {
        for (std::size_t i = 0; i < names_.size(); ++i)
            show_value(names_[i], values[i]);
    }
    // Takes over the typed values. Refuses an invalid date or a name that is not in its list; all values then
    // stay as they were.
    std::optional<common::Refusal> read(std::vector<common::FieldValue>& values) const {
        std::vector<common::FieldValue> typed;
        for (const std::string_view name : names_) {
            auto value = read_value(name);
            if (!value) return refusal_of(name);
            typed.push_back(std::move(*value));
        }
        values = std::move(typed);
        return std::nullopt;
    }

  private:
    std::vector<std::string_view> names_;
};

}  // namespace ui

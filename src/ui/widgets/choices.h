// Lists to choose from in their fields.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "common/choice.h"

class QComboBox;

namespace ui {

// Replaces the entries; chosen is the one of the code, or none.
void fill_choices(QComboBox* list, const std::vector<common::Choice>& choices,
                  std::optional<std::int64_t> chosen);

// The chosen code, of which 0 is one like any other; nothing when none is chosen. A name typed in full counts
// as chosen.
std::optional<std::int64_t> choice_of(const QComboBox* list);

}  // namespace ui

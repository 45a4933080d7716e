// How well writing stands out from its ground.
#pragma once

class QColor;

namespace ui {

// Small writing is readable from this contrast on.
inline constexpr double readable_contrast = 4.5;

// The contrast of two colours by their relative luminance, from 1 to 21.
double contrast(const QColor& one, const QColor& other);

}  // namespace ui

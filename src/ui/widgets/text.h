// Text of the screens: its conversion from and to the UTF-8 of the rest of the program, and what all screens
// say, with its English meaning. Messages of a single screen are kept with the screen.
#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "common/messages.h"

namespace ui {

inline QString qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string utf8(const QString& text) {
    return text.toStdString();
}

namespace message {

inline constexpr std::string_view title = "Tallvex";

inline constexpr std::string_view ok = "موافق";  // OK

// The action did not succeed.
inline constexpr std::string_view failed = "لم تتم العملية";

}  // namespace message

}  // namespace ui

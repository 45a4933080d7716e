// The border between the screens' text and the program's: QString here, UTF-8 below.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace ui {

inline QString qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string utf8(const QString& text) {
    return text.toStdString();
}

}  // namespace ui

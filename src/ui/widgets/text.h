// Text of the screens: its conversion from and to the UTF-8 of the rest of the program, and what all screens
// say, with its English meaning. Messages of a single screen are kept with the screen.
#pragma once

#include <QString>
#include <QStringList>
#include <initializer_list>
#include <string>
#include <string_view>

#include "common/messages.h"
#include "common/wording.h"

namespace ui {

inline QString qt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string utf8(const QString& text) {
    return text.toStdString();
}

// A figure, a code or a moment among Arabic words: its characters run left to right, so a minus stands left
// of its number. In a ListTable such a cell is set as a figure. An empty text stays empty.
inline QString figure(const QString& text) {
    return text.isEmpty() ? text : "\u200e" + text;
}
inline bool is_figure(const QString& text) {
    return text.startsWith(QChar(0x200e));
}
inline QString figure(const std::string& text) {
    return figure(qt(text));
}
inline QString figure(qlonglong number) {
    return figure(QString::number(number));
}

// A sentence with figures in it. `label`, boxes and the cells of a ListTable do this by themselves.
inline QString sentence(const QString& text) {
    return text.contains('-') ? qt(common::with_minus_at_left(utf8(text))) : text;
}

// The headings of a table, or the cells of one of its rows; those in the columns `figures` are figures.
template <typename Texts>
QStringList text_list(const Texts& texts, std::initializer_list<int> figures = {}) {
    QStringList list;
    for (const auto& text : texts)
        list << qt(text);
    for (const int column : figures)
        list[column] = figure(list[column]);
    return list;
}

namespace message {

inline constexpr std::string_view title = "Tallvex";

inline constexpr std::string_view ok = "موافق";  // OK

// The action did not succeed.
inline constexpr std::string_view failed = "لم تتم العملية";

}  // namespace message

}  // namespace ui

// The colours of every screen, named for what they mean.
#pragma once

#include <QColor>
#include <cstdint>

namespace ui::colour {

inline constexpr auto night = "#16324a";  // the head of a screen, a chosen option
inline constexpr auto net = "#0f2536";    // behind the net figure
inline constexpr auto ink = "#16202b";    // text
inline constexpr auto slate = "#33475a";  // headings, key caps
inline constexpr auto quiet = "#506070";  // captions above figures
inline constexpr auto hint = "#63717e";   // text of an empty field
inline constexpr auto off = "#566370";    // text of what cannot be chosen now
inline constexpr auto still = "#eef1f4";  // behind what cannot be chosen now
inline constexpr auto paper = "#ffffff";
inline constexpr auto background = "#eef1f4";  // behind everything
inline constexpr auto strip = "#dfe6ec";       // key strip, table heading
inline constexpr auto cap = "#e3e9ef";         // a key cap
inline constexpr auto line = "#d4dbe2";
inline constexpr auto edge = "#b9c4ce";     // the edge of a field or button
inline constexpr auto focus = "#1c6fb8";    // the focus, the chosen payment, the main action
inline constexpr auto lit = "#ffd21f";      // the focus on a dark background
inline constexpr auto current = "#cfe3f5";  // the current row
inline constexpr auto save = "#1a7d47";
inline constexpr auto alarm = "#b3261e";
inline constexpr auto warning = "#a86200";
inline constexpr auto training = "#ffb300";  // the frame of a training

// From a colour written 0xBBGGRR, as the logic gives them.
inline QColor from_blue_first(std::uint32_t colour) {
    return {static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
            static_cast<int>(colour >> 16 & 0xFF)};
}

// The bar beside the kind label, readable from two metres.
inline constexpr auto sale_bar = "#e0b400";
inline constexpr auto return_bar = "#1d8a4e";
inline constexpr auto third_bar = "#d9730d";

}  // namespace ui::colour

namespace ui {

// The contrast from which small text is readable.
inline constexpr double readable_contrast = 4.5;

// The contrast of two colours by their relative luminance, from 1 to 21.
double contrast(const QColor& one, const QColor& other);

}  // namespace ui

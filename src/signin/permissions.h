// The permission positions that guard an action, each with the action it guards. Positions that are not named
// here guard nothing.
#pragma once

#include <cstdint>

namespace signin::permission {

inline constexpr int return_kind = 161;         // the return and the third kind
inline constexpr int sell_below_stock_a = 216;  // any of the three allows selling below stock
inline constexpr int sell_below_stock_b = 286;
inline constexpr int sell_below_stock_c = 281;
inline constexpr int reprint = 221;
inline constexpr std::int64_t open_drawer = 231;
inline constexpr int item_info = 246;
inline constexpr int edit_price = 251;
inline constexpr int daily_statement = 256;
inline constexpr int edit_discount = 271;
inline constexpr int sell_reserved = 291;
inline constexpr int discount_above_ceiling = 301;

}  // namespace signin::permission

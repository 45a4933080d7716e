// What each kind and payment option shows and allows: captions, colours, codes.
#pragma once

#include <cstdint>
#include <string_view>

#include "sales/invoice.h"

namespace sales {

// Background of the line grid by kind, and of the cells that want the cashier's typing; 0xBBGGRR.
inline constexpr std::uint32_t colour_sale = 0xECFFFF;
inline constexpr std::uint32_t colour_return = 0xC0FFC0;
inline constexpr std::uint32_t colour_third = 0xC0E0FF;
inline constexpr std::uint32_t colour_editable_cell = 0x80FFFF;

std::uint32_t grid_colour(KindOption kind);

// The caption of the kind label: "بيع نقدي" cash sale, "بيع الي" account sale, "مرتجع نقدي" cash return,
// "مرتجع الي" account return. The third kind reads as a sale; card and tips read as cash.
std::string_view kind_caption(KindOption kind, PaymentOption payment);

// "آجل" account, "نقدي" cash, "بطاقة إئتمان" credit card, "أكراميات" tips.
std::string_view payment_caption(PaymentOption payment);

// Card and tips are for sales only.
bool payment_enabled(PaymentOption payment, KindOption kind);

// The payment that remains when the kind is switched: a card gives way to account, tips to cash.
PaymentOption payment_after_switch(PaymentOption payment, KindOption kind);

// The headings of the screen's three grids; hidden columns have none.
std::string_view line_heading(int column);
inline constexpr std::string_view search_headings[] = {"كود",     "الاسم",  "المجموعة",
                                                       "س قطاعي", "س جملة", "كمية"};
inline constexpr std::string_view shift_headings[] = {"رقم", "بداية", "نهاية"};

// The price-level options in their order, levels 2 to 5: retail, wholesale, and the two further ones.
inline constexpr std::string_view price_level_captions[] = {"قطاعي", "جملة", "سعر 4", "سعر 5"};

}  // namespace sales

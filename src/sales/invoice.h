// The invoice on the sales screen: header, lines, kinds and payments, as plain data with its sums.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/walk_in_customer.h"
#include "common/amount.h"
#include "common/date_time.h"
#include "sales/approvals.h"
#include "sales/invoice_key.h"

namespace sales {

// The type options of the screen, in their order.
enum class KindOption { sale = 0, return_ = 1, third = 2 };
// The payment options of the screen, in their order.
enum class PaymentOption { account = 0, cash = 1, card = 2, tips = 3 };

// sales.ctype of each kind option; ctype 1 is counted with sales everywhere and never written here.
int ctype_of(KindOption kind);
// sales.stype of each payment option: 0 account and cash, 1 card, 2 tips.
int stype_of(PaymentOption payment);
// The options that a saved invoice or offer was rung up with. An account customer makes it an account
// invoice; the others are cash, card or tips by their `stype`.
KindOption kind_of(std::int64_t ctype);
PaymentOption payment_of(std::int64_t vcode, std::int64_t stype);

// The line grid's columns. Column 0 is the line number; 9 and up are hidden except the balance.
namespace column {
inline constexpr int number = 0;
inline constexpr int code = 1;
inline constexpr int name = 2;
inline constexpr int group = 3;
inline constexpr int quantity = 4;
inline constexpr int price = 5;
inline constexpr int discount_value = 6;
inline constexpr int discount_percent = 7;
inline constexpr int total = 8;
inline constexpr int unit_factor = 9;   // base units in the chosen unit
inline constexpr int unit_code = 10;    // 1 unit, 2 pack, 3 carton; saved as scode
inline constexpr int salver_code = 11;  // craftsman work line
inline constexpr int unit_name = 12;
inline constexpr int source_kind = 13;  // 1 from the selling store, 3 supplied from another store
inline constexpr int source_store = 14;
inline constexpr int clearance = 15;  // "1" on a clearance item: no discounts
inline constexpr int expiry = 16;     // batch date of a line taken over from a recalled invoice
inline constexpr int balance = 17;
inline constexpr int stock_kept = 18;  // "1" when the item's quantities are kept in stock
inline constexpr int unit_cost = 19;
inline constexpr int returnable = 20;  // most that may be returned on this line, in its unit; empty: no limit
inline constexpr int count = 25;
}  // namespace column

// Prices keep their decimals, and binary numbers do not hold them exactly.
inline bool is_same_price(double one, double other) {
    return std::abs(one - other) < 1e-6;
}
// How far two discounts may differ if each is rounded to piastres.
inline constexpr double two_roundings = 0.015;

enum class SourceKind { selling_store = 1, other_store = 3 };

// A discount in percent of the amount that it is taken off; 0 if the amount is 0.
inline double percent_of(double discount, double amount) {
    return amount == 0 ? 0 : discount * 100 / amount;
}

// What a line may hold without a right of its own: what it was entered at, saved at or offered at.
struct Granted {
    double quantity = std::numeric_limits<double>::infinity();  // at most, in the line's unit
    double price = 0;
    double discount = 0;  // for that quantity

    bool operator==(const Granted&) const = default;
};

struct Line {
    std::optional<std::int64_t> item_code;  // none for a general item
    std::string name;
    std::string group;
    double quantity = 0;  // in the chosen unit
    double price = 0;     // per chosen unit
    double discount = 0;  // a value
    double factor = 1;    // base units in the chosen unit
    int unit_code = 1;
    std::string unit_name;
    std::int64_t salver_code = 0;  // 0: no craftsman line
    double unit_cost = 0;
    std::optional<double> balance;  // stock shown at entry, in the chosen unit
    bool stock_kept = false;
    bool clearance = false;
    bool below_stock = false;  // the cashier confirmed the sale below stock, with the right to do so
    bool dates_checked =
        false;            // the dates on its goods were looked at, and the cashier asked about old ones
    bool marked = false;  // its discount cells are coloured: loaded from an offer
    SourceKind source_kind = SourceKind::selling_store;
    std::int64_t source_store = 0;
    std::optional<common::Date> expiry;
    // On a return that was started from a sale: the most that may be returned, and what the sale's line held,
    // with its share of a discount that the sale gave on the whole.
    std::optional<double> returnable;
    double sold_quantity = 0;
    double sold_discount = 0;
    std::optional<Granted> granted;  // none for a general item, whose price the cashier types
    Approvals approvals;

    // The discount of a returned line follows the quantity: what is returned takes its share, and all returns
    // of the line together are worth what it was sold for, to the piastre. Other discounts stay.
    void set_quantity(double new_quantity);
    // Grants what the line holds now, as on a receipt or offer that was brought back.
    void grant_as_it_is() { granted = {quantity, price, discount}; }
    bool is_general() const { return !item_code.has_value(); }
    // Quantities of its item are kept in stock.
    bool moves_stock() const { return stock_kept && item_code.has_value(); }
    bool is_supplied() const { return source_kind == SourceKind::other_store; }
    // Another store that supplies the goods; 0 is the selling store.
    void set_supplier(std::int64_t store) {
        source_kind = store == 0 ? SourceKind::selling_store : SourceKind::other_store;
        source_store = store;
    }
    double gross() const { return quantity * price; }
    // Rounded here once, so that the lines shown add up to the total shown.
    common::Amount total() const { return common::Amount(gross() - discount); }
    common::Amount cost() const { return common::Amount(quantity * unit_cost); }
    double discount_percent() const { return percent_of(discount, gross()); }
    double base_quantity() const { return quantity * factor; }

    // The 25 cells as the grid shows and offers store them, and back. Non-numbers count as 0.
    std::array<std::string, column::count> cells(int number) const;
    static Line from_cells(const std::array<std::string, column::count>& cells);

    bool operator==(const Line&) const = default;
};

// The sale that a return was started from. If another program wrote the return, only the number is known.
struct OriginalSale {
    std::int64_t number = 0;
    std::optional<InvoiceIdentity> identity;
};

struct CardPayment {
    std::int64_t bank_code = 0;
    std::string holder;     // credit_name
    std::string reference;  // ref_no
};

using accounts::WalkInCustomer;

struct Invoice {
    KindOption kind = KindOption::sale;
    PaymentOption payment = PaymentOption::cash;
    int price_level = 2;  // 2 retail, 3 wholesale, 4, 5
    std::int64_t number = 0;
    common::Date date;
    std::int64_t store = 0;

    std::int64_t customer = walk_in_customer;  // custdata.ccode of an account invoice
    std::string customer_name;
    std::optional<WalkInCustomer> walk_in;
    std::int64_t tips_receiver = 0;  // boundata.ccode
    CardPayment card;
    bool permit_opened = false;
    std::string permit_number;
    std::int64_t worker = 0;
    std::string worker_name;
    std::string note;
    bool suppress_receipt = false;  // the cashier wants no layout receipt for this sale
    std::optional<OriginalSale> original;

    std::vector<Line> lines;
    Approvals approvals;          // of the return, and of the discount above the ceiling
    double discount_percent = 0;  // of the whole invoice; the value follows the lines
    double granted_percent = 0;   // of the receipt or offer that it comes from, for its lines as they were

    // Account invoices have no walk-in customer, even if his data were typed.
    bool has_walk_in() const { return walk_in.has_value() && payment != PaymentOption::account; }
    // An account invoice whose customer is not chosen yet can be neither saved nor kept as an offer.
    bool lacks_customer() const { return payment == PaymentOption::account && customer == walk_in_customer; }
    bool is_return() const { return kind != KindOption::sale; }
    std::optional<std::size_t> first_row() const {
        return lines.empty() ? std::nullopt : std::optional<std::size_t>(0);
    }
    // The cells of a line as the grid shows it.
    std::array<std::string, column::count> cells(std::size_t row) const {
        return lines[row].cells(static_cast<int>(row) + 1);
    }
    // The store that a line's goods come from.
    std::int64_t source_of(const Line& line) const { return line.is_supplied() ? line.source_store : store; }
    // Makes a store the selling one. Lines that it was to supply no longer need a transfer.
    void sell_from(std::int64_t new_store);
    // sales.vcode: the account customer, else the walk-in customer.
    std::int64_t vcode() const { return payment == PaymentOption::account ? customer : walk_in_customer; }
    common::Amount total() const;  // Σ line totals
    common::Amount discount() const { return common::Amount(total().value() * discount_percent / 100); }
    common::Amount net() const { return total() - discount(); }
    common::Amount cost() const;  // Σ line costs
    // Sets an invoice discount that is known as a value.
    void set_discount(double value);
    // Grants what the invoice holds now, as on a receipt or offer that was brought back.
    void grant_as_it_is();
};

// --- what kinds, payments and columns are called ----------------------------------------------------

// The backgrounds of the cells that wait for the cashier, and of the line grid by kind; 0xBBGGRR.
inline constexpr std::uint32_t colour_editable_cell = 0x80FFFF;
std::uint32_t grid_colour(KindOption kind);

// The caption of the kind label: "بيع نقدي" cash sale, "بيع الي" account sale, "مرتجع نقدي" cash return,
// "مرتجع الي" account return. The third kind has the captions of a sale; card and tips have those of cash.
std::string_view kind_caption(KindOption kind, PaymentOption payment);

// Whether money is counted at the drawer: the payment dialog opens, and the drawer after the save.
bool moves_cash(PaymentOption payment);
// "آجل" account, "نقدي" cash, "بطاقة إئتمان" credit card, "أكراميات" tips.
std::string_view payment_caption(PaymentOption payment);

// Card and tips are for sales only.
bool payment_enabled(PaymentOption payment, KindOption kind);

// The payment after the kind is switched: on a return, card becomes account and tips become cash.
PaymentOption payment_after_switch(PaymentOption payment, KindOption kind);

// The headings of the screen's three grids; hidden columns have none.
std::string_view line_heading(int column);
inline constexpr std::string_view search_headings[] = {"كود",     "الاسم",  "المجموعة",
                                                       "س قطاعي", "س جملة", "كمية"};
inline constexpr std::string_view shift_headings[] = {"رقم", "بداية", "نهاية"};

// The price-level options in their order, levels 2 to 5: retail, wholesale, and the two further ones.
inline constexpr std::string_view price_level_captions[] = {"قطاعي", "جملة", "سعر 4", "سعر 5"};

}  // namespace sales

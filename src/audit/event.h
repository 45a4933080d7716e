// What the till's journal records: an event, its kind, and the names of the kinds.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "common/amount.h"

namespace audit {

enum class Kind {
    sign_in,
    sign_in_refused,
    line_deleted,
    quantity_lowered,
    unit_changed,
    invoice_cancelled,
    invoice_held,
    invoice_resumed,
    price_changed,
    discount,
    approval,
    refusal,
    drawer_opened,
    reprint,
    return_saved,
    count,
    shift_changed,
    // In the office.
    item_changed,
    prices_changed,
    goods_received,
    goods_returned,
    stock_counted,
    goods_written_off,
    list_changed,
    user_changed,
    setting_changed,
    day_closed,
};

// The stored name of a kind, and its caption in the list.
struct KindName {
    Kind kind;
    std::string_view stored;
    std::string_view caption;
};
std::span<const KindName> kinds();
const KindName& name_of(Kind kind);
// The caption of a stored kind; one of a later version is shown as it is stored.
std::string_view caption_of(std::string_view stored);

// A user with his name at that time.
struct Person {
    std::int64_t code = 0;
    std::string name;
    bool operator==(const Person&) const = default;
};

struct Event {
    Kind kind{};
    std::string what = {};                      // for people; cut to 400 characters
    std::optional<common::Amount> amount = {};  // the money involved
    std::optional<std::int64_t> item = {};      // items.code
    std::optional<std::int64_t> invoice = {};   // its number
    std::optional<Person> approver = {};        // who allowed it, if not the user
};

}  // namespace audit

// The card of an account customer: its fields, and the logic of the screen Form7ca.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/choice.h"
#include "common/form.h"
#include "common/refusal.h"
#include "database/connection.h"

namespace accounts {

struct CustomerCard {
    std::string number;
    std::string name;
    std::string address;
    std::string notes;
    std::string opening = "0.00";  // without its side
    bool is_credit = false;        // the shop owes the opening balance to the customer
    bool is_second_kind = false;
    std::string phone;
    std::string mobile;
    std::string second_name;
    std::string third_name;  // shown on receipts
    std::optional<std::int64_t> representative;
    std::optional<std::int64_t> country;
    std::optional<std::int64_t> governorate;
    std::optional<std::int64_t> centre;
    std::optional<std::int64_t> district;
    std::string group;
    std::optional<std::int64_t> price_class;
    bool takes_unsettled = false;  // may take delivery without settling the account
    bool pays_later = false;       // served without an advance payment
    bool has_guarantor = false;
    std::string id_number;
    std::string guarantor;
    std::string guarantor_id;
    std::string guarantor_phone;
};

common::FormTable<CustomerCard> customer_form();
// The fields that a card has only with a guarantor.
common::FormTable<CustomerCard> guarantor_form();

enum class CardMode { add, edit, view };

class AccountCustomer {
  public:
    explicit AccountCustomer(database::Connection& connection) : connection_(connection) {}

    // Reads the lists and the card; a new customer's has a free number that can be typed over. Refused if
    // there is no such customer.
    std::optional<common::Refusal> open(CardMode mode, std::int64_t code = 0);
    // Shows another customer's card in the same mode.
    std::optional<common::Refusal> show(std::int64_t code);
    std::string_view title() const;

    // The fields of the chained places, from the country down to the district.
    static constexpr std::array<std::string_view, 4> place_fields{"customer_country", "customer_governorate",
                                                                  "customer_centre", "customer_district"};
    // Choosing a place empties those below it and reads their lists again. Choosing the same place again
    // changes nothing.
    void choose_place(std::size_t level, std::optional<std::int64_t> code);
    const std::vector<common::Choice>& places(std::size_t level) const { return places_[level]; }
    // Filters the price classes by number or by a part of the name; a blank lists all. A single match is
    // chosen; among several, the class chosen before stays in the list. If none is found, it is refused and
    // nothing changes.
    std::optional<common::Refusal> search_classes(std::string_view text);

    // Writes the card, or nothing if it is refused.
    std::optional<common::Refusal> save();

    CustomerCard card;

    CardMode mode() const { return mode_; }
    // What the customer owes now; 0 for a new one.
    double balance() const { return balance_; }
    const std::vector<common::Choice>& customers() const { return customers_; }
    const std::vector<common::Choice>& representatives() const { return representatives_; }
    const std::vector<common::Choice>& price_classes() const { return price_classes_; }

  private:
    void load_lists();
    std::vector<common::Choice> find_classes(std::string_view wanted);
    void load_places(std::size_t level);
    std::optional<common::Refusal> check() const;
    std::optional<std::int64_t> highest_code() const;
    database::Connection& connection_;
    CardMode mode_ = CardMode::add;
    double balance_ = 0;
    std::vector<common::Choice> customers_;
    std::vector<common::Choice> representatives_;
    std::vector<common::Choice> price_classes_;
    std::array<std::vector<common::Choice>, 4> places_;
};

}  // namespace accounts

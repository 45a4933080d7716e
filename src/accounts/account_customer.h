// The logic of Form7ca: the card of an account customer.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "accounts/lists.h"
#include "common/services.h"
#include "database/connection.h"

namespace accounts {

// The fields of the card.
struct CustomerCard {
    std::string number;
    std::string name;
    std::string address;
    std::string notes;
    std::string opening = "0.00";  // without its side
    bool is_credit = false;  // the side "دائن": the customer has money with the shop; else "مدين"
    bool is_second_kind = false;
    std::string phone;
    std::string mobile;
    std::string second_name;  // bname
    std::string third_name;   // mname, shown on receipts
    std::optional<std::int64_t> representative;
    std::optional<std::int64_t> country;
    std::optional<std::int64_t> governorate;
    std::optional<std::int64_t> centre;
    std::optional<std::int64_t> district;
    std::string group;  // a number, or empty
    std::optional<std::int64_t> price_class;
    bool takes_unsettled = false;  // may take delivery without settling the account
    bool pays_later = false;       // served without an advance payment
    bool has_guarantor = false;    // with it the four below are kept
    std::string id_number;
    std::string guarantor;
    std::string guarantor_id;
    std::string guarantor_phone;
};

enum class CardMode { add, edit, view };

class AccountCustomer {
  public:
    AccountCustomer(database::Connection& connection, common::Services services)
        : connection_(connection), services_(services) {}

    // Reads the lists and, but for a new customer, the card. False with a message when there is no such
    // customer.
    bool open(CardMode mode, std::int64_t code = 0);
    // Shows another customer's card in the same mode.
    bool show(std::int64_t code);
    std::string_view title() const;

    // The chained places: each choice reloads the lists below it and empties their choices.
    void choose_country(std::optional<std::int64_t> code);
    void choose_governorate(std::optional<std::int64_t> code);
    void choose_centre(std::optional<std::int64_t> code);
    void choose_district(std::optional<std::int64_t> code) { card.district = code; }
    // Filters the price classes by number or by a part of the name; a blank lists all.
    void search_classes(std::string_view text);

    // Writes the card. True when it was written; otherwise a message was shown and nothing was.
    bool save();

    CustomerCard card;

    CardMode mode() const { return mode_; }
    // cacc of the customer shown; 0 for a new one.
    double balance() const { return balance_; }
    const std::vector<common::Choice>& customers() const { return customers_; }
    const std::vector<common::Choice>& representatives() const { return representatives_; }
    const std::vector<common::Choice>& price_classes() const { return price_classes_; }
    const std::vector<common::Choice>& countries() const { return countries_; }
    const std::vector<common::Choice>& governorates() const { return governorates_; }
    const std::vector<common::Choice>& centres() const { return centres_; }
    const std::vector<common::Choice>& districts() const { return districts_; }

  private:
    bool refuse(std::string_view text);
    bool texts_fit();
    void load_lists();
    database::Connection& connection_;
    common::Services services_;
    CardMode mode_ = CardMode::add;
    double balance_ = 0;
    std::vector<common::Choice> customers_;
    std::vector<common::Choice> representatives_;
    std::vector<common::Choice> price_classes_;
    std::vector<common::Choice> countries_;
    std::vector<common::Choice> governorates_;
    std::vector<common::Choice> centres_;
    std::vector<common::Choice> districts_;
};

}  // namespace accounts

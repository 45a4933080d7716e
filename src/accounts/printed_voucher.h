// A saved voucher as plain data for printing.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "common/date_time.h"

namespace accounts {

struct PrintedVoucher {
    std::string title;  // "ايصال استلام نقدية" ...
    std::string number;
    common::Date date;
    std::string party;
    double amount = 0;
    std::string words;   // the amount in words
    std::string method;  // "نقدي", "شيك" ...
    std::string place;   // the drawer or the bank
    std::string note;
    double balance_before = 0;
    double balance_after = 0;

    // Number, date, party, amount, words, method, place, note, balance before and after, with their captions.
    std::vector<std::pair<std::string, std::string>> captions() const;
};

}  // namespace accounts

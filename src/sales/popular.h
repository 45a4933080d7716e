// What this till sold most in the last weeks; a search shows it first. It is read once, while the cashier
// works, and kept in memory.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "common/date_time.h"
#include "database/connection.h"

namespace sales {

struct SoldItem {
    std::int64_t code = 0;
    std::string name;
    std::int64_t times = 0;  // on how many lines of sales
};

struct Days {
    common::Date first, last;
};
// The items that a till sold most often on these days.
std::vector<SoldItem> read_sold(database::Connection& connection, std::int64_t store, std::int64_t cash_point,
                                const Days& days);

class Popular {
  public:
    static constexpr int days_counted = 28;

    bool is_complete() const { return days_ >= days_counted; }
    // The next days to read, at most `days`, going back from `today`.
    Days next(const common::Date& today, int days) const;
    // Adds what was sold on those days.
    void add(const std::vector<SoldItem>& sold, int days);

    // The items that match all words, at most `limit`: first those in whose names every word begins a word,
    // and among equals what was sold more often.
    struct Found {
        std::vector<std::int64_t> codes;
        std::size_t beginning = 0;  // how many of them come first
    };
    Found matching(const std::vector<std::string>& words, std::size_t limit) const;

  private:
    struct Item {
        std::string folded;
        std::int64_t times = 0;
    };
    void rank();

    std::unordered_map<std::int64_t, Item> items_;
    std::vector<std::int64_t> ranked_;
    int days_ = 0;
};

}  // namespace sales

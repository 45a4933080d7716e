// Money: whole hundredths of the currency, added exactly.
#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace common {

class Amount {
  public:
    constexpr Amount() = default;
    // A computed value, rounded half away from zero: 2.675 is 2.68. The error that binary fractions leave
    // behind is removed first: 0.7 × 1.15 is 0.805 and so 0.81. Values that are not finite count as 0, those
    // beyond ±9e16 as that limit.
    explicit Amount(double computed);
    static constexpr Amount of_hundredths(std::int64_t hundredths) {
        Amount amount;
        amount.hundredths_ = hundredths;
        return amount;
    }

    constexpr std::int64_t hundredths() const { return hundredths_; }
    // The double nearest to the amount, as columns of the database hold it.
    double value() const { return static_cast<double>(hundredths_) / 100; }
    // "0.00", with "-" in front of amounts below zero.
    std::string text() const;

    constexpr bool is_zero() const { return hundredths_ == 0; }
    constexpr Amount operator-() const { return of_hundredths(-hundredths_); }
    constexpr Amount& operator+=(Amount other) {
        hundredths_ += other.hundredths_;
        return *this;
    }
    constexpr Amount& operator-=(Amount other) { return *this += -other; }
    friend constexpr Amount operator+(Amount a, Amount b) { return a += b; }
    friend constexpr Amount operator-(Amount a, Amount b) { return a -= b; }
    constexpr auto operator<=>(const Amount&) const = default;

  private:
    std::int64_t hundredths_ = 0;
};

}  // namespace common

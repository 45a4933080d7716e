#include "common/denominations.h"

#include <algorithm>
#include <map>

#include "common/text.h"
#include "common/typed.h"

namespace common {

namespace {

constexpr std::size_t most_denominations = 12;
// Nobody counts out more pieces than these for an amount on a button.
constexpr std::int64_t most_pieces = 20;

// A sum of notes that covers an amount, and the number of its pieces.
struct Handed {
    std::int64_t pieces = 0;
    Amount sum;
};

// Pays with notes above the one at `last` as far as they fit, and covers the rest with that one.
Handed hand_over(Amount net, const Denominations& denominations, std::size_t last) {
    Handed handed;
    std::int64_t left = net.hundredths();
    for (std::size_t at = 0; at <= last; ++at) {
        const std::int64_t value = denominations[at].hundredths();
        const std::int64_t pieces = at < last ? left / value : (left + value - 1) / value;
        handed.pieces += pieces;
        left -= pieces * value;
    }
    handed.sum = net - Amount::of_hundredths(left);
    return handed;
}

}  // namespace

const Denominations& default_denominations() {
    static const Denominations pound = *read_denominations("200 100 50 20 10 5 1 0.50 0.25");
    return pound;
}

std::optional<Denominations> read_denominations(std::string_view text) {
    Denominations values;
    for (std::string_view rest = trim(text); !rest.empty();) {
        const auto end = std::min(rest.find(' '), rest.size());
        const TypedAmount value = read_amount(rest.substr(0, end));
        if (!value.is_good() || number_fault(rest.substr(0, end)) != NumberFault::none ||
            value.value <= Amount())
            return std::nullopt;
        values.push_back(value.value);
        rest = trim(rest.substr(end));
    }
    std::sort(values.rbegin(), values.rend());
    values.erase(std::unique(values.begin(), values.end()), values.end());
    if (values.empty() || values.size() > most_denominations) return std::nullopt;
    return values;
}

std::string denomination_text(Amount denomination) {
    const bool whole = denomination.hundredths() % 100 == 0;
    return whole ? std::to_string(denomination.hundredths() / 100) : denomination.text();
}

std::string denominations_text(const Denominations& denominations) {
    std::string text;
    for (const Amount value : denominations)
        text += (text.empty() ? "" : " ") + denomination_text(value);
    return text;
}

std::vector<Amount> likely_payments(Amount net, const Denominations& denominations, std::size_t most) {
    if (net <= Amount()) return {};
    std::map<Amount, std::int64_t> fewest;  // pieces of each sum
    for (std::size_t last = 0; last < denominations.size(); ++last) {
        const Handed handed = hand_over(net, denominations, last);
        if (handed.sum == net || handed.pieces > most_pieces) continue;
        const auto known = fewest.try_emplace(handed.sum, handed.pieces).first;
        known->second = std::min(known->second, handed.pieces);
    }
    std::vector<std::pair<std::int64_t, Amount>> ranked;
    for (const auto& [sum, pieces] : fewest)
        ranked.emplace_back(pieces, sum);
    std::sort(ranked.begin(), ranked.end());
    if (ranked.size() > most) ranked.resize(most);
    std::vector<Amount> payments;
    for (const auto& [pieces, sum] : ranked)
        payments.push_back(sum);
    std::sort(payments.begin(), payments.end());
    return payments;
}

}  // namespace common

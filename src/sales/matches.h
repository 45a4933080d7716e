// The items that match words while they are typed: a short list, so that every letter is answered at once.
// The search with all filters is sales/search.h.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "database/connection.h"
#include "sales/popular.h"

namespace sales {

inline constexpr std::size_t most_matches = 30;

struct Match {
    std::int64_t code = 0;
    std::string name;
    // What the unit, the pack and the carton cost on the invoice; nothing where the item is not sold in it.
    std::array<std::optional<double>, 3> prices;
    std::optional<double> stock;  // of the selling store, in units; nothing if no stock is kept

    bool has_unit(int unit) const { return prices[static_cast<std::size_t>(unit) - 1].has_value(); }
    // The unit that is entered unless another is chosen.
    int first_unit() const;
};

// All that the answer depends on, so that it can be read in another thread.
struct MatchQuery {
    std::string typed;
    int price_level = 0;
    std::int64_t store = 0;
    Popular::Found popular = {};  // in the names that this till sells
    bool stopped_too = false;
};

// At most `most_matches` items whose names hold all words that were typed, in any order, without those that
// are stopped unless the query wants them too. Names in which each of them begins a word come first. Within
// both groups, what this till sells most comes first, then names that begin with what was typed.
std::vector<Match> match_items(database::Connection& connection, const MatchQuery& query);

struct Entry;

// Supplies the matches for a list that follows the typing.
class MatchSource {
  public:
    virtual ~MatchSource() = default;
    // The query for the text of an entry field, and its answer. The query has no words if the text is not a
    // search.
    virtual MatchQuery match_query(const Entry& entry) const = 0;
    virtual std::vector<Match> match(const MatchQuery& query) = 0;
    // What the till sells most; null if it is not counted. It is read in idle time.
    virtual Popular* popular() = 0;
};

}  // namespace sales

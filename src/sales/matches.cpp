#include "sales/matches.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "common/search.h"
#include "database/name_search.h"
#include "sales/items.h"
#include "sales/stock_check.h"

namespace sales {

using database::Row;
using database::Sql;

namespace {

// Collects cards until there are enough, and ranks them.
class Matching {
  public:
    Matching(database::Connection& connection, const MatchQuery& query)
        : connection_(connection), query_(query), words_(common::search_words(query.typed)) {}

    std::vector<Match> run() {
        if (words_.empty()) return {};
        read_popular();
        // Reading stops early, because a single letter matches thousands of names.
        if (query_.popular.beginning < most_matches)
            read(database::begins_with_typed("items.name", query_.typed), most_matches);
        if (cards_.size() < most_matches)
            read(database::contains_typed_words("items.name", query_.typed), most_matches + cards_.size());
        std::vector<Match> matches = ranked();
        read_stock(matches);
        return matches;
    }

  private:
    struct Card {
        Match match;
        bool keeps_stock = false;
        // Lower ranks come first: whether a typed word does not begin a word of the name, the place among
        // what sells most, whether the name begins with something else.
        std::tuple<bool, std::size_t, bool> rank;
    };

    void read_popular() {
        if (query_.popular.codes.empty()) return;
        Sql codes("items.code in (0");
        for (const std::int64_t code : query_.popular.codes)
            codes += Sql(", ") + code;
        read(codes + ")", query_.popular.codes.size());
    }

    void read(const Sql& condition, std::size_t limit) {
        Sql statement = Sql("SELECT top ") + limit + " " + item_cards + "where ";
        if (!query_.stopped_too) statement += "isnull(items.stop,0) = 0 and ";
        for (const Row& row : connection_.query(statement + condition))
            cards_.try_emplace(row.integer("code"), card_of(row));
    }

    Card card_of(const Row& row) const {
        Card card;
        for (int unit = 1; unit <= 3; ++unit) {
            const Item item = item_of(row, unit);
            const auto price = entry_price(item, query_.price_level);
            if (item.factor > 0 && price && *price > 0)
                card.match.prices[static_cast<std::size_t>(unit) - 1] = price;
            if (unit > 1) continue;
            card.match.code = item.code;
            card.match.name = item.name;
            card.keeps_stock = !item.sale_only;
        }
        const auto& popular = query_.popular.codes;
        const auto place = std::find(popular.begin(), popular.end(), card.match.code) - popular.begin();
        const std::string name = common::folded(card.match.name);
        card.rank = {!common::begins_words(name, words_), static_cast<std::size_t>(place),
                     !name.starts_with(words_.front())};
        return card;
    }

    std::vector<Match> ranked() {
        std::vector<const Card*> cards;
        for (const auto& [code, card] : cards_)
            cards.push_back(&card);
        std::sort(cards.begin(), cards.end(), [](const Card* one, const Card* other) {
            return std::tie(one->rank, one->match.name) < std::tie(other->rank, other->match.name);
        });
        cards.resize(std::min(cards.size(), most_matches));
        std::vector<Match> matches;
        for (const Card* card : cards) {
            matches.push_back(card->match);
            if (card->keeps_stock) matches.back().stock = 0;
        }
        return matches;
    }

    void read_stock(std::vector<Match>& matches) {
        Goods goods;
        for (const Match& match : matches)
            if (match.stock) goods[{match.code, query_.store}] = 0;
        if (goods.empty()) return;
        const Goods levels = stock_levels(connection_.query(levels_statement(goods)));
        for (Match& match : matches)
            if (const auto level = levels.find({match.code, query_.store});
                match.stock && level != levels.end())
                match.stock = level->second;
    }

    database::Connection& connection_;
    const MatchQuery& query_;
    std::vector<std::string> words_;
    std::map<std::int64_t, Card> cards_;
};

}  // namespace

int Match::first_unit() const {
    for (int unit = 1; unit <= 3; ++unit)
        if (has_unit(unit)) return unit;
    return 1;
}

std::vector<Match> match_items(database::Connection& connection, const MatchQuery& query) {
    return Matching(connection, query).run();
}

}  // namespace sales

#include "sales/popular.h"

#include <algorithm>

#include "common/search.h"

namespace sales {

using database::quoted;
using database::Sql;

namespace {

// More would cost memory, and the rank of an item that is sold once a month helps nobody.
constexpr std::size_t most_kept = 5000;

}  // namespace

std::vector<SoldItem> read_sold(database::Connection& connection, std::int64_t store, std::int64_t cash_point,
                                const Days& days) {
    std::vector<SoldItem> sold;
    for (const auto& row : connection.query(
             Sql("select top 5000 saledata.icode, items.name, count(*) as times from sales inner join "
                 "saledata on sales.pnum = saledata.pnum and sales.ctype = saledata.ctype and sales.stcode = "
                 "saledata.stcode and sales.[date] = saledata.[date] and sales.vcode = saledata.vcode inner "
                 "join items on saledata.icode = items.code where sales.stcode = ") +
             store + " and sales.[date] >= " + quoted(days.first) +
             " and sales.[date] <= " + quoted(days.last) + " and sales.ptype = " + cash_point +
             " and (sales.ctype = 0 or sales.ctype = 1) group by saledata.icode, items.name "
             "order by times desc"))
        sold.push_back({row.integer("icode"), row.text("name"), row.integer("times")});
    return sold;
}

Days Popular::next(const common::Date& today, int days) const {
    const common::Date last = common::add_days(today, -days_);
    return {common::add_days(last, 1 - days), last};
}

void Popular::add(const std::vector<SoldItem>& sold, int days) {
    days_ += days;
    for (const SoldItem& one : sold) {
        Item& item = items_[one.code];
        if (item.folded.empty()) item.folded = common::folded(one.name);
        item.times += one.times;
    }
    rank();
}

void Popular::rank() {
    std::vector<std::pair<std::int64_t, std::int64_t>> all;  // less comes first
    all.reserve(items_.size());
    for (const auto& [code, item] : items_)
        all.emplace_back(-item.times, code);
    const std::size_t kept = std::min(all.size(), most_kept);
    std::partial_sort(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(kept), all.end());
    ranked_.clear();
    for (std::size_t i = 0; i < kept; ++i)
        ranked_.push_back(all[i].second);
    for (std::size_t i = kept; is_complete() && i < all.size(); ++i)
        items_.erase(all[i].second);
}

Popular::Found Popular::matching(const std::vector<std::string>& words, std::size_t limit) const {
    Found found;
    std::vector<std::int64_t> inside;
    for (const std::int64_t code : ranked_) {
        const std::string& name = items_.at(code).folded;
        if (!common::contains_words(name, words)) continue;
        (common::begins_words(name, words) ? found.codes : inside).push_back(code);
        if (found.codes.size() == limit) break;
    }
    found.beginning = found.codes.size();
    inside.resize(std::min(inside.size(), limit - found.beginning));
    found.codes.insert(found.codes.end(), inside.begin(), inside.end());
    return found;
}

}  // namespace sales

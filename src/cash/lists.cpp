#include "cash/lists.h"

#include "common/numbers.h"
#include "common/text.h"

namespace cash {

using database::choices;
using database::Sql;

std::vector<common::Choice> load_main_headings(database::Connection& connection) {
    return choices(connection.query("select * from mainx"));
}

std::vector<common::Choice> load_sub_headings(database::Connection& connection, std::int64_t main_heading) {
    return choices(connection.query(Sql("select * from subx where mcode=") + main_heading));
}

std::optional<double> read_amount(std::string_view text) {
    if (common::trim(text).empty()) return 0;
    const auto value = common::parse_number(text);
    if (!value || *value < 0 || *value >= 1e9) return std::nullopt;
    return common::round_decimals(*value, 2);
}

}  // namespace cash

#include "sales/sale_period.h"

#include "database/reads.h"

namespace sales {

using database::Connection;
using database::quoted;
using database::Result;
using database::Sql;

Sql sale_period_statement(const common::Date& day) {
    return Sql("select * from sal_prd where sale_from <=") + quoted(day) + " and sale_to >= " + quoted(day);
}

std::optional<std::int64_t> sale_period_in(const Result& periods) {
    if (periods.empty()) return std::nullopt;
    return periods.front().integer("sale_no");
}

bool holds_period_prices(Connection& connection, std::optional<std::int64_t> period) {
    constexpr database::Fragment same =
        " and sale_price.icode = tmp_price.icode and isnull(sale_price.p_per,0) = tmp_price.p_per and "
        "isnull(sale_price.s_price,-1) = isnull(tmp_price.s_price,-1))";
    std::int64_t wrong = 0;
    const auto count = [&wrong](const Result& rows) {
        wrong += database::integer_of(database::first_cell(rows));
    };
    database::Reads reads;
    if (period) {
        reads.add(
            Sql("select count(*) from tmp_price where icode is not null and not exists (select icode from "
                "sale_price where sale_price.sale_prd = ") +
                *period + same,
            count);
        reads.add(Sql("select count(*) from sale_price where sale_prd = ") + *period +
                      " and icode is not null and not exists (select icode from tmp_price where "
                      "sale_price.sale_prd = " +
                      *period + same,
                  count);
    } else {
        reads.add("select count(*) from tmp_price", count);
    }
    reads.run(connection);
    return wrong == 0;
}

void fill_period_prices(Connection& connection, std::optional<std::int64_t> period) {
    std::vector<database::Command> commands = {Sql("begin transaction"), Sql("delete from tmp_price")};
    if (period) {
        commands.emplace_back(Sql("INSERT INTO tmp_price (icode,p_per,s_price) select "
                                  "icode,isnull(p_per,0),s_price from sale_price where sale_prd = ") +
                              *period);
    }
    commands.emplace_back(Sql("commit transaction"));
    connection.run_all(commands);
    connection.make_durable();
}

}  // namespace sales

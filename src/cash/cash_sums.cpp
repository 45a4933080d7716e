#include "cash/cash_sums.h"

#include "common/numbers.h"

namespace cash {

std::vector<Sum> read_sums(database::Connection& connection, const Procedure& procedure, Movement movement,
                           const Drawer& drawer, const Window& window) {
    const auto result = connection.query(sum_statement(procedure, movement, drawer, window));
    const Term& described = term(movement);
    std::vector<Sum> sums;
    for (const Reading* reading : {&described.first, &described.second}) {
        if (reading->column.empty()) continue;
        const double amount = result.empty() ? 0 : result.front().number(reading->column);
        sums.push_back({movement, reading, common::round_decimals(amount, 2)});
    }
    return sums;
}

std::vector<Sum> read_all_sums(database::Connection& connection, const Procedure& procedure,
                               const Drawer& drawer, const Window& window) {
    std::vector<Sum> sums;
    for (const Movement movement : procedure.order) {
        for (const Sum& sum : read_sums(connection, procedure, movement, drawer, window))
            sums.push_back(sum);
    }
    return sums;
}

double total_of(const std::vector<Sum>& sums) {
    double total = 0;
    for (const Sum& sum : sums)
        total = add_amounts(total, sum.counted());
    return total;
}

double add_amounts(double a, double b) {
    return common::round_decimals(a + b, 2);
}

Window until(const common::Moment& moment) {
    return {"", common::moment_text(moment)};
}

}  // namespace cash

#include "bench/rows.h"

namespace bench {

namespace {

common::Moment moment_at(const Sizes& sizes, std::int64_t number, std::int64_t of, std::uint32_t salt) {
    const long back = static_cast<long>((of - number) * sizes.days / of);
    const int second =
        8 * 3600 + static_cast<int>(noise(static_cast<std::uint64_t>(number) + salt) % (14 * 3600));
    return {common::add_days(last_day, -back), {second / 3600, second / 60 % 60, second % 60, 0}};
}

}  // namespace

InvoiceRow invoice_row(const Sizes& sizes, std::int64_t number) {
    const auto seed = static_cast<std::uint64_t>(number) * 4;
    const std::uint32_t choice = noise(seed) % 100;
    InvoiceRow row{};
    row.number = number;
    row.moment = moment_at(sizes, number, sizes.invoices, 1);
    row.ctype = choice < 5 ? 2 : 0;
    row.stype = choice >= 90 ? 1 : choice >= 88 ? 2 : 0;
    row.vcode = choice >= 5 && choice < 15 ? 1 + static_cast<int>(noise(seed + 1) % 200) : -1;
    row.drawer = 1 + static_cast<int>(noise(seed + 2) % static_cast<std::uint32_t>(sizes.drawers));
    row.total = (500 + noise(seed + 3) % 50'000) / 100.0;
    row.disboun = row.stype == 2 ? 5 : 0;
    return row;
}

MovementRow movement_row(const Sizes& sizes, std::int64_t number) {
    const auto seed = static_cast<std::uint64_t>(number) * 7 + 1'000'003;
    MovementRow row{};
    row.moment = moment_at(sizes, number, movements(sizes), 2);
    row.drawer = 1 + static_cast<int>(noise(seed) % static_cast<std::uint32_t>(sizes.drawers));
    row.kind = static_cast<int>(noise(seed + 1) % 2);
    row.amount = (100 + noise(seed + 2) % 10'000) / 100.0;
    return row;
}

}  // namespace bench

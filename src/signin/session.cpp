#include "signin/session.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "common/text.h"

namespace signin {

namespace {

int whole(const database::Row& row, std::string_view column) {
    using Range = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(row.integer(column), Range::min(), Range::max()));
}

}  // namespace

Settings read_settings(database::Connection& connection) {
    Settings settings;
    const auto rows = connection.query("select * from basic");
    if (rows.empty()) return settings;
    const database::Row& row = rows.front();
    settings.aname = common::printable(row.text("aname"));
    settings.ename = common::printable(row.text("ename"));
    settings.tel = row.text("tel");
    settings.warn = whole(row, "warn");
    settings.type = whole(row, "Type");
    settings.print = row.text("Print");
    settings.cash = row.text("cash");
    settings.pname = row.text("pname");
    settings.max_dis = static_cast<float>(row.number("max_dis"));
    settings.cash_m = whole(row, "cash_m");
    settings.cash_dis = static_cast<float>(row.number("cash_dis"));
    settings.cash_dis_1 = whole(row, "cash_dis_1");
    settings.cust_reg = whole(row, "cust_reg");
    settings.sear_lang = whole(row, "sear_lang");
    settings.st_d = whole(row, "st_d");
    const std::string logo = row.text("logo");
    if (!common::trim(logo).empty()) settings.logo = logo;
    return settings;
}

}  // namespace signin

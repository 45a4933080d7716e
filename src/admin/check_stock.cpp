// The check of the stock against opening stock, invoice lines, goods in, transfers, corrections and
// write-offs.
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "admin/checks.h"
#include "common/numbers.h"

namespace admin {

using database::Connection;
using database::quoted;
using database::Sql;

namespace {

// Quantities by weight do not add up exactly in binary.
constexpr double tolerance = 0.001;

struct Stock {
    double opening = 0;
    double moved = 0;
    double present = 0;
    // Goods in dated on the day of the opening or earlier. They have the date of the supplier's invoice, so
    // they may have been entered before or after the opening.
    double undated = 0;
};
using Place = std::pair<std::int64_t, std::int64_t>;  // item, store

class StockCheck {
  public:
    explicit StockCheck(Connection& connection) : connection_(connection) {}

    Findings run() {
        const auto moments =
            connection_.query("select distinct [date] from stk_f_q where B_no = 'opening' order by [date]");
        for (const auto& row : moments)
            add_since(row.moment("date"));
        for (const auto& row :
             connection_.query("select icode,stcode,sum(quan) as total from stk group by icode,stcode")) {
            if (const auto found = stocks_.find(place(row)); found != stocks_.end()) {
                found->second.present = row.number("total");
            }
        }
        find_moved_elsewhere();
        for (const auto& [where, stock] : stocks_)
            compare(where, stock);
        if (findings_.empty()) {
            findings_.push_back({Verdict::good, "stock",
                                 stocks_.empty()
                                     ? "no opening stock is remembered to compare with"
                                     : std::to_string(stocks_.size()) + " items and stores agree"});
        }
        return std::move(findings_);
    }

  private:
    static Place place(const database::Row& row) { return {row.integer("icode"), row.integer("stcode")}; }

    // Adds the items that were opened at this moment, and their movements since.
    void add_since(const common::Moment& moment) {
        std::map<Place, Stock> opened;
        for (const auto& row : connection_.query(Sql("select icode,stcode,sum(quan) as total from stk_f_q "
                                                     "where B_no = 'opening' and [date] = ") +
                                                 quoted(moment) + " group by icode,stcode")) {
            opened[place(row)].opening = row.number("total");
        }
        const auto move = [&](const Place& where, double quantity) {
            if (const auto found = opened.find(where); found != opened.end()) found->second.moved += quantity;
        };
        const Sql since = Sql(" ([date] > ") + quoted(moment.date) + " or ([date] = " + quoted(moment.date) +
                          " and time_ >= " + quoted(common::on_day_zero(moment.time)) + "))";
        for (const auto& row : connection_.query(Sql("select icode,stcode,sum(case when ctype = 0 or ctype = "
                                                     "1 then 0 - quan1 else quan1 end) as "
                                                     "total from saledata where icode is not null and") +
                                                 since + " group by icode,stcode")) {
            move(place(row), row.number("total"));
        }
        for (const auto& row : connection_.query(
                 Sql("select icode,stcode,stcode1,sum(quan) as total from transdata where tdate >= ") +
                 quoted(moment.date) + " group by icode,stcode,stcode1")) {
            move({row.integer("icode"), row.integer("stcode")}, -row.number("total"));
            move({row.integer("icode"), row.integer("stcode1")}, row.number("total"));
        }
        // Rows without a time of day come from programs that store only the day.
        const Sql dated_since =
            Sql(" where [date] >= ") + quoted(moment) + " or [date] = " + quoted(moment.date);
        for (const auto& rows :
             {connection_.query(Sql("select icode,stcode,sum(quan) as total from modify") + dated_since +
                                " group by icode,stcode"),
              connection_.query(Sql("select icode,stcode,0 - sum(quan) as total from bad_data") +
                                dated_since + " group by icode,stcode")}) {
            for (const auto& row : rows)
                move(place(row), row.number("total"));
        }
        add_goods_in(moment, opened);
        stocks_.merge(opened);
    }

    void add_goods_in(const common::Moment& moment, std::map<Place, Stock>& opened) {
        const Sql later = Sql("[date] > ") + quoted(moment.date);
        for (const auto& row : connection_.query(
                 Sql("select icode,stcode,sum(case when ") + later + " and ctype = 1 then quan1 when " +
                 later +
                 " then 0 - quan1 else 0 end) as later,sum(case when ctype = 1 then quan1 else 0 - quan1 "
                 "end) as total from purdata where ctype = 1 or ctype = 3 group by icode,stcode")) {
            const auto found = opened.find(place(row));
            if (found == opened.end()) continue;
            found->second.moved += row.number("later");
            found->second.undated += row.number("total") - row.number("later");
        }
    }

    // Goods that other programs took in may be counted differently there.
    void find_moved_elsewhere() {
        for (const auto& rows :
             {connection_.query("select distinct purdata.icode from purdata left join purchase on "
                                "purdata.pnum = purchase.pnum and purdata.ctype = purchase.ctype and "
                                "purdata.stcode = purchase.stcode where isnull(purchase.op_n,0) = 0"),
              connection_.query("select distinct icode from frm_to")}) {
            for (const auto& row : rows)
                moved_elsewhere_.insert(row.integer("icode"));
        }
        for (const auto& row : connection_.query("select code from items where sale_only = 1")) {
            services_.insert(row.integer("code"));
        }
    }

    void compare(const Place& where, const Stock& stock) {
        const auto& [item, store] = where;
        const double expected = stock.opening + stock.moved;
        const double difference = stock.present - expected;
        const auto explains = [&](double sum) {
            return std::abs(stock.present - sum) <= tolerance + std::abs(sum) * 1e-6;
        };
        if (services_.contains(item) || explains(expected) || explains(expected + stock.undated)) return;
        const bool is_unsure = moved_elsewhere_.contains(item) || stock.undated != 0;
        findings_.push_back(
            {is_unsure ? Verdict::note : Verdict::wrong, "stock",
             "item " + std::to_string(item) + " (" + name_of(item) + ") in store " + std::to_string(store) +
                 ": " + common::format_quantity(stock.present) +
                 " pieces, but opening stock, sales, goods in, transfers and corrections make " +
                 common::format_quantity(expected) + suspects(item, store, difference) +
                 "; correct stk, or accept it as counted: tallvex-admin check --accept-stock"});
    }

    std::string name_of(std::int64_t item) {
        return database::text_of(connection_.scalar(Sql("select [name] from items where code = ") + item));
    }

    // The newest invoice whose line is the difference, else the newest with the item.
    std::string suspects(std::int64_t item, std::int64_t store, double difference) {
        const auto lines =
            connection_.query(Sql("select top 200 pnum,ctype,[date],quan1 from saledata where icode = ") +
                              item + " and stcode = " + store + " order by [date] desc,time_ desc");
        if (lines.empty()) return "";
        const database::Row* suspect = &lines.front();
        for (const auto& row : lines) {
            if (std::abs(row.number("quan1") - std::abs(difference)) > tolerance) continue;
            suspect = &row;
            break;
        }
        const bool sale = suspect->integer("ctype") < 2;
        return std::string("; most likely ") + (sale ? "sale " : "return ") + suspect->text("pnum") + " of " +
               common::date_text(suspect->moment("date").date) + " did not move it";
    }

    Connection& connection_;
    std::map<Place, Stock> stocks_;
    std::set<std::int64_t> moved_elsewhere_;
    std::set<std::int64_t> services_;
    Findings findings_;
};

}  // namespace

Findings check_stock(Connection& connection) {
    return StockCheck(connection).run();
}

}  // namespace admin

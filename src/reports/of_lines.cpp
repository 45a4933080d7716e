// Reports that sum lines: sales and profit by item and group, profit by day.
#include <set>

#include "reports/labels.h"
#include "reports/line_sums.h"
#include "reports/makers.h"
#include "reports/sales_sums.h"

namespace reports {

namespace {

// quantity, sales, their share of discounts on receipts, returns, net
const std::vector<Column> columns_of_lines = {
    {"الكمية", Format::quantity}, {"المبيعات"}, {"نصيب الخصم"}, {"المرتجعات"}, {"الصافي"}};
constexpr std::size_t net_of_lines = 4;
// net, cost, profit, percent of the net
const std::vector<Column> columns_of_profit = {
    {"الصافي"}, {"التكلفة"}, {"الربح"}, {"نسبة الربح", Format::percent}};
constexpr std::size_t profit_column = 2;

// The difference between the headers of the receipts and their lines.
constexpr std::int64_t difference_key = -2;
constexpr std::string_view difference_label = "فرق بين البونات وسطورها";
constexpr std::string_view general_item_label = "صنف عام";
constexpr std::string_view no_group = "بدون مجموعة";

std::vector<double> profit_figures(double net, double cost) {
    return {net, cost, net - cost, percent_of(net - cost, net)};
}

class OfLines : public Maker {
  public:
    OfLines(database::Connection& connection, const Request& request)
        : connection_(connection),
          request_(request),
          parts_(quarters_of(request.period)),
          tells_profit_(kind_of(request.kind).tells_cost) {
        if (tells_profit_) costs_.emplace(connection, common::Moment{request.period.first, {}});
    }

    int steps() const override { return static_cast<int>(parts_.size()); }
    void step(int number) override {
        const Period& part = parts_[static_cast<std::size_t>(number)];
        const bool is_by_day = request_.kind == KindId::profit_by_day;
        add_sales(connection_, SalesKey::day, part, by_day_);
        if (!is_by_day) add_lines(connection_, part, by_item_);
        if (tells_profit_)
            add_costs(connection_, is_by_day ? CostKey::day : CostKey::item, part, *costs_, cost_);
    }
    Table table() override {
        if (request_.kind == KindId::profit_by_day) return profit_by_day();
        if (tells_profit_)
            for (auto& [item, sums] : by_item_)
                sums.cost = sums.quantity * costs_->today(item) + cost_[item];
        LineSums all;
        for (const auto& [item, sums] : by_item_)
            all += sums;
        Table table = request_.kind == KindId::sales_by_group || request_.kind == KindId::profit_by_group
                          ? by_group()
                          : by_item();
        table.columns = tells_profit_ ? columns_of_profit : columns_of_lines;
        table.charted = tells_profit_ ? profit_column : net_of_lines;
        table.sort_by_figure();
        SalesSums headers;
        for (const auto& [day, sums] : by_day_)
            headers += sums;
        const double difference = headers.net() - all.net();
        if (!common::Amount(difference).is_zero()) {
            LineSums rest;
            rest.sold = difference;
            add_row(table, difference_key, std::string(difference_label), rest);
            all += rest;
        }
        table.totals = figures_of(all);
        return table;
    }

  private:
    std::vector<double> figures_of(const LineSums& sums) const {
        if (tells_profit_) return profit_figures(sums.net(), sums.cost);
        return {sums.quantity, sums.sold, sums.discounts, sums.returned, sums.net()};
    }
    void add_row(Table& table, std::int64_t key, std::string label, const LineSums& sums) const {
        table.rows.push_back({key, std::move(label), figures_of(sums)});
    }

    Table by_item() {
        Table table;
        table.label_heading = "الصنف";
        const auto names = read_item_names(connection_);
        for (const auto& [item, sums] : by_item_) {
            const auto name = names.find(item);
            add_row(table, item,
                    item == general_item        ? std::string(general_item_label)
                    : name == names.end()       ? std::to_string(item)
                    : name->second.name.empty() ? std::to_string(item)
                                                : name->second.name,
                    sums);
        }
        return table;
    }

    Table by_group() {
        Table table;
        table.label_heading = "المجموعة";
        const auto names = read_item_names(connection_);
        const auto groups = read_group_names(connection_);
        std::map<std::int64_t, LineSums> by_group;
        for (const auto& [item, sums] : by_item_) {
            const auto name = names.find(item);
            by_group[name == names.end() ? 0 : name->second.group] += sums;
        }
        for (const auto& [group, sums] : by_group)
            add_row(table, group, name_or_code(groups, group, no_group), sums);
        return table;
    }

    Table profit_by_day() {
        Table table;
        table.label_heading = label_heading(SalesKey::day);
        table.columns = columns_of_profit;
        table.charted = profit_column;
        table.is_in_time = true;
        const Labels labels(connection_, SalesKey::day);
        for (const auto& [day, cost] : cost_)
            by_day_[day];  // a day may have lines alone
        double net = 0;
        double cost = 0;
        for (const auto& [day, sums] : by_day_) {
            table.rows.push_back(
                {day, labels.of(day), profit_figures(sums.net(), cost_[day]), {}, labels.mark_of(day)});
            net += sums.net();
            cost += cost_[day];
        }
        table.totals = profit_figures(net, cost);
        return table;
    }

    database::Connection& connection_;
    Request request_;
    std::vector<Period> parts_;
    bool tells_profit_;
    std::optional<goods::Costs> costs_;
    SalesByKey by_day_;
    SumsByItem by_item_;
    CostByKey cost_;
};

}  // namespace

std::unique_ptr<Maker> make_of_lines(database::Connection& connection, const Request& request) {
    return std::make_unique<OfLines>(connection, request);
}

}  // namespace reports

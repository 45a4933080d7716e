// Reports that sum invoices: by day, month, hour, cashier, store and payment; discounts and returns.
#include <limits>

#include "database/choices.h"
#include "reports/labels.h"
#include "reports/makers.h"
#include "reports/sales_sums.h"

namespace reports {

namespace {

SalesKey key_of(KindId kind) {
    switch (kind) {
        case KindId::sales_by_month:
            return SalesKey::month;
        case KindId::sales_by_hour:
            return SalesKey::hour;
        case KindId::sales_by_cashier:
        case KindId::discounts_and_returns:
            return SalesKey::cashier;
        case KindId::sales_by_store:
            return SalesKey::store;
        case KindId::sales_by_payment:
            return SalesKey::payment;
        default:
            return SalesKey::day;
    }
}

// receipts, sales, discounts of receipts, returns, net, average of a receipt
const std::vector<Column> columns_of_sales = {{"عدد البونات", Format::count},
                                              {"المبيعات"},
                                              {"خصم البونات"},
                                              {"المرتجعات"},
                                              {"الصافي"},
                                              {"متوسط البون"}};
constexpr std::size_t net_column = 4;

std::vector<double> figures_of_sales(const SalesSums& sums) {
    return {static_cast<double>(sums.sales),
            sums.sold,
            sums.discounts,
            sums.returned,
            sums.net(),
            sums.average()};
}

// receipts, sales, discounts, percent of sales, number of returns, returns, percent of sales
const std::vector<Column> columns_of_discounts = {{"عدد البونات", Format::count},
                                                  {"المبيعات"},
                                                  {"خصم البونات"},
                                                  {"نسبة الخصم", Format::percent},
                                                  {"عدد المرتجعات", Format::count},
                                                  {"المرتجعات"},
                                                  {"نسبة المرتجعات", Format::percent}};
constexpr std::size_t discount_column = 2;

std::vector<double> figures_of_discounts(const SalesSums& sums) {
    return {static_cast<double>(sums.sales),
            sums.sold,
            sums.discounts,
            percent_of(sums.discounts, sums.sold),
            static_cast<double>(sums.returns),
            sums.returned,
            percent_of(sums.returned, sums.sold)};
}

class OfInvoices : public Maker {
  public:
    OfInvoices(database::Connection& connection, const Request& request)
        : connection_(connection),
          request_(request),
          key_(key_of(request.kind)),
          parts_(quarters_of(request.period)) {}

    int steps() const override { return static_cast<int>(parts_.size()); }
    void step(int number) override {
        add_sales(connection_, key_, parts_[static_cast<std::size_t>(number)], sums_);
    }
    Table table() override {
        const bool tells_discounts = request_.kind == KindId::discounts_and_returns;
        const auto figures = tells_discounts ? figures_of_discounts : figures_of_sales;
        Table table;
        table.label_heading = label_heading(key_);
        table.columns = tells_discounts ? columns_of_discounts : columns_of_sales;
        table.charted = tells_discounts ? discount_column : net_column;
        table.is_in_time = is_in_time(key_);
        const Labels labels(connection_, key_);
        SalesSums all;
        for (const auto& [key, sums] : sums_) {
            table.rows.push_back({key, labels.of(key), figures(sums), {}, labels.mark_of(key)});
            all += sums;
        }
        table.totals = figures(all);
        if (!table.is_in_time) table.sort_by_figure();
        return table;
    }

  private:
    database::Connection& connection_;
    Request request_;
    SalesKey key_;
    std::vector<Period> parts_;
    SalesByKey sums_;
};

}  // namespace

std::unique_ptr<Maker> make_of_invoices(database::Connection& connection, const Request& request) {
    return std::make_unique<OfInvoices>(connection, request);
}

}  // namespace reports

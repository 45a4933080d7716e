#include "reports/report.h"

#include <algorithm>

#include "reports/makers.h"

namespace reports {

namespace {

constexpr Kind all_kinds[] = {
    {KindId::sales_by_day, "sales_by_day", "المبيعات باليوم", true, false},
    {KindId::sales_by_month, "sales_by_month", "المبيعات بالشهر", true, false},
    {KindId::sales_by_hour, "sales_by_hour", "المبيعات بالساعة", true, false},
    {KindId::sales_by_item, "sales_by_item", "المبيعات بالصنف", true, false},
    {KindId::sales_by_group, "sales_by_group", "المبيعات بالمجموعة", true, false},
    {KindId::sales_by_cashier, "sales_by_cashier", "المبيعات بالكاشير", true, false},
    {KindId::sales_by_store, "sales_by_store", "المبيعات بالفرع", true, false},
    {KindId::sales_by_payment, "sales_by_payment", "المبيعات بطريقة الدفع", true, false},
    {KindId::profit_by_day, "profit_by_day", "الربح باليوم", true, true},
    {KindId::profit_by_item, "profit_by_item", "الربح بالصنف", true, true},
    {KindId::profit_by_group, "profit_by_group", "الربح بالمجموعة", true, true},
    {KindId::discounts_and_returns, "discounts_and_returns", "الخصومات والمرتجعات", true, false},
    {KindId::suppliers, "suppliers", "البضاعة الواردة بالمورد", true, false},
    {KindId::ages_of_customers, "ages_of_customers", "أعمار ديون العملاء", false, false},
    {KindId::ages_of_suppliers, "ages_of_suppliers", "أعمار مستحقات الموردين", false, false},
    {KindId::stock_by_group, "stock_by_group", "قيمة المخزون بالمجموعة", false, false},
    {KindId::stock_by_store, "stock_by_store", "قيمة المخزون بالمخزن", false, false},
    {KindId::cash, "cash", "نقدية الخزائن الآن", false, false},
    {KindId::closed_days, "closed_days", "الأيام المقفلة", true, false},
};

// A report that is made at once.
class OneStep : public Maker {
  public:
    OneStep(database::Connection& connection, const Request& request,
            Table (*make)(database::Connection&, const Request&))
        : connection_(connection), request_(request), make_(make) {}
    void step(int /*number*/) override { table_ = make_(connection_, request_); }
    Table table() override { return std::move(table_); }

  private:
    database::Connection& connection_;
    Request request_;
    Table (*make_)(database::Connection&, const Request&);
    Table table_;
};

std::unique_ptr<Maker> maker_of(database::Connection& connection, const Request& request) {
    const auto at_once = [&](auto* make) { return std::make_unique<OneStep>(connection, request, make); };
    switch (request.kind) {
        case KindId::sales_by_day:
        case KindId::sales_by_month:
        case KindId::sales_by_hour:
        case KindId::sales_by_cashier:
        case KindId::sales_by_store:
        case KindId::sales_by_payment:
        case KindId::discounts_and_returns:
            return make_of_invoices(connection, request);
        case KindId::sales_by_item:
        case KindId::sales_by_group:
        case KindId::profit_by_day:
        case KindId::profit_by_item:
        case KindId::profit_by_group:
            return make_of_lines(connection, request);
        case KindId::suppliers:
            return at_once(table_of_suppliers);
        case KindId::ages_of_customers:
        case KindId::ages_of_suppliers:
            return at_once(table_of_ages);
        case KindId::stock_by_group:
        case KindId::stock_by_store:
            return at_once(table_of_stock);
        case KindId::cash:
            return at_once(table_of_cash);
        case KindId::closed_days:
            break;
    }
    return at_once(table_of_closed_days);
}

}  // namespace

std::span<const Kind> kinds() {
    return all_kinds;
}

const Kind& kind_of(KindId id) {
    return *std::ranges::find(all_kinds, id, &Kind::id);
}

Report::Report(database::Connection& connection, const Request& request)
    : maker_(maker_of(connection, request)) {}

Report::~Report() = default;

int Report::steps() const {
    return maker_->steps();
}

void Report::step() {
    maker_->step(done_);
    ++done_;
}

Table Report::table() {
    return maker_->table();
}

Table table_of(database::Connection& connection, const Request& request) {
    Report report(connection, request);
    while (report.done() < report.steps())
        report.step();
    return report.table();
}

}  // namespace reports

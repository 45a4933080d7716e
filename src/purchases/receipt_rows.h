// The rows of documents of goods in, and what they change: stock, costs, prices, balances. All of it is
// called within one transaction, so that a failure leaves nothing behind.
#pragma once

#include <map>
#include <set>
#include <tuple>

#include "common/date_time.h"
#include "goods/prices.h"
#include "purchases/average_cost.h"
#include "purchases/receipt.h"
#include "sales/stock_movement.h"

namespace purchases {

class ReceiptRows {
  public:
    // Other offices wait until the transaction ends.
    ReceiptRows(database::Connection& connection, const signin::Session& session, const common::Moment& now);

    // Whether the batches must hold what a return takes. When a receipt is corrected, its goods may have been
    // sold meanwhile; the corrected receipt covers them.
    enum class Batches { must_hold, may_lack };
    // Writes header, lines and stock, and moves the supplier's balance. Returns the number. Throws Refused if
    // a batch lacks goods.
    std::int64_t write(const Receipt& receipt, Batches batches);
    // Writes the costs that all documents together left, and the new prices.
    void write_costs();
    // Writes the voucher that pays the document in cash.
    void pay(const Receipt& receipt, std::int64_t number);

  private:
    void read_stock(const Receipt& receipt);
    void check_batches(const Receipt& receipt);
    void write_header(const Receipt& receipt, std::int64_t number);
    void write_lines(const Receipt& receipt, std::int64_t number);
    void move_stock(const Receipt& receipt);
    void add_price(const goods::NewPrice& price);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Moment now_;
    std::map<std::int64_t, Valued> stock_;  // by item, of all stores
    std::map<std::int64_t, database::Row> cards_;
    std::set<std::int64_t> moved_;                                 // the items whose cost may have changed
    std::map<std::tuple<std::int64_t, int, int>, double> prices_;  // by item, unit and level
};

}  // namespace purchases

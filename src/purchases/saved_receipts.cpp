#include "purchases/saved_receipts.h"

#include <algorithm>
#include <map>

#include "accounts/vendor_account.h"
#include "common/text.h"
#include "common/typed.h"
#include "sales/items.h"
#include "sales/line_editing.h"

namespace purchases {

using common::Amount;
using common::FieldKind;
using database::quoted;
using database::Row;
using database::Sql;

namespace {

constexpr common::FormField<Period> period_fields[] = {
    // from date, to date, supplier
    {&Period::from, {"receipts_from", "من ت&اريخ", FieldKind::date, {0, 0}}},
    {&Period::to, {"receipts_to", "إلى تاري&خ", FieldKind::date, {0, 1}}},
    {&Period::supplier, {"receipts_supplier", "المور&د", FieldKind::choice, {0, 2, 2}}},
};

// What went back of a line in one return.
struct Part {
    double base_quantity = 0;
    Amount value;
};

// By the line of the receipt.
std::multimap<std::int64_t, Part> gone_back(database::Connection& connection, std::int64_t number,
                                            std::int64_t store) {
    std::multimap<std::int64_t, Part> by_line;
    for (const Row& row : connection.query(
             Sql("select ser,quan,quan1,price,disc from purdata where ctype = 3 and inv_ser = ") + number +
             " and stcode = " + store + " order by pnum"))
        by_line.emplace(
            row.integer("ser"),
            Part{row.number("quan1"), Amount(row.number("quan") * row.number("price") - row.number("disc"))});
    return by_line;
}

// Takes a part off the goods of a line and what they cost, so that all parts together come to the cost of the
// line however each was rounded. A part for which another price was agreed takes what it had cost.
void take_off(const Part& part, double& base_quantity, Amount& cost) {
    if (!(base_quantity > 0)) return;
    const Amount share(cost.value() * part.base_quantity / base_quantity);
    const auto apart = (part.value - share).hundredths();
    cost -= apart >= -1 && apart <= 1 ? part.value : share;
    base_quantity -= part.base_quantity;
}

// The upgrade list empties purdata.edate at each start, so the note of a line holds the date of its batch.
std::optional<common::Date> expiry_of(const Row& row) {
    const auto noted = common::read_date(row.text("note"));
    const common::Date stored = row.moment("edate").date;
    if (noted) return noted;
    if (row.null("edate") || stored == common::no_expiry) return std::nullopt;
    return stored;
}

Line line_of(const Row& row) {
    Line line;
    line.item = row.integer("icode");
    line.name = common::trim_right(row.text("name"));
    line.unit_level = sales::unit_level_of(row.integer("scode"));
    line.quantity = row.number("quan");
    line.factor = row.number("unit1") > 0 ? row.number("unit1") : 1;
    line.price = row.number("price");
    line.discount = row.number("disc");
    line.expiry = expiry_of(row);
    line.source = row.integer("ser");
    return line;
}

}  // namespace

common::FormTable<Period> period_form() {
    return period_fields;
}

std::vector<SavedRow> list_receipts(database::Connection& connection, const Period& period) {
    std::map<std::pair<std::int64_t, std::int64_t>, double> back;
    for (const Row& row :
         connection.query("select inv_ser,stcode,sum(quan1) as quantity from purdata where ctype = 3 and "
                          "inv_ser > 0 group by inv_ser,stcode"))
        back[{row.integer("inv_ser"), row.integer("stcode")}] = row.number("quantity");
    Sql statement =
        Sql("select purchase.ctype,purchase.pnum,purchase.[date],purchase.vcode,vname,perm_no,"
            "purchase.stcode,") +
        accounts::net_of_purchase +
        " as net,(select sum(quan1) from purdata where purdata.pnum = purchase.pnum and purdata.ctype = "
        "purchase.ctype and purdata.stcode = purchase.stcode) as goods "
        "from purchase left join vendata on vendata.vcode = purchase.vcode "
        "where (purchase.ctype = 1 or purchase.ctype = 3) and purchase.[date] >= " +
        quoted(period.from) + " and purchase.[date] <= " + quoted(period.to);
    if (period.supplier.value_or(0) != 0) statement += Sql(" and purchase.vcode = ") + *period.supplier;
    std::vector<SavedRow> rows;
    for (const Row& row : connection.query(statement + " order by purchase.[date] desc,purchase.pnum desc")) {
        SavedRow saved{static_cast<PurchaseKind>(row.integer("ctype")),
                       row.integer("pnum"),
                       row.moment("date").date,
                       row.integer("vcode"),
                       std::string(common::trim_right(row.text("vname"))),
                       row.text("perm_no"),
                       Amount(row.number("net")),
                       0};
        const auto gone = back.find({saved.number, row.integer("stcode")});
        if (saved.kind == PurchaseKind::supply && gone != back.end() && row.number("goods") > 0)
            saved.back = std::min(1.0, gone->second / row.number("goods"));
        rows.push_back(std::move(saved));
    }
    return rows;
}

std::optional<Receipt> load_receipt(database::Connection& connection, PurchaseKind kind,
                                    std::int64_t number) {
    const Sql found = Sql(" where ctype = ") + static_cast<int>(kind) + " and pnum = " + number;
    const auto header = connection.query(Sql("select * from purchase") + found);
    if (header.empty()) return std::nullopt;
    const Row& row = header.front();
    Receipt receipt;
    receipt.kind = kind;
    receipt.supplier = row.integer("vcode");
    receipt.invoice = row.text("perm_no");
    receipt.date = row.moment("date").date;
    receipt.store = row.integer("stcode");
    receipt.discount = Amount(row.number("pdis"));
    receipt.tax = Amount(row.number("ptax"));
    receipt.note = row.text("notes");
    receipt.source = row.integer("inv_ser");
    for (const Row& line : connection.query(Sql("select purdata.*,items.[name] from purdata left join items "
                                                "on items.code = purdata.icode") +
                                            found + " and stcode = " + receipt.store + " order by serial"))
        receipt.lines.push_back(line_of(line));
    return receipt;
}

Receipt return_of(database::Connection& connection, const Receipt& receipt, std::int64_t number) {
    Receipt back;
    back.kind = PurchaseKind::vendor_return;
    back.supplier = receipt.supplier;
    back.store = receipt.store;
    back.source = number;
    const auto gone = gone_back(connection, number, receipt.store);
    const std::vector<Amount> costs = receipt.costs();
    for (std::size_t at = 0; at < receipt.lines.size(); ++at) {
        Line line = receipt.lines[at];
        line.source = static_cast<std::int64_t>(at) + 1;
        double left = line.base_quantity();
        Amount cost = costs[at];
        const auto [first, last] = gone.equal_range(line.source);
        for (auto part = first; part != last; ++part)
            take_off(part->second, left, cost);
        line.quantity = sales::without_noise(left / line.factor);
        line.price = unit_cost(line, cost);
        line.discount = 0;
        line.returnable = line.quantity;
        if (line.quantity > 0) back.lines.push_back(std::move(line));
    }
    return back;
}

}  // namespace purchases

#include "purchases/proposal.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <unordered_map>

#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/choices.h"
#include "purchases/messages.h"
#include "purchases/suppliers.h"
#include "reports/line_sums.h"
#include "sales/items.h"
#include "sales/line_editing.h"

namespace purchases {

using common::FieldKind;
using common::Refusal;
using database::Row;
using database::Sql;

namespace {

constexpr common::FormField<ProposalFields> proposal_fields[] = {
    // sold in the last weeks, store, supplier
    {&ProposalFields::weeks, {"proposal_weeks", "مبيعات آخر (أسا&بيع)", FieldKind::code, {0, 0}}},
    {&ProposalFields::store, {"proposal_store", "المخ&زن", FieldKind::choice, {0, 1}}},
    {&ProposalFields::supplier, {"proposal_supplier", "المور&د", FieldKind::choice, {0, 2}}},
};

constexpr std::int64_t most_weeks = 52;
constexpr long days_in_week = 7;

}  // namespace

struct Proposal::Source {
    common::Moment date;
    std::int64_t number = 0;
    std::int64_t supplier = 0;
    int unit_level = 1;
};

common::FormTable<ProposalFields> proposal_form() {
    return proposal_fields;
}

void Proposal::open() {
    stores_ = database::load_stores(connection_);
    stores_.insert(stores_.begin(), {0, std::string(message::all_stores)});
    suppliers_ = suppliers_to_choose(connection_);
    if (!fields.store) fields.store = 0;
    if (!fields.supplier) fields.supplier = 0;
    lines_.clear();
}

std::optional<Refusal> Proposal::show() {
    const auto weeks = common::read_code(fields.weeks);
    if (!weeks || *weeks > most_weeks) return Refusal("proposal_weeks", message::wrong_weeks);
    const common::Date today = services_.clock.now().date;
    const std::int64_t store = fields.store.value_or(0);

    std::unordered_map<std::int64_t, Source> sources;
    for (const Row& row : connection_.query("select icode,vcode,scode,max([date]) as latest,max(pnum) as "
                                            "number from purdata where ctype = 1 "
                                            "group by icode,vcode,scode")) {
        Source& last = sources[row.integer("icode")];
        const Source found{row.moment("latest"), row.integer("number"), row.integer("vcode"),
                           sales::unit_level_of(row.integer("scode"))};
        if (std::pair(found.date, found.number) > std::pair(last.date, last.number)) last = found;
    }
    std::unordered_map<std::int64_t, double> stock;
    const Sql in_store = store == 0 ? Sql("") : Sql(" where stcode = ") + store;
    for (const Row& row :
         connection_.query(Sql("select icode,sum(quan) as held from stk") + in_store + " group by icode"))
        stock[row.integer("icode")] = row.number("held");
    const auto sold = reports::moved_quantities(
        connection_, {common::add_days(today, 1 - *weeks * days_in_week), today, store});

    lines_.clear();
    for (const Row& item : connection_.query("select * from items where isnull(stop,0) = 0 and "
                                             "isnull(sale_only,0) = 0")) {
        const std::int64_t code = item.integer("code");
        const auto source = sources.find(code);
        const auto moved = sold.find(code);
        add_line(item, moved == sold.end() ? 0 : moved->second, stock[code],
                 source == sources.end() ? nullptr : &source->second);
    }
    std::ranges::sort(lines_, {}, [](const ProposedLine& line) {
        return std::tuple(line.supplier == 0, line.supplier_name, line.name, line.item);
    });
    return std::nullopt;
}

void Proposal::add_line(const Row& item, double sold, double stock, const Source* source) {
    const std::int64_t wanted = fields.supplier.value_or(0);
    ProposedLine line;
    line.supplier = source == nullptr ? 0 : source->supplier;
    if (wanted != 0 && line.supplier != wanted) return;
    line.sold = sales::without_noise(sold);
    line.stock = sales::without_noise(stock);
    line.minimum = item.number("mquan");
    if (!(sales::without_noise(line.needed()) > 0)) return;
    line.item = item.integer("code");
    line.name = common::trim_right(item.text("name"));
    line.supplier_name = common::name_of(suppliers_, line.supplier);
    line.unit_level = source == nullptr ? 1 : source->unit_level;
    line.factor = line.unit_level == 1 ? 1 : item.number(line.unit_level == 2 ? "num2" : "num3");
    if (!(line.factor > 0)) line.unit_level = 1, line.factor = 1;
    line.quantity = std::ceil(sales::without_noise(line.needed() / line.factor));
    line.cost = item.number(sales::price_column(line.unit_level, sales::cost_level));
    if (line.cost == 0) line.cost = item.number("price11") * line.factor;
    lines_.push_back(std::move(line));
}

std::optional<Refusal> Proposal::set_quantity(std::size_t row, std::string_view typed) {
    if (row >= lines_.size()) return std::nullopt;
    const auto number = common::read_number(typed, message::wrong_quantity);
    if (!number.is_good()) return Refusal("proposal_quantity", number.refusal);
    if (number.value != 0 && !sales::is_valid_quantity(number.value))
        return Refusal("proposal_quantity", message::wrong_quantity);
    lines_[row].quantity = number.value;
    return std::nullopt;
}

}  // namespace purchases

#include "cash/parties.h"

#include <set>

namespace cash {

using database::Row;
using database::Sql;

namespace {

constexpr int vendor_party = 1;  // vencuspay.ztype
constexpr std::string_view walk_ins = "walk-in customer";

}  // namespace

void Parties::read_walk_ins(const database::Result& sales) {
    constexpr std::size_t codes_of_a_query = 500;
    std::set<std::int64_t> codes;
    for (const Row& sale : sales)
        if (const std::int64_t code = sale.integer("cust_c"); code != 0) codes.insert(code);
    while (!codes.empty()) {
        Sql statement("select zcode, zname from cust_cash where zcode in (0");
        for (std::size_t i = 0; i < codes_of_a_query && !codes.empty(); ++i) {
            const std::int64_t code = *codes.begin();
            statement += Sql(",") + code;
            names_.emplace(std::pair{walk_ins, code}, "");
            codes.erase(codes.begin());
        }
        for (const Row& row : connection_.query(statement + ")"))
            if (auto& name = names_[{walk_ins, row.integer("zcode")}]; name.empty()) name = row.text("zname");
    }
}

std::string Parties::of_invoice(const Row& sale) {
    const std::int64_t code = sale.integer("vcode");
    const bool joined = sale.has("receiver");
    std::string name = joined ? sale.text("customer_name") : customer(code);
    if (name.empty()) name = joined ? sale.text("vendor_name") : vendor(code);
    if (name.empty()) name = walk_in(sale.integer("cust_c"));
    if (name.empty() && sale.integer("stype") == tips_payment)
        name = joined ? sale.text("receiver") : receiver(sale.integer("link"));
    return name;
}

std::string Parties::of_voucher(const Row& voucher) {
    const std::int64_t code = voucher.integer("vcode");
    return voucher.integer("ztype") == vendor_party ? vendor(code) : customer(code);
}

std::string Parties::of_bank(const Row& movement) {
    const std::int64_t code = movement.integer("bcode");
    return read("bank", code, Sql("select * from bankdata where bcode = ") + code, "bname");
}

std::string Parties::of_transfer(const Row& transfer) {
    return transfer.text("note1");
}

std::string Parties::of_in_and_out(const Row& row) {
    return row.text("note");
}

std::string Parties::of_expense(const Row& expense) {
    const std::int64_t main = expense.integer("mcode");
    const std::int64_t sub = expense.integer("scode");
    std::string text = read("main heading", main, Sql("select * from mainx where code = ") + main, "name");
    const std::string below =
        read("sub heading", main * 1000000 + sub,
             Sql("select * from subx where mcode = ") + main + " and code = " + sub, "name");
    for (const std::string& more : {below, expense.text("notes")}) {
        if (!more.empty()) text += (text.empty() ? "" : " - ") + more;
    }
    return text;
}

const std::string& Parties::customer(std::int64_t code) {
    return read("customer", code, Sql("select * from custdata where ccode = ") + code, "cname");
}

const std::string& Parties::vendor(std::int64_t code) {
    return read("vendor", code, Sql("select * from vendata where vcode = ") + code, "vname");
}

std::string Parties::walk_in(std::int64_t code) {
    if (code == 0) return "";
    return read(walk_ins, code, Sql("select * from cust_cash where zcode = ") + code, "zname");
}

std::string Parties::receiver(std::int64_t code) {
    if (code == 0) return "";
    return read("receiver", code, Sql("select * from boundata where ccode = ") + code, "cname");
}

const std::string& Parties::read(std::string_view list, std::int64_t code, const Sql& statement,
                                 std::string_view column) {
    const auto known = names_.find({list, code});
    if (known != names_.end()) return known->second;
    const auto rows = connection_.query(statement);
    return names_.emplace(std::pair{list, code}, rows.empty() ? "" : rows.front().text(column)).first->second;
}

}  // namespace cash

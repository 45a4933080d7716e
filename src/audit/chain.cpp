#include "audit/chain.h"

#include <optional>
#include <set>

#include "audit/hash.h"
#include "common/json.h"
#include "database/till_tables.h"

namespace audit {

namespace {

using database::Sql;
using database::Value;

constexpr int rows_at_once = 5'000;

Value value_of(const std::optional<std::int64_t>& number) {
    return number ? Value(*number) : Value(database::Null());
}

std::optional<std::int64_t> integer_in(const database::Row& row, std::string_view column) {
    return row.null(column) ? std::nullopt : std::optional(row.integer(column));
}

// The chain of one till, row by row.
class Chain {
  public:
    explicit Chain(std::int64_t till) : till_(till) {}

    void add(const database::Row& row) {
        const Entry entry = entry_of(row);
        const std::int64_t number = row.integer("num");
        const std::int64_t missing = number - end_.number - 1;
        if (missing != 0) {
            end_.number = number - 1;
            report({till_, number, missing, entry.moment});
        }
        end_ = after(end_, till_, entry);
        if (end_.hash != row.text("hash")) report({till_, number, 0, entry.moment});
        moment_ = entry.moment;
    }
    // `known` is the end that the till's own file knows.
    void finish(const End& known) {
        if (known.number > end_.number)
            report({till_, known.number + 1, known.number - end_.number, moment_, true});
    }
    std::int64_t last() const { return end_.number; }
    const std::optional<Break>& first_break() const { return first_break_; }

  private:
    void report(const Break& found) {
        if (!first_break_) first_break_ = found;
    }

    std::int64_t till_;
    End end_;
    common::Moment moment_;
    std::optional<Break> first_break_;
};

}  // namespace

End after(const End& end, std::int64_t till, const Entry& entry) {
    const Event& event = entry.event;
    const auto& approver = event.approver;
    common::JsonWriter content;
    content.list(end.hash, till, end.number + 1, entry.id, common::moment_text(entry.moment), entry.store,
                 entry.user.code, entry.user.name, entry.kind, event.what, event.amount, event.item,
                 event.invoice, approver ? std::optional(approver->code) : std::nullopt,
                 approver ? approver->name : std::string());
    return {end.number + 1, sha256(content.text())};
}

database::Command insertion(const End& end, std::int64_t till, const Entry& entry) {
    const End next = after(end, till, entry);
    const Event& event = entry.event;
    const auto& approver = event.approver;
    return {
        "insert into till_journal "
        "(cash_no,num,id,moment,stcode,user_code,user_name,kind,what,amount,icode,pnum,"
        "approver,approver_name,hash) values (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
        {till, next.number, entry.id, entry.moment, entry.store, entry.user.code, entry.user.name, entry.kind,
         event.what, event.amount ? Value(event.amount->value()) : Value(database::Null()),
         value_of(event.item), value_of(event.invoice),
         approver ? Value(approver->code) : Value(database::Null()),
         approver ? Value(approver->name) : Value(database::Null()), next.hash}};
}

Entry entry_of(const database::Row& row) {
    Entry entry{row.integer("id"),     row.moment("moment"),
                row.integer("stcode"), {row.integer("user_code"), row.text("user_name")},
                row.text("kind"),      {}};
    entry.event.what = row.text("what");
    if (!row.null("amount")) entry.event.amount = common::Amount(row.number("amount"));
    entry.event.item = integer_in(row, "icode");
    entry.event.invoice = integer_in(row, "pnum");
    if (!row.null("approver")) entry.event.approver = {row.integer("approver"), row.text("approver_name")};
    return entry;
}

std::int64_t verify(database::Connection& connection, const Place& place,
                    const std::function<void(const Break&)>& found) {
    std::int64_t rows = 0;
    database::unless_table_is_missing([&] {
        std::set<std::int64_t> tills = place.tills();
        for (const database::Row& row : connection.query("select distinct cash_no from till_journal"))
            tills.insert(row.integer("cash_no"));
        for (const std::int64_t till : tills) {
            Chain chain(till);
            // Read before the rows: a till that sells meanwhile writes more of them.
            const End known = read_kept(place.file_of(till)).end;
            for (bool more = true; more;) {
                const auto part = connection.query(Sql("select top ") + rows_at_once +
                                                   " * from till_journal where cash_no = " + till +
                                                   " and num > " + chain.last() + " order by num");
                for (const database::Row& row : part)
                    chain.add(row);
                rows += static_cast<std::int64_t>(part.size());
                more = !part.empty();
            }
            chain.finish(known);
            if (chain.first_break()) found(*chain.first_break());
        }
    });
    return rows;
}

}  // namespace audit

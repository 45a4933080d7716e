#include "goods/item_import.h"

#include <map>
#include <string>
#include <unordered_map>

#include "database/bulk_insert.h"
#include "database/transaction.h"
#include "goods/barcodes.h"
#include "goods/cells.h"
#include "goods/import_writing.h"

namespace goods {

using database::BulkInsert;
using database::BulkRows;
using database::Connection;
using database::Null;
using database::Sql;
using database::Value;

namespace {

constexpr std::size_t cards_at_once = 200;

// The codes of makers or groups by name. A new name gets the next code and a row.
class Names {
  public:
    Names(Connection& connection, const database::Result& rows, const Sql& head, BulkRows at_once)
        : insert_(connection, head, 2, at_once) {
        for (const auto& row : rows) {
            codes_.emplace(row.text("name"), row.integer("code"));
            last_ = std::max(last_, row.integer("code"));
        }
    }

    Value code_of(const std::string& name) {
        if (name.empty()) return Null{};
        const auto [found, is_new] = codes_.emplace(name, last_ + 1);
        if (is_new) insert_.add({Value(++last_), Value(name)});
        return found->second;
    }
    void finish() { insert_.finish(); }

  private:
    BulkInsert insert_;
    std::map<std::string, std::int64_t> codes_;
    std::int64_t last_ = 0;
};

class Writer {
  public:
    Writer(Connection& connection, const common::Moment& now, BulkRows at_once)
        : connection_(connection),
          now_(now),
          makers_(connection, connection.query("select code,[name] from makers"),
                  Sql("insert into makers (code,[name])"), at_once),
          groups_(connection, connection.query("select code,[name] from item_types"),
                  Sql("insert into item_types (code,[name])"), at_once),
          items_(connection,
                 Sql("insert into items (code,[name],fact,itype,[desc],mquan,sale_only,num2,num3,[stop],num1,"
                     "price11,price12,price13,price14,price15,price21,price22,price23,price24,price25,"
                     "price31,price32,price33,price34,price35)"),
                 26, at_once),
          barcodes_(connection, Sql("insert into barcode (bar,code,scode)"), 3, at_once),
          stock_(connection, Sql("insert into stk (icode,stcode,quan,edate)"), 4, at_once),
          opening_(connection, Sql("insert into stk_f_q (icode,stcode,quan,edate,[date],f_q,B_no)"), 7,
                   at_once),
          store_(database::integer_of(connection.scalar("select st_d from basic"))),
          updates_at_once_(at_once == BulkRows::one ? 1 : cards_at_once) {}

    void add(const ItemLine& item, ImportOutcome& outcome) {
        write_item(item);
        ++outcome.items;
        for (std::size_t unit = 0; unit < item.barcodes.size(); ++unit)
            for (const std::string& barcode : item.barcodes[unit])
                add_barcode({barcode, static_cast<int>(unit) + 1}, item.code, outcome);
        if (!item.stock) return;
        const std::vector<Value> batch = {Value(item.code), Value(item.store.value_or(store_)),
                                          Value(*item.stock), Value(common::Moment{item.expiry, {}})};
        stock_.add(batch);
        opening_.add({batch[0], batch[1], batch[2], batch[3], Value(now_), Value(std::int64_t{1}),
                      Value(std::string("opening"))});
        ++outcome.batches;
    }

    // All but the prices.
    void change(const ItemLine& item, const CardNow& card, ImportOutcome& outcome) {
        Sql set("update items set code = code");
        std::vector<Value> values;
        const auto column = [&](std::string_view name, database::Fragment assignment, Value value) {
            if (!item.has(name)) return;
            set += assignment;
            values.push_back(std::move(value));
        };
        column("name", ", [name] = ?", Value(item.name));
        column("maker", ", fact = ?", makers_.code_of(item.maker));
        column("group", ", itype = ?", groups_.code_of(item.group));
        column("description", ", [desc] = ?", Value(item.description));
        column("minimum", ", mquan = ?", or_null(item.minimum));
        column("service", ", sale_only = ?", Value(std::int64_t{item.service ? 1 : 0}));
        column("pack", ", num2 = ?", or_null(item.pack));
        column("carton", ", num3 = ?", or_null(item.carton));
        if (!values.empty()) updates_.emplace_back(set + " where code = " + item.code, std::move(values));
        if (updates_.size() >= updates_at_once_) finish_updates();
        for (const CardBarcode& barcode : new_barcodes(item, card))
            add_barcode(barcode, item.code, outcome);
        ++outcome.changed;
    }

    void finish() {
        finish_updates();
        makers_.finish();
        groups_.finish();
        for (BulkInsert* table : {&items_, &barcodes_, &stock_, &opening_})
            table->finish();
    }

  private:
    void add_barcode(const CardBarcode& barcode, std::int64_t item, ImportOutcome& outcome) {
        barcodes_.add({Value(barcode.text), Value(item), Value(std::int64_t{barcode.unit_level})});
        ++outcome.barcodes;
    }
    void finish_updates() {
        if (!updates_.empty()) connection_.run_all(updates_);
        updates_.clear();
    }
    void write_item(const ItemLine& item) {
        std::vector<Value> cells = {Value(item.code),
                                    Value(item.name),
                                    makers_.code_of(item.maker),
                                    groups_.code_of(item.group),
                                    item.description.empty() ? Value(Null{}) : Value(item.description),
                                    or_null(item.minimum),
                                    Value(std::int64_t{item.service ? 1 : 0}),
                                    or_null(item.pack),
                                    or_null(item.carton),
                                    Value(std::int64_t{0}),
                                    Value(std::int64_t{1})};
        for (const auto& unit : item.prices) {
            for (const double price : unit)
                cells.emplace_back(price);
        }
        items_.add(std::move(cells));
    }

    Connection& connection_;
    common::Moment now_;
    Names makers_;
    Names groups_;
    BulkInsert items_;
    BulkInsert barcodes_;
    BulkInsert stock_;
    BulkInsert opening_;
    std::vector<database::Command> updates_;
    std::int64_t store_;
    std::size_t updates_at_once_;
};

// Ends the transaction with the problem of a line.
struct Stopped {
    LineProblem problem;
};

class Import {
  public:
    Import(Connection& connection, const signin::Session& session, const ImportPlan& plan,
           const common::Moment& now, const ImportProgress& progress)
        : connection_(connection), session_(session), plan_(plan), now_(now), progress_(progress) {
        now_.time.millisecond = 0;  // moments in statements are whole seconds
    }

    // Writes all lines or, after an error, none. Codes have keys, so tills may draw numbers meanwhile: if
    // another office takes the code of a new maker or group, the next attempt draws another one.
    void write(BulkRows at_once, ImportOutcome& outcome) {
        database::Transaction transaction(connection_);
        const auto cards = cards_to_change();
        Writer writer(connection_, now_, at_once);
        std::vector<NewPrice> prices;
        std::size_t done = 0;
        for (const PlannedLine& line : plan_.lines) {
            try {
                if (!line.item.is_update) {
                    writer.add(line.item, outcome);
                } else if (line.changes_anything()) {
                    const CardNow& card = cards.at(line.item.code);
                    writer.change(line.item, card, outcome);
                    const auto of_line = prices_of(line.item, card);
                    prices.insert(prices.end(), of_line.begin(), of_line.end());
                }
            } catch (const database::Error& error) {
                if (at_once == BulkRows::one && error.kind() == database::Error::Kind::other)
                    throw Stopped{problem_of(line.item, line.name,
                                             {std::string("the database says: ") + error.what(),
                                              std::string("رفضت قاعدة البيانات السطر: ") + error.what()})};
                throw;
            }
            if (progress_) progress_(ImportStage::writing, ++done, plan_.lines.size());
        }
        writer.finish();
        check_barcodes();
        change_prices(connection_, session_, now_, prices, why::import);
        transaction.commit();
        connection_.make_durable();
    }

  private:
    // Barcodes have no key: another office may have given one to an item since the plan was made.
    void check_barcodes() const {
        std::unordered_map<std::string, const PlannedLine*> lines;
        for (const PlannedLine& line : plan_.lines)
            for (const auto& of_unit : line.item.barcodes)
                for (const std::string& barcode : of_unit)
                    lines.emplace(comparable_barcode(barcode), &line);
        if (lines.empty()) return;
        for (const auto& row : connection_.query("select bar,code from barcode")) {
            const auto found = lines.find(comparable_barcode(row.text("bar")));
            if (found == lines.end() || found->second->item.code == row.integer("code")) continue;
            const std::string item = row.text("code");
            throw Stopped{problem_of(
                found->second->item, found->second->name,
                {"barcode " + found->first + " was given to item " + item + " meanwhile",
                 "الباركود " + found->first + " أصبح لصنف آخر " + item + "، اقرأ الملف مرة أخرى"})};
        }
    }
    // The cards that the plan changes. They must still be as they were when the plan was made.
    std::map<std::int64_t, CardNow> cards_to_change() {
        std::set<std::int64_t> codes;
        for (const PlannedLine& line : plan_.lines)
            if (line.item.is_update && line.changes_anything()) codes.insert(line.item.code);
        auto cards = cards_now(connection_, codes);
        for (const PlannedLine& line : plan_.lines) {
            if (!line.item.is_update || !line.changes_anything()) continue;
            const auto card = cards.find(line.item.code);
            if (card == cards.end() || difference_text(line.item, card->second) != line.changes)
                throw Stopped{problem_of(line.item, line.name,
                                         {"the item was changed meanwhile; import the file again",
                                          "غير مستخدم آخر هذا الصنف، اقرأ الملف مرة أخرى"})};
        }
        return cards;
    }

    Connection& connection_;
    const signin::Session& session_;
    const ImportPlan& plan_;
    common::Moment now_;
    const ImportProgress& progress_;
};

}  // namespace

ImportOutcome write_import(Connection& connection, const signin::Session& session, const ImportPlan& plan,
                           const common::Moment& now, const ImportProgress& progress) {
    if (!plan.problems.empty()) return {0, 0, 0, 0, plan.problems};
    Import import(connection, session, plan, now, progress);
    for (const BulkRows at_once : {BulkRows::many, BulkRows::one}) {
        ImportOutcome outcome;
        try {
            import.write(at_once, outcome);
            return outcome;
        } catch (const Stopped& stopped) {
            return {0, 0, 0, 0, {stopped.problem}};
        } catch (const database::Error& error) {
            // Row by row finds the line that the database refuses.
            if (at_once == BulkRows::one || error.kind() != database::Error::Kind::other) throw;
        }
    }
    return {};
}

}  // namespace goods

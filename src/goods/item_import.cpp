#include "goods/item_import.h"

#include <map>
#include <string>

#include "common/text.h"
#include "database/bulk_insert.h"

namespace goods {

using database::BulkInsert;
using database::BulkRows;
using database::Connection;
using database::Null;
using database::Sql;
using database::TextLimits;
using database::Value;

namespace {

KnownGoods known_goods(Connection& connection) {
    KnownGoods known{{},
                     {},
                     {},
                     {},
                     TextLimits(connection, "items"),
                     TextLimits(connection, "makers"),
                     TextLimits(connection, "item_types"),
                     TextLimits(connection, "barcode")};
    for (const auto& row : connection.query("select code,[name] from items")) {
        known.codes.insert(row.integer("code"));
        known.names.emplace(common::lower_ascii(common::trim(row.text("name"))), row.integer("code"));
    }
    for (const auto& row : connection.query("select bar from barcode")) {
        known.barcodes.insert(common::lower_ascii(common::trim_right(row.text("bar"))));
    }
    for (const auto& row : connection.query("select code from stocks"))
        known.stores.insert(row.integer("code"));
    return known;
}

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

Value or_null(const std::optional<double>& number) {
    return number ? Value(*number) : Value(Null{});
}

class Writer {
  public:
    Writer(Connection& connection, const common::Moment& now, BulkRows at_once)
        : now_(now),
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
          store_(database::integer_of(connection.scalar("select st_d from basic"))) {}

    void write(const ItemLine& item, ImportOutcome& outcome) {
        write_item(item);
        ++outcome.items;
        for (std::size_t unit = 0; unit < item.barcodes.size(); ++unit) {
            for (const std::string& barcode : item.barcodes[unit]) {
                barcodes_.add({Value(barcode), Value(item.code), Value(static_cast<std::int64_t>(unit) + 1)});
                ++outcome.barcodes;
            }
        }
        if (!item.stock) return;
        const std::vector<Value> batch = {Value(item.code), Value(item.store.value_or(store_)),
                                          Value(*item.stock), Value(common::Moment{item.expiry, {}})};
        stock_.add(batch);
        opening_.add({batch[0], batch[1], batch[2], batch[3], Value(now_), Value(std::int64_t{1}),
                      Value(std::string("opening"))});
        ++outcome.batches;
    }

    void finish() {
        makers_.finish();
        groups_.finish();
        for (BulkInsert* table : {&items_, &barcodes_, &stock_, &opening_})
            table->finish();
    }

  private:
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

    common::Moment now_;
    Names makers_;
    Names groups_;
    BulkInsert items_;
    BulkInsert barcodes_;
    BulkInsert stock_;
    BulkInsert opening_;
    std::int64_t store_;
};

// Writes all lines or, after an error, none.
void write(Connection& connection, const ItemFile& file, BulkRows at_once, common::Moment now,
           const ImportProgress& progress, ImportOutcome& outcome) {
    database::Transaction transaction(connection);
    now.time.millisecond = 0;  // moments in statements are whole seconds
    Writer writer(connection, now, at_once);
    for (const ItemLine& item : file.lines) {
        try {
            writer.write(item, outcome);
        } catch (const database::Error& error) {
            if (at_once == BulkRows::one && error.kind() == database::Error::Kind::other)
                outcome.problems.push_back({item.line, std::string("the database says: ") + error.what()});
            throw;
        }
        if (progress) progress(ImportStage::writing, outcome.items, file.lines.size());
    }
    writer.finish();
    transaction.commit();
    connection.make_durable();
}

// Writes all lines, or finds the one that the database refuses.
void write(Connection& connection, const ItemFile& file, const common::Moment& now,
           const ImportProgress& progress, ImportOutcome& outcome) {
    try {
        write(connection, file, BulkRows::many, now, progress, outcome);
        return;
    } catch (const database::Error& error) {
        if (error.kind() != database::Error::Kind::other) throw;
    }
    outcome.items = outcome.barcodes = outcome.batches = 0;
    try {
        write(connection, file, BulkRows::one, now, progress, outcome);
    } catch (const database::Error&) {
        if (outcome.problems.empty()) throw;
    }
}

}  // namespace

ImportOutcome import_items(Connection& connection, std::string_view csv, const common::Moment& now,
                           const ImportProgress& progress) {
    ImportOutcome outcome;
    ItemFile file = read_items(csv, known_goods(connection), [&](std::size_t bytes) {
        if (progress) progress(ImportStage::reading, bytes, csv.size());
    });
    outcome.problems = std::move(file.problems);
    outcome.notes = std::move(file.notes);
    if (!outcome.problems.empty()) return outcome;
    write(connection, file, now, progress, outcome);
    return outcome;
}

}  // namespace goods

#include "database/schema/schema.h"

#include <string>
#include <string_view>

#include "common/text.h"
#include "database/recordset.h"
#include "database/tsql/scanner.h"

namespace database {

extern const std::string_view base_schema_text;

namespace {

// The script's next statement without its comments; empty at the end of the script.
std::string next_statement(std::string_view& script) {
    std::string statement;
    while (!script.empty()) {
        const std::size_t end = std::min(script.find('\n'), script.size());
        const std::string_view line = script.substr(0, end);
        script.remove_prefix(std::min(end + 1, script.size()));
        if (line == "GO") break;
        if (line.starts_with("--") || common::trim(line).empty()) continue;
        if (!statement.empty()) statement += '\n';
        statement += line;
    }
    return statement;
}

// Runs one operation of the list and ignores its failure, except for a lost connection and a full disk.
template <typename Operation>
void ignoring_failure(Operation operation) {
    try {
        operation();
    } catch (const Error& error) {
        if (error.is_connection_lost() || error.kind() == Error::Kind::disk_full) throw;
    }
}

// Runs a statement of the list. Servers that do not know all of its words use error numbers of their own, so
// the SQLSTATE decides.
void run_entry(Connection& connection, std::string_view statement) {
    try {
        connection.run(statement, {});
    } catch (const Error& error) {
        if (error.sqlstate() != "42000") throw;
        for (const std::string& simpler : simpler_statements(statement))
            ignoring_failure([&] { connection.run(simpler, {}); });
    }
}

// Tables of our own. A till that may not create them works without.
constexpr Fragment till_tables[] = {
    // database/till_settings.h
    "create table till_setting (name nvarchar(50) not null primary key, value nvarchar(200) null)",
    // sales/return_links.h
    "create table till_return (pnum int null, ctype int null, vcode int null, stcode int null, "
    "[date] datetime null, time_ datetime null, sale_pnum int null, sale_ctype int null, "
    "sale_vcode int null, sale_stcode int null, sale_date datetime null, sale_time datetime null)",
    // startup/running_till.h
    "create table till_running (cash_no int not null primary key, place nvarchar(200) null, seen datetime "
    "null)",
    "create index till_return_number on till_return (pnum, ctype, stcode, [date], vcode)",
    // sales/claim.h
    "create table till_claim (series int not null, stcode int not null, pnum int not null, claim int not "
    "null, goods nvarchar(max) null, moment datetime not null, primary key (series, stcode, pnum))",
    // database/journal.h
    "create table till_save (id bigint not null primary key, stcode int null, cash_no int null, "
    "kind nvarchar(20) null, title nvarchar(200) null, begun datetime null, content nvarchar(max) null)",
    "create table till_step (save_id bigint not null, step int not null, noted nvarchar(max) null, "
    "primary key (save_id, step))",
    // sales/tiles.h
    "create table till_tile (page int not null, place int not null, name nvarchar(50) null, icode int null, "
    "scode int null, colour int null, primary key (page, place))",
    // database/next_number.h
    "create table till_number (id int not null primary key)",
    // audit/chain.h
    "create table till_journal (cash_no int not null, num bigint not null, id bigint not null, moment "
    "datetime "
    "null, stcode int null, user_code int null, user_name nvarchar(100) null, kind nvarchar(30) null, what "
    "nvarchar(400) null, amount float null, icode bigint null, pnum int null, approver int null, "
    "approver_name "
    "nvarchar(100) null, hash nvarchar(64) null, primary key (cash_no, num))",
    "create index till_journal_moment on till_journal (moment)",
    // signin/badges.h
    "create table till_badge (user_code int not null primary key, salt nvarchar(40) null, hash nvarchar(64) "
    "null, "
    "given datetime null)",
    // signin/blocked.h
    "create table till_blocked (user_code int not null primary key, moment datetime null)",
    // sales/draft.h
    "create table till_draft (id bigint not null primary key, past bigint null)",
    // sales/held_invoices.h
    "create table till_held (id bigint not null primary key, stcode int null, cash_no int null, "
    "user_name nvarchar(100) null, moment datetime null, customer nvarchar(100) null, net float null, "
    "line_count int null, content nvarchar(max) null, taken bigint null, taken_cash int null, "
    "taken_user nvarchar(100) null)",
    // goods/prices.h
    "create table till_price (icode int not null, num bigint not null, unit int not null, level int not "
    "null, "
    "old_price float null, new_price float null, moment datetime null, user_code int null, user_name "
    "nvarchar(100) null, why nvarchar(50) null, primary key (icode, num))",
    "create index till_price_moment on till_price (moment)",
    // reports/frozen_day.h
    "create table till_day (stcode int not null, [day] datetime not null, closed datetime null, user_code "
    "int "
    "null, user_name nvarchar(100) null, figures nvarchar(max) null, content nvarchar(max) null, "
    "primary key (stcode, [day]))",
    // counting/counts.h
    "create table till_count (num int not null primary key, stcode int null, scope int null, itype int null, "
    "by_date int null, title nvarchar(100) null, opened datetime null, opened_by int null, closed datetime "
    "null, closed_by int null, booked int null)",
    "create table till_count_line (cnum int not null, num int not null, icode int null, edate datetime null, "
    "quan float null, scode int null, stock float null, cost float null, kind int null, moment datetime "
    "null, "
    "user_code int null, computer nvarchar(50) null, removed int null, primary key (cnum, num))",
    "create index till_count_line_item on till_count_line (icode, cnum)",
};

}  // namespace

void create_base_schema(Connection& connection) {
    std::vector<Command> tables;  // and indexes
    const auto create = [&] {
        connection.run_all(tables);
        tables.clear();
    };
    std::string_view script = base_schema_text;
    for (std::string statement = next_statement(script); !statement.empty();
         statement = next_statement(script)) {
        if (statement.starts_with("create view")) {
            // A server accepts it only as a batch of its own.
            create();
            connection.run(statement, {});
            continue;
        }
        tables.emplace_back(Sql::from_administrator(std::move(statement)));
    }
    create();
    connection.make_durable();
}

void run_upgrade_list(Connection& connection) {
    for (const UpgradeEntry& entry : upgrade_entries())
        ignoring_failure([&] {
            if (entry.procedure != nullptr)
                entry.procedure(connection);
            else
                run_entry(connection, entry.statement);
        });
    for (const Fragment table : till_tables)
        ignoring_failure([&] { connection.execute(table); });
}

void for_each_definition(const std::function<void(std::string_view)>& take) {
    std::string_view script = base_schema_text;
    for (std::string statement = next_statement(script); !statement.empty();
         statement = next_statement(script))
        take(statement);
    for (const UpgradeEntry& entry : upgrade_entries())
        if (entry.procedure == nullptr) take(entry.statement);
    for (const Fragment table : till_tables)
        take(table.text());
}

std::vector<std::string> simpler_statements(std::string_view statement) {
    using Kind = tsql::Token::Kind;
    const std::vector<tsql::Token> tokens = tsql::tokenize(statement, {}).list;
    const auto is_word = [&](std::size_t at, std::string_view word) {
        return at < tokens.size() && tokens[at].kind == Kind::name && tokens[at].lower == word;
    };
    std::size_t at = 2;  // behind the table's name, which may have "dbo." before it
    while (at < tokens.size() && !is_word(at, "add") && !is_word(at, "alter"))
        ++at;
    if (!is_word(0, "alter") || at + 1 >= tokens.size()) return {};
    if (is_word(at, "alter")) {
        const std::size_t last = tokens.size() - 2;
        if (!is_word(last, "null") || is_word(last - 1, "not")) return {};
        return {std::string(statement.substr(0, tokens[last].begin))};
    }
    const std::size_t first = tokens[at + 1].begin;
    std::vector<std::string> simpler;
    std::size_t begin = first;
    int depth = 0;
    for (const tsql::Token& token : tokens) {
        if (token.kind == Kind::symbol && token.text == "(") ++depth;
        if (token.kind == Kind::symbol && token.text == ")") --depth;
        const bool is_end = token.kind == Kind::end;
        if (!is_end && (depth > 0 || token.kind != Kind::symbol || token.text != ",")) continue;
        simpler.push_back(std::string(statement.substr(0, first)) +
                          std::string(statement.substr(begin, token.begin - begin)));
        begin = token.begin + 1;
    }
    if (simpler.size() == 1) simpler.clear();
    return simpler;
}

std::string schema_text(Connection& connection) {
    std::string text;
    for (const std::string& table : connection.tables()) {
        if (table == "tmp_acc" || table == "tmp_item") continue;
        text += table;
        const Connection::Table shape = connection.describe(table);
        for (std::size_t i = 0; i < shape.columns.size(); ++i)
            text += '|' + shape.columns[i] + ' ' + shape.types[i];
        text += '\n';
    }
    return text;
}

void add_store_columns(Connection& connection) {
    const Result stores = connection.query(" select * from stocks");
    for (const Row& store : stores)
        ignoring_failure([&] {
            connection.execute(Sql("ALTER TABLE items add p_") + store.integer("code") +
                               " nvarchar(20) null");
        });
}

void copy_shifts_to_drawers(Connection& connection) {
    const Result drawers = connection.query("select * from cash");
    Recordset shifts(connection, "select * from shift");
    for (const Row& drawer : drawers) {
        ignoring_failure([&] {
            const Result without_drawer = connection.query("select * from shift where cash_no is null ");
            for (const Row& row : without_drawer)
                ignoring_failure([&] {
                    shifts.cancel();  // of a copy that failed
                    shifts.add();
                    shifts.set("stcode", drawer.value("stcode"));
                    shifts.set("cash_no", drawer.value("code"));
                    for (const char* column : {"scode", "s_date", "e_date", "man_", "dep"})
                        shifts.set(column, row.value(column));
                    shifts.update();
                });
        });
    }
}

void number_vouchers(Connection& connection) {
    std::int64_t next = integer_of(connection.scalar("select max(pay_id) as xl from vencuspay ")) + 1;
    Recordset vouchers(connection, "select * from vencuspay where pay_id is null");
    for (vouchers.move_first(); !vouchers.at_end(); vouchers.move_next()) {
        ignoring_failure([&] {
            vouchers.set("pay_id", Value(next));
            vouchers.update();
        });
        vouchers.cancel();  // of a row that could not be written
        ++next;
    }
}

}  // namespace database

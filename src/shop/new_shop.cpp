#include "shop/new_shop.h"

#include <utility>
#include <vector>

#include "common/ports.h"
#include "common/random.h"
#include "database/recordset.h"
#include "database/schema/schema.h"
#include "database/till_settings.h"
#include "printing/receipt.h"
#include "shop/messages.h"
#include "shop/opening_stock.h"
#include "shop/rows.h"
#include "shop/users.h"

namespace shop {

namespace fs = std::filesystem;

using database::Connection;
using database::quoted;
using database::Recordset;
using database::Sql;

namespace {

// Tables of the demo shop for every shop: the names of the units and the price classes.
constexpr std::string_view common_tables[] = {"unit1", "cust_typ"};

void add_row(Connection& connection, database::Fragment statement,
             const std::vector<std::pair<const char*, database::Value>>& cells) {
    Recordset table(connection, statement);
    table.add();
    for (const auto& [column, value] : cells)
        table.set(column, value);
    table.update();
}

class Filler {
  public:
    Filler(Connection& connection, const NewShop& wanted, const common::Moment& now)
        : connection_(connection), wanted_(wanted), now_(now) {}

    // Stores come before the upgrade list, which adds a column for each of them to the items; all other rows
    // come after it, when every column exists.
    void run() {
        database::create_base_schema(connection_);
        if (wanted_.demo) {
            load("stocks");
        } else {
            add_row(connection_, "select * from stocks",
                    {{"code", std::int64_t{1}}, {"name", wanted_.store}});
        }
        database::run_upgrade_list(connection_);
        database::set_till_setting(connection_, database::setting::net_from, "1900/01/01");
        if (wanted_.demo) {
            demo();
        } else {
            bare();
            for (const std::string_view table : common_tables)
                load(table);
        }
        for (const EmbeddedTable& rows : printer_code_tables())
            load_rows(connection_, rows, now_.date);
        connection_.execute(Sql("update basic set cr_v = ") + quoted(shop_version()) + " , [print] = " +
                            quoted(wanted_.printer_port) + " , cash = " + quoted(wanted_.drawer_port));
    }

  private:
    void load(std::string_view table) {
        for (const EmbeddedTable& rows : demo_tables()) {
            if (rows.table == table) load_rows(connection_, rows, now_.date);
        }
    }

    void bare() {
        using std::string;
        const std::int64_t one = 1;
        add_row(connection_, "select * from basic",
                {{"aname", wanted_.name},
                 {"ename", wanted_.second_name},
                 {"tel", wanted_.telephone},
                 {"max_dis", 10.0},
                 {"st_d", one},
                 {"mst", one},
                 {"mcash", one},
                 {"main_p", std::int64_t{0}},
                 {"logo", string("logo.jpg")}});
        std::int64_t code = 0;
        for (const NewDrawer& drawer : wanted_.drawers)
            add_row(connection_, "select * from cash",
                    {{"code", ++code},
                     {"name", drawer.name},
                     {"stcode", one},
                     {"copen", drawer.opening.value()},
                     {"salary1", 0.0}});
        add_row(connection_, "select * from worker", {{"work_code", one}, {"work_name", string("بائع")}});
        add_user({wanted_.administrator, wanted_.password}, one, "all");
        // A cashier is also one of the workers, because workers open shifts.
        std::int64_t next = 2;
        for (const Person& cashier : wanted_.cashiers) {
            add_row(connection_, "select * from worker", {{"work_code", next}, {"work_name", cashier.name}});
            add_user(cashier, next++, cashier_actions);
        }
    }

    void add_user(const Person& person, std::int64_t code, std::string_view actions) {
        add_row(connection_, "select * from users",
                {{"code", code},
                 {"name", person.name},
                 {"pass", person.password},
                 {"perm", permission_string(actions)}});
    }

    void demo() {
        for (const EmbeddedTable& rows : demo_tables())
            if (rows.table != "stocks") load_rows(connection_, rows, now_.date);
        remember_opening_stock(connection_, now_);
        if (wanted_.name.empty()) return;
        connection_.execute(Sql("update basic set aname = ") + quoted(wanted_.name));
    }

    Connection& connection_;
    const NewShop& wanted_;
    common::Moment now_;
};

}  // namespace

void refuse_port(const std::string& port, const fs::path& folder) {
    if (printing::PrinterChoice{port}.is_text_port() &&
        common::is_never_a_port(common::port_fault(port, folder)))
        throw Refused(port + " is no device and no receipt file (a new one ends in .txt, .prn or .bin)",
                      std::string(message::no_port) + port);
}

std::vector<Person> make_shop(const NewShop& asked, const common::Moment& now,
                              const std::function<fs::path()>& keep_password) {
    NewShop wanted = asked;
    for (const std::string& text : {wanted.name, wanted.telephone, wanted.administrator})
        require_plain_name(text);
    if (wanted.name.empty() && !wanted.demo) wanted.name = "المحل";
    if (wanted.administrator.empty()) wanted.administrator = "المدير";
    if (wanted.password.empty()) wanted.password = common::random_digits(6);
    std::vector<Person> users;
    const auto fill = [&](Connection& connection) {
        for (const std::string& port : {wanted.printer_port, wanted.drawer_port})
            refuse_port(port, wanted.folder);
        Filler(connection, wanted, now).run();
        if (wanted.add) wanted.add(connection);
        for (const auto& row : connection.query("select [name],pass from users order by code"))
            users.push_back({row.text("name"), row.text("pass")});
    };
    make_place(wanted.folder, wanted.place, fill, keep_password);
    return users;
}

}  // namespace shop

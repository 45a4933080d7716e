#include "admin/new_shop.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "admin/checks.h"
#include "admin/rows.h"
#include "admin/shop.h"
#include "admin/tool.h"
#include "admin/users.h"
#include "common/ports.h"
#include "common/random.h"
#include "database/recordset.h"
#include "database/schema/schema.h"
#include "database/till_settings.h"
#include "printing/receipt.h"

namespace admin {

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
    Filler(Connection& connection, const NewShop& wanted, Tool& tool)
        : connection_(connection), wanted_(wanted), tool_(tool) {}

    // Stores come before the upgrade list, which adds a column for each of them to the items; all other rows
    // come after it, when every column exists.
    void run() {
        database::create_base_schema(connection_);
        if (wanted_.demo) {
            load("stocks");
        } else {
            add_row(connection_, "select * from stocks",
                    {{"code", std::int64_t{1}}, {"name", std::string("الفرع الرئيسي")}});
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
            load_rows(connection_, rows, today());
        connection_.execute(Sql("update basic set cr_v = ") + quoted(shop_version()) + " , [print] = " +
                            quoted(wanted_.printer_port) + " , cash = " + quoted(wanted_.drawer_port));
    }

  private:
    common::Date today() { return tool_.clock.now().date; }

    void load(std::string_view table) {
        for (const EmbeddedTable& rows : demo_tables()) {
            if (rows.table == table) load_rows(connection_, rows, today());
        }
    }

    void bare() {
        using std::string;
        const std::int64_t one = 1;
        add_row(connection_, "select * from basic",
                {{"aname", wanted_.name},
                 {"tel", wanted_.telephone},
                 {"max_dis", 10.0},
                 {"st_d", one},
                 {"mst", one},
                 {"mcash", one},
                 {"main_p", std::int64_t{0}},
                 {"logo", string("logo.jpg")}});
        add_row(
            connection_, "select * from cash",
            {{"code", one}, {"name", string("درج 1")}, {"stcode", one}, {"copen", 0.0}, {"salary1", 0.0}});
        add_row(connection_, "select * from worker", {{"work_code", one}, {"work_name", string("بائع")}});
        add_row(connection_, "select * from users",
                {{"code", one},
                 {"name", wanted_.administrator},
                 {"pass", wanted_.password},
                 {"perm", permission_string("all")}});
    }

    void demo() {
        Progress progress(tool_, "demo rows", demo_tables().size());
        for (const EmbeddedTable& rows : demo_tables()) {
            if (rows.table != "stocks") load_rows(connection_, rows, today());
            progress.step();
        }
        remember_opening_stock(connection_, tool_.clock.now());
        if (wanted_.name.empty()) return;
        connection_.execute(Sql("update basic set aname = ") + quoted(wanted_.name));
    }

    Connection& connection_;
    const NewShop& wanted_;
    Tool& tool_;
};

// A shop must not begin with a port that its tills refuse.
void refuse_ports(const NewShop& wanted) {
    for (const std::string& port : {wanted.printer_port, wanted.drawer_port}) {
        if (printing::PrinterChoice{port}.is_text_port() &&
            common::is_never_a_port(common::port_fault(port, wanted.folder)))
            throw Refused(port + " is no device and no receipt file (a new one ends in .txt, .prn or .bin)");
    }
}

}  // namespace

void make_shop(const NewShop& asked, Tool& tool) {
    NewShop wanted = asked;
    for (const std::string& text : {wanted.name, wanted.telephone, wanted.administrator})
        require_plain_name(text);
    if (wanted.name.empty() && !wanted.demo) wanted.name = "متجري";
    if (wanted.administrator.empty()) wanted.administrator = "المدير";
    const bool is_given = !wanted.password.empty();
    if (!is_given) wanted.password = common::random_digits(6);
    std::string who_signs_in;
    make_place(wanted.folder, wanted.place, tool, [&](Connection& connection) {
        refuse_ports(wanted);
        Filler(connection, wanted, tool).run();
        for (const auto& row : connection.query("select [name],pass from users order by code")) {
            who_signs_in += "User: " + row.text("name") +
                            (is_given ? std::string() : ", password: " + row.text("pass")) + '\n';
        }
    });
    tool.out << who_signs_in;
}

namespace {

constexpr std::size_t longest_text = 100;  // basic.aname, users.name, users.pass

}  // namespace

void add_new_shop(CLI::App& program, Tool& tool) {
    const auto wanted = std::make_shared<NewShop>();
    const auto folder = std::make_shared<std::string>();
    CLI::App* command = program.add_subcommand("new-shop", "Makes a shop in a folder: database and files");
    command->add_option("folder", *folder, "The folder; created if missing")->required();
    auto* demo = command->add_flag("--demo", wanted->demo, "Fill it with the demo grocery and its users");
    add_place_options(*command, wanted->place, "Make the database on this server instead of in a file");
    const auto fits = CLI::Validator(
        [](std::string& text) {
            return text.size() > longest_text ? std::string("longer than 100 bytes") : std::string();
        },
        "", "text length");
    command->add_option("--name", wanted->name, "The shop's name on receipts")->check(fits);
    command->add_option("--tel", wanted->telephone, "Its telephone on receipts")->check(fits);
    command
        ->add_option("--printer", wanted->printer_port,
                     "Receipt port: \"win\" for the system's printer, or a port")
        ->capture_default_str()
        ->check(fits);
    command->add_option("--drawer", wanted->drawer_port, "Port of the cash drawer")
        ->capture_default_str()
        ->check(fits);
    command->add_option("--user", wanted->administrator, "Name of the administrator")
        ->check(fits)
        ->excludes(demo);
    const auto ask = std::make_shared<bool>(false);
    command
        ->add_flag("--ask-password", *ask,
                   "Ask for the administrator's password, or read it from the standard input; without it a "
                   "random one is made and printed")
        ->excludes(demo);
    command->callback([wanted, folder, ask, &tool] {
        if (*ask)
            wanted->password =
                ask_password(tool, "the administrator", "leave --ask-password out for a random one");
        wanted->folder = tool.folder / *folder;
        make_shop(*wanted, tool);
    });
}

}  // namespace admin

// tallvex-admin check: says what is wrong with the shop and what to do about it.
#include <CLI/CLI.hpp>
#include <functional>
#include <memory>

#include "admin/checks.h"
#include "admin/shop.h"
#include "admin/tool.h"
#include "database/sqlserver/encryption.h"
#include "shop/opening_stock.h"
#include "startup/shop_files.h"

namespace admin {

namespace {

struct Options {
    int days = 31;
    bool accept_stock = false;
    bool mended = false;
    bool add_codes = false;
};

std::string_view word_of(Verdict verdict) {
    switch (verdict) {
        case Verdict::good:
            return "ok     ";
        case Verdict::note:
            return "note   ";
        case Verdict::wrong:
            return "WRONG  ";
    }
    return "";
}

void accept_stock(Tool& tool) {
    const auto connection = open_shop(tool);
    shop::remember_opening_stock(*connection, tool.clock.now());
    connection->make_durable();
    tool.out << "the present stock is what later checks start from\n";
}

void add_codes(Tool& tool) {
    const auto connection = open_shop(tool);
    const std::size_t added = add_printer_codes(*connection);
    connection->make_durable();
    tool.out << added
             << " rows added to the table codes; see on the printer screen's test page how they print\n";
}

// What the shop keeper can do about a database that does not open.
std::string_view advice(database::Error::Kind kind) {
    using Kind = database::Error::Kind;
    switch (kind) {
        case Kind::server_missing:
            return "look whether the server is on and its SQL Server listens on the TCP port, whether a "
                   "firewall "
                   "stands between, and whether name and address are right: tallvex-admin connect --show";
        case Kind::database_missing:
            return "create the database on the server, or correct its name with tallvex-admin connect";
        case Kind::login_refused:
            return "the password of sa is another by now: tallvex-admin connect --keep-password";
        case Kind::not_encrypted:
            return "let the server use a certificate (every SQL Server since 2005 has one of its own), or, "
                   "where "
                   "nobody else can listen, allow it: tallvex-admin connect --encryption off";
        case Kind::no_driver:
            return "install the driver: sudo apt-get install tdsodbc";
        case Kind::file_missing:
            return "look whether the connection file names the right file (tallvex-admin connect --show), or "
                   "restore the newest backup: tallvex-admin restore FILE";
        case Kind::file_damaged:
            return "restore the newest backup: tallvex-admin restore FILE";
        case Kind::busy:
            return "end the other program that holds the file";
        case Kind::read_only:
            return "give this user the right to write the file and its folder";
        case Kind::file_unreadable:
            return "give this user the right to read the file";
        case Kind::disk_full:
            return "make room on the disk";
        default:
            return "the till cannot start either; mend this first";
    }
}

class Check {
  public:
    Check(const Options& options, Tool& tool) : options_(options), tool_(tool) {}

    void run() {
        const std::string version = find_version();
        if (const auto connection = connect()) look_over(*connection, version);
        if (wrong_ != 0)
            throw Refused(std::to_string(wrong_) + (wrong_ == 1 ? " thing is wrong" : " things are wrong"));
    }

  private:
    void say(const Findings& findings) {
        for (const Finding& finding : findings) {
            tool_.out << word_of(finding.verdict) << finding.subject << ": " << finding.text << '\n';
            if (finding.verdict == Verdict::wrong) ++wrong_;
        }
        tool_.out << std::flush;
    }

    // Returns "", after saying so, if the version file cannot be read.
    std::string find_version() {
        try {
            return read_version(tool_.shop);
        } catch (const Refused& error) {
            say({{Verdict::wrong, "version file",
                  std::string(error.what()) +
                      "; copy it from another till, or write it with tallvex-admin connect"}});
            return {};
        }
    }

    std::unique_ptr<database::Connection> connect() {
        const Place place = read_place(tool_.shop);
        const std::string where =
            place.server + ", " + place.database + ", in the folder " + tool_.shop.string();
        const auto refuse = [&](std::string_view said, std::string_view advice) {
            if (said.ends_with('.')) said.remove_suffix(1);
            say({{Verdict::wrong, "connection",
                  where + ": " + std::string(said) + "; " + std::string(advice)}});
            return nullptr;
        };
        try {
            auto connection = open_place(tool_.shop, place);
            say({{Verdict::good, "connection", where}});
            if (!is_embedded(place)) {
                const bool is_off = place.encryption == database::encryption::off;
                say({{is_off ? Verdict::note : Verdict::good, "encryption", encryption_words(place)}});
            }
            return connection;
        } catch (const database::Error& error) {
            return refuse(error.what(), advice(error.kind()));
        } catch (const Refused& error) {
            return refuse(error.what(),
                          has_login_password(tool_.shop)
                              ? "make it its owner's alone: chmod 600 sa.pwd"
                              : "keep the password there: tallvex-admin connect --keep-password");
        }
    }

    // Runs one check. If it fails, the others still run.
    void look(std::string_view subject, const std::function<Findings()>& at) {
        try {
            say(at());
        } catch (const database::Error& error) {
            say({{Verdict::wrong, std::string(subject),
                  std::string("cannot be looked at: ") + error.what() + "; mend what stands above first"}});
        }
    }

    void look_over(database::Connection& connection, const std::string& version) {
        const common::Date today = tool_.clock.now().date;
        const Period period{common::add_days(today, -options_.days), today};
        look("schema", [&] { return check_schema(connection); });
        look("settings", [&] { return check_settings(connection, version); });
        look("settings", [&] { return check_till_settings(connection, period); });
        if (connection.is_embedded()) {
            const std::filesystem::path file = startup::shop_file(read_place(tool_.shop), tool_.shop);
            look("backups", [&] { return check_backups(connection, file, today); });
            look("files", [&] { return check_files(connection, file); });
        }
        look("users", [&] { return check_users(connection); });
        std::error_code unknown;
        const auto disk = std::filesystem::space(tool_.shop, unknown);
        if (!unknown) say(check_disk(disk.available));
        look("ports", [&] { return check_ports(connection, tool_.shop); });
        look("printer codes", [&] { return check_printer_codes(connection); });
        look("unfinished saves", [&] { return check_unfinished(connection, tool_.clock.now()); });
        look("invoices", [&] { return check_invoices(connection, period); });
        look("balances", [&] { return check_balances(connection); });
        look("stock", [&] { return check_stock(connection); });
        look("journal", [&] {
            return check_journal(connection, {tool_.shop, read_place(tool_.shop).database});
        });
        look("log", [&] { return check_log(connection, log_file(tool_.shop), period); });
    }

    const Options& options_;
    Tool& tool_;
    std::int64_t wrong_ = 0;
};

void note_mended(Tool& tool) {
    read_place(tool.shop);  // refuses a folder without a shop
    const std::filesystem::path file = log_file(tool.shop);
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    startup::ActivityLog(file.parent_path().parent_path(), tool.clock)
        .log_event(mended_line, common::saving_code);
    if (!std::filesystem::exists(file)) throw Refused(file.string() + " cannot be written");
    tool.out << "the saves that stopped before now count as mended\n";
}

}  // namespace

Findings check_disk(std::uintmax_t free_bytes) {
    constexpr std::uintmax_t megabyte = 1024 * 1024;
    constexpr std::uintmax_t of_a_day = 100 * megabyte;
    const std::string free = std::to_string(free_bytes / megabyte) + " MB are free";
    if (free_bytes >= of_a_day) return {{Verdict::good, "disk", free}};
    return {{Verdict::wrong, "disk", free + ", and a day may need 100: make room, or saves will stop"}};
}

void add_check(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "check",
        tool.help("Checks connection, schema, settings, store, drawer, ports, saved invoices and stock",
                  "يراجع الاتصال والجداول والإعدادات والمخزن والدرج والمنافذ والبونات المحفوظة والأرصدة"));
    command
        ->add_option("--days", options->days,
                     tool.help("How many days back invoices and log are looked at",
                               "عدد الأيام الماضية التي تراجع بوناتها وسجلها"))
        ->check(CLI::Range(0, 100000))
        ->capture_default_str();
    command->add_flag(
        "--accept-stock", options->accept_stock,
        tool.help("Instead of checking, take the present stock as counted: later checks start from it",
                  "لا يراجع، بل يعتمد الأرصدة الحالية كأنها جردت، وتبدأ المراجعات التالية منها"));
    command->add_flag(
        "--mended", options->mended,
        tool.help(
            "Instead of checking, note in the log that what was missing of stopped saves was written by hand",
            "لا يراجع، بل يكتب في السجل أن ما نقص من عمليات الحفظ التي توقفت قد أكمل باليد"));
    command->add_flag(
        "--add-codes", options->add_codes,
        tool.help("Instead of checking, add the printer's codes of Latin letters and signs in Arabic names",
                  "لا يراجع، بل يضيف رموز الطابعة للحروف اللاتينية والعلامات داخل الأسماء العربية"));
    command->callback([options, &tool] {
        if (options->accept_stock) accept_stock(tool);
        if (options->mended) note_mended(tool);
        if (options->add_codes) add_codes(tool);
        if (!options->accept_stock && !options->mended && !options->add_codes) Check(*options, tool).run();
    });
}

}  // namespace admin

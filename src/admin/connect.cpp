// tallvex-admin connect: writes the connection file of the working directory, or reads it back in clear.
#include <CLI/CLI.hpp>
#include <memory>

#include "admin/shop.h"
#include "admin/tool.h"
#include "startup/workstation.h"

namespace admin {

namespace {

struct Options {
    Place place;
    bool show = false;
    bool keep_password = false;
};

void print(const Place& place, Tool& tool) {
    tool.out << "server:   " << place.server << "\ndatabase: " << place.database
             << "\naddress:  " << place.address << '\n';
    if (!is_embedded(place)) tool.out << "encryption: " << encryption_words(place) << '\n';
    // The data source drops one "C" at the end of the server's name and one more at its own end.
    const std::string source = startup::data_source_of(place).data_source;
    const bool uses_address = place.address != startup::no_address;
    if (!uses_address && source != place.server) {
        tool.err
            << "note: the till will connect to \"" << source
            << "\", as it drops up to two letters C at the end; write two more when the name has its own\n";
    }
}

void run(const Options& options, bool with_encryption, Tool& tool) {
    if (options.show) {
        print(read_place(tool.shop), tool);
        return;
    }
    const bool named = !options.place.server.empty() && !options.place.database.empty();
    const bool unnamed = options.place.server.empty() && options.place.database.empty();
    if (!named && !(unnamed && (options.keep_password || with_encryption))) {
        throw CLI::ValidationError("connect", "--server and --database are needed, or --show");
    }
    // A new connection file is made in the shop keeper's working directory, never over the one that till.conf
    // names.
    const auto folder = named ? startup::named_home().value_or(tool.folder) : tool.shop;
    Place place = named ? options.place : read_place(folder);  // refuses a folder without a shop
    place.encryption = named || with_encryption ? options.place.encryption : place.encryption;
    if (with_encryption && is_embedded(place))
        throw Refused(
            "the shop is in a file: nothing of it goes over a network that --encryption could encrypt");
    const std::string password = options.keep_password ? ask_login_password(tool) : std::string();
    if (named || with_encryption) write_place(folder, place);
    if (named) write_shop_files(folder);
    if (options.keep_password)
        tool.out << "password: kept in " << keep_login_password(folder, password) << '\n';
    if (named || with_encryption) print(read_place(folder), tool);
}

}  // namespace

void add_connect(CLI::App& program, Tool& tool) {
    const auto options = std::make_shared<Options>();
    CLI::App* command = program.add_subcommand(
        "connect", tool.help("Writes the connection file of the working directory, or shows it",
                             "يكتب ملف الاتصال في المجلد الحالي، أو يعرضه"));
    auto* show = command->add_flag(
        "--show", options->show,
        tool.help("Print what the connection file says, in clear", "يعرض ما في ملف الاتصال مقروءا"));
    command
        ->add_option("--server", options->place.server,
                     tool.help("Server machine, \"machine\\instance\", or \"embedded\" for a shop in a file",
                               "جهاز الخادم، أو machine\\instance، أو embedded لمحل محفوظ في ملف"))
        ->excludes(show);
    command
        ->add_option("--database", options->place.database,
                     tool.help("Database, or the file of an embedded shop",
                               "قاعدة البيانات، أو ملف المحل المحفوظ في ملف"))
        ->excludes(show);
    command
        ->add_option(
            "--address", options->place.address,
            tool.help("Network address of the server, used instead of its name; \"Not Found\" for none",
                      "عنوان الخادم على الشبكة، ويستخدم بدلا من اسمه، أو Not Found إذا لم يكن له عنوان"))
        ->capture_default_str()
        ->excludes(show);
    auto* encryption = add_encryption_option(*command, options->place, tool)->excludes(show);
    command->add_flag(
        "--keep-password", options->keep_password,
        tool.help("Ask for the password of the login sa, or read it from the standard input, and keep it in "
                  "sa.pwd, which this user alone may read",
                  "يطلب كلمة سر الحساب sa، أو يقرؤها من الدخل القياسي، ويحفظها في sa.pwd الذي لا يقرؤه غير "
                  "هذا المستخدم"));
    command->callback([options, encryption, &tool] { run(*options, encryption->count() > 0, tool); });
}

}  // namespace admin

#include <CLI/CLI.hpp>
#include <memory>

#include "admin/shop.h"
#include "admin/tool.h"
#include "shop/new_shop.h"

namespace admin {

namespace {

void make_shop(const shop::NewShop& wanted, Tool& tool) {
    const auto users = shop::make_shop(wanted, tool.clock.now(), keeping_password(wanted.folder, tool));
    say_where(wanted.folder, tool);
    for (const shop::Person& user : users) {
        tool.out << "User: " << user.name;
        if (wanted.password.empty()) tool.out << ", password: " << user.password;
        tool.out << '\n';
    }
}

constexpr std::size_t longest_text = 100;  // basic.aname, users.name, users.pass

}  // namespace

void add_new_shop(CLI::App& program, Tool& tool) {
    const auto wanted = std::make_shared<shop::NewShop>();
    const auto folder = std::make_shared<std::string>();
    CLI::App* command =
        program.add_subcommand("new-shop", tool.help("Makes a shop in a folder: database and files",
                                                     "ينشئ محلا في مجلد: قاعدة البيانات والملفات"));
    command
        ->add_option("folder", *folder,
                     tool.help("The folder; created if missing", "المجلد، وينشأ إن لم يوجد"))
        ->required();
    auto* demo = command->add_flag(
        "--demo", wanted->demo,
        tool.help("Fill it with the demo grocery and its users", "يملؤه ببقالة للتجربة ومستخدميها"));
    add_place_options(*command, wanted->place, tool,
                      tool.help("Make the database on this server instead of in a file",
                                "إنشاء قاعدة البيانات على هذا الخادم بدلا من ملف"));
    const auto fits = CLI::Validator(
        [](std::string& text) {
            return text.size() > longest_text ? std::string("longer than 100 bytes") : std::string();
        },
        "", "text length");
    command
        ->add_option("--name", wanted->name, tool.help("The shop's name on receipts", "اسم المحل على البون"))
        ->check(fits);
    command
        ->add_option("--tel", wanted->telephone, tool.help("Its telephone on receipts", "تليفونه على البون"))
        ->check(fits);
    command
        ->add_option("--printer", wanted->printer_port,
                     tool.help("Receipt port: \"win\" for the system's printer, or a port",
                               "منفذ البون: win لطابعة النظام، أو اسم منفذ"))
        ->capture_default_str()
        ->check(fits);
    command
        ->add_option("--drawer", wanted->drawer_port,
                     tool.help("Port of the cash drawer", "منفذ درج النقدية"))
        ->capture_default_str()
        ->check(fits);
    command->add_option("--user", wanted->administrator, tool.help("Name of the administrator", "اسم المدير"))
        ->check(fits)
        ->excludes(demo);
    const auto ask = std::make_shared<bool>(false);
    command
        ->add_flag(
            "--ask-password", *ask,
            tool.help(
                "Ask for the administrator's password, or read it from the standard input; without it a "
                "random one is made and printed",
                "يطلب كلمة سر المدير، أو يقرؤها من الدخل القياسي، وبدونه تعطى كلمة سر عشوائية وتكتب على "
                "الشاشة"))
        ->excludes(demo);
    command->callback([wanted, folder, ask, &tool] {
        if (*ask)
            wanted->password = ask_secret(tool, "password of the administrator",
                                          "leave --ask-password out for a random one");
        wanted->folder = tool.folder / *folder;
        make_shop(*wanted, tool);
    });
}

}  // namespace admin

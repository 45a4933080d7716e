#include "shop/first_start.h"

#include <fmt/format.h>
#include <stdlib.h>

#include <algorithm>
#include <system_error>

#include "common/code_page.h"
#include "common/denominations.h"
#include "common/files.h"
#include "common/named_values.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/form.h"
#include "database/till_settings.h"
#include "goods/item_import.h"
#include "printing/workstation_printer.h"
#include "shop/messages.h"
#include "shop/refused.h"
#include "shop/users.h"

namespace shop {

namespace fs = std::filesystem;
using common::FieldKind;
using common::Refusal;

namespace {

using Fields = FirstStartFields;
using Field = common::FormField<Fields>;

// The number of characters that the columns hold.
constexpr int longest_name = 100;

common::FieldDescription text(const char* name, const char* caption, common::FieldPlace place,
                              std::string_view missing = {}) {
    return {.name = name, .caption = caption, .place = place, .missing = missing, .longest = longest_name};
}

common::FieldDescription amount(const char* name, const char* caption, common::FieldPlace place) {
    return {.name = name, .caption = caption, .kind = FieldKind::amount, .place = place};
}

common::FieldDescription digits(const char* name, const char* caption, common::FieldPlace place) {
    return {
        .name = name, .caption = caption, .kind = FieldKind::digits, .place = place, .longest = longest_name};
}

const Field shop_fields[] = {
    {&Fields::name, text("first_name", "ا&سم المحل", {0, 0, 2}, message::no_shop_name)},
    {&Fields::second_name, text("first_second_name", "ال&عنوان، أو سطر ثان تحت الاسم", {1, 0, 2})},
    {&Fields::telephone, digits("first_telephone", "التليف&ون", {2, 0, 1})},
};

const Field drawer_fields[] = {
    {&Fields::store, text("first_store", "اسم ال&فرع أو المخزن", {0, 0, 2}, message::no_store_name)},
    {&Fields::drawer_1, text("first_drawer_1", "درج نقطة البيع &1", {1, 0}, message::no_drawer)},
    {&Fields::opening_1, amount("first_opening_1", "النقدية فيه الآن", {1, 1})},
    {&Fields::drawer_2, text("first_drawer_2", "درج نقطة البيع &2", {2, 0})},
    {&Fields::opening_2, amount("first_opening_2", "النقدية فيه الآن", {2, 1})},
    {&Fields::drawer_3, text("first_drawer_3", "درج نقطة البيع &3", {3, 0})},
    {&Fields::opening_3, amount("first_opening_3", "النقدية فيه الآن", {3, 1})},
    {&Fields::denominations, digits("first_denominations", "فئات ال&نقود الورقية والمعدنية", {4, 0, 2})},
};

const Field printer_fields[] = {
    {&Fields::drawer_port, digits("first_drawer_port", "منفذ &درج النقود، فارغ إن لم يوجد", {0, 0})},
};

const Field user_fields[] = {
    {&Fields::owner, text("first_owner", "اسم &صاحب المحل", {0, 0}, message::no_name)},
    {&Fields::owner_password, text("first_owner_password", "كلمة ال&سر", {0, 1}, message::no_password)},
    {&Fields::owner_again, text("first_owner_again", "كلمة السر &مرة أخرى", {0, 2})},
    {&Fields::cashier_1, text("first_cashier_1", "الكاشير &1", {1, 0})},
    {&Fields::password_1, text("first_password_1", "كلمة سره", {1, 1})},
    {&Fields::cashier_2, text("first_cashier_2", "الكاشير &2", {2, 0})},
    {&Fields::password_2, text("first_password_2", "كلمة سره", {2, 1})},
    {&Fields::cashier_3, text("first_cashier_3", "الكاشير &3", {3, 0})},
    {&Fields::password_3, text("first_password_3", "كلمة سره", {3, 1})},
};

const Field item_fields[] = {
    {&Fields::items_file, digits("first_items_file", "&ملف الأصناف (CSV)، فارغ للبدء بدون أصناف", {0, 0, 2})},
};

struct DrawerMembers {
    std::string Fields::*name;
    std::string Fields::*opening;
    std::string_view field;
};
constexpr DrawerMembers drawer_members[] = {
    {&Fields::drawer_1, &Fields::opening_1, "first_drawer_1"},
    {&Fields::drawer_2, &Fields::opening_2, "first_drawer_2"},
    {&Fields::drawer_3, &Fields::opening_3, "first_drawer_3"},
};

struct UserMembers {
    std::string Fields::*name;
    std::string Fields::*password;
    std::string_view name_field;
    std::string_view password_field;
};
constexpr UserMembers user_members[] = {
    {&Fields::owner, &Fields::owner_password, "first_owner", "first_owner_password"},
    {&Fields::cashier_1, &Fields::password_1, "first_cashier_1", "first_password_1"},
    {&Fields::cashier_2, &Fields::password_2, "first_cashier_2", "first_password_2"},
    {&Fields::cashier_3, &Fields::password_3, "first_cashier_3", "first_password_3"},
};

std::string trimmed(const std::string& text) {
    return std::string(common::trim(text));
}

// Turns the failure of a check into the refusal of the field.
template <typename Check>
std::optional<Refusal> refusal_of(std::string_view field, Check check) {
    try {
        check();
    } catch (const Refused& refused) {
        return Refusal(field, refused.told());
    }
    return std::nullopt;
}

}  // namespace

FirstStepText text_of(FirstStep step) {
    switch (step) {
        case FirstStep::shop:  // the shop: as receipts name it
            return {"المحل", "يظهر هذا في أعلى كل بون، ويمكن تغييره بعد ذلك."};
        case FirstStep::drawers:  // store and drawers: a drawer for each till
            return {"الفرع والأدراج",
                    "لكل جهاز كاشير درج برقم نقطة البيع. اكتب اسم كل درج تستعمله والنقدية التي فيه الآن."};
        case FirstStep::printer:
            return {"طابعة البون",
                    "اختر طابعة هذا الجهاز وعرض الورق ثم جربها. لكل جهاز آخر اختياره من شاشة "
                    "الكاشير."};
        case FirstStep::users:  // who works here: the owner may do everything, cashiers sell
            return {"المستخدمون",
                    "صاحب المحل له كل الصلاحيات، والكاشير يبيع فقط. تتغير الصلاحيات بعد ذلك من "
                    "صفحة المستخدمين."};
        case FirstStep::items:  // one line an item: name, price, barcode, stock
            return {"الأصناف",
                    "إذا كانت الأصناف في ملف فاختره، ويظهر ما فيه قبل الحفظ. وإلا فأضفها بعد ذلك "
                    "من صفحة الأصناف."};
        default:
            return {"مراجعة وإنشاء", "لم يحفظ شيء بعد. راجع ثم أنشئ المحل."};
    }
}

common::FormTable<FirstStartFields> form_of(FirstStep step) {
    switch (step) {
        case FirstStep::shop:
            return shop_fields;
        case FirstStep::drawers:
            return drawer_fields;
        case FirstStep::printer:
            return printer_fields;
        case FirstStep::users:
            return user_fields;
        case FirstStep::items:
            return item_fields;
        default:
            return {};
    }
}

FirstStart::FirstStart(fs::path folder) : folder_(std::move(folder)) {
    fields.denominations = common::denominations_text(common::default_denominations());
}

std::optional<Refusal> FirstStart::check(FirstStep step) const {
    for (const auto& field : form_of(step)) {
        const auto value = value_of(field, fields);
        if (auto refusal = database::check_missing(field.description, value)) return refusal;
        if (field.description.kind == FieldKind::amount) {
            const auto read = common::read_amount(std::get<std::string>(value));
            if (!read.refusal.empty()) return Refusal(field.description.name, read.refusal);
            if (read.value < common::Amount()) return Refusal(field.description.name, message::below_zero);
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            const char* name = field.description.name;
            if (auto refusal = refusal_of(name, [&] { require_plain_name(*text); })) return refusal;
        }
    }
    if (step == FirstStep::drawers) return check_drawers();
    if (step == FirstStep::users) return check_users();
    if (step == FirstStep::printer && !port_of_drawer().empty())
        return refusal_of("first_drawer_port", [&] { refuse_port(port_of_drawer(), folder_); });
    return std::nullopt;
}

// Drawers are numbered in their order, so none may be left out between two.
std::optional<Refusal> FirstStart::check_drawers() const {
    bool ended = false;
    for (const DrawerMembers& drawer : drawer_members) {
        const bool is_named = !trimmed(fields.*drawer.name).empty();
        if (is_named && ended) return Refusal(drawer.field, message::drawer_left_out);
        if (!is_named && common::read_amount(fields.*drawer.opening).value != common::Amount())
            return Refusal(drawer.field, message::cash_without_drawer);
        ended = ended || !is_named;
    }
    if (!common::read_denominations(fields.denominations))
        return Refusal("first_denominations", message::no_denominations);
    return std::nullopt;
}

std::optional<Refusal> FirstStart::check_users() const {
    std::vector<std::string> names;
    for (const UserMembers& user : user_members) {
        const std::string name = trimmed(fields.*user.name);
        if (name.empty()) {
            if (!(fields.*user.password).empty()) return Refusal(user.name_field, message::no_name);
            continue;
        }
        if (auto refusal = refusal_of(user.name_field, [&] { require_user_name(name); })) return refusal;
        for (const std::string& other : names)
            if (common::equal_ignoring_case(other, name))
                return Refusal(user.name_field, std::string(message::name_taken) + name);
        if (trimmed(fields.*user.password).empty()) return Refusal(user.password_field, message::no_password);
        names.push_back(name);
    }
    if (trimmed(fields.owner_password) != trimmed(fields.owner_again))
        return Refusal("first_owner_again", message::passwords_differ);
    return std::nullopt;
}

std::vector<NewDrawer> FirstStart::drawers() const {
    std::vector<NewDrawer> drawers;
    for (const DrawerMembers& drawer : drawer_members)
        if (const std::string name = trimmed(fields.*drawer.name); !name.empty())
            drawers.push_back({name, common::read_amount(fields.*drawer.opening).value});
    return drawers;
}

std::vector<Person> FirstStart::cashiers() const {
    std::vector<Person> people;
    for (const UserMembers& user : user_members)
        if (const std::string name = trimmed(fields.*user.name); !name.empty() && user.name != &Fields::owner)
            people.push_back({name, trimmed(fields.*user.password)});
    return people;
}

std::string FirstStart::port_of_drawer() const {
    return trimmed(fields.drawer_port);
}

namespace {

// Imports the items; throws Refused with the lines at fault.
std::size_t import(database::Connection& connection, const goods::ImportPlan& plan,
                   const common::Moment& now) {
    constexpr std::size_t most_shown = 6;
    goods::ImportOutcome outcome;
    outcome.problems = plan.problems;
    if (outcome.problems.empty()) outcome = goods::write_import(connection, signin::Session(), plan, now);
    if (outcome.problems.empty()) return outcome.items;
    std::string text(message::items_refused);
    for (std::size_t i = 0; i < std::min(most_shown, outcome.problems.size()); ++i)
        text += fmt::format("\n{}: {}", outcome.problems[i].line, outcome.problems[i].reason.arabic);
    if (outcome.problems.size() > most_shown)
        text += fmt::format("\n{}{}", message::and_more, outcome.problems.size() - most_shown);
    throw Refused(text, text);
}

class ScratchFolder {
  public:
    ScratchFolder() {
        std::string name = (fs::temp_directory_path() / "tallvex-new-XXXXXX").string();
        if (mkdtemp(name.data()) != nullptr) path_ = name;
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        if (!path_.empty()) fs::remove_all(path_, ignored);
    }
    fs::path shop() const { return path_ / "shop"; }

  private:
    fs::path path_;
};

}  // namespace

std::optional<Refusal> FirstStart::read_items(const common::Moment& now) {
    constexpr std::string_view field = "first_items_file";
    items_.clear();
    items_plan_ = {};
    item_count_ = 0;
    const std::string file = trimmed(fields.items_file);
    if (file.empty()) return std::nullopt;
    std::string csv;
    try {
        csv = common::read_file(folder_ / file);
        // A UTF-16 file is left to the import, which says how to save it.
        if (!csv.starts_with("\xFF\xFE")) csv = common::from_utf8_or_1256(csv);
    } catch (const std::system_error&) {
        return Refusal(field, std::string(message::no_such_file) + file);
    }
    const ScratchFolder scratch;
    NewShop trial;
    trial.folder = scratch.shop();
    trial.add = [&](database::Connection& connection) {
        items_plan_ = goods::plan_import(connection, csv, false);
        item_count_ = import(connection, items_plan_, now);
    };
    auto refusal = refusal_of(field, [&] { make_shop(trial, now); });
    if (!refusal) items_ = std::move(csv);
    return refusal;
}

std::vector<std::pair<std::string, std::string>> FirstStart::summary() const {
    std::string places;
    for (const NewDrawer& drawer : drawers())
        places += (places.empty() ? "" : "، ") + drawer.name + " (" + drawer.opening.text() + ")";
    std::string people = trimmed(fields.owner);
    for (const Person& cashier : cashiers())
        people += "، " + cashier.name;
    const bool on_port = printer.is_text_port();
    return {{"المحل", trimmed(fields.name)},
            {"الفرع", trimmed(fields.store)},
            {"الأدراج", places},
            {"الطابعة", on_port ? printer.receipt_port : "طابعة النظام"},
            {"المستخدمون", people},
            {"الأصناف", item_count_ == 0 ? "لا توجد بعد" : std::to_string(item_count_)},
            {"المجلد", folder_.string()}};
}

void FirstStart::make(const common::Moment& now) {
    NewShop wanted;
    wanted.folder = folder_;
    wanted.name = trimmed(fields.name);
    wanted.second_name = trimmed(fields.second_name);
    wanted.telephone = trimmed(fields.telephone);
    wanted.store = trimmed(fields.store);
    wanted.drawers = drawers();
    wanted.printer_port = printer.receipt_port;
    wanted.drawer_port = port_of_drawer();
    wanted.administrator = trimmed(fields.owner);
    wanted.password = trimmed(fields.owner_password);
    wanted.cashiers = cashiers();
    wanted.add = [&](database::Connection& connection) {
        const auto values = common::read_denominations(fields.denominations);
        if (values && *values != common::default_denominations())
            database::set_till_setting(connection, database::setting::denominations,
                                       common::denominations_text(*values));
        if (!items_.empty()) import(connection, goods::plan_import(connection, items_, false), now);
        printing::keep_printer_choice(common::printer_file(folder_, 1), printer);
    };
    make_shop(wanted, now);
}

}  // namespace shop

#include "shop/settings.h"

#include <algorithm>

#include "backup/automatic.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/choices.h"
#include "database/recordset.h"
#include "database/transaction.h"
#include "printing/receipt_settings.h"
#include "sales/items.h"
#include "shop/messages.h"
#include "shop/new_shop.h"
#include "shop/refused.h"
#include "signin/permissions.h"

namespace shop {

using common::Refusal;
using database::Sql;
using Kind = SettingKind;

namespace {

namespace group {
constexpr std::string_view shop = "المحل";
constexpr std::string_view selling = "البيع";
constexpr std::string_view cash = "النقدية";
constexpr std::string_view receipt = "البون";
constexpr std::string_view devices = "الأجهزة";
constexpr std::string_view customer = "شاشة العميل";
constexpr std::string_view safety = "الحفظ والمكتب";
}  // namespace group

// The settings in `basic`, in the order shown.
const Setting basic_settings[] = {
    {group::shop, "اسم المحل", "يظهر في أعلى كل بون وتقرير", "aname", nullptr, Kind::text, true},
    {group::shop, "سطر ثان", "العنوان أو اسم آخر، تحت اسم المحل على البون", "ename"},
    {group::shop, "التليفون", "يظهر على البون", "tel", nullptr, Kind::digits},
    {group::shop, "فرع الأجهزة", "الفرع الذي تبيع منه أجهزة الكاشير، ويجب أن تكون له أدراج", "st_d", nullptr,
     Kind::store, true},
    {group::selling, "أقصى خصم %", "أعلى خصم على الصنف أو البون بدون صلاحية خصم أعلى من المسموح", "max_dis",
     nullptr, Kind::percent, true},
    {group::selling, "السعر المعتاد", "السعر الذي يبدأ به كل بون", "main_p", nullptr, Kind::price_level},
    {group::cash, "العد قبل إغلاق الوردية", "لا تغلق الوردية قبل كتابة النقدية الفعلية", "clos_bal", nullptr,
     Kind::yes_or_no},
    {group::cash, "طباعة تقرير الوردية", "يطبع تقرير الوردية بعد إغلاقها، وتعرض أرقامها بعد ذلك",
     "prn_csh_rep", nullptr, Kind::yes_or_no},
    {group::cash, "الدرج الرئيسي", "الدرج الذي تجمع فيه النقدية عند تسليم الورديات", "mcash", nullptr,
     Kind::main_drawer, true},
    {group::receipt, "ملاحظة أسفل البون", "مثل مدة الاستبدال والاسترجاع", "rec_note"},
    {group::receipt, "فاتورة A4 بدل البون", "تطبع فاتورة صفحة كاملة على طابعة النظام", "inv_p", nullptr,
     Kind::yes_or_no},
    {group::receipt, "المدفوع والباقي في فاتورة A4", "تظهر الفاتورة الكاملة ما دفعه العميل والباقي له",
     "csh_inv", nullptr, Kind::yes_or_no},
    {group::receipt, "نسخة ثانية مختصرة", "تطبع نسخة ثانية لبونات العملاء الذين لهم تليفون", "cust_n",
     nullptr, Kind::yes_or_no},
    {group::receipt, "معاينة قبل الطباعة", "يظهر البون على الشاشة قبل طباعته", "bon_prv", nullptr,
     Kind::yes_or_no},
    {group::receipt, "السعر قبل الخصم", "يظهر على البون سعر الصنف كما هو قبل خصمه", "aft_dsc", nullptr,
     Kind::yes_or_no},
    {group::receipt, "كود الصنف على البون", "يظهر كود كل صنف في سطره", "item_code", nullptr, Kind::yes_or_no},
    {group::receipt, "خط البون", "اسم الخط في البون المرسوم", "bon_font"},
    {group::receipt, "حجم خط البون", "من 4 إلى 24", "bon_font_s", nullptr, Kind::font_size},
    {group::receipt, "ملف الشعار", "صورة بجانب البرنامج، وتختار من تصميم البون", "logo", nullptr,
     Kind::digits},
    {group::devices, "منفذ طابعة البون", "لمن لم يختر طابعة من جهازه: win لطابعة النظام أو منفذ مثل lpt1",
     "Print", nullptr, Kind::port},
    {group::devices, "منفذ درج النقود", "المنفذ الذي يفتح الدرج، مثل com1. اتركه فارغا إن لم يوجد", "cash",
     nullptr, Kind::port},
};

// The group of a setting of the tills.
std::string_view group_of(std::string_view name) {
    using namespace database::setting;
    if (name == raise_equal_codes) return group::selling;
    if (name == net_from || name == blind_count || name == denominations) return group::cash;
    if (name == display_greeting || name == screen_greeting) return group::customer;
    if (name == backup_to || name == office_read_only) return group::safety;
    return group::receipt;
}

std::vector<Setting> all_settings() {
    std::vector<Setting> all(std::begin(basic_settings), std::end(basic_settings));
    for (const database::TillSetting& setting : database::till_settings())
        all.push_back({group_of(setting.name),
                       setting.caption,
                       setting.explained,
                       {},
                       &setting,
                       setting.is_yes_or_no() ? Kind::yes_or_no : Kind::text});
    constexpr std::string_view order[] = {group::shop,    group::selling,  group::cash,  group::receipt,
                                          group::devices, group::customer, group::safety};
    std::ranges::stable_sort(all, {}, [&](const Setting& setting) {
        return std::ranges::find(order, setting.group) - std::begin(order);
    });
    return all;
}

// Store and drawer as one code.
constexpr std::int64_t drawers_of_a_store = 1'000'000;
std::int64_t place_code(std::int64_t store, std::int64_t drawer) {
    return store * drawers_of_a_store + drawer;
}

const std::vector<common::Choice>& price_levels() {
    static const std::vector<common::Choice> levels = {{0, "قطاعي"}, {1, "جملة"}};
    return levels;
}
const std::vector<common::Choice>& answers() {
    static const std::vector<common::Choice> list = {{1, "نعم"}, {0, "لا"}};
    return list;
}

}  // namespace

void SettingsEditor::open() {
    stores_ = database::load_stores(connection_);
    drawers_.clear();
    for (const auto& drawer : connection_.query("select * from cash order by stcode, code"))
        drawers_.push_back(
            {place_code(drawer.integer("stcode"), drawer.integer("code")),
             common::name_of(stores_, drawer.integer("stcode")) + " · " + drawer.text("name")});
    values_.clear();
    const auto basic = connection_.query("select * from basic");
    const auto tills = [&] {
        std::vector<std::pair<std::string, std::string>> found;
        database::Reads reads;
        reads.add_optional("select name, value from till_setting", [&](const database::Result& rows) {
            for (const auto& row : rows)
                found.emplace_back(row.text("name"), row.text("value"));
        });
        reads.run(connection_);
        return found;
    }();
    for (const Setting& setting : all_settings()) {
        std::string stored;
        if (setting.till != nullptr) {
            for (const auto& [name, value] : tills)
                if (name == setting.till->name) stored = value;
        } else if (!basic.empty()) {
            const auto& row = basic.front();
            stored = setting.kind == Kind::main_drawer
                         ? std::to_string(place_code(row.integer("mst"), row.integer("mcash")))
                         : row.text(setting.column);
        }
        values_.push_back({setting, stored, shown(setting, stored)});
    }
}

std::vector<common::Choice> SettingsEditor::choices(const Setting& setting) const {
    switch (setting.kind) {
        case Kind::yes_or_no:
            return answers();
        case Kind::price_level:
            return price_levels();
        case Kind::store:
            return stores_;
        case Kind::main_drawer:
            return drawers_;
        default:
            return {};
    }
}

std::optional<std::int64_t> SettingsEditor::chosen(const SettingValue& value) const {
    if (value.setting.till != nullptr) {
        if (value.stored.empty()) return std::nullopt;
        return value.stored == "yes" ? 1 : 0;
    }
    // The programs count everything but 1 as no.
    const auto code = common::parse_integer(value.stored).value_or(0);
    if (value.setting.kind == Kind::yes_or_no || value.setting.kind == Kind::price_level)
        return code == 1 ? 1 : 0;
    return contains(choices(value.setting), code) ? std::optional<std::int64_t>(code) : std::nullopt;
}

std::string SettingsEditor::shown(const Setting& setting, const std::string& stored) const {
    if (!setting.is_choice()) return stored;
    const auto code = chosen({setting, stored, {}});
    return code ? common::name_of(choices(setting), *code) : std::string();
}

std::optional<Refusal> SettingsEditor::read_typed(const Setting& setting, std::string_view typed,
                                                  std::string& stored) const {
    constexpr std::string_view field = "setting_value";
    const std::string text(common::trim(typed));
    stored = text;
    if (setting.is_required && text.empty()) return Refusal(field, message::setting_missing);
    if (setting.till != nullptr) {
        if (text.empty()) return std::nullopt;
        const auto value =
            setting.till->read(setting.is_choice() ? std::string_view(text == "1" ? "yes" : "no") : text);
        if (!value)
            return Refusal(field, std::string(message::wrong_setting) + std::string(setting.explained));
        stored = *value;
        return std::nullopt;
    }
    if (setting.is_choice()) return check_place(setting, text);
    if (setting.kind == Kind::percent || setting.kind == Kind::font_size) {
        const bool is_percent = setting.kind == Kind::percent;
        const auto number = common::parse_number(text);
        const bool fits =
            number && (is_percent ? *number >= 0 && *number <= 100
                                  : *number >= printing::smallest_font && *number <= printing::largest_font &&
                                        *number == static_cast<int>(*number));
        if (!fits)
            return Refusal(field, std::string(message::wrong_setting) + std::string(setting.explained));
        stored = common::shortest_text(*number);
        return std::nullopt;
    }
    if (common::printable(text) != text) return Refusal(field, message::name_not_plain);
    if (!database::TextLimits(connection_, "basic").fits(setting.column, text))
        return Refusal(field, message::name_too_long);
    if (setting.kind == Kind::port && !text.empty()) {
        try {
            refuse_port(text, session_.working_folder);
        } catch (const Refused& refused) {
            return Refusal(field, refused.told());
        }
    }
    return std::nullopt;
}

// A store without a drawer would let nobody sign in.
std::optional<Refusal> SettingsEditor::check_place(const Setting& setting, std::string_view code) const {
    const auto chosen_code = common::parse_integer(code);
    if (!chosen_code || !contains(choices(setting), *chosen_code))
        return Refusal("setting_value", message::setting_missing);
    if (setting.kind != Kind::store) return std::nullopt;
    const bool has_drawer = std::ranges::any_of(drawers_, [&](const common::Choice& drawer) {
        return drawer.code / drawers_of_a_store == *chosen_code;
    });
    return has_drawer ? std::nullopt : std::optional(Refusal("setting_value", message::store_without_drawer));
}

std::string SettingsEditor::stored_value(const Setting& setting) {
    if (setting.till != nullptr)
        return database::till_setting(connection_, setting.till->name).value_or(std::string());
    const auto basic = connection_.query("select * from basic");
    if (basic.empty()) return {};
    if (setting.kind == Kind::main_drawer)
        return std::to_string(place_code(basic.front().integer("mst"), basic.front().integer("mcash")));
    return basic.front().text(setting.column);
}

std::optional<Refusal> SettingsEditor::save(const SettingValue& read, std::string_view typed) {
    const Setting setting = read.setting;
    const std::string before = read.shown;
    std::string stored;
    if (auto refusal = read_typed(setting, typed, stored)) return refusal;
    if (stored == read.stored) return std::nullopt;
    if (!signin::authorise_change(session_, services_.prompts, signin::Action::edit_lists))
        return Refusal({}, {});
    std::string now;
    bool is_changed = false;
    database::in_transaction(connection_, [&] {
        now = stored_value(setting);
        is_changed = now != read.stored;
        if (!is_changed) write(setting, stored);
    });
    if (is_changed) {
        const std::string text = std::string(message::row_was_changed) + "\n" + shown(setting, now);
        open();
        return Refusal({}, text);
    }
    connection_.make_durable();
    session_.settings = signin::read_settings(connection_);
    const std::string after = shown(setting, stored);
    session_.note({.kind = audit::Kind::setting_changed,
                   .what = std::string(setting.caption) + ": " + (before.empty() ? "غير محدد" : before) +
                           " ← " + (after.empty() ? "غير محدد" : after)});
    open();
    if (setting.till != nullptr && setting.till->name == database::setting::backup_to) tell_missing_folders();
    return std::nullopt;
}

void SettingsEditor::tell_missing_folders() {
    std::string text;
    for (const std::string& folder : backup::missing_folders(connection_))
        text += "\n\u200E" + folder;
    if (!text.empty())
        services_.prompts.message(std::string(message::no_backup_folder) + text, common::Icon::information);
}

void SettingsEditor::write(const Setting& setting, const std::string& stored) {
    if (setting.till != nullptr) {
        if (stored.empty())
            connection_.execute(Sql("delete from till_setting where name = ") +
                                database::quoted(setting.till->name));
        else
            database::set_till_setting(connection_, setting.till->name, stored);
        return;
    }
    database::Recordset basic(connection_, "select * from basic");
    if (setting.kind == Kind::main_drawer) {
        const std::int64_t place = common::parse_integer(stored).value_or(0);
        basic.set("mst", place / drawers_of_a_store);
        basic.set("mcash", place % drawers_of_a_store);
    } else if (setting.is_choice() || setting.kind == Kind::font_size) {
        basic.set(setting.column, static_cast<std::int64_t>(common::parse_integer(stored).value_or(0)));
    } else if (setting.kind == Kind::percent) {
        basic.set(setting.column, common::parse_number(stored).value_or(0));
    } else {
        basic.set(setting.column, stored);
    }
    basic.update();
}

}  // namespace shop

#include "database/till_settings.h"

#include <algorithm>

#include "common/text.h"
#include "common/typed.h"

namespace database {

namespace {

std::optional<std::string> read_day(std::string_view typed) {
    const auto date = common::read_date(typed);
    return date ? std::optional(common::date_text(*date)) : std::nullopt;
}

constexpr std::string_view no_folder = "none";
constexpr std::size_t longest_value = 200;  // till_setting.value

// The folders that a text names; nothing if one of them is not a plain path.
std::optional<std::vector<std::filesystem::path>> folders_in(std::string_view text) {
    std::vector<std::filesystem::path> folders;
    while (!text.empty()) {
        const auto end = std::min(text.find(';'), text.size());
        const std::string_view folder = common::trim(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (folder.empty()) continue;
        if (common::printable(folder) != folder) return std::nullopt;
        folders.emplace_back(folder);
    }
    return folders;
}

std::optional<std::string> read_folders(std::string_view typed) {
    if (common::trim(typed) == no_folder) return std::string(no_folder);
    const auto folders = folders_in(typed);
    const auto is_relative = [](const std::filesystem::path& folder) { return folder.is_relative(); };
    if (!folders || folders->empty() || std::any_of(folders->begin(), folders->end(), is_relative))
        return std::nullopt;
    std::string text;
    for (const auto& folder : *folders)
        text += (text.empty() ? "" : ";") + folder.string();
    return common::column_width(text) > longest_value ? std::nullopt : std::optional(text);
}

// A display has two lines of 20 characters, and letters of its own besides those of ASCII.
constexpr std::size_t display_width = 40;

std::optional<std::string> read_display_text(std::string_view typed) {
    const std::string_view text = common::trim(typed);
    const auto is_plain = [](char c) { return c >= ' ' && c <= '~'; };
    if (text.empty() || text.size() > display_width || !std::all_of(text.begin(), text.end(), is_plain))
        return std::nullopt;
    return std::string(text);
}

constexpr std::size_t longest_greeting = 60;

std::optional<std::string> read_greeting(std::string_view typed) {
    const std::string_view text = common::trim(typed);
    if (text.empty() || common::length(text) > longest_greeting || common::printable(text) != text)
        return std::nullopt;
    return std::string(text);
}

std::optional<std::string> read_values(std::string_view typed) {
    const auto values = common::read_denominations(typed);
    return values ? std::optional(common::denominations_text(*values)) : std::nullopt;
}

constexpr std::string_view yes = "yes";
constexpr std::string_view no = "no";
constexpr std::string_view yes_or_no = "yes or no";

std::optional<std::string> read_yes_or_no(std::string_view typed) {
    const std::string_view word = common::trim(typed);
    return word == yes || word == no ? std::optional(std::string(word)) : std::nullopt;
}

constexpr TillSetting settings[] = {
    {setting::net_from,
     "from this day on a drawer is to hold the net of its cash invoices: their discounts are taken off the "
     "expected cash. Leave it unset where another program adds up the cash of this shop without them",
     "a day, yyyy/mm/dd", "الدرج بالصافي ابتداء من",
     "من هذا اليوم يحسب للدرج صافي البونات النقدية بعد خصمها. اتركه بدون قيمة إذا كان برنامج آخر يجمع نقدية "
     "هذا المحل. يكتب كتاريخ: 2026/11/21",
     read_day},
    {setting::backup_to,
     "a shop in a file copies itself into these folders, on a stick or another disk, at each shift close and "
     "when a till is left. Of the copies there the last 7 days, 4 weeks and 12 months are kept",
     "folders with their whole path, \";\" between them, or none", "مجلدات النسخ الاحتياطية",
     "ينسخ المحل نفسه إلى هذه المجلدات عند إغلاق كل وردية وعند الخروج، ويبقى منها آخر 7 أيام و4 أسابيع و12 "
     "شهرا. اكتب المسار كاملا، وبين المجلدات ; أو اكتب none لإيقاف النسخ",
     read_folders},
    {setting::printer_barcode,
     "text receipts carry their key as a barcode, which the roll printer draws by its own command (GS k, "
     "Code 128); scanned at the till it brings the sale back",
     yes_or_no, "باركود البون في البون النصي",
     "يطبع رقم البون كباركود يقرؤه الكاشير لاسترجاع البون. للطابعات التي ترسمه بنفسها", read_yes_or_no},
    {setting::text_unit, "text receipts name the unit of each line in a line below it (unset: no)", yes_or_no,
     "اسم الوحدة في البون النصي", "يطبع تحت كل صنف اسم وحدته", read_yes_or_no},
    {setting::receipt_unit, "receipts on pages and pictures show the unit of each line (unset: yes)",
     yes_or_no, "عمود الوحدة في البون المرسوم", "يظهر عمود الوحدة في البون المرسوم", read_yes_or_no},
    {setting::receipt_qr,
     "receipts on pages and pictures carry the QR code of electronic invoicing, in shops that have it "
     "(unset: "
     "yes)",
     yes_or_no, "رمز QR للفاتورة الإلكترونية",
     "يظهر الرمز في البون المرسوم إذا كان المحل مسجلا في منظومة الفاتورة الإلكترونية", read_yes_or_no},
    {setting::receipt_barcode,
     "receipts on pages and pictures carry their key as a barcode, which brings the sale back (unset: yes)",
     yes_or_no, "باركود البون في البون المرسوم", "يطبع رقم البون كباركود يقرؤه الكاشير لاسترجاع البون",
     read_yes_or_no},
    {setting::raise_equal_codes,
     "an item that is scanned again, in the same unit, raises its line at once instead of asking (unset: "
     "no). "
     "A scale's label asks all the same. Tills notice a change at the next sign-in",
     yes_or_no, "تكرار الصنف يزيد كميته",
     "إذا مرر الصنف مرة أخرى بنفس الوحدة زادت كمية سطره بدون سؤال. يعمل بعد دخول المستخدم من جديد",
     read_yes_or_no},
    {setting::display_greeting,
     "what the customer display shows between two sales. Tills notice a change at their next start",
     "up to 40 Latin letters, digits and signs, of which the display shows 20 on each of its lines",
     "عبارة شاشة العميل الصغيرة",
     "ما تعرضه الشاشة الصغيرة بين بون وآخر: حتى 40 حرفا لاتينيا أو رقما. يعمل بعد إعادة تشغيل برنامج الكاشير",
     read_display_text},
    {setting::screen_greeting,
     "what the customer's screen, on a second monitor, shows between two sales. Tills notice a change at "
     "their next start",
     "a line of up to 60 letters", "عبارة شاشة العميل الكبيرة",
     "ما تعرضه الشاشة الثانية بين بون وآخر: سطر حتى 60 حرفا. يعمل بعد إعادة تشغيل برنامج الكاشير",
     read_greeting},
    {setting::blind_count,
     "drawers are counted without knowing: the expected cash is shown only once the count was compared with "
     "it or recorded (unset: no)",
     yes_or_no, "عد الدرج قبل رؤية الرصيد", "لا يظهر الرصيد الدفتري للكاشير قبل أن يعد النقدية ويسجلها",
     read_yes_or_no},
    {setting::denominations,
     "the notes and coins of the currency: those that the payment offers by one key, and those by which a "
     "drawer is counted. Tills notice a change at their next start",
     "up to 12 values, blanks between them: 200 100 50 20 10 5 1 0.50 0.25", "فئات النقود",
     "الأوراق والعملات التي تعرضها أزرار الدفع ويعد بها الدرج: حتى 12 قيمة بينها مسافات، مثل 200 100 50 20 "
     "10 5 1 0.50 0.25",
     read_values},
    {setting::office_read_only,
     "another program keeps the items, stock and lists of this shop: the office shows them and changes "
     "nothing (unset: no)",
     yes_or_no, "المكتب للعرض فقط",
     "لمحل يسجل أصنافه وقوائمه برنامج آخر: المكتب يعرض ولا يغير شيئا. لا يلغى بعد ذلك إلا من أداة الإدارة "
     "tallvex-admin",
     read_yes_or_no},
};

}  // namespace

bool TillSetting::is_yes_or_no() const {
    return read == read_yes_or_no;
}

std::span<const TillSetting> till_settings() {
    return settings;
}

namespace {

void ask_setting(Reads& reads, std::string_view name, std::function<void(std::string)> take) {
    reads.add_optional(Sql("select value from till_setting where name = ") + quoted(name),
                       [take = std::move(take)](const Result& rows) {
                           if (const Value value = first_cell(rows); !is_null(value)) take(text_of(value));
                       });
}

}  // namespace

std::optional<std::string> till_setting(Connection& connection, std::string_view name) {
    std::optional<std::string> value;
    Reads reads;
    ask_setting(reads, name, [&value](std::string text) { value = std::move(text); });
    reads.run(connection);
    return value;
}

void set_till_setting(Connection& connection, std::string_view name, std::string_view value) {
    const std::int64_t changed = connection.execute(Sql("update till_setting set value = ") + quoted(value) +
                                                    " where name = " + quoted(name));
    if (changed > 0) return;
    connection.execute(Sql("insert into till_setting (name, value) select ") + quoted(name) + ", " +
                       quoted(value));
}

std::optional<common::Date> net_from(Connection& connection) {
    std::optional<common::Date> day;
    Reads reads;
    ask_net_from(reads, day);
    reads.run(connection);
    return day;
}

void ask_net_from(Reads& reads, std::optional<common::Date>& day) {
    ask_setting(reads, setting::net_from, [&day](const std::string& text) { day = common::read_date(text); });
}

void ask_text(Reads& reads, std::string_view name, std::optional<std::string>& text) {
    ask_setting(reads, name, [&text](std::string value) { text = std::move(value); });
}

void ask_denominations(Reads& reads, common::Denominations& denominations) {
    denominations = common::default_denominations();
    ask_setting(reads, setting::denominations, [&denominations](const std::string& text) {
        if (auto values = common::read_denominations(text)) denominations = std::move(*values);
    });
}

void ask_yes_or_no(Reads& reads, std::vector<YesOrNo> settings) {
    Sql statement("select name, value from till_setting where name in (");
    for (const YesOrNo& setting : settings) {
        if (&setting != &settings.front()) statement += ", ";
        statement += quoted(setting.name);
    }
    statement += ")";
    reads.add_optional(std::move(statement), [settings = std::move(settings)](const Result& rows) {
        for (const auto& row : rows) {
            for (const YesOrNo& setting : settings) {
                if (row.text("name") == setting.name && !row.text("value").empty())
                    *setting.value = row.text("value") == yes;
            }
        }
    });
}

void set_yes_or_no(Connection& connection, std::string_view name, bool value) {
    set_till_setting(connection, name, value ? yes : no);
}

std::vector<std::filesystem::path> backup_folders(Connection& connection) {
    const auto text = till_setting(connection, setting::backup_to);
    if (!text || *text == no_folder) return {};
    return folders_in(*text).value_or(std::vector<std::filesystem::path>());
}

}  // namespace database

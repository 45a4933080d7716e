#include "printing/receipt_design.h"

#include <utility>

#include "common/files.h"
#include "common/text.h"
#include "common/typed.h"
#include "database/form.h"
#include "database/recordset.h"
#include "database/till_settings.h"
#include "database/till_tables.h"
#include "database/transaction.h"
#include "printing/layouts.h"
#include "printing/messages.h"

namespace printing {

namespace fs = std::filesystem;
namespace setting = database::setting;
using common::FieldKind;
using common::FormField;
using common::Refusal;
using Design = ReceiptDesign;

namespace {

// A chosen picture is kept under this name in the program folder.
constexpr const char* kept_logo = "logo.png";
// Stands for no logo: without a name the shop would have "logo.jpg".
constexpr const char* no_logo = "none";
constexpr std::size_t largest_logo = 8U << 20U;

constexpr std::string_view logo_column = "logo";
constexpr std::string_view font_column = "bon_font";

constexpr FormField<Design> shop_lines[] = {
    // the shop's name, its second name
    {&Design::store_name, {"design_name", "اسم المح&ل", FieldKind::text, {0, 0, 2}, "aname"}},
    {&Design::second_store_name,
     {"design_second_name", "الاسم ال&ثاني", FieldKind::text, {0, 2, 2}, "ename"}},
    // telephone, a note at the foot
    {&Design::telephone, {"design_telephone", "ال&تليفون", FieldKind::digits, {1, 0, 2}, "tel"}},
    {&Design::note, {"design_note", "ملاح&ظة أسفل البون", FieldKind::text, {1, 2, 2}, "rec_note"}},
    // font, its size
    {{}, {"design_font", "الخ&ط", FieldKind::choice, {2, 0, 2}}},
    {&Design::font_size,
     {"design_font_size", "حجم الخط", FieldKind::code, {2, 2}, "bon_font_s", "", message::wrong_font_size}},
};

constexpr FormField<Design> page_fields[] = {
    // units, item codes, prices as entered, QR code, barcode
    {&Design::unit, {"design_unit", "عمود الوحدة", FieldKind::check, {0, 0}}},
    {&Design::item_code, {"design_item_code", "عمود كود الصنف", FieldKind::check, {0, 1}, "item_code"}},
    {&Design::as_entered, {"design_as_entered", "السعر قبل الخصم", FieldKind::check, {0, 2}, "aft_dsc"}},
    {&Design::barcode, {"design_barcode", "باركود البون", FieldKind::check, {1, 0}}},
    {&Design::qr, {"design_qr", "رمز QR", FieldKind::check, {1, 1}}},
};

constexpr FormField<Design> text_fields[] = {
    // units below their lines, a barcode that the printer draws
    {&Design::text_unit, {"design_text_unit", "الوحدة تحت السطر", FieldKind::check, {0, 0}}},
    {&Design::text_barcode, {"design_text_barcode", "باركود ترسمه الطابعة", FieldKind::check, {0, 1}}},
};

constexpr FormField<Design> save_fields[] = {
    // an A4 invoice instead of the receipt, its cash form, a compact copy, a preview
    {&Design::full_page, {"design_full_page", "فاتورة A4 بدل البون", FieldKind::check, {0, 0}, "inv_p"}},
    {&Design::cash_form, {"design_cash_form", "بالمدفوع والباقي", FieldKind::check, {0, 1}, "csh_inv"}},
    {&Design::second_copy, {"design_second_copy", "نسخة ثانية مختصرة", FieldKind::check, {1, 0}, "cust_n"}},
    {&Design::preview, {"design_preview", "معاينة قبل الطباعة", FieldKind::check, {1, 1}, "bon_prv"}},
};

constexpr common::FormTable<Design> tables[] = {shop_lines, page_fields, text_fields, save_fields};

// The switches that `basic` has no column for.
constexpr std::pair<std::string_view, bool Design::*> switches[] = {
    {setting::receipt_unit, &Design::unit},
    {setting::receipt_barcode, &Design::barcode},
    {setting::receipt_qr, &Design::qr},
    {setting::text_unit, &Design::text_unit},
    {setting::printer_barcode, &Design::text_barcode}};

int font_size_of(const Design& design) {
    const auto size = common::read_code(design.font_size);
    return size && *size >= smallest_font && *size <= largest_font ? static_cast<int>(*size)
                                                                   : ReceiptSettings().font_size;
}

}  // namespace

common::FormTable<ReceiptDesign> shop_lines_form() {
    return shop_lines;
}

common::FormTable<ReceiptDesign> page_form() {
    return page_fields;
}

common::FormTable<ReceiptDesign> text_form() {
    return text_fields;
}

common::FormTable<ReceiptDesign> save_form() {
    return save_fields;
}

ReceiptSettings ReceiptDesign::settings() const {
    ReceiptSettings settings;
    settings.rec_note = note;
    settings.preview = preview;
    settings.price_as_entered = as_entered;
    settings.show_item_code = item_code;
    if (!font.empty()) settings.font = font;
    settings.font_size = font_size_of(*this);
    settings.show_unit = unit;
    settings.show_qr = qr;
    settings.show_barcode = barcode;
    settings.text_unit = text_unit;
    settings.text_barcode = text_barcode;
    return settings;
}

Receipt ReceiptDesign::applied_to(Receipt receipt) const {
    receipt.store_name = common::printable(store_name);
    receipt.second_store_name = common::printable(second_store_name);
    receipt.telephone = telephone;
    receipt.logo = logo;
    return receipt;
}

Receipt example_receipt() {
    Receipt receipt;
    receipt.number = 1;
    receipt.shift_number = 1;
    receipt.code = "-1100000000000001";
    receipt.date = {2026, 1, 1};
    receipt.time = {10, 30, 0, 0};
    receipt.lines = {{"1101", "حليب كامل الدسم 1 لتر", "علبة", 2, 38.5, 0, common::Amount(77)},
                     {"1201", "شاي ناعم 250 جم", "عبوة", 1, 48, 2, common::Amount(46)},
                     {"1302", "جبنة رومي", "كيلو", 0.45, 220, 0, common::Amount(99)}};
    receipt.total = common::Amount(222);
    receipt.discount = common::Amount(2);
    receipt.net = common::Amount(220);
    receipt.paid = common::Amount(250);
    receipt.remaining = common::Amount(30);
    return receipt;
}

void ReceiptDesigner::open() {
    ReceiptDesign read;
    std::vector<database::YesOrNo> asked;
    for (const auto& [name, member] : switches)
        asked.push_back({name, &(read.*member)});
    database::Reads reads;
    reads.add("select * from basic ", [&read](const database::Result& rows) {
        if (rows.empty()) return;
        for (const auto& table : tables)
            database::load(table, rows.front(), read);
        // In the form in which the fields return them, or they would count as changed.
        for (auto text : {&Design::store_name, &Design::second_store_name, &Design::telephone, &Design::note})
            read.*text = common::trim(read.*text);
        read.font = rows.front().text(font_column);
        read.cash_form = rows.front().integer("csh_inv") != 0;
    });
    database::ask_yes_or_no(reads, std::move(asked));
    reads.run(connection_);
    read.logo = session_.settings.logo;
    stored_ = design = std::move(read);
}

void ReceiptDesigner::remove_logo() {
    design.logo = no_logo;
}

fs::path ReceiptDesigner::logo() const {
    return logo_file(design.applied_to({}).logo, session_.program_folder);
}

bool ReceiptDesigner::misses_logo() const {
    return design.logo == kept_logo && logo().empty();
}

std::optional<Refusal> ReceiptDesigner::save() {
    const database::TextLimits limits(connection_, "basic");
    for (const auto& table : tables) {
        if (auto refusal = database::check(table, design, limits)) return refusal;
    }
    if (!design.font_size.empty() && font_size_of(design) != common::read_code(design.font_size))
        return Refusal("design_font_size", message::wrong_font_size);
    ReceiptDesign wanted = design;
    const fs::path chosen = wanted.logo;
    if (chosen.is_absolute()) wanted.logo = kept_logo;
    try {
        // The picture is written last, so that a failed statement leaves the former logo.
        database::in_transaction(connection_, [&] {
            write(wanted);
            if (chosen.is_absolute())
                common::replace_file(session_.program_folder / kept_logo,
                                     common::read_file(chosen, largest_logo), common::shop_file_mode);
        });
    } catch (const database::Error& error) {
        if (error.sqlstate() != database::no_such_table) throw;
        return Refusal("", message::no_place_for_switches);
    }
    connection_.make_durable();
    const signin::Settings now = signin::read_settings(connection_);
    session_.settings.aname = now.aname;
    session_.settings.ename = now.ename;
    session_.settings.tel = now.tel;
    session_.settings.logo = now.logo;
    stored_ = design = wanted;
    return std::nullopt;
}

// Writes only what was changed here, because another till may have changed the rest meanwhile.
void ReceiptDesigner::write(const ReceiptDesign& wanted) {
    database::Recordset basic(connection_, "select * from basic ");
    if (basic.empty()) basic.add();
    for (const auto& table : tables) {
        for (const auto& field : table) {
            const common::FieldValue value = value_of(field, wanted);
            if (!field.description.column.empty() && value != value_of(field, stored_))
                basic.set(field.description.column, database::cell_of(field.description, value));
        }
    }
    if (wanted.font != stored_.font) basic.set(font_column, wanted.font);
    if (wanted.logo != stored_.logo) basic.set(logo_column, wanted.logo);
    basic.update();
    for (const auto& [name, member] : switches) {
        if (wanted.*member != stored_.*member) database::set_yes_or_no(connection_, name, wanted.*member);
    }
}

}  // namespace printing

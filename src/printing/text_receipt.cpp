#include "printing/text_receipt.h"

#include <algorithm>
#include <array>
#include <vector>

#include "common/numbers.h"
#include "common/text.h"
#include "printing/code_128.h"
#include "printing/text_page.h"

namespace printing {

namespace {

constexpr std::size_t number_field = 7;  // of an item line
constexpr std::string_view field_gap = "  ";
constexpr std::size_t before_name = 3 * (number_field + field_gap.size());
constexpr std::size_t amount_field = 10;  // of a totals line
constexpr std::size_t moment_gap = 14;    // between the time and the date
constexpr std::size_t heading_gap = 7;    // between the price's and the name's heading

namespace word {
constexpr std::string_view time = "الوقت";
constexpr std::string_view date = "التاريخ";
constexpr std::string_view number = "بون رقم";  // receipt number
constexpr std::string_view line_total = "اجمالي";
constexpr std::string_view quantity = "كمية";
constexpr std::string_view price = "سـعـر";
constexpr std::string_view item = "اسم الصـنف";
constexpr std::string_view unit = "الوحدة";
constexpr std::string_view total = "الاجمــالي";
constexpr std::string_view discount = "خــصم";
constexpr std::string_view net = "الصــافي";
constexpr std::string_view paid = "المدفـــوع";
constexpr std::string_view remaining = "المتبقي";
constexpr std::array closing = {
    std::string_view("برجاء الاحتفاظ بالبون"),    // please keep the receipt
    std::string_view("شكرا و دائما في خدمتكم")};  // thank you, always at your service
constexpr std::string_view see_you = "Visit us again soon...";
}  // namespace word

// Breaks a text that is too long for a line into lines between its words; a word that is longer than a line
// has a line of its own.
std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
    if (common::length(text) <= width) return {std::string(text)};
    std::vector<std::string> lines(1);
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string word(text.substr(at, end - at));
        at = end + 1;
        if (word.empty()) continue;
        std::string& line = lines.back();
        if (line.empty()) {
            line = word;
        } else if (common::length(line) + 1 + common::length(word) <= width) {
            line += ' ' + word;
        } else {
            lines.push_back(word);
        }
    }
    return lines;
}

void add_centred(TextPage& page, std::string_view text, const PrinterCodes& codes) {
    for (const std::string& line : wrapped(text, page.columns()))
        page.centred(name_text(line, codes), common::length(line));
}

class TextReceipt {
  public:
    TextReceipt(const Receipt& receipt, Form form, int width, const PrinterCodes& codes,
                const ReceiptSettings& settings)
        : receipt_(receipt), form_(form), codes_(codes), settings_(settings), page_(width) {}

    std::string bytes() {
        page_.begin();
        page_.control_line(control::shift_out);
        header();
        items();
        totals();
        footer();
        return page_.bytes();
    }

  private:
    std::string arabic(std::string_view text) const { return printer_text(text, codes_); }

    void header() {
        const std::vector<std::string> name = wrapped(receipt_.store_name, page_.columns() / 2);
        const bool is_wide = std::all_of(name.begin(), name.end(), [this](const std::string& line) {
            return common::length(line) <= page_.columns() / 2;
        });
        page_.control_line(control::double_width_on);
        if (is_wide) {
            for (const std::string& line : name)
                double_width(line);
        }
        page_.control_line(control::double_width_off);
        page_.control(control::shift_off);
        // A word that is too long for a wide line.
        if (!is_wide) add_centred(page_, receipt_.store_name, codes_);
        add_centred(page_, receipt_.second_store_name, codes_);
        if (form_ != Form::no_telephone) {
            const std::string telephone = telephone_line(name_text(receipt_.telephone, codes_));
            page_.centred(telephone, telephone.size());
        }
        page_.line(right_aligned(arabic(word::time) + ":" + common::twelve_hour_text(receipt_.time) +
                                     spaces(moment_gap) + arabic(word::date) + ":" +
                                     common::date_text(receipt_.date),
                                 page_.columns()));
        page_.line(
            right_aligned(arabic(word::number) + " : " + std::to_string(receipt_.number), page_.columns()));
    }

    // Puts two spaces fewer before the name than after it, or fewer still to keep a long name on the wide
    // line.
    void double_width(std::string_view name) {
        const std::size_t length = common::length(name);
        const std::size_t margin = blanks(page_.width() - static_cast<int>(length), 4);
        const std::size_t before = std::min(margin - 2, page_.columns() / 2 - length);
        page_.line(spaces(before) + name_text(name, codes_) + spaces(margin));
    }

    void items() {
        page_.rule();
        page_.line(arabic(word::line_total) + spaces(2) + arabic(word::quantity) + spaces(2) +
                   arabic(word::price) + spaces(heading_gap) + arabic(word::item));
        page_.rule();
        const std::size_t name_field = page_.columns() - before_name;
        for (const ReceiptLine& line : receipt_.lines) {
            std::string printed;
            for (const std::string& figure : {line.total.text(), common::format_amount(line.quantity),
                                              common::format_amount(line.price)}) {
                printed += right_aligned(figure, number_field);
                printed += field_gap;
            }
            page_.line(printed + right_aligned(name_text(line.item_name, codes_), name_field));
            if (settings_.text_unit && !line.unit_name.empty())
                page_.line(right_aligned(name_text(line.unit_name, codes_) + " : " + arabic(word::unit),
                                         page_.columns()));
        }
    }

    void totals() {
        page_.rule();
        total(word::total, receipt_.total);
        total(word::discount, receipt_.discount);
        total(word::net, receipt_.net);
        if (form_ != Form::reprint) {
            total(word::paid, receipt_.paid);
            total(word::remaining, receipt_.remaining);
        }
        page_.rule();
    }

    // The amount is right-aligned in its field of 10. A longer one runs into the margin before it, because a
    // total without its first digits would be a different total. The label fills the rest of the line.
    void total(std::string_view name, common::Amount amount) {
        const std::size_t amount_end =
            blanks(page_.width() - static_cast<int>(amount_field), 2) + amount_field;
        const std::size_t label_field = page_.columns() - amount_end - field_gap.size();
        page_.line(right_aligned(amount.text(), amount_end) + std::string(field_gap) +
                   left_aligned(arabic(name), label_field));
    }

    void footer() {
        for (const std::string_view text : word::closing)
            page_.centred(arabic(text), common::length(text));
        page_.centred(word::see_you, word::see_you.size());
        if (settings_.text_barcode && form_ != Form::no_telephone)
            page_.control(barcode_command(receipt_.code));
        page_.end();
    }

    const Receipt& receipt_;
    Form form_;
    const PrinterCodes& codes_;
    const ReceiptSettings& settings_;
    TextPage page_;
};

constexpr std::array alphabet = {
    std::string_view("ا أ إ آ ب ت ث ج ح خ د ذ"), std::string_view("ر ز س ش ص ض ط ظ ع غ ف"),
    std::string_view("ق ك ل م ن ه ة و ؤ ي ى ئ ء"), std::string_view("لا لأ لإ لآ بلا بلأ"),
    std::string_view("أبجد هوز حطي كلمن سعفص قرشت")};

}  // namespace

std::string text_receipt(const Receipt& receipt, Form form, int width, const PrinterCodes& codes,
                         const ReceiptSettings& settings) {
    return TextReceipt(receipt, form, width, codes, settings).bytes();
}

std::string test_print(int width, const PrinterCodes& codes) {
    TextPage page(width);
    page.begin();
    std::string tens;
    std::string units;
    for (std::size_t column = 1; column <= page.columns(); ++column) {
        tens += column % 10 == 0 ? static_cast<char>('0' + column / 10) : ' ';
        units += static_cast<char>('0' + column % 10);
    }
    page.line(tens);
    page.line(units);
    page.rule();
    for (const std::string_view letters : alphabet)
        page.line(right_aligned(printer_text(letters, codes), page.columns()));
    page.line(right_aligned("0123456789  12345.50", page.columns()));
    page.control_line(control::double_width_on);
    page.line(printer_text("عرض مزدوج", codes));  // double width
    page.control_line(control::double_width_off);
    page.control(control::shift_off);
    page.rule();
    page.end();
    return page.bytes();
}

int width_of(std::string_view bytes) {
    std::size_t longest = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t end = std::min(bytes.find_first_not_of('-', at), bytes.size());
        longest = std::max(longest, end - at);
        at = end + 1;
    }
    return roll_of(static_cast<int>(std::min<std::size_t>(longest, 1000))).columns;
}

namespace {

class TextReport {
  public:
    TextReport(const Report& report, int width, const PrinterCodes& codes)
        : report_(report), codes_(codes), page_(width) {}

    std::string bytes() {
        page_.begin();
        for (const std::string* text : {&report_.store_name, &report_.second_store_name, &report_.telephone})
            centred(*text);
        page_.rule();
        centred(report_.title);
        page_.rule();
        for (const auto& [label, value] : report_.captions)
            pair(label, value);
        page_.rule();
        for (const auto& [label, value] : report_.totals)
            pair(label, value);
        page_.rule();
        if (!report_.words.empty()) {
            from_right(report_.words);
            page_.rule();
        }
        for (const std::string& signature : report_.signatures) {
            page_.line("");
            page_.line(
                right_aligned(std::string(page_.columns() / 2, '.') + " : " + name_text(signature, codes_),
                              page_.columns()));
        }
        page_.end();
        return page_.bytes();
    }

  private:
    void centred(std::string_view text) {
        if (!text.empty()) add_centred(page_, text, codes_);
    }

    void from_right(std::string_view text) {
        for (const std::string& line : wrapped(text, page_.columns()))
            page_.line(right_aligned(name_text(line, codes_), page_.columns()));
    }

    // The label at the right edge, its value to the left of it.
    void pair(std::string_view label, std::string_view value) {
        const std::string printed = name_text(value, codes_) + " : " + printer_text(label, codes_);
        if (printed.size() <= page_.columns()) {
            page_.line(right_aligned(printed, page_.columns()));
            return;
        }
        page_.line(right_aligned(": " + printer_text(label, codes_), page_.columns()));
        from_right(value);
    }

    const Report& report_;
    const PrinterCodes& codes_;
    TextPage page_;
};

}  // namespace

std::string text_report(const Report& report, int width, const PrinterCodes& codes) {
    return TextReport(report, width, codes).bytes();
}

}  // namespace printing

#include "goods/barcodes.h"

#include "common/numbers.h"
#include "common/text.h"
#include "goods/messages.h"
#include "sales/invoice_key.h"

namespace goods {

namespace {

// The check digit behind these digits: from the right, every second one counts three times.
char check_digit(std::string_view digits) {
    int sum = 0;
    for (std::size_t i = 0; i < digits.size(); ++i)
        sum += (digits[i] - '0') * ((digits.size() - i) % 2 == 1 ? 3 : 1);
    return static_cast<char>('0' + (10 - sum % 10) % 10);
}

}  // namespace

BarcodeFault barcode_fault(std::string_view barcode) {
    if (barcode.empty()) return BarcodeFault::empty;
    if (barcode.find_first_of(" \t\r\n") != std::string_view::npos ||
        barcode.find("\u00A0") != std::string_view::npos)
        return BarcodeFault::blank;
    if (barcode.find('\'') != std::string_view::npos) return BarcodeFault::apostrophe;
    if (const std::size_t exponent = barcode.find("E+");
        exponent != std::string_view::npos && barcode.find_first_not_of("0123456789.,") == exponent)
        return BarcodeFault::rounded;
    if (sales::read_receipt_code(barcode)) return BarcodeFault::receipt;
    if ((barcode.size() != 13 && barcode.size() != 8) || !common::all_digits(barcode))
        return BarcodeFault::none;
    if (barcode.size() == 13 && barcode.starts_with("20")) return BarcodeFault::scale_label;
    return is_true_ean(barcode) ? BarcodeFault::none : BarcodeFault::check_digit;
}

std::string_view words_for(BarcodeFault fault) {
    switch (fault) {
        case BarcodeFault::empty:
            return message::enter_barcode;
        case BarcodeFault::blank:
            return message::barcode_has_blank;
        case BarcodeFault::apostrophe:
            return message::barcode_has_apostrophe;
        case BarcodeFault::rounded:
            return message::barcode_was_rounded;
        case BarcodeFault::receipt:
            return message::barcode_of_receipt;
        case BarcodeFault::scale_label:
            return message::barcode_of_scale;
        case BarcodeFault::check_digit:
            return message::wrong_check_digit;
        default:
            return {};
    }
}

std::string comparable_barcode(std::string_view barcode) {
    return common::lower_ascii(common::trim_right(barcode));
}

bool is_true_ean(std::string_view digits) {
    if ((digits.size() != 13 && digits.size() != 8) || !common::all_digits(digits)) return false;
    return check_digit(digits.substr(0, digits.size() - 1)) == digits.back();
}

std::vector<std::string> own_barcodes(std::int64_t item, int unit_level) {
    const std::string code = std::to_string(item);
    std::vector<std::string> barcodes;
    for (int prefix = 20 + unit_level; prefix <= 29; prefix += 3) {
        std::string digits = std::to_string(prefix) + std::string(10 - code.size(), '0') + code;
        digits += check_digit(digits);
        barcodes.push_back(std::move(digits));
    }
    return barcodes;
}

}  // namespace goods

#include "admin/barcodes.h"

#include "common/numbers.h"
#include "sales/invoice_key.h"

namespace admin {

std::string barcode_fault(std::string_view barcode) {
    if (barcode.empty()) return "a barcode is empty; write one \"|\" between two barcodes";
    const std::string named = "barcode \"" + std::string(barcode) + "\"";
    if (barcode.find_first_of(" \t\r\n") != std::string_view::npos ||
        barcode.find("\u00A0") != std::string_view::npos) {
        return named + " has a blank in it, which no scanner sends; write \"|\" between several barcodes";
    }
    if (barcode.find('\'') != std::string_view::npos) {
        return named +
               " has an apostrophe in it, which the spreadsheet may have put before it to mark a text";
    }
    if (const std::size_t exponent = barcode.find("E+");
        exponent != std::string_view::npos && barcode.find_first_not_of("0123456789.,") == exponent) {
        return named + " was rounded by the spreadsheet; set that column's cells to text and enter it again";
    }
    if (sales::read_receipt_code(barcode)) return named + " would be read as the barcode of a receipt";
    if (barcode.size() != 13 || !common::all_digits(barcode)) return {};
    if (barcode.starts_with("20")) return named + " would be read as a label of the scale";
    return is_true_ean13(barcode) ? std::string() : named + " has a wrong check digit";
}

bool is_true_ean13(std::string_view digits) {
    if (digits.size() != 13 || !common::all_digits(digits)) return false;
    int sum = 0;
    for (std::size_t i = 0; i < 13; ++i)
        sum += (digits[i] - '0') * (i % 2 == 0 ? 1 : 3);
    return sum % 10 == 0;
}

}  // namespace admin

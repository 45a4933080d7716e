#include "accounts/printed_voucher.h"

#include "common/numbers.h"

namespace accounts {

std::vector<std::pair<std::string, std::string>> PrintedVoucher::captions() const {
    return {{"رقم الإيصال", number},
            {"التاريخ", common::date_text(date)},
            {"الاسم", party},
            {"المبلغ", common::format_amount(amount)},
            {"المبلغ بالحروف", words},
            {"طريقة الدفع", method},
            {"الخزينة / البنك", place},
            {"ملاحظات", note},
            {"الرصيد قبل", common::format_amount(balance_before)},
            {"الرصيد بعد", common::format_amount(balance_after)}};
}

}  // namespace accounts

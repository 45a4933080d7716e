// Vouchers on a roll printer.
#include "printing/text_report.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

printing::Report voucher() {
    printing::Report report;
    report.store_name = "بقالة الواحة";
    report.title = "ايصال استلام نقدية";
    report.captions = {{"رقم الإيصال", "A12"},
                       {"الاسم", "شركة التوريدات المتحدة لمنتجات الألبان والمواد الغذائية بالقاهرة الكبرى"}};
    report.totals = {{"الرصيد قبل", "-1250.00"}, {"المبلغ", "100.00"}};
    report.words = "فقط مائة وثلاثة ملايين وخمسة آلاف وسبعة جنيها وسبعة قرشا لا غير";
    report.signatures = {"المستلم"};
    return report;
}

TEST(TextReport, FitsEveryLineIntoTheWidth) {
    for (const int width : {32, 40, 48, 10}) {
        const std::string bytes = printing::text_report(voucher(), width, printing::default_codes());
        std::size_t longest = 0;
        for (std::size_t at = 0; at < bytes.size();) {
            const std::size_t end = std::min(bytes.find("\r\n", at), bytes.size());
            const std::string line = bytes.substr(at, end - at);
            // Lines of control bytes take no room.
            if (line.find_first_of("\x1B\n") == std::string::npos) longest = std::max(longest, line.size());
            at = end + 2;
        }
        EXPECT_EQ(longest, static_cast<std::size_t>(std::max(width, 32))) << width;
    }
}

TEST(TextReport, SaysTheFiguresUnreversed) {
    const std::string bytes = printing::text_report(voucher(), 48, printing::default_codes());
    for (const char* figure : {"-1250.00", "100.00", "A12"})
        EXPECT_NE(bytes.find(figure), std::string::npos) << figure;
}

}  // namespace

#include "printing/text_receipt.h"

#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "common/files.h"
#include "common/named_values.h"
#include "common/text.h"
#include "decoder.h"
#include "printing/pages/paper_picture.h"
#include "printing/ports_offered.h"
#include "printing/workstation_printer.h"
#include "sample.h"
#include "support/data_file.h"
#include "support/shop.h"

namespace {

using common::Amount;
using common::PortFault;
using printing::default_codes;
using printing::Form;
using printing::Receipt;
using printing::text_receipt;

std::string file(const std::string& name) {
    return common::read_file(test::tests_folder() / "printing/data" / name);
}

// The lines between the two rules of the items.
std::vector<std::string> item_lines(const std::string& bytes) {
    std::vector<std::string> lines;
    std::istringstream in(bytes);
    int rules = 0;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("----------"))
            ++rules;
        else if (rules == 2)
            lines.push_back(line.substr(0, line.size() - 1));
    }
    return lines;
}

TEST(TextReceipt, IsTheExpectedFileByteForByte) {
    struct {
        Receipt receipt;
        Form form;
        int width;
        const char* name;
    } const cases[] = {
        {test::sale(), Form::full, 48, "sale_full_48.receipt"},
        {test::sale(), Form::full, 40, "sale_full_40.receipt"},
        {test::sale(), Form::reprint, 48, "sale_reprint_48.receipt"},
        {test::sale(), Form::reprint, 40, "sale_reprint_40.receipt"},
        {test::sale(), Form::no_telephone, 48, "sale_no_telephone_48.receipt"},
        {test::sale(), Form::no_telephone, 40, "sale_no_telephone_40.receipt"},
        {test::empty_receipt(), Form::full, 48, "empty_full_48.receipt"},
        {test::empty_receipt(), Form::full, 40, "empty_full_40.receipt"},
    };
    for (const auto& [receipt, form, width, name] : cases) {
        const std::string printed = text_receipt(receipt, form, width, default_codes());
        EXPECT_EQ(printed, file(name)) << name << "\n" << test::decode_864(printed);
    }
}

// The lines above the date as they are read. Double-width lines must fit without their closing blanks.
std::vector<std::string> header_lines(const std::string& bytes, std::size_t width) {
    std::vector<std::string> header;
    bool is_wide = false;
    std::istringstream in(bytes);
    for (std::string line; std::getline(in, line) && line.find("/11/") == line.npos;) {
        line.pop_back();
        if (line.starts_with('\x1B')) is_wide = line == "\x1B\x0E";
        const std::string read(common::trim(test::read_aloud(line)));
        if (is_wide) {
            EXPECT_LE(common::trim_right(line).size(), width / 2) << read;
        }
        if (!read.empty()) header.push_back(read);
    }
    return header;
}

TEST(TextReceipt, BreaksALongShopNameBetweenItsWords) {
    const struct {
        const char* name;
        int width;
        std::vector<std::string> lines;
    } cases[] = {
        {"صيدلية الدكتور أحمد علي", 48, {"صيدلية الدكتور أحمد علي"}},
        {"صيدلية الدكتور أحمد علي", 40, {"صيدلية الدكتور أحمد", "علي"}},
        {"شركة النور والبركة للتجارة والتوزيع", 48, {"شركة النور والبركة", "للتجارة والتوزيع"}},
        {"شركة Al Noor Trading للتجارة والتوزيع", 40, {"شركة Al Noor Trading", "للتجارة والتوزيع"}},
        // A word that is too long for the wide line: the whole name in normal width.
        {"سوق القسطنطينيةوالإسكندريةالكبرى للمواد الغذائية",
         40,
         {"سوق القسطنطينيةوالاسكندريةالكبرى للمواد", "الغذائية"}},
    };
    for (const auto& [name, width, lines] : cases) {
        Receipt receipt = test::sale();
        receipt.store_name = name;
        receipt.second_store_name.clear();
        const std::string bytes = text_receipt(receipt, Form::no_telephone, width, default_codes());
        EXPECT_EQ(header_lines(bytes, static_cast<std::size_t>(width)), lines) << name;
    }
}

// (48 - L) / 4 blanks behind the name and two fewer before it, unless they would push it off its line of 24.
TEST(TextReceipt, CentresAShopNameAsFarAsItStaysOnItsLine) {
    for (const char* line : {"     Al Waha Family Mart       ",    // 19 letters: 7 behind, 5 before
                             "    Al Waha Family Marts       ",    // 20: 7 behind, 4 left of 5
                             "Al Waha Family Groceries      "}) {  // 24: 6 behind, none left of 4
        Receipt receipt = test::sale();
        receipt.store_name = common::trim(line);
        EXPECT_NE(
            text_receipt(receipt, Form::full, 48, default_codes()).find("\r\n" + std::string(line) + "\r\n"),
            std::string::npos)
            << line;
    }
}

TEST(TextReceipt, NamesTheUnitBelowTheLineWhereTheShopWantsIt) {
    printing::ReceiptSettings settings;
    settings.text_unit = true;
    for (const int width : {48, 40}) {
        const auto lines =
            item_lines(text_receipt(test::sale(), Form::full, width, default_codes(), settings));
        ASSERT_EQ(lines.size(), 10u);
        EXPECT_EQ(lines[1].size(), static_cast<std::size_t>(width));
        EXPECT_EQ(common::trim_right(test::read_aloud(lines[1])), "الوحدة : كيس");
        EXPECT_TRUE(lines[2].starts_with("  61.75"));
    }
}

TEST(TextReceipt, CutsNamesAndNumbersAtTheLeft) {
    Receipt receipt = test::sale();
    receipt.lines = {{"1", "صابون ", "", 1, 1, 0, Amount(1)}};
    for (int i = 0; i < 40; ++i)
        receipt.lines[0].item_name += "سائل ";
    receipt.lines[0].quantity = 1234567;
    receipt.lines[0].total = Amount(9876543210.0);
    for (const auto& [width, name_field] : {std::pair(48, 21u), std::pair(40, 13u)}) {
        const auto lines = item_lines(text_receipt(receipt, Form::full, width, default_codes()));
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_EQ(lines[0].size(), static_cast<std::size_t>(width));
        EXPECT_EQ(lines[0].substr(0, 27), "3210.00  4567.00     1.00  ");
        const std::string read = test::read_aloud(lines[0].substr(27));
        EXPECT_TRUE(receipt.lines[0].item_name.starts_with(read)) << read;
        EXPECT_EQ(common::length(read), name_field);
    }
}

TEST(TextReceipt, KeepsEveryDigitOfATotal) {
    Receipt receipt = test::sale();
    receipt.total = Amount(9876543210.0);
    const std::string printed = text_receipt(receipt, Form::full, 40, default_codes());
    EXPECT_NE(printed.find(" 9876543210.00  "), std::string::npos);
}

TEST(TextReceipt, HasNoLineBeyondItsWidthWhateverIsTyped) {
    Receipt receipt = test::sale();
    std::string longest;
    for (int i = 0; i < 200; ++i)
        longest += i % 7 == 0 ? " لا" : "ن5";
    for (std::string* text : {&receipt.store_name, &receipt.second_store_name, &receipt.telephone})
        *text = longest;
    receipt.lines.assign(500, {"1", longest, "", 1e12, 1e12, 0, Amount(1e12)});
    receipt.number = 9223372036854775807;
    for (const int width : {48, 40}) {
        const std::string printed = text_receipt(receipt, Form::full, width, default_codes());
        EXPECT_EQ(item_lines(printed).size(), 500u);
        std::istringstream in(printed);
        for (std::string line; std::getline(in, line);) {
            if (line.starts_with('\x14')) line.erase(0, 1);
            if (line.ends_with('\r')) line.pop_back();
            EXPECT_LE(line.size(), static_cast<std::size_t>(width)) << test::decode_864(line);
        }
    }
}

TEST(TextReceipt, LooksOnPaperAsThePrinterWouldPutIt) {
    const auto lines =
        printing::pages::paper_lines(text_receipt(test::sale(), Form::full, 48, default_codes()), 48);
    ASSERT_GT(lines.size(), 30u);
    // Control bytes on lines of their own feed the paper; the store's name is the first that is seen.
    EXPECT_TRUE(lines[0].empty());
    ASSERT_FALSE(lines[4].empty());
    EXPECT_TRUE(lines[4].front().wide);
    EXPECT_EQ(lines[4][static_cast<std::size_t>(7 + 10)].letter, U'ﺑ');
    // Its closing blanks do not fit on the wide line and go on in the next one.
    ASSERT_EQ(lines[5].size(), 3u);
    ASSERT_EQ(lines[7].size(), 47u);
    EXPECT_EQ(lines[7][16], (printing::pages::PaperCharacter{U'A', false}));
    EXPECT_EQ(lines[9].size(), 48u);
}

TEST(Paper, SurvivesBytesThatAreNoReceipt) {
    std::string bytes;
    for (int i = 0; i < 4096; ++i)
        bytes += static_cast<char>(i * 37 + i / 256);
    EXPECT_FALSE(printing::pages::paper_lines(bytes + "\x1B", 40).empty());
    EXPECT_EQ(printing::pages::paper_lines(std::string(100, 'x'), 40).size(), 3u);
    EXPECT_TRUE(printing::pages::paper_lines("", 40).empty());
}

TEST(PortsOffered, TellWhatIsReachableNow) {
    const test::TemporaryFolder folder;
    const test::TemporaryFolder shop;
    namespace fs = std::filesystem;
    fs::create_directories(folder.path() / "usb");
    for (const char* node : {"ttyS0", "usb/lp0", "usb/lp7", "ttyUSB2", "null"})
        ASSERT_EQ(mkfifo((folder.path() / node).c_str(), 0600), 0);
    const std::string file_port = (shop.path() / "receipt.txt").string();
    const auto offers_for = [&](const std::string& port) {
        return printing::ports_offered({port, 40}, shop.path(), folder.path());
    };
    const auto offers = offers_for(file_port);
    const auto find = [&offers](const std::string& port) {
        return std::find_if(offers.begin(), offers.end(),
                            [&port](const auto& offer) { return offer.port == port; });
    };
    EXPECT_EQ(offers.front().port, "win");
    EXPECT_EQ(find("com1")->fault, PortFault::none);
    EXPECT_EQ(find("com2")->fault, PortFault::missing);
    EXPECT_EQ(find("lpt1")->fault, PortFault::none);
    ASSERT_NE(find((folder.path() / "usb/lp7").string()), offers.end());
    ASSERT_NE(find((folder.path() / "ttyUSB2").string()), offers.end());
    EXPECT_EQ(find((folder.path() / "usb/lp0").string()), offers.end()) << "it is lpt1 already";
    ASSERT_NE(find(file_port), offers.end()) << "the port in use is always among them";
    EXPECT_EQ(find(file_port)->fault, PortFault::none);
    EXPECT_EQ(offers_for("/dev/none").back().fault, PortFault::missing);
    std::ofstream(shop.path() / "shop.db") << "SQLite format 3";
    EXPECT_EQ(offers_for("shop.db").back().fault, PortFault::not_a_port);
    EXPECT_EQ(offers_for("lpt4").back().fault, PortFault::unknown_name);
    EXPECT_EQ(offers_for("\\\\till\\roll").back().fault, PortFault::shared_printer);
}

TEST(PrinterChoice, IsKeptForItsCashPoint) {
    const test::TemporaryFolder folder;
    const auto file = common::printer_file(folder.path(), 2);
    EXPECT_FALSE(printing::read_printer_choice(file));
    printing::keep_printer_choice(file, {"/dev/till/printer", 40});
    const auto kept = printing::read_printer_choice(file);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->receipt_port, "/dev/till/printer");
    EXPECT_EQ(kept->line_width, 40);
    EXPECT_FALSE(printing::read_printer_choice(common::printer_file(folder.path(), 1)));
    for (const char* spoilt :
         {"", "port = lpt1\n", "port = lpt1\nwidth = 400\n", "port =\nwidth = 48\n", "\xff\0"}) {
        std::ofstream(file, std::ios::trunc) << spoilt;
        EXPECT_FALSE(printing::read_printer_choice(file)) << spoilt;
    }
}

TEST(TestPrint, ShowsTheWidthAndEveryLetter) {
    for (const int width : {48, 40}) {
        const std::string page = printing::test_print(width, default_codes());
        EXPECT_EQ(printing::width_of(page), width);
        std::string read;
        std::istringstream in(page);
        for (std::string line; std::getline(in, line);)
            read += test::read_aloud(line);
        for (const char32_t letter : U"ابتثجحخدذرزسشصضطظعغفقكلمنهويىةءأآؤئ0123456789")
            if (letter != 0) {
                EXPECT_NE(read.find(common::utf8(letter)), std::string::npos) << common::utf8(letter);
            }
    }
}

// A receipt voucher as its screen makes it, of a customer to whom the shop owes 250.50.
printing::Report voucher() {
    printing::Report report;
    report.store_name = "بقالة الواحة";
    report.telephone = "0223456789";
    report.title = "ايصال استلام نقدية";
    report.captions = {{"رقم السند", "12"},
                       {"التاريخ", "2026/11/21"},
                       {"الاسم", "شركة التوريدات المتحدة لمنتجات الألبان والمواد الغذائية"},
                       {"خصم لا يغير الرصيد", "5.00"}};
    report.totals = {{"الرصيد قبل", "-250.50"}, {"المبلغ", "1107.07"}, {"الرصيد بعد", "-1357.57"}};
    report.words = "فقط الف ومائة وسبعة جنيها وسبعة قروش لا غير";
    report.signatures = {"المستلم"};
    return report;
}

// The lines of a page as they are read aloud, without those of control bytes and the blanks that fill them.
std::string read_page(const std::string& bytes, std::size_t width) {
    std::string read;
    std::istringstream in(bytes);
    for (std::string line; std::getline(in, line);) {
        if (line.find('\x1B') != std::string::npos || line.size() <= 1) continue;
        EXPECT_LE(line.size(), width + 1) << read;
        read += common::trim_right(test::read_aloud(line.substr(0, line.size() - 1)));
        read += '\n';
    }
    return read;
}

TEST(TextReport, SetsAVoucherToTheLetter) {
    EXPECT_EQ(read_page(printing::text_report(voucher(), 40, default_codes()), 40),
              R"(              بقالة الواحة
               0223456789
----------------------------------------
           ايصال استلام نقدية
----------------------------------------
رقم السند : 12
التاريخ : 2026/11/21
الاسم :
شركة التوريدات المتحدة لمنتجات الألبان
والمواد الغذائية
خصم لا يغير الرصيد : 5.00
----------------------------------------
الرصيد قبل : -250.50
المبلغ : 1107.07
الرصيد بعد : -1357.57
----------------------------------------
فقط الف ومائة وسبعة جنيها وسبعة قروش لا
غير
----------------------------------------
المستلم : ....................
)");
    EXPECT_EQ(read_page(printing::text_report(voucher(), 48, default_codes()), 48),
              R"(                  بقالة الواحة
                   0223456789
------------------------------------------------
               ايصال استلام نقدية
------------------------------------------------
رقم السند : 12
التاريخ : 2026/11/21
الاسم :
شركة التوريدات المتحدة لمنتجات الألبان والمواد
الغذائية
خصم لا يغير الرصيد : 5.00
------------------------------------------------
الرصيد قبل : -250.50
المبلغ : 1107.07
الرصيد بعد : -1357.57
------------------------------------------------
فقط الف ومائة وسبعة جنيها وسبعة قروش لا غير
------------------------------------------------
المستلم : ........................
)");
}

}  // namespace

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <set>

#include "common/amount_in_words.h"
#include "printing/layouts.h"
#include "printing/messages.h"
#include "printing/pages/canvas.h"
#include "printing/pages/paper_picture.h"
#include "printing/pages/receipt_page.h"
#include "printing/pages/report_page.h"
#include "printing/qr.h"
#include "printing/report_printer.h"
#include "printing/text_receipt.h"
#include "sample.h"
#include "support/shop.h"
#include "tools.h"
#include "ui/printing/preview.h"

namespace {

namespace fs = std::filesystem;
using common::Amount;
using printing::Form;
using printing::Receipt;
using printing::ReceiptSettings;
using namespace printing::pages;
using ui::PreviewDialog;

std::vector<printing::LayoutRow> rows_of(const Receipt& receipt, const ReceiptSettings& settings) {
    return printing::layout_rows(receipt, Form::full, settings);
}

printing::LayoutReceipt layout(const Receipt& receipt, Form form, int width,
                               const ReceiptSettings& settings = {}) {
    return printing::layout_receipt(receipt, form, width, settings, rows_of(receipt, settings));
}

// The darkest column in which a page's picture has anything, against its width.
struct Ink {
    int left = -1;
    int right = -1;
    int bottom = -1;
};
Ink ink_of(const QImage& image) {
    Ink ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) > 128) continue;
            ink.left = ink.left < 0 ? x : std::min(ink.left, x);
            ink.right = std::max(ink.right, x);
            ink.bottom = y;
        }
    }
    return ink;
}

TEST(ReceiptPage, ShowsTheTextsOfItsLayout) {
    NEEDS_TOOL("pdftotext");
    const test::TemporaryFolder folder;
    ReceiptSettings settings;
    settings.rec_note = "التوصيل مجانا";
    ReceiptSettings coded = settings;
    coded.show_item_code = true;
    const std::vector<std::string> header = {"بقالة النور",
                                             "Al Noor Grocery",
                                             "فاتورة مبيعات نقدي",
                                             "1284",
                                             "2026/11/21",
                                             "10:42",
                                             "اسم المستخدم : سعاد",
                                             "البائع : محمود",
                                             "اسم الصنف",
                                             "كمية",
                                             "الاجمالي",
                                             "جبنة رومي قديمة",
                                             "220.00",
                                             "Nescafe Gold 100g",
                                             "12345.50",
                                             "12584.93"};
    struct {
        Form form;
        int width;
        ReceiptSettings settings;
        std::vector<std::string> shown;
        std::vector<std::string> absent;
    } const cases[] = {
        {Form::reprint,
         48,
         settings,
         {"Tel : 02-2574 1234", "الصافي قبل الخصم", "12712.05", "127.12", "الصافي بعد الخصم", "التوصيل مجانا",
          "سياسة المحل"},
         {"المدفوع", "المتبقي", "كود"}},
        {Form::full,
         48,
         coded,
         {"Tel : 02-2574 1234", "المدفوع", "12600.00", "المتبقي", "15.07", "كود", "2210", "الوحدة", "زجاجة"},
         {"الرصيد"}},
        {Form::full, 40, settings, {"المدفوع", "12600.00", "مع أصل الفاتورة"}, {"كود"}},
        {Form::no_telephone, 40, settings, {"الصافي"}, {"Tel", "المدفوع", "التوصيل", "127.12", "سياسة"}},
    };
    int number = 0;
    for (const auto& [form, width, used, shown, absent] : cases) {
        const ReceiptPage page(layout(test::sale(), form, width, used));
        EXPECT_EQ(page.size().width(), width == 48 ? 80 : 58);
        const fs::path file = folder.path() / (std::to_string(number++) + ".pdf");
        ASSERT_NO_THROW(save_pdf(page, file));
        const std::string text = test::pdf_text(file);
        for (const auto* texts : {&header, &shown})
            for (const std::string& wanted : *texts)
                EXPECT_NE(text.find(test::plain(wanted)), std::string::npos)
                    << number << ": " << wanted << "\n"
                    << text;
        for (const std::string& unwanted : absent)
            EXPECT_EQ(text.find(test::plain(unwanted)), std::string::npos) << number << ": " << unwanted;
    }
}

TEST(ReceiptPage, StaysOnThePaperWhateverIsPrinted) {
    Receipt huge = test::sale();
    huge.lines.assign(40, {"99999999999999", "", "", 1234567.125, 9876543210.0, 0, Amount(9876543210.0)});
    for (int i = 0; i < 40; ++i) {
        huge.lines[0].item_name += "سائل ";
        huge.lines[1].item_name += "Extraordinarily";
        huge.store_name += " والشركاء";
    }
    huge.net = huge.total = huge.paid = Amount(98765432100.0);
    for (const int width : {48, 40}) {
        for (const int font : {4, 7, 24}) {
            ReceiptSettings settings;
            settings.show_item_code = true;
            settings.font_size = font;
            const ReceiptPage page(layout(huge, Form::full, width, settings));
            const QImage image = pictures(page, 4)[0];
            const Ink ink = ink_of(image);
            EXPECT_GT(ink.left, 8) << width << " columns, font " << font;
            EXPECT_LT(ink.right, image.width() - 8) << width << " columns, font " << font;
            EXPECT_LT(ink.bottom, image.height() - 8);
        }
    }
}

TEST(ReceiptPage, ALoneDetailTakesTheRowOfTwo) {
    auto made = layout(test::sale(), Form::full, 48);
    made.details = {{"أ", "1"}, {"ب", "2"}};
    const double two = ReceiptPage(made).size().height();
    made.details.pop_back();
    EXPECT_EQ(ReceiptPage(made).size().height(), two);
}

TEST(ReceiptPage, GivesANameALineOfItsOwnOnlyBesideLongFigures) {
    const auto row_height = [](double figure) {
        Receipt receipt = test::sale();
        receipt.lines.assign(2, {"1", "شاي", "", figure, figure, 0, Amount(figure)});
        const double two = ReceiptPage(layout(receipt, Form::full, 40)).size().height();
        receipt.lines.pop_back();
        return two - ReceiptPage(layout(receipt, Form::full, 40)).size().height();
    };
    EXPECT_GT(row_height(1234567.125), 1.5 * row_height(1));
}

TEST(ReceiptPage, Takes500LinesAndALogoThatIsNoPicture) {
    const test::TemporaryFolder folder;
    std::ofstream(folder.path() / "logo.jpg") << "this is no picture";
    Receipt receipt = test::sale();
    receipt.lines.assign(500, receipt.lines[3]);
    receipt.logo = "logo.jpg";
    auto made = layout(receipt, Form::full, 48);
    const double without = ReceiptPage(made).size().height();
    made.logo = printing::logo_file(receipt.logo, folder.path());
    EXPECT_FALSE(made.logo.empty());
    const ReceiptPage page(made);
    EXPECT_EQ(page.size().height(), without);
    EXPECT_GT(page.size().height(), 1500);
    EXPECT_NO_THROW(save_pdf(page, folder.path() / "long.pdf"));
    EXPECT_LE(pictures(page, 30)[0].height(), 32000);
    receipt.logo = "none.jpg";
    EXPECT_TRUE(printing::logo_file(receipt.logo, folder.path()).empty());
}

// What zbar reads from a picture.
std::string scanned(const fs::path& picture, const std::string& kind) {
    return test::output_of("zbarimg --raw -q -Sdisable -S" + kind + ".enable '" + picture.string() + "'");
}

// A page as a print head burns it: dots or none, no greys.
void save_burned(const PageSet& page, double dots_per_inch, const fs::path& file) {
    const QImage drawn = pictures(page, dots_per_inch / 25.4)[0];
    const QImage burned = drawn.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::ThresholdDither);
    ASSERT_TRUE(burned.save(QString::fromStdString(file.string())));
}

TEST(ReceiptPage, CarriesACodeThatScannersRead) {
    NEEDS_TOOL("zbarimg");
    const test::TemporaryFolder folder;
    const printing::ElectronicInvoicing shop{"https://inv.example", "متجر-77", "نقطة 3"};
    const std::string text = printing::qr_text(shop, test::sale());
    const fs::path code = folder.path() / "qr.bmp";
    ASSERT_TRUE(printing::print_qr(text, code));
    EXPECT_EQ(scanned(code, "qrcode"), text + "\n");
    const std::string long_text = "https://invoicing.example.gov/" + std::string(160, 'x');
    ASSERT_EQ(long_text.size(), 190u);
    for (const int width : {48, 40}) {
        for (const int dots_per_inch : {180, 203, 300}) {
            for (const std::string& shown : {text, long_text}) {
                auto made = layout(test::sale(), Form::full, width);
                made.qr = printing::qr_code(shown);
                const fs::path paper = folder.path() / "paper.png";
                save_burned(ReceiptPage(made), dots_per_inch, paper);
                EXPECT_EQ(scanned(paper, "qrcode"), shown + "\n") << width << " at " << dots_per_inch;
            }
        }
    }
}

// The lengths of the dark runs of a row of dots.
std::set<int> dark_runs(const QImage& image, int y) {
    std::set<int> runs;
    for (int x = 0, begin = 0; x <= image.width(); ++x) {
        if (x < image.width() && qGray(image.pixel(x, y)) < 128) continue;
        if (x > begin) runs.insert(x - begin);
        begin = x + 1;
    }
    return runs;
}

TEST(Canvas, DrawsModulesInWholeDots) {
    // 57 modules in 40 mm: 5.6 dots of a printer of 203 dpi, so 5.
    QImage image(400, 400, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    Canvas::prepare(painter, 203 / 25.4);
    Canvas(&painter, {}).modules({3.3, 3.3, 40, 40}, 57, 57, [](int x, int y) { return (x + y) % 2 == 0; });
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        for (const int run : dark_runs(image, y))
            EXPECT_EQ(run, 5) << y;
        for (int x = 0; x < image.width(); ++x)
            EXPECT_TRUE(qGray(image.pixel(x, y)) == 0 || qGray(image.pixel(x, y)) == 255);
    }
    EXPECT_EQ(ink_of(image).right - ink_of(image).left + 1, 57 * 5);
}

TEST(ReceiptPage, NeverBreaksAWordOfItsHeadings) {
    NEEDS_TOOL("pdftotext");
    const test::TemporaryFolder folder;
    Receipt receipt = test::sale();
    receipt.store_name = "سوبرماركت الإسكندرية للمستلزمات";
    receipt.second_store_name = "Extraordinary Refrigeration";
    receipt.payment = printing::Payment::account;
    receipt.customer = "شركة التوريدات المتحدة";
    receipt.balance = Amount(1234567);
    receipt.lines[4].total = receipt.total = receipt.net = Amount(1234567.89);
    for (const int width : {48, 40}) {
        for (const int font : {7, 12, 18}) {
            ReceiptSettings settings;
            settings.font_size = font;
            settings.show_item_code = true;
            const fs::path file = folder.path() / "paper.pdf";
            save_pdf(ReceiptPage(layout(receipt, Form::full, width, settings)), file);
            // The lines of the page: a broken text would not be on any of them.
            const std::string lines = test::output_of("pdftotext -raw '" + file.string() + "' -");
            for (const char* whole : {"Extraordinary", "Refrigeration", "1234567.89", "1234567.00"})
                EXPECT_NE(lines.find(whole), std::string::npos) << whole << ", font " << font << "\n"
                                                                << lines;
        }
    }
    // A store name in letters of twice 18 points on 48 mm: a line for each of its words.
    const Canvas canvas(nullptr, {});
    const TextStyle style{36, true, Side::centre, Qt::black};
    EXPECT_GT(canvas.text_width("للمستلزمات", style), 48);
    EXPECT_LT(canvas.text_height(48, qstring(receipt.store_name), style),
              3 * canvas.text_height(48, "في", style));
}

TEST(InvoicePage, ShowsCustomerLinesTotalsAndWords) {
    NEEDS_TOOL("pdftotext");
    const test::TemporaryFolder folder;
    Receipt receipt = test::sale();
    receipt.customer = "شركة الأمل للتجارة";
    receipt.net = Amount(125.25);
    for (const Form form : {Form::cash_page, Form::standard_page}) {
        const ReportPage page(printing::invoice_report(receipt, form, {}, rows_of(receipt, {}), {}));
        EXPECT_EQ(page.count(), 1);
        const fs::path file = folder.path() / "page.pdf";
        ASSERT_NO_THROW(save_pdf(page, file));
        const std::string text = test::pdf_text(file);
        for (const std::string& wanted :
             {std::string("بقالة النور"), receipt.telephone, receipt.customer, std::string("رقم الفاتورة"),
              std::string("جبنة رومي قديمة"), std::string("12345.50"), std::string("الصافي بعد الخصم"),
              common::amount_in_words(125.25F)})
            EXPECT_NE(text.find(test::plain(wanted)), std::string::npos) << wanted << "\n" << text;
        const bool cash = form == Form::cash_page;
        EXPECT_EQ(text.find("12600.00") != std::string::npos, cash);
        EXPECT_EQ(text.find(test::plain("زجاجة")) != std::string::npos, !cash);
        EXPECT_EQ(text.find(test::plain("المستلم")) != std::string::npos, !cash);
    }
}

TEST(InvoicePage, LeavesOutWhatTheInvoiceHasNot) {
    Receipt receipt = test::sale();
    receipt.discount = {};
    receipt.salesman.clear();
    const auto report = printing::invoice_report(receipt, Form::standard_page, {}, {}, {});
    ASSERT_EQ(report.totals.size(), 1u);
    EXPECT_EQ(report.totals[0], printing::Caption("الصــــافي", "12584.93"));
    EXPECT_EQ(report.main_total, 0);
    for (const auto& [label, value] : report.captions)
        EXPECT_FALSE(value.empty()) << label;
}

TEST(ReportPage, ShowsTheLogo) {
    const test::TemporaryFolder folder;
    const auto page_with = [&folder](Qt::GlobalColor colour) {
        QImage logo(40, 40, QImage::Format_RGB32);
        logo.fill(colour);
        printing::Report report;
        report.logo = folder.path() / "logo.png";
        EXPECT_TRUE(logo.save(QString::fromStdString(report.logo.string())));
        return pictures(ReportPage(report), 4)[0];
    };
    EXPECT_NE(page_with(Qt::black), page_with(Qt::white));
}

TEST(ReportPage, BreaksTheTableAndKeepsTheTotalsTogether) {
    NEEDS_TOOL("pdftotext");
    const test::TemporaryFolder folder;
    printing::Report report;
    report.name = "journal";
    report.store_name = "بقالة النور";
    report.title = "تقرير الكاشير";
    report.columns = {{"رقم", printing::Align::centre, 1},
                      {"البيان", printing::Align::start, 4},
                      {"القيمة", printing::Align::end, 1}};
    report.totals = {{"رصيد سابق", "111.11"}, {"رصيد حالي", "222.22"}};
    // Around the edge where the totals no longer fit under the last row.
    int pages_before = 1;
    for (std::size_t rows = 0; rows <= 90; ++rows) {
        report.rows.assign(rows, {"12", "صف", "0.50"});
        const ReportPage page(report);
        EXPECT_GE(page.count(), pages_before) << rows;
        EXPECT_LE(page.count(), pages_before + 1) << rows;
        pages_before = page.count();
    }
    EXPECT_GE(pages_before, 3);
    for (std::size_t rows : {0u, 25u, 33u, 36u, 38u, 90u, 500u}) {
        report.rows.clear();
        for (std::size_t row = 0; row < rows; ++row)
            report.rows.push_back(
                {"r" + std::to_string(row) + "r", row % 7 == 0 ? std::string(150, 'w') : "صف"});
        const fs::path file = folder.path() / "report.pdf";
        const ReportPage page(report);
        ASSERT_NO_THROW(save_pdf(page, file));
        const std::string text = test::pdf_text(file);
        for (std::size_t row = 0; row < rows; ++row)
            EXPECT_NE(text.find("r" + std::to_string(row) + "r"), std::string::npos) << row << " of " << rows;
        const std::string last = test::plain(
            QString::fromStdString(test::output_of("pdftotext -raw -f " + std::to_string(page.count()) +
                                                   " '" + file.string() + "' -"))
                .normalized(QString::NormalizationForm_KC)
                .toStdString());
        for (const char* total : {"111.11", "222.22"})
            EXPECT_NE(last.find(total), std::string::npos) << rows;
    }
}

// An offer names no main total: the last one, its net, stands out.
TEST(ReportPage, OneTotalStandsOut) {
    printing::Report report;
    report.title = "عرض سعر";
    report.totals = {{"الاجمالي", "120.00"}, {"خصم", "12.00"}, {"الصافي", "108.00"}};
    const auto picture = [&](int main) {
        report.main_total = main;
        return pictures(ReportPage(report), 4)[0];
    };
    const QImage last = picture(2);
    EXPECT_EQ(picture(-1), last);
    EXPECT_NE(picture(0), last);
    EXPECT_NE(picture(1), last);
}

TEST(ReportPage, DrawsWideReportsAcrossThePaper) {
    printing::Report report;
    report.title = "كشف النقدية";
    report.orientation = printing::Orientation::landscape;
    for (int column = 0; column < 25; ++column) {
        report.columns.push_back({"عمود " + std::to_string(column), printing::Align::end, 1});
    }
    report.rows = {std::vector<std::string>(25, "123456.75")};
    const ReportPage page(report);
    EXPECT_EQ(page.size(), QSizeF(297, 210));
    const QImage image = pictures(page, 4)[0];
    EXPECT_GT(ink_of(image).left, 50);
    EXPECT_LT(ink_of(image).right, image.width() - 50);
}

TEST(Output, LeavesNoFileBehindThatCouldNotBeWritten) {
    const test::TemporaryFolder folder;
    const ReceiptPage page(layout(test::sale(), Form::full, 48));
    EXPECT_THROW(save_pdf(page, "/dev/full/receipt.pdf"), std::system_error);
    std::ofstream(folder.path() / "Receipts") << "a file where the folder should be";
    EXPECT_THROW(save_pdf(page, printing::kept_file(folder.path(), page.name().toStdString(),
                                                    {{2026, 11, 21}, {10, 42, 7, 0}})),
                 std::system_error);
    EXPECT_EQ(QDir(QString::fromStdString(folder.path().string())).entryList(QDir::Files).size(), 1);
}

TEST(Output, NamesKeptFilesAfterReceiptAndMomentOnce) {
    const test::TemporaryFolder folder;
    const ReceiptPage page(layout(test::sale(), Form::full, 48));
    const common::Moment moment{{2026, 11, 21}, {10, 42, 7, 0}};
    const fs::path first = printing::kept_file(folder.path(), page.name().toStdString(), moment);
    EXPECT_EQ(first, folder.path() / "Receipts" / "receipt-1284-20261121-104207.pdf");
    ASSERT_NO_THROW(save_pdf(page, first));
    EXPECT_EQ(printing::kept_file(folder.path(), page.name().toStdString(), moment).filename(),
              "receipt-1284-20261121-104207-2.pdf");
}

TEST(Output, WaitsThreeSecondsForAPrintSystemThatNeverAnswers) {
    const test::TemporaryFolder folder;
    const std::string path = (folder.path() / "cups.sock").string();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const int silent = socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ(bind(silent, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ASSERT_EQ(listen(silent, 5), 0);
    const QByteArray before = qgetenv("CUPS_SERVER");
    qputenv("CUPS_SERVER", QByteArray::fromStdString(path));
    const auto pages = std::make_shared<ReceiptPage>(layout(test::sale(), Form::full, 48));
    const auto started = std::chrono::steady_clock::now();
    EXPECT_EQ(print_on_system_printer(pages), Printed::failed);
    const auto took = std::chrono::steady_clock::now() - started;
    EXPECT_LT(took, std::chrono::milliseconds(3500));
    qputenv("CUPS_SERVER", before);
    close(silent);
}

TEST(Output, KeepsARollUprightHoweverShort) {
    NEEDS_TOOL("pdfinfo");
    const test::TemporaryFolder folder;
    Receipt receipt = test::sale();
    receipt.lines.resize(1);
    const ReceiptPage page(layout(receipt, Form::no_telephone, 48));
    ASSERT_LT(page.size().height(), page.size().width());
    ASSERT_NO_THROW(save_pdf(page, folder.path() / "short.pdf"));
    const std::string info = test::output_of("pdfinfo '" + (folder.path() / "short.pdf").string() + "'");
    EXPECT_NE(info.find("227 x"), std::string::npos) << info;
    EXPECT_NE(info.find("Page rot:        0"), std::string::npos) << info;
}

TEST(PreviewDialog, IsWorkedByKeys) {
    const auto pages = std::make_shared<ReceiptPage>(layout(test::sale(), Form::full, 48));
    int printed = 0;
    PreviewDialog preview(nullptr, pages, [&] { return ++printed > 1; });
    const auto press = [&preview](int key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&preview, &event);
    };
    const auto* paper = preview.findChild<QWidget*>("previewPaper");
    QTimer::singleShot(0, [&] {
        const double fitting = preview.zoom();
        press(Qt::Key_Plus);
        EXPECT_GT(preview.zoom(), fitting);
        press(Qt::Key_Minus);
        press(Qt::Key_Minus);
        EXPECT_LT(preview.zoom(), fitting);
        for (int i = 0; i < 50; ++i)
            press(Qt::Key_Minus);
        EXPECT_GT(preview.zoom(), 0.1);
        for (int i = 0; i < 50; ++i)
            press(Qt::Key_Plus);
        // Zoomed, the arrows move the paper: from the right to the left, down and back.
        const QPoint start = paper->pos();
        press(Qt::Key_Left);
        press(Qt::Key_Down);
        EXPECT_GT(paper->x(), start.x());
        EXPECT_LT(paper->y(), start.y());
        press(Qt::Key_Right);
        press(Qt::Key_Up);
        EXPECT_EQ(paper->pos(), start);
        press(Qt::Key_End);
        EXPECT_LT(paper->y(), -1000);
        press(Qt::Key_0);
        EXPECT_DOUBLE_EQ(preview.zoom(), fitting);
        press(Qt::Key_Return);
        EXPECT_TRUE(preview.isVisible()) << "what was not printed stays in sight";
        press(Qt::Key_Enter);
    });
    EXPECT_EQ(preview.run(), 1);
    EXPECT_EQ(printed, 2);
    QTimer::singleShot(0, [&] { press(Qt::Key_Escape); });
    EXPECT_EQ(preview.run(), 0);
    EXPECT_EQ(printed, 2);
}

// Kilobytes that this process takes of the memory now, or took at most.
long memory_kb(const char* line) {
    std::ifstream status("/proc/self/status");
    for (std::string text; std::getline(status, text);)
        if (text.starts_with(line)) return std::atol(text.c_str() + std::strlen(line));
    return 0;
}

// A statement of 20,000 movements: previewed and saved as a file in little memory, and ended by the cashier
// at any page.
TEST(LongReport, TakesNoMoreMemoryThanItsText) {
    printing::Report report;
    report.name = "account";
    report.title = "كشف حساب عميل : شركة النور للتجارة";
    report.columns = {{"التاريخ", printing::Align::start, 1.2}, {"البيان", printing::Align::start, 3},
                      {"رقم", printing::Align::start, 1},       {"مدين", printing::Align::end, 1.2},
                      {"دائن", printing::Align::end, 1.2},      {"الرصيد", printing::Align::end, 1.4}};
    for (int row = 0; row < 20000; ++row)
        report.rows.push_back({"2026/11/21", "فاتورة مبيعات آجلة", std::to_string(row), "125.50", "",
                               std::to_string(row * 125) + ".50"});
    const test::TemporaryFolder folder;
    [[maybe_unused]] const long before = memory_kb("VmRSS:");
    std::ofstream("/proc/self/clear_refs") << "5";  // the peak counts from here
    const auto started = std::chrono::steady_clock::now();
    const auto pages = std::make_shared<ReportPage>(report);
    const auto made = std::chrono::steady_clock::now();
    EXPECT_GT(pages->count(), 400);
    PreviewDialog preview(nullptr, pages, [] { return true; });
    QTimer::singleShot(0, [&] {
        preview.set_zoom(4);
        for (const int key : {Qt::Key_End, Qt::Key_Home, Qt::Key_Left, Qt::Key_PageDown, Qt::Key_Escape}) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            QApplication::sendEvent(&preview, &event);
            preview.repaint();
        }
    });
    EXPECT_EQ(preview.run(), 0);
    const auto seen = std::chrono::steady_clock::now();
    int pages_drawn = 0;
    EXPECT_TRUE(save_pdf(*pages, folder.path() / "all.pdf", [&](int done, int total) {
        EXPECT_EQ(total, pages->count());
        pages_drawn = done;
        return true;
    }));
    const auto written = std::chrono::steady_clock::now();
    EXPECT_EQ(pages_drawn, pages->count());
#ifndef __SANITIZE_ADDRESS__  // the sanitizer holds back what was freed
    EXPECT_LT(memory_kb("VmHWM:") - before, 75'000) << "of 150 MB in all";
#endif
    EXPECT_FALSE(save_pdf(*pages, folder.path() / "ended.pdf", [](int done, int) { return done < 3; }));
    EXPECT_FALSE(fs::exists(folder.path() / "ended.pdf"));
    const auto ms = [](auto from, auto to) {
        return std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(to - from).count());
    };
    RecordProperty("ms", ms(started, made) + " made, " + ms(made, seen) + " seen, " + ms(seen, written));
    if (test::has_tool("pdfinfo")) {
        const std::string info = test::output_of("pdfinfo '" + (folder.path() / "all.pdf").string() + "'");
        EXPECT_NE(info.find("Pages:           " + std::to_string(pages->count())), std::string::npos) << info;
    }
}

TEST(FontFamilies, BeginWithTheWantedOneIfTheSystemHasIt) {
    EXPECT_EQ(printing::pages::font_families("DejaVu Serif").front(), "DejaVu Serif");
    EXPECT_EQ(printing::pages::font_families("No such family"), printing::pages::font_families(""));
}

TEST(PaperPicture, IsAsWideAsItsPrinter) {
    const auto codes = printing::default_codes();
    const QImage wide = paper_picture(printing::text_receipt(test::sale(), Form::full, 48, codes));
    const QImage narrow = paper_picture(printing::text_receipt(test::sale(), Form::full, 40, codes));
    EXPECT_GT(wide.width(), narrow.width());
    const Ink ink = ink_of(wide);
    EXPECT_GT(ink.left, 0);
    EXPECT_LT(ink.right, wide.width() - 1);
    EXPECT_GT(ink.right, wide.width() / 2);
    Receipt receipt = test::sale();
    receipt.lines.assign(3000, receipt.lines[0]);
    const QImage longest = paper_picture(printing::text_receipt(receipt, Form::full, 48, codes));
    EXPECT_LE(longest.height(), 32767);
    EXPECT_GT(ink_of(longest).bottom, 20000);
}

}  // namespace

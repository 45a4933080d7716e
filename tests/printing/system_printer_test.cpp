#include <QApplication>
#include <QKeyEvent>
#include <QTimer>
#include <QWidget>
#include <fstream>

#include "database/error.h"
#include "database/till_settings.h"
#include "printing/messages.h"
#include "printing/pages/system_printers.h"
#include "printing/ports_offered.h"
#include "printing/text_receipt.h"
#include "sample.h"
#include "support/child.h"
#include "support/services.h"
#include "support/shop.h"
#include "tools.h"
#include "ui/printing/preview.h"

namespace {

namespace fs = std::filesystem;
using printing::Form;
using printing::Receipt;
using printing::pages::SystemReceiptPrinter;

class SystemReceiptPrinterTest : public ::testing::Test {
  protected:
    std::vector<fs::path> kept() const {
        std::vector<fs::path> files;
        std::error_code none;
        for (const auto& entry : fs::directory_iterator(folder.path() / "Receipts", none))
            files.push_back(entry.path());
        return files;
    }

    test::Shop shop;
    test::TemporaryFolder folder;
    test::RememberedServices services;
    printing::PrinterChoice choice;
    SystemReceiptPrinter printer{
        {shop.connection(), services.all(), choice, folder.path(), ui::show_preview}};
};

TEST_F(SystemReceiptPrinterTest, FollowsTheChoiceOfPort) {
    for (const char* port : {"", " ", "win", "WIN"}) {
        choice.receipt_port = port;
        EXPECT_FALSE(printer.prints_text());
        EXPECT_TRUE(printer.print(test::sale(), Form::full));
    }
    EXPECT_TRUE(services.devices.ports.empty());
    EXPECT_EQ(kept().size(), 4u) << "no printer is installed";
    choice = {"lpt1", 40};
    EXPECT_TRUE(printer.prints_text());
    EXPECT_TRUE(printer.print(test::sale(), Form::no_telephone));
    EXPECT_EQ(services.devices.ports["lpt1"],
              printing::text_receipt(test::sale(), Form::no_telephone, 40, printing::default_codes()));
    EXPECT_EQ(kept().size(), 4u);
    EXPECT_TRUE(services.prompts.messages.empty());
    // Full pages are pages even where receipts are text.
    EXPECT_TRUE(printer.print(test::sale(), Form::standard_page));
    EXPECT_EQ(kept().size(), 5u);
}

TEST_F(SystemReceiptPrinterTest, SendsPicturesAndTheirDrawerCommandToThePort) {
    using namespace std::string_literals;
    choice = {"lpt1", 40, printing::ReceiptPicture::raster};
    EXPECT_TRUE(printer.prints_text()) << "a receipt that goes to a port is always printed";
    EXPECT_TRUE(printer.print(test::sale(), Form::full));
    EXPECT_TRUE(services.devices.ports["lpt1"].starts_with("\x1B@\x1Dv0\0\x30\0"s)) << "48 bytes, 384 dots";
    EXPECT_EQ(printer.drawer_command("LPT1:"), "\x1B@\x1Bp\0\x19\xFA"s);
    EXPECT_EQ(printer.drawer_command("com3"), "\x07");
    // Slips follow the receipts.
    services.devices.ports.clear();
    choice.picture = printing::ReceiptPicture::bit_image;
    printing::Report slip;
    slip.title = "ايصال استلام نقدية";
    printing::pages::SystemReportPrinter reports(
        {shop.connection(), services.all(), choice, folder.path(), ui::show_preview});
    EXPECT_TRUE(reports.print_slip(slip));
    EXPECT_TRUE(services.devices.ports["lpt1"].starts_with("\x1B@\x1B\x33\x18"s));
    EXPECT_TRUE(kept().empty());
    shop.sql("drop table basic");
    EXPECT_FALSE(reports.print_slip(slip));
    EXPECT_FALSE(services.prompts.messages.empty()) << "said, not thrown";
    choice.picture = printing::ReceiptPicture::none;
    EXPECT_EQ(printer.drawer_command("lpt1"), "\x07");
}

TEST_F(SystemReceiptPrinterTest, PrintsABarcodeOnTextWhereTheShopHasSuchPrinters) {
    choice.receipt_port = "com1";
    Receipt receipt = test::sale();
    receipt.code = "-1108485729271284";
    EXPECT_TRUE(printer.print(receipt, Form::full));
    EXPECT_EQ(services.devices.ports["com1"],
              printing::text_receipt(test::sale(), Form::full, 48, printing::default_codes()));
    services.devices.ports.clear();
    database::set_yes_or_no(shop.connection(), database::setting::printer_barcode, true);
    EXPECT_TRUE(printer.print(receipt, Form::full)) << "from the next receipt on";
    EXPECT_NE(services.devices.ports["com1"].find("{B-{C"), std::string::npos);
}

TEST_F(SystemReceiptPrinterTest, TellsLogsAndSurvivesADeadPort) {
    choice.receipt_port = "com1";
    services.devices.fault = common::PortFault::silent;
    EXPECT_FALSE(printer.print(test::sale(), Form::full));
    ASSERT_EQ(services.prompts.messages.size(), 1u);
    EXPECT_NE(services.prompts.messages[0].find("com1"), std::string::npos);
    ASSERT_EQ(services.log.lines.size(), 1u);
    services.devices.fault = common::PortFault::none;
    EXPECT_TRUE(printer.print(test::sale(), Form::full)) << "the receipt can be printed again";
}

TEST_F(SystemReceiptPrinterTest, SaysOnAReprintWhenItIsPrinted) {
    choice.receipt_port = "com1";
    Receipt saved_before = test::sale();
    saved_before.time = {9, 15, 0, 0};
    EXPECT_TRUE(printer.print(saved_before, Form::full));
    EXPECT_NE(services.devices.ports["com1"].find("09:15 AM"), std::string::npos);
    services.clock.moment.time = {18, 5, 0, 0};
    EXPECT_TRUE(printer.print(saved_before, Form::reprint));
    EXPECT_NE(services.devices.ports["com1"].find("06:05 PM"), std::string::npos);
    EXPECT_NE(services.devices.ports["com1"].find("2026/11/21"), std::string::npos);
}

TEST_F(SystemReceiptPrinterTest, PrintsTextEvenWithoutTheDatabase) {
    choice.receipt_port = "com1";
    shop.sql("drop table codes");
    EXPECT_TRUE(printer.print(test::sale(), Form::full));
    EXPECT_EQ(services.devices.ports["com1"],
              printing::text_receipt(test::sale(), Form::full, 48, printing::default_codes()));
}

TEST_F(SystemReceiptPrinterTest, NeverThrowsWhenThePagesCannotBeMade) {
    shop.sql("drop table [print]");
    EXPECT_FALSE(printer.print(test::sale(), Form::full));
    EXPECT_EQ(services.prompts.messages.size(), 1u);
    EXPECT_EQ(services.log.lines.size(), 1u);
}

TEST_F(SystemReceiptPrinterTest, SaysSoWhenNothingCanBeWritten) {
    std::ofstream(folder.path() / "Receipts") << "a file where the folder should be";
    EXPECT_FALSE(printer.print(test::sale(), Form::full));
    ASSERT_EQ(services.prompts.messages.size(), 1u);
    EXPECT_TRUE(services.prompts.messages[0].starts_with("لم يطبع البون : تعذر حفظ الملف : "));
}

TEST_F(SystemReceiptPrinterTest, HasNothingToPrintWithoutLines) {
    EXPECT_FALSE(printer.print(test::empty_receipt(), Form::full));
    EXPECT_EQ(services.prompts.last(), printing::message::no_data);
    EXPECT_TRUE(kept().empty());
    choice.receipt_port = "com1";
    EXPECT_TRUE(printer.print(test::empty_receipt(), Form::full))
        << "the text receipt has headings and totals";
}

TEST_F(SystemReceiptPrinterTest, ShowsThePagesFirstWhereTheShopWantsIt) {
    shop.sql("update basic set bon_prv = 1");
    const auto press_in_preview = [](int key) {
        QTimer::singleShot(0, [key] {
            QWidget* preview = QApplication::activeModalWidget();
            ASSERT_NE(preview, nullptr);
            EXPECT_EQ(preview->objectName(), "preview");
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            QApplication::sendEvent(preview, &event);
        });
    };
    press_in_preview(Qt::Key_Escape);
    EXPECT_FALSE(printer.print(test::sale(), Form::full));
    EXPECT_TRUE(kept().empty());
    EXPECT_TRUE(services.prompts.messages.empty());
    press_in_preview(Qt::Key_Return);
    EXPECT_TRUE(printer.print(test::sale(), Form::full));
    EXPECT_EQ(kept().size(), 1u);
}

TEST_F(SystemReceiptPrinterTest, PutsTheCodeOnTheFullLayoutOnly) {
    const fs::path code = folder.path() / "qr.bmp";
    EXPECT_TRUE(printer.print(test::sale(), Form::full));
    EXPECT_FALSE(fs::exists(code)) << "not configured";
    shop.sql("insert into elec_inv (url,clintid,pos) values ('https://inv.example','c-77','3')");
    EXPECT_TRUE(printer.print(test::sale(), Form::reprint));
    EXPECT_FALSE(fs::exists(code));
    EXPECT_TRUE(printer.print(test::sale(), Form::full));
    EXPECT_TRUE(fs::exists(code));
    EXPECT_GT(printer.pages(test::sale(), Form::full)->size().height(),
              printer.pages(test::sale(), Form::reprint)->size().height() + 25);
}

TEST(SystemReportPrinter, KeepsReportsAsFiles) {
    const test::TemporaryFolder folder;
    test::Shop shop;
    test::RememberedServices services;
    printing::PrinterChoice choice;
    printing::pages::SystemReportPrinter printer(
        {shop.connection(), services.all(), choice, folder.path(), {}});
    printing::Report report;
    report.name = "shift";
    report.title = "تقرير الوردية";
    EXPECT_TRUE(printer.print(report));
    EXPECT_TRUE(fs::exists(folder.path() / "Receipts" / "shift-20261121-104200.pdf"));
    EXPECT_TRUE(printer.print(printing::test_report("بقالة النور")));
    EXPECT_TRUE(fs::exists(folder.path() / "Receipts" / "test-20261121-104200.pdf"));
    EXPECT_TRUE(printer.save_csv(report, folder.path() / "shift.csv"));
    EXPECT_EQ(printer.take_kept().size(), 2u);
    choice = {"lpt1", 40};
    EXPECT_TRUE(printer.print_slip(report));
    EXPECT_EQ(services.devices.ports["lpt1"], printing::text_report(report, 40, printing::default_codes()));
    EXPECT_TRUE(printer.take_kept().empty());
    EXPECT_TRUE(services.prompts.messages.empty());
    EXPECT_FALSE(printer.save_csv(report, "/dev/full"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_FALSE(printer.save_pdf(report, "/proc/none/report.pdf"));
    EXPECT_EQ(services.prompts.messages.size(), 2u);
    EXPECT_EQ(services.log.lines.size(), 2u);
    EXPECT_TRUE(test::in_child([&] {
        test::fill_disk(10);
        return !printer.save_csv(report, folder.path() / "full.csv") &&
               !fs::exists(folder.path() / "full.csv") &&
               services.prompts.last().ends_with(database::message::disk_full);
    }));
}

}  // namespace

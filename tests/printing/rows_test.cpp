#include <fstream>

#include "database/till_settings.h"
#include "printing/layouts.h"
#include "printing/qr.h"
#include "printing/report.h"
#include "sample.h"
#include "support/shop.h"

namespace {

using printing::Form;
using printing::layout_rows;
using printing::LayoutRows;
using printing::Receipt;
using printing::ReceiptSettings;

TEST(LayoutRows, TouchOnlyTheRowsOfTheirWorkstationAndUser) {
    test::Shop shop;
    const std::string user = "سعاد 'ا\"; --";
    LayoutRows mine(shop.connection(), 1, user);
    LayoutRows other_point(shop.connection(), 2, user);
    LayoutRows other_user(shop.connection(), 1, "علي");
    for (auto* rows : {&mine, &other_point, &other_user})
        rows->write(layout_rows(test::sale(), Form::full, {}));
    Receipt smaller = test::sale();
    smaller.lines.resize(2);
    EXPECT_EQ(mine.write(layout_rows(smaller, Form::full, {})).size(), 2u);
    EXPECT_EQ(shop.number("select count(*) from [print]"), 12);

    // A full page takes all rows of its user.
    LayoutRows page(shop.connection(), std::nullopt, user);
    EXPECT_EQ(page.write(layout_rows(smaller, Form::standard_page, {})).size(), 2u);
    EXPECT_EQ(shop.number("select count(*) from [print]"), 7);
}

TEST(LayoutRows, PriceFollowsTheSettingAndQuantityShowsNoNeedlessDecimals) {
    test::Shop shop;
    LayoutRows rows(shop.connection(), 1, "سعاد");
    Receipt receipt = test::sale();
    receipt.lines.push_back({"", "صنف عام", "", 0, 15, 0, {}});
    receipt.lines.push_back({"9", std::string(), "", 0.45, 69.99, 0, common::Amount(31.5)});
    for (int i = 0; i < 100; ++i)
        receipt.lines.back().item_name += "اب";
    const auto read = rows.write(layout_rows(receipt, Form::full, {}));
    ASSERT_EQ(read.size(), 7u);
    EXPECT_EQ(read[3].price, "45.60") << "136.80 / 3";
    EXPECT_EQ(read[3].quantity, "3");
    EXPECT_EQ(read[3].total, "136.80");
    EXPECT_EQ(read[3].unit, "علبة");
    EXPECT_EQ(read[2].quantity, "0.45");
    EXPECT_EQ(read[5].price, "15.00") << "nothing to divide by";
    EXPECT_EQ(read[6].price, "69.99") << "not 31.50 / 0.45";
    EXPECT_EQ(read[6].item_name.size(), 200u) << "cut to the column's 100 letters";

    ReceiptSettings as_entered;
    as_entered.price_as_entered = true;
    EXPECT_EQ(layout_rows(receipt, Form::full, as_entered)[3].price, "48.00");
    ReceiptSettings without_units;
    without_units.show_unit = false;
    for (const auto& [form, settings] : {std::pair(Form::reprint, as_entered),
                                         {Form::no_telephone, as_entered},
                                         {Form::full, without_units}}) {
        rows.write(layout_rows(receipt, form, settings));
        EXPECT_EQ(shop.number("select count(*) from [print] where f5 is null"), 7)
            << "a value of the full form";
    }
}

TEST(ReceiptSettings, NullsAndNonsenseTakeTheDefaults) {
    test::Shop shop;
    const auto switches = [&shop] {
        const ReceiptSettings read = printing::read_receipt_settings(shop.connection());
        std::string text;
        for (const bool on :
             {read.show_unit, read.show_qr, read.show_barcode, read.text_unit, read.text_barcode})
            text += on ? '1' : '0';
        return text;
    };
    EXPECT_EQ(switches(), "11100");
    for (const char* name : {"receipt_qr", "receipt_barcode"})
        database::set_yes_or_no(shop.connection(), name, false);
    for (const char* name : {"text_unit", "printer_barcode"})
        database::set_yes_or_no(shop.connection(), name, true);
    EXPECT_EQ(switches(), "10011");
    shop.sql("drop table till_setting");
    EXPECT_EQ(switches(), "11100");
    shop.sql(
        "update basic set rec_note = null, bon_prv = null, aft_dsc = null, item_code = null, bon_font = "
        "null, "
        "bon_font_s = null");
    ReceiptSettings settings = printing::read_receipt_settings(shop.connection());
    EXPECT_EQ(settings.font, "Tahoma");
    EXPECT_EQ(settings.font_size, 7);
    EXPECT_FALSE(settings.preview || settings.price_as_entered || settings.show_item_code);
    shop.sql(
        "update basic set rec_note = 'شكرا', bon_prv = 1, aft_dsc = 1, item_code = 1, bon_font = 'Noto Naskh "
        "Arabic', bon_font_s = 9");
    settings = printing::read_receipt_settings(shop.connection());
    EXPECT_EQ(settings.rec_note, "شكرا");
    EXPECT_EQ(settings.font_size, 9);
    EXPECT_TRUE(settings.preview && settings.price_as_entered && settings.show_item_code);
    shop.sql("update basic set bon_font_s = 900");
    EXPECT_EQ(printing::read_receipt_settings(shop.connection()).font_size, 7);
}

TEST(LayoutReceipt, NamesTheKindOfInvoice) {
    using printing::Kind;
    using printing::Payment;
    struct {
        Kind kind;
        Payment payment;
        const char* text;
    } const cases[] = {
        {Kind::sale, Payment::cash, "فاتورة مبيعات نقدي"},
        {Kind::return_, Payment::account, "فاتورة مرتجع اجل"},
        {Kind::sale, Payment::card, "فاتورة مبيعات ااتمان"},
        {Kind::third, Payment::tips, "فاتورة مبيعات اكراميات"},
    };
    for (const auto& [kind, payment, text] : cases) {
        Receipt receipt = test::sale();
        receipt.kind = kind;
        receipt.payment = payment;
        EXPECT_EQ(printing::invoice_kind(receipt), text);
    }
}

TEST(Qr, TextIsJoinedInItsOrder) {
    test::Shop shop;
    EXPECT_FALSE(printing::read_electronic_invoicing(shop.connection()).has_value());
    shop.sql("insert into elec_inv (url,clintid,pos) values ('https://inv.example','c-77',null)");
    const auto configured = printing::read_electronic_invoicing(shop.connection());
    ASSERT_TRUE(configured);
    EXPECT_EQ(printing::qr_text(*configured, test::empty_receipt()),
              "https://inv.example/c-77//20260102/0005/1");
}

TEST(Qr, RefusesWhatFitsNoCodeAndLeavesNoFile) {
    const test::TemporaryFolder folder;
    const auto file = folder.path() / "qr.bmp";
    std::ofstream(file) << "an old code";
    EXPECT_FALSE(printing::print_qr(std::string(5000, 'x'), file));
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_FALSE(printing::print_qr("", file));
    EXPECT_FALSE(printing::print_qr("x", folder.path() / "none" / "qr.bmp"));
    EXPECT_FALSE(printing::print_qr("x", "/dev/full/qr.bmp"));
}

TEST(ReportCsv, QuotesWhatWouldBreakItOrRun) {
    printing::Report report;
    report.title = "كشف حساب";
    report.captions = {{"العميل", "شركة \"الأمل\", فرع 2"}};
    report.columns = {{"بيان"}, {"مدين"}};
    report.rows = {{"=1+1", "-12.50"}, {"سطر\nثان", "0.00"}, {"-x", "+5"}, {"", "7"}};
    report.totals = {{"الرصيد", "12.50"}};
    EXPECT_EQ(printing::report_csv(report),
              "\xEF\xBB\xBFكشف حساب\r\n"
              "العميل,\"شركة \"\"الأمل\"\", فرع 2\"\r\n"
              "بيان,مدين\r\n"
              "'=1+1,-12.50\r\n"
              "\"سطر\nثان\",0.00\r\n"
              "'-x,+5\r\n"
              ",7\r\n"
              "الرصيد,12.50\r\n");
}

}  // namespace

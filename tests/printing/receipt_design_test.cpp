#include "printing/receipt_design.h"

#include <sys/stat.h>

#include <QImage>
#include <chrono>
#include <fstream>

#include "common/files.h"
#include "printing/code_128.h"
#include "printing/messages.h"
#include "printing/pages/logo.h"
#include "printing/pages/paper_picture.h"
#include "printing/pages/system_printers.h"
#include "printing/text_receipt.h"
#include "sample.h"
#include "support/shop.h"

namespace {

namespace fs = std::filesystem;
using printing::ReceiptDesigner;
using printing::pages::logo_picture;

class ReceiptDesign : public ::testing::Test {
  protected:
    ReceiptDesign() { session.program_folder = folder.path(); }
    std::string basic(const char* column) {
        return shop.connection().query("select * from basic").front().text(column);
    }
    const test::TemporaryFolder folder;
    test::Shop shop;
    signin::Session session;
};

TEST_F(ReceiptDesign, LeavesAloneWhatAnotherTillChangedMeanwhile) {
    shop.sql("update basic set aname = 'الأمل', ename = 'Amal', tel = '1', bon_font_s = null, logo = null");
    ReceiptDesigner designer(shop.connection(), session);
    designer.open();
    EXPECT_FALSE(designer.is_changed());
    shop.sql("update basic set ename = 'Amal 2', item_code = 1");
    designer.design.store_name = "الأمل الجديد";
    designer.design.font_size = "8";
    designer.design.unit = false;
    EXPECT_EQ(designer.save(), std::nullopt);
    EXPECT_EQ(basic("aname"), "الأمل الجديد");
    EXPECT_EQ(basic("ename"), "Amal 2");
    EXPECT_EQ(basic("bon_font_s"), "8");
    EXPECT_EQ(session.settings.aname, "الأمل الجديد") << "this till's next receipt";
    const auto read = printing::read_receipt_settings(shop.connection());
    EXPECT_TRUE(read.show_item_code);
    EXPECT_FALSE(read.show_unit);
}

TEST_F(ReceiptDesign, ChangesNothingIfItIsRefusedOrFails) {
    ReceiptDesigner designer(shop.connection(), session);
    designer.open();
    const std::string name = basic("aname");
    const struct {
        std::string printing::ReceiptDesign::*field;
        std::string typed;
        const char* refused;
    } cases[] = {
        {&printing::ReceiptDesign::store_name, std::string(101, 'x'), "design_name"},
        {&printing::ReceiptDesign::note, std::string(151, 'x'), "design_note"},
        {&printing::ReceiptDesign::font_size, "3", "design_font_size"},
        {&printing::ReceiptDesign::font_size, "25", "design_font_size"},
        {&printing::ReceiptDesign::font_size, "كبير", "design_font_size"},
    };
    for (const auto& [field, typed, refused] : cases) {
        const auto before = designer.design;
        designer.design.telephone = "'; drop table basic; --";
        designer.design.*field = typed;
        const auto refusal = designer.save();
        ASSERT_TRUE(refusal) << typed;
        EXPECT_EQ(refusal->field, refused);
        designer.design = before;
    }
    shop.sql("drop table till_setting");
    designer.design.store_name = "اسم آخر";
    designer.design.qr = false;
    const auto refusal = designer.save();
    ASSERT_TRUE(refusal) << "there is no place for the switch";
    EXPECT_EQ(refusal->text, printing::message::no_place_for_switches);
    EXPECT_EQ(basic("aname"), name) << "all of it or nothing";
    designer.design.qr = true;
    EXPECT_EQ(designer.save(), std::nullopt) << "a shop without the table keeps the rest";
    EXPECT_EQ(basic("aname"), "اسم آخر");
}

TEST_F(ReceiptDesign, TakesAPictureAsLogoAndRefusesWhatIsNone) {
    const auto at = [this](const char* name) { return folder.path() / name; };
    std::ofstream(at("text.png")) << "no picture";
    std::ofstream(at("empty.png"));
    ASSERT_EQ(mkfifo(at("pipe.png").c_str(), 0600), 0);
    QImage photograph(6000, 1000, QImage::Format_RGB32);
    photograph.fill(Qt::darkGray);
    ASSERT_TRUE(photograph.save(QString::fromStdString(at("photo.jpg").string())));
    fs::rename(at("photo.jpg"), at("photo.png"));  // a wrong ending does no harm
    std::ifstream held(at("photo.png"));
    EXPECT_FALSE(logo_picture(at("photo.png"))) << "a file of this program";
    held.close();
    for (const char* name : {"text.png", "empty.png", "pipe.png", "none.png", "."})
        EXPECT_FALSE(logo_picture(at(name))) << name;
    const auto png = logo_picture(at("photo.png"));
    ASSERT_TRUE(png);
    const QImage logo = QImage::fromData(QByteArray::fromStdString(*png), "PNG");
    EXPECT_EQ(logo.size(), QSize(1500, 250));
}

// The designer draws 40 lines at each key, in each of its forms.
TEST_F(ReceiptDesign, IsDrawnBeforeTheNextKey) {
    using namespace printing;
    Receipt receipt = test::sale();
    receipt.lines.assign(40, receipt.lines[3]);
    const auto codes = PrinterCodes::load(shop.connection());
    const auto fastest = [](const auto& draw) {
        auto least = std::chrono::steady_clock::duration::max();
        for (int i = 0; i < 5; ++i) {
            const auto from = std::chrono::steady_clock::now();
            draw();
            least = std::min(least, std::chrono::steady_clock::now() - from);
        }
        return std::chrono::duration_cast<std::chrono::milliseconds>(least).count();
    };
    const auto page = [&](Form form, double dots_per_mm) {
        return fastest([&] {
            const auto made = pages::receipt_pages(receipt, form, 48, {}, layout_rows(receipt, form, {}), {});
            pages::pictures(*made, dots_per_mm);
        });
    };
    const auto text = fastest([&] {
        const QImage drawn = pages::paper_picture(text_receipt(receipt, Form::full, 48, codes), 48)
                                 .scaledToWidth(500, Qt::SmoothTransformation);
        EXPECT_FALSE(drawn.isNull());
    });
    const auto roll = page(Form::full, 6);
    const auto sheet = page(Form::cash_page, 3);
    RecordProperty("ms", std::to_string(text) + " text, " + std::to_string(roll) + " roll, " +
                             std::to_string(sheet) + " A4");
#ifndef __SANITIZE_ADDRESS__
    EXPECT_LT(std::max({text, roll, sheet}), 100) << text << ", " << roll << ", " << sheet;
#endif
}

}  // namespace

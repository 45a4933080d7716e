#include "printing/printer_text.h"

#include "common/text.h"
#include "decoder.h"
#include "support/shop.h"

namespace {

using printing::default_codes;
using printing::name_text;
using printing::printer_text;
using printing::PrinterCodes;

// The forms that Unicode has for the letters, in the order of the paper.
struct Shape {
    const char* text;
    const char* paper;
};

TEST(PrinterText, WritesJoinedAndUnjoinedForms) {
    const Shape shapes[] = {
        {"بيت", "ﺕﻳﺑ"},               // joined twice, unjoined at the end
        {"باب", "ﺏﺎﺑ"},               // an alef that the letter before reaches
        {"دار", "ﺭﺍﺩ"},               // letters that never join the next one
        {"زيت", "ﺕﻳﺯ"},               // a joined letter after one that never joins
        {"شيء", "ﺀﻱﺷ"},               // nothing joins the hamza
        {"عسل نحل", "ﻝﺣﻧ\u00A0ﻝﺳﻋ"},  // the end of the first word
        {"سـعـر", "ﺭـﻋـﺳ"},           // stretched
        {"كولا", "ﻻﻭﻛ"},              // lam-alef
        {"بلاط", "ﻁﻼﺑ"},              // lam-alef reached from the right
        {"الآن", "ﻥﻵﺍ"},
        {"مُحمَّد", "ﺩﻣﺣﻣ"},  // vowel signs take no room
    };
    for (const auto& [text, paper] : shapes)
        EXPECT_EQ(test::decode_864(printer_text(text, default_codes())), paper) << text;
}

TEST(PrinterText, ReadsBackAsItWasTyped) {
    // Hamza below alef is not on the page: the bare alef stands for it.
    const std::pair<const char*, const char*> names[] = {
        {"أرز مصري فاخر 1 كجم", nullptr},
        {"شاي ناعم 250 جم", nullptr},
        {"زيت 1.5 لتر عبوة 12/6", nullptr},
        {"لبن كامل الدسم مؤسسة الألبان الطازجة", nullptr},
        {"ثلاجة ذرة ضغط ظرف غسيل قهوة هدية", nullptr},
        {"إيصال الإسكندرية", "ايصال الاسكندرية"},
        {"عصير ٢٥٠ مل", "عصير 250 مل"},
        {"قلم 😀 أزرق", "قلم   أزرق"},  // characters of no code page are blanks
        // Letters that page 864 lacks print as their nearest.
        {"پیپسی چای گلکسی ڤانیلا", "بيبسي جاي كلكسي فانيلا"},
        {"كافيه Café", "كافيه Cafe"},
        {"بيبسي ﻻيت", "بيبسي لايت"},
        {"بيبسي Pepsi 330", nullptr},
        {"بيبسي Pepsi (330 ml) علبة", nullptr},
        {"كاكاو 70%", nullptr},
        {"لبن Almarai 3% دسم", nullptr},
        {"جبنة (قليلة الملح)", nullptr},
        {"فاتورة INV-2026/77", nullptr},
        {"عرض 7Up & Co. 2+1", nullptr},
        {"!\"#$&'*+,-./:;<=>?@[]^_`{|}~ب", nullptr},
    };
    for (const auto& [typed, read] : names)
        EXPECT_EQ(test::read_aloud(printer_text(typed, default_codes())), read == nullptr ? typed : read);
}

TEST(PrinterText, MovesOtherCharactersBy128WithoutARow) {
    const PrinterCodes arabic_alone = PrinterCodes::from_csv("wc,pc,pc1\n200,200,169\n");
    EXPECT_EQ(arabic_alone.missing_signs().size(), 94u);
    EXPECT_EQ(printer_text("ب A+", arabic_alone), std::string("\xAB\xC1\xA0\xA9"));
}

TEST(PrinterText, WritesOtherCharactersAsTheShopsRowsSay) {
    const PrinterCodes codes =
        PrinterCodes::from_csv("wc,pc,pc1\n200,66,98\n37,35,35\n41,60,60\n112,80,80\n");
    EXPECT_EQ(printer_text("ب (ب 10% p", codes), std::string("10#\xA0P\xA0") + "b<\xA0" + "b");
}

TEST(PrinterText, NeverHoldsAControlByte) {
    // What a pasted name could do to a printer: feeds, drawer kicks, escapes, half characters.
    std::string everything = "ا";
    for (int byte = 1; byte < 256; ++byte)
        everything += static_cast<char>(byte);
    for (const auto& text : {everything, std::string("a\x1B@\n\r\x07z"), std::string("\xFF\xD9")}) {
        for (const char c : name_text(text, default_codes()) + printer_text(text, default_codes())) {
            EXPECT_GE(static_cast<unsigned char>(c), ' ');
            EXPECT_NE(c, '\x7F');
        }
    }
}

TEST(PrinterText, LeavesTextsWithoutArabicAsTheyStand) {
    EXPECT_EQ(name_text("Pepsi 330ml (x6)", default_codes()), "Pepsi 330ml (x6)");
    EXPECT_EQ(name_text("Café ☺", default_codes()), "Cafe  ");
}

TEST(PrinterText, TakesAlmostNoTimeForNamesOfAnyLength) {
    std::string name;
    for (int i = 0; i < 20000; ++i)
        name += "لا1.";
    EXPECT_EQ(printer_text(name, default_codes()).size(), 20000u * 3);
}

TEST(PrinterCodes, ComeFromTheShopOrElseFromTheDefaults) {
    test::Shop shop;
    shop.sql("delete from codes");
    EXPECT_EQ(printer_text("بب", PrinterCodes::load(shop.connection())), printer_text("بب", default_codes()));
    shop.sql("insert into codes (wc,pc,pc1) values (80,81,81)");
    EXPECT_EQ(printer_text("بب P", PrinterCodes::load(shop.connection())),
              "Q" + printer_text("بب ", default_codes()));

    shop.sql("insert into codes (wc,pc,pc1) values (200,66,98)");
    shop.sql("insert into codes (wc,pc,pc1) values (202,27,300)");    // control bytes and no bytes
    shop.sql("insert into codes (wc,pc,pc1) values (203,null,120)");  // one form for both
    const PrinterCodes codes = PrinterCodes::load(shop.connection());
    EXPECT_EQ(printer_text("بب", codes), "bB");
    EXPECT_EQ(printer_text("تب", codes), "b\xA0");
    EXPECT_EQ(printer_text("ثث", codes), "xx");
}

TEST(PrinterCodes, WithoutLigaturesLamAndAlefAreTwoLetters) {
    const PrinterCodes codes = PrinterCodes::from_csv("wc,pc,pc1\n225,76,108\n199,65,97\n");
    EXPECT_EQ(printer_text("لا", codes), "aL");
    const PrinterCodes ligature = PrinterCodes::from_csv("wc,pc,pc1\n225,76,108\n199,65,97\n455,88,120\n");
    EXPECT_EQ(printer_text("لا", ligature), "x");
}

TEST(PrinterCodes, RefuseAFileThatIsNone) {
    for (const char* csv :
         {"", "wc;pc;pc1\n", "wc,pc,pc1\n200,1\n", "wc,pc,pc1\n200,33,34,35\n", "wc,pc,pc1\nx,33,34\n"})
        EXPECT_THROW(PrinterCodes::from_csv(csv), std::invalid_argument) << csv;
}

}  // namespace

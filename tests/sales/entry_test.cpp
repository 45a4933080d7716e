// How typed and scanned texts are interpreted.
#include "sales/entry.h"

namespace {

using sales::EntryForm;

TEST(Scan, ReadsEveryForm) {
    struct Case {
        std::string typed;
        EntryForm form;
        std::string text;
        double quantity;
        std::int64_t number;
        std::string name = "";
    };
    const Case cases[] = {
        {"", EntryForm::empty, "", 1, 0},
        {"  \t", EntryForm::empty, "", 1, 0},
        {"*", EntryForm::general, "*", 1, 0},
        {" *خبز \t'بلدي'\r", EntryForm::general, "", 1, 0, "خبز 'بلدي'"},
        {"\u200F*\u200Eخبز", EntryForm::general, "", 1, 0, "خبز"},
        {"\u200F", EntryForm::empty, "", 1, 0},
        {"123", EntryForm::code, "123", 1, 0},
        {"١٢٣", EntryForm::code, "123", 1, 0},
        {"۱۲۳", EntryForm::code, "123", 1, 0},
        {"2000123004500", EntryForm::scale_label, "123", 0.45, 0},
        {" 2000123004500\r\n", EntryForm::scale_label, "123", 0.45, 0},
        {"٢٠٠٠١٢٣٠٠٤٥٠٠", EntryForm::scale_label, "123", 0.45, 0},
        {"2099999999999", EntryForm::scale_label, "99999", 99.999, 0},
        // One character more or fewer, or another prefix, makes it a code.
        {"20001230045001", EntryForm::code, "20001230045001", 1, 0},
        {"200012300450", EntryForm::code, "200012300450", 1, 0},
        {"2100123004500", EntryForm::code, "2100123004500", 1, 0},
        {"20001230045x0", EntryForm::code, "20001230045x0", 1, 0},
        {"w12", EntryForm::craftsman, "w12", 1, 12},
        {"P7", EntryForm::craftsman, "P7", 1, 7},
        {"Wx", EntryForm::craftsman, "Wx", 1, 0},
        // The keys of W and P under the Arabic layout, with and without Shift; the digits with them.
        {"ص١٢", EntryForm::craftsman, "w12", 1, 12},
        {"ح7", EntryForm::craftsman, "p7", 1, 7},
        {"\u064B12", EntryForm::craftsman, "W12", 1, 12},
        {"؛9", EntryForm::craftsman, "P9", 1, 9},
        {"شلاؤ-١", EntryForm::code, "abc-1", 1, 0},
        {"\u200F123\u200E", EntryForm::code, "123", 1, 0},
        {"12'; drop table items --", EntryForm::code, "12'; drop table items --", 1, 0},
        {std::string(51, '7'), EntryForm::unreadable, std::string(51, '7'), 1, 0},
        {std::string(10000, '7'), EntryForm::unreadable, "", 1, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.typed.substr(0, 60));
        const auto entry = sales::read_entry(c.typed);
        EXPECT_EQ(entry.form, c.form);
        if (c.form != EntryForm::general) {
            EXPECT_EQ(entry.text, c.text);
        }
        EXPECT_EQ(entry.name, c.name);
        EXPECT_DOUBLE_EQ(entry.quantity, c.quantity);
        EXPECT_EQ(entry.number, c.number);
    }
}

}  // namespace

// Scale labels: 13 digits that begin with "20" are read as item and weight, and no other text is.
#include <cstdio>
#include <random>

#include "common/text.h"
#include "sales/entry.h"

namespace {

using sales::EntryForm;

TEST(ScaleLabelFuzz, EveryLabelReadsBack) {
    std::mt19937 random(20);
    std::uniform_int_distribution<int> five(0, 99999);
    std::uniform_int_distribution<int> digit(0, 9);
    constexpr const char* arabic[] = {"٠", "١", "٢", "٣", "٤", "٥", "٦", "٧", "٨", "٩"};
    for (int round = 0; round < 20000; ++round) {
        const int item = five(random);
        const int grams = five(random);
        char label[16];
        std::snprintf(label, sizeof label, "20%05d%05d%d", item, grams, digit(random));
        std::string typed;
        for (const char* c = label; *c != 0; ++c)
            typed += round % 2 == 0 ? std::string(1, *c) : std::string(arabic[*c - '0']);
        const auto entry = sales::read_entry(typed);
        ASSERT_EQ(entry.form, EntryForm::scale_label) << typed;
        ASSERT_EQ(entry.text, std::to_string(item));
        ASSERT_DOUBLE_EQ(entry.quantity * 1000, grams);
    }
}

TEST(ScaleLabelFuzz, OneByteOffIsNeverReadAsAnotherWeight) {
    std::mt19937 random(13);
    const std::string label = "2000123004500";
    std::uniform_int_distribution<std::size_t> place(0, label.size() - 1);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 20000; ++round) {
        std::string changed = label;
        const std::size_t at = place(random);
        switch (round % 3) {
            case 0:
                changed[at] = static_cast<char>(byte(random));
                break;
            case 1:
                changed.erase(at, 1);
                break;
            default:
                changed.insert(at, 1, static_cast<char>(byte(random)));
        }
        const auto entry = sales::read_entry(changed);
        if (entry.form != EntryForm::scale_label) continue;
        // If it still reads as a label, the weight is that of its own digits.
        const std::string seen = sales::normalize_scan(changed);
        ASSERT_EQ(seen.size(), 13u) << changed;
        ASSERT_EQ(seen.find_first_not_of("0123456789"), std::string::npos);
        ASSERT_DOUBLE_EQ(entry.quantity, std::stod(seen.substr(7, 5)) / 1000);
    }
}

}  // namespace

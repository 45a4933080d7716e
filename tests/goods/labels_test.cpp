#include "goods/labels.h"

#include <gtest/gtest.h>

#include "stocked_shop.h"

namespace {

class Labels : public testing::Test, public test::StockedShop {};

TEST_F(Labels, TellNamePriceAndWhatTheTillReads) {
    goods::ItemFilter filter;
    filter.marked = {501, 502};
    const auto labels = goods::labels_of(shop.connection(), filter);
    ASSERT_EQ(labels.size(), 2U);
    EXPECT_EQ(labels[0].name + labels[0].price + labels[0].barcode,
              "أرز7.35502");  // its code, without a barcode
    EXPECT_EQ(labels[1].name + labels[1].price + labels[1].barcode, "شاي10.006221031001239");
    EXPECT_EQ(labels[1].shop, "بقالة النور");
    const auto carton = goods::label_of(shop.connection(), 501, goods::CardBarcode{"777", 3});
    ASSERT_EQ(carton.size(), 1U);
    EXPECT_EQ(carton[0].unit + carton[0].price + carton[0].barcode, "كرتونة115.00777");
}

// 20 of the 24 places of the first sheet are used: six labels take its last four and two of the next sheet.
TEST_F(Labels, GoOnBehindThoseThatAreUsed) {
    printing::LabelJob job;
    job.labels.resize(3);
    for (auto& label : job.labels)
        label.copies = 2;
    for (const auto& paper : printing::label_papers())
        if (paper.name == "a4-24") job.paper = paper;
    EXPECT_EQ(job.pages(), 1);
    job.used = 20;
    EXPECT_EQ(job.count(), 6);
    EXPECT_EQ(job.pages(), 2);
    job.paper = printing::label_papers().front();  // a roll has nothing to skip
    EXPECT_EQ(job.pages(), 6);
}

}  // namespace

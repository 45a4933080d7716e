#include "purchases/suppliers.h"

#include <gtest/gtest.h>

#include "buyer.h"
#include "purchases/messages.h"

namespace purchases {
namespace {

TEST(Suppliers, ACardMovesTheBalanceAndIsNeverOverwritten) {
    test::Buyer buyer;
    buyer.shop.sql("insert into custdata (ccode,cname) select 9,N'مطعم'");
    Supplier supplier(buyer.shop.connection(), buyer.session);
    supplier.open_new();
    EXPECT_EQ(supplier.card.number, "10");
    EXPECT_EQ(supplier.save()->field, "supplier_name");
    supplier.card.name = "مطاحن O'Neil";
    supplier.card.opening = "12,5";
    EXPECT_EQ(supplier.save()->field, "supplier_opening");
    supplier.card.opening = "12.50";
    supplier.card.owes_us = true;
    supplier.card.number = "9";
    EXPECT_EQ(supplier.save()->text, message::code_of_customer);
    supplier.card.number = "3";
    EXPECT_EQ(supplier.save()->text, message::duplicate_supplier);
    supplier.card.number = "10";
    ASSERT_FALSE(supplier.save());
    EXPECT_EQ(buyer.owed(10), -12.5);

    // After goods have come in, the opening balance is corrected.
    ASSERT_FALSE(supplier.open_edit(10));
    EXPECT_TRUE(supplier.card.owes_us);
    buyer.shop.sql("update vendata set vacc = 87.5 where vcode = 10");
    supplier.card.owes_us = false;
    ASSERT_FALSE(supplier.save());
    EXPECT_EQ(buyer.owed(10), 112.5);  // 87.5 + 25

    ASSERT_FALSE(supplier.open_edit(10));
    buyer.shop.sql("update vendata set vphone = '0100' where vcode = 10");
    supplier.card.name = "غيره";
    const auto refused = supplier.save();
    ASSERT_TRUE(refused);
    EXPECT_TRUE(refused->text.ends_with("\nالتليفون: 0100"));
    EXPECT_EQ(buyer.shop.cell("select vname from vendata where vcode = 10"), "مطاحن O'Neil");
}

}  // namespace
}  // namespace purchases

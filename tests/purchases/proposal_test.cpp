#include "purchases/proposal.h"

#include <gtest/gtest.h>

#include "buyer.h"

namespace purchases {
namespace {

TEST(Proposals, OrderWhatWasSoldLessWhatIsThere) {
    test::Buyer buyer;
    for (
        const char* statement :
        {"update items set mquan = 10 where code = 100",
         // The last receipt says from whom and in which unit.
         "insert into purdata (pnum,vcode,[date],ctype,stcode,icode,scode) select 1,4,'2026/10/01',1,1,100,1",
         "insert into purdata (pnum,vcode,[date],ctype,stcode,icode,scode) select 2,3,'2026/10/02',1,1,100,2",
         // 40 sold in the last two weeks and 4 brought back; 50 before that, 7 in another store.
         "insert into saledata (pnum,vcode,[date],ctype,stcode,icode,quan,quan1,price) select "
         "1,-1,'2026/11/08',0,1,100,40,40,12",
         "insert into saledata (pnum,vcode,[date],ctype,stcode,icode,quan,quan1,price) select "
         "1,-1,'2026/11/21',2,1,100,4,4,12",
         "insert into saledata (pnum,vcode,[date],ctype,stcode,icode,quan,quan1,price) select "
         "2,-1,'2026/11/07',0,1,100,50,50,12",
         "insert into saledata (pnum,vcode,[date],ctype,stcode,icode,quan,quan1,price) select "
         "3,-1,'2026/11/20',0,2,100,7,7,12",
         // Sold below its stock, by weight, and taken in by nobody yet.
         "insert into saledata (pnum,vcode,[date],ctype,stcode,icode,quan,quan1,price) select "
         "4,-1,'2026/11/20',0,1,200,1.25,1.25,6"})
        buyer.shop.sql(statement);
    Proposal proposal(buyer.shop.connection(), buyer.services.all());
    proposal.open();
    proposal.fields = {"2", 1, 0};
    ASSERT_FALSE(proposal.show());
    ASSERT_EQ(proposal.lines().size(), 2);
    const ProposedLine& oil = proposal.lines()[0];
    EXPECT_EQ(oil.supplier_name, "شركة الزيوت");
    EXPECT_EQ(oil.needed(), 26);  // 36 + 10 - 20
    EXPECT_EQ(oil.quantity, 3);   // packs of 12
    EXPECT_EQ(oil.cost, 120);
    EXPECT_EQ(proposal.lines()[1].supplier, 0);
    EXPECT_EQ(proposal.lines()[1].quantity, 2);

    proposal.fields = {"3", 0, 3};  // in all stores
    ASSERT_FALSE(proposal.show());
    ASSERT_EQ(proposal.lines().size(), 1);
    EXPECT_EQ(proposal.lines()[0].needed(), 78);  // 40 + 50 + 7 - 4 and 10, less 25
    EXPECT_EQ(proposal.lines()[0].quantity, 7);
    EXPECT_TRUE(proposal.set_quantity(0, "1,5"));
    ASSERT_FALSE(proposal.set_quantity(0, "0"));
    EXPECT_EQ(proposal.lines()[0].quantity, 0);
    for (const char* weeks : {"0", "53", "x"}) {
        proposal.fields.weeks = weeks;
        EXPECT_TRUE(proposal.show()) << weeks;
    }
}

}  // namespace
}  // namespace purchases

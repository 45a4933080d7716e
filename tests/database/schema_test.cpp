// The base schema and the upgrade list together: what a new shop's database looks like.
#include "database/schema/schema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "common/text.h"
#include "database/embedded/open.h"
#include "support/data_file.h"
#include "support/shop.h"

namespace {

using database::Connection;
using database::Error;
using database::Sql;

std::string without_blanks(std::string text) {
    std::erase(text, ' ');
    return common::lower_ascii(text);
}

// The declared type of a column, or "none" if it is not in the table.
std::string type_of(Connection& connection, const std::string& table, const std::string& column) {
    const auto shape = connection.describe(table);
    for (std::size_t i = 0; i < shape.columns.size(); ++i)
        if (common::equal_ignoring_case(shape.columns[i], column)) return without_blanks(shape.types[i]);
    return "none";
}

TEST(Schema, EveryColumnHasItsDeclaredType) {
    test::Shop shop;
    int checked = 0;
    for (const std::string& line : test::data_lines("database/data/schema_types.txt", "#")) {
        const std::size_t colon = line.find(": ");
        const std::string table = line.substr(0, colon);
        std::istringstream columns(line.substr(colon + 1));
        for (std::string column, type; columns >> column >> std::ws && std::getline(columns, type, ';');) {
            for (const char* more : {" not null", " primary key"})
                if (type.ends_with(more)) type.erase(type.size() - std::string(more).size());
            std::string found = type_of(shop.connection(), table, column);
            if (type == "numeric" && found == "numeric(18,0)") found = type;  // a server spells the width out
            EXPECT_EQ(found, without_blanks(type)) << table << "." << column;
            ++checked;
        }
    }
    EXPECT_EQ(checked, 543);
}

TEST(Schema, ColumnsThatAreNotNullRefuseNull) {
    const struct {
        const char* refused;
        const char* accepted;
    } cases[] = {
        {"insert into offer (f1) values ('x')", "insert into offer (vcode,stype,ctype) values (-1,0,0)"},
        {"insert into offer (vcode,stype) values (-1,0)",
         "insert into offer (vcode,stype,ctype) values (5,0,0)"},
        {"insert into stk_f_q (icode,stcode) values (1,1)",
         "insert into stk_f_q (icode,stcode,edate) values (1,1,'3000/01/01')"},
        {"insert into item_log (vencode) values (1)", "insert into item_log (vencode,itemcode) values (1,1)"},
        {"insert into cust_cash (zname) values ('x')", "insert into cust_cash (zcode) values (1)"},
        {"insert into news (nname) values ('x')", "insert into news (ncode,nname) values (1,'x')"},
    };
    test::Shop shop;
    for (const auto& [refused, accepted] : cases) {
        try {
            shop.sql(refused);
            ADD_FAILURE() << refused;
        } catch (const Error& error) {
            EXPECT_EQ(error.sqlstate(), "23000") << refused << ": " << error.what();
        }
        EXPECT_NO_THROW(shop.sql(accepted)) << accepted;
    }
}

TEST(Schema, KeysKeepMastersUnique) {
    test::Shop shop;
    for (const char* statement :
         {"insert into news (ncode) values (1)", "insert into items (code) values (1)",
          "insert into custdata (ccode) values (1)", "insert into cash (stcode,code) values (2,9)",
          "insert into users (code) values (2)"}) {
        EXPECT_NO_THROW(shop.sql(statement)) << statement;
        EXPECT_THROW(shop.sql(statement), Error) << statement;
    }
    // Two tills may take one number: neither sale may fail for it.
    for (const char* statement :
         {"insert into sales (pnum,vcode,ctype,stcode) values (1,-1,0,1)",
          "insert into vencuspay (chkno,pay_id) values ('1',1)", "insert into sttran (tnum) values (1)",
          "insert into cach_t (cnum) values (1)", "insert into btran (ser) values (1)"}) {
        shop.sql(statement);
        EXPECT_NO_THROW(shop.sql(statement)) << statement;
    }
}

TEST(Schema, StoresGetTheirColumns) {
    test::Shop shop;  // with stores 1 and 2
    EXPECT_EQ(type_of(shop.connection(), "items", "p_1"), "nvarchar(20)");
    EXPECT_EQ(type_of(shop.connection(), "items", "p_2"), "nvarchar(20)");
    EXPECT_EQ(type_of(shop.connection(), "items", "p_3"), "none");
    shop.sql("insert into stocks (code,name) values (30,'x')");
    database::run_upgrade_list(shop.connection());
    EXPECT_EQ(type_of(shop.connection(), "items", "p_30"), "nvarchar(20)");
}

TEST(Schema, WithoutStoresThereAreNoStoreColumns) {
    const test::TemporaryFolder folder;
    const auto connection = database::open_embedded(folder.path() / "shop.db", true);
    database::create_base_schema(*connection);
    database::run_upgrade_list(*connection);
    for (const std::string& column : connection->describe("items").columns)
        EXPECT_FALSE(column.starts_with("p_")) << column;
}

TEST(Schema, WhatIsMissingIsKnownWithoutMakingAShop) {
    test::Shop shop;
    EXPECT_TRUE(database::missing_parts(shop.connection()).empty());
    const test::TemporaryFolder folder;
    const auto empty = database::open_embedded(folder.path() / "shop.db", true);
    std::vector<std::string> missing;
    for (const database::Missing& one : database::missing_parts(*empty))
        missing.push_back(one.name());
    std::vector<std::string> tables;
    for (const std::string& table : shop.connection().tables())
        tables.push_back(common::lower_ascii(table));
    EXPECT_EQ(missing, tables);
    shop.sql("alter table sales drop column rec_no");
    shop.sql("drop table till_claim");
    const auto lacking = database::missing_parts(shop.connection());
    ASSERT_EQ(lacking.size(), 2U);
    EXPECT_EQ(lacking[0].name(), "sales.rec_no");
    EXPECT_TRUE(lacking[1].is_optional());
}

TEST(Schema, EntriesHaveSimplerWords) {
    using testing::ElementsAre;
    const auto simpler = [](std::string_view statement) { return database::simpler_statements(statement); };
    EXPECT_THAT(
        simpler("ALTER TABLE [sales] add len_t [nvarchar] (100) null,NSPHR numeric(18,0),pt real"),
        ElementsAre("ALTER TABLE [sales] add len_t [nvarchar] (100) null",
                    "ALTER TABLE [sales] add NSPHR numeric(18,0)", "ALTER TABLE [sales] add pt real"));
    EXPECT_THAT(simpler("ALTER TABLE [dbo].[basic] ALTER COLUMN inv_note nvarchar(500) Null"),
                ElementsAre("ALTER TABLE [dbo].[basic] ALTER COLUMN inv_note nvarchar(500) "));
    for (const char* statement :
         {"ALTER TABLE basic add qper int", "ALTER TABLE basic ALTER COLUMN inv_note nvarchar(500)",
          "ALTER TABLE basic ALTER COLUMN inv_note nvarchar(500) not null", "DROP TABLE tmp_acc",
          "create table a (b int, c int)", "alter", ""})
        EXPECT_THAT(simpler(statement), testing::IsEmpty()) << statement;
}

TEST(Schema, ASecondBaseSchemaIsRefusedAndChangesNothing) {
    test::Shop shop;
    EXPECT_THROW(database::create_base_schema(shop.connection()), Error);
    EXPECT_EQ(shop.cell("select aname from basic"), "بقالة النور");
}

TEST(Schema, ThePasswordStatementReachesUsers) {
    test::Shop shop;
    shop.sql("insert into users (code,name,pass) values (2,'x','old')");
    EXPECT_EQ(shop.connection().execute("update [user] set pass = 'new' where code = 2"), 1);
    EXPECT_EQ(shop.cell("select pass from users where code = 2"), "new");
    EXPECT_EQ(shop.cell("select pass from users where code = 1"), "1");
}

}  // namespace

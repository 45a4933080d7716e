// The road through the driver manager, on a second driver that needs no server (Debian's libsqliteodbc).
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "database/recordset.h"
#include "database/sqlserver/odbc_connection.h"
#include "support/shop.h"

namespace {

using database::Error;
using database::OdbcConnection;
using database::Recordset;
using database::Value;

// Where the package puts its library; empty when it is not installed.
std::string second_driver() {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/usr/lib", ignored)) {
        const auto library = entry.path() / "odbc" / "libsqlite3odbc.so";
        if (std::filesystem::exists(library, ignored)) return library.string();
    }
    return {};
}

class SecondDriver : public testing::Test {
  protected:
    void SetUp() override {
        if (second_driver().empty()) GTEST_SKIP() << "skipped: the package libsqliteodbc is not installed";
        connection_ = open();
        connection().execute(
            "create table worker (work_code integer primary key, work_name nvarchar(100), pay float, "
            "since datetime, works bit)");
    }
    OdbcConnection& connection() { return *connection_; }
    // Waits half a second for a writer.
    std::unique_ptr<OdbcConnection> open() const {
        return std::make_unique<OdbcConnection>(
            database::OdbcRoad{"DRIVER={" + second_driver() +
                                   "};Timeout=500;Database=" + (folder_.path() / "second.db").string(),
                               ""});
    }

  private:
    test::TemporaryFolder folder_;
    std::unique_ptr<OdbcConnection> connection_;
};

TEST_F(SecondDriver, ValuesComeBackAsTheyWent) {
    std::string long_text;  // a million bytes
    for (int i = 0; i < 143'000; ++i)
        long_text += "لبن ";
    const common::Moment moment{{2026, 11, 21}, {23, 59, 58, 997}};
    const std::vector<Value> rows[] = {
        {Value(std::int64_t{1}), Value("سعاد 🥛 d'Or; --"), Value(0.45), Value(moment),
         Value(std::int64_t{1})},
        {Value(std::int64_t{2}), Value(), Value(), Value(), Value()},
        {Value(std::int64_t{9'007'199'254'740'993}), Value(long_text), Value(-1e-300),
         Value(common::Moment{{3000, 1, 1}, {}}), Value(std::int64_t{0})},
        {Value(std::int64_t{3}), Value(""), Value(0.0), Value(), Value(std::int64_t{0})},
        // As long as the reading buffer, one less and one more.
        {Value(std::int64_t{4}), Value(std::string(2047, 'a')), Value(), Value(), Value()},
        {Value(std::int64_t{5}), Value(std::string(2048, 'b')), Value(), Value(), Value()},
        {Value(std::int64_t{6}), Value(std::string(2046, 'c')), Value(), Value(), Value()},
    };
    for (const auto& row : rows)
        EXPECT_EQ(connection().execute("insert into worker values (?, ?, ?, ?, ?)", row), 1);
    for (const auto& row : rows) {
        const auto result = connection().query(database::Sql("select * from worker where work_code = ") +
                                               std::get<std::int64_t>(row[0]));
        ASSERT_EQ(result.size(), 1U);
        EXPECT_EQ(result.front().cells(), row);
    }
}

TEST_F(SecondDriver, CountsRowsAndReadsEmptyResults) {
    EXPECT_EQ(connection().execute("insert into worker (work_code) select 1 union select 2 union select 3"),
              3);
    EXPECT_EQ(connection().execute("update worker set pay = 1 where work_code > 1"), 2);
    EXPECT_EQ(connection().execute("update worker set pay = 1 where work_code > 9"), 0);
    const auto nobody = connection().query("select work_name from worker where work_code = 9");
    EXPECT_TRUE(nobody.empty());
    EXPECT_EQ(nobody.columns(), std::vector<std::string>{"work_name"});
    EXPECT_TRUE(connection().query("delete from worker").columns().empty());
}

TEST_F(SecondDriver, ErrorsNameTheStatementAndPass) {
    try {
        connection().query("select * from nowhere");
        FAIL();
    } catch (const Error& error) {
        EXPECT_FALSE(error.is_connection_lost());
        EXPECT_EQ(error.statement(), "select * from nowhere");
        EXPECT_NE(std::string(error.what()).find("nowhere"), std::string::npos);
        EXPECT_NE(error.what()[0], '[');
    }
    EXPECT_EQ(connection().execute("insert into worker (work_code) values (1)"), 1);
}

TEST_F(SecondDriver, AWaitForAnotherWriterEndsAndTheWorkGoesOn) {
    const auto other = open();
    other->execute("begin immediate");
    other->execute("insert into worker (work_code,work_name) values (1,?)", {Value("سعاد")});
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THROW(connection().execute("insert into worker (work_code) values (2)"), Error);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
    other->execute("commit");
    EXPECT_EQ(connection().execute("insert into worker (work_code) values (2)"), 1);
    EXPECT_EQ(database::text_of(open()->scalar("select work_name from worker where work_code = 1")), "سعاد");
}

TEST_F(SecondDriver, ARecordsetEditsThroughIt) {
    Recordset workers(connection(), "select * from worker");
    int code = 0;
    for (const char* name : {"سعاد", "ليلى"}) {
        workers.add();
        workers.set("work_code", ++code);
        workers.set("Work_Name", name);
        workers.update();
    }
    Recordset edited(connection(), "select * from worker order by work_code");
    edited.move_last();
    EXPECT_EQ(edited.text("work_name"), "ليلى");
    EXPECT_TRUE(edited.null("since"));
}

TEST_F(SecondDriver, DescribesTablesUntilTheyChange) {
    connection().execute("create table workXr (work_code int)");
    connection().execute("create table work_r (code int, name nvarchar(20))");
    const auto shape = connection().describe("[dbo].[WORK_R]");
    EXPECT_EQ(shape.columns, (std::vector<std::string>{"code", "name"}));
    EXPECT_EQ(shape.types, (std::vector<std::string>{"int", "nvarchar(20)"}));
    EXPECT_EQ(connection().describe("worker").key, std::vector<std::string>{"work_code"});
    connection().execute("alter table work_r add note nvarchar(500)");
    EXPECT_EQ(connection().describe("work_r").columns.size(), 3U);
    EXPECT_THROW(connection().describe("nowhere"), Error);
}

}  // namespace

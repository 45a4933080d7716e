// Random and damaged statements: the embedded engine answers each with rows or an Error in bounded time, and
// its file stays intact. The seeds are fixed, so that failures can be reproduced.
#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "database/embedded/open.h"
#include "support/data_file.h"
#include "support/shop.h"
#include "support/strict.h"

namespace {

using database::Error;
using database::Sql;

#ifdef __SANITIZE_ADDRESS__
constexpr double longest_s = 30;
#else
constexpr double longest_s = 5;
#endif

// Tokens for random statements, separated by two blanks.
constexpr std::string_view tokens = R"(
select  from  where  group by  having  order by  and  or  not  in  like  between  is null  is  null  case  when
then  else  end  insert into  values  update  set  delete  top  top 1  distinct  join  left outer join  right join
full join  cross join  on  as  union  union all  exists  create table  alter table  add  alter column  drop table
drop column  create index  create view  primary key  constraint  default  identity(1,1)  desc  asc  collate  t  u
[t]  t.a  u.b  [dbo].[t]  a  b  c  d  *  t.*  (  )  (  )  ,  ,  =  <>  <=  <  >  +  -  *  /  %  &  |  ^  ~  .  ;
1  0  -1  2.5  1e308  'x'  ''  N'عربي'  '2026/11/21'  '10:42'  9223372036854775807  99999999999999999999  ?  int
nvarchar(10)  nvarchar(max)  real  datetime  numeric(18, 0)  sum(  count(*)  max(  isnull(  convert(varchar,
convert(  cast(  as datetime)  round(  getdate()  len(  substring(  replicate(  charindex(  datediff(day,
dateadd(mm,  datepart(  str(  isnumeric(  left(  case when a = 1 then b else c end  --  /*  */  '  [  ]  "  @a  #t
$rowid  ضريبة)";

const std::vector<std::string>& pieces() {
    static const std::vector<std::string> list = [] {
        std::vector<std::string> made{"\xff", "\xd8", "\t", std::string(1, '\0')};
        std::string piece;
        for (const char c : tokens) {
            const bool ends = c == '\n' || (c == ' ' && piece.ends_with(' '));
            if (!ends) piece += c;
            if (!ends) continue;
            if (piece.ends_with(' ')) piece.pop_back();
            if (!piece.empty()) made.push_back(piece);
            piece.clear();
        }
        made.push_back(piece);
        return made;
    }();
    return list;
}

// Makes statements that are mostly correct, so that they reach the types and the engine, with a random token
// now and then.
class StatementMaker {
  public:
    explicit StatementMaker(unsigned seed) : random_(seed) {}

    std::string random_tokens() {
        std::string text;
        for (std::size_t length = 1 + pick(14); length > 0; --length)
            text.append(any(pieces())) += ' ';
        return text;
    }

    std::string statement() {
        switch (pick(8)) {
            case 0:
                return text({"update t set c = ", value(3), " where ", condition(3)});
            case 1:
                return text(
                    {"insert into u (a,b) select ", value(2), ",", value(2), " from t where ", condition(2)});
            case 2:
                return text({"delete from u where ", condition(3)});
            case 3:
                return text(
                    {"select ", value(3), ",count(*) from t group by ", value(2), " having ", condition(2)});
            case 4:
                return text({"select t.a from t left join u on ", condition(2), " order by ", value(2)});
            case 5:
                return text({"select * from w where a in (select a from u where ", condition(2), ")"});
            default:
                return text({"select ", value(4), " from t where ", condition(3)});
        }
    }

  private:
    static std::string text(std::initializer_list<std::string_view> pieces_of_it) {
        std::string whole;
        for (const std::string_view piece : pieces_of_it)
            whole += piece;
        return whole;
    }
    std::size_t pick(std::size_t count) { return random_() % count; }
    template <typename List>
    std::string_view any(const List& list) {
        return list[pick(std::size(list))];
    }

    std::string value(int depth) {
        static constexpr const char* leaves[] = {
            "t.a", "b",    "t.b",          "c",         "d",       "1",     "0", "-2", "2.5", "'x'", "'5'",
            "''",  "null", "'2026/11/21'", "getdate()", "N'عربي'", "1e300", "a"};
        static constexpr const char* calls[] = {"isnull",    "round",    "left",  "right",
                                                "charindex", "coalesce", "concat"};
        static constexpr const char* one[] = {"len", "upper", "abs", "year", "isnumeric", "max",
                                              "sum", "ltrim", "min", "avg",  "count",     "floor"};
        static constexpr const char* operators[] = {"+", "-", "*", "/", "%"};
        static constexpr const char* types[] = {"int", "varchar",       "real",      "datetime",
                                                "bit", "numeric(9, 2)", "varchar(3)"};
        if (pick(60) == 0) return text({any(pieces())});
        if (depth == 0) return text({any(leaves)});
        switch (pick(7)) {
            case 0:
                return text({"(", value(depth - 1), " ", any(operators), " ", value(depth - 1), ")"});
            case 1:
                return text({any(calls), "(", value(depth - 1), ",", value(depth - 1), ")"});
            case 2:
                return text({any(one), "(", value(depth - 1), ")"});
            case 3:
                return text({"cast(", value(depth - 1), " as ", any(types), ")"});
            case 4:
                return text({"case when ", condition(depth - 1), " then ", value(depth - 1), " else ",
                             value(depth - 1), " end"});
            case 5:
                return text({"convert(", any(types), ",", value(depth - 1), ",101)"});
            default:
                return text({any(leaves)});
        }
    }

    std::string condition(int depth) {
        static constexpr const char* comparisons[] = {"=", "<>", "<", ">=", "like", "not like"};
        if (pick(60) == 0) return text({any(pieces())});
        switch (depth == 0 ? 9 : pick(6)) {
            case 0:
                return text({"(", condition(depth - 1), " or ", condition(depth - 1), ")"});
            case 1:
                return text({condition(depth - 1), " and not ", condition(depth - 1)});
            case 2:
                return text({value(depth - 1), " in (", value(depth - 1), ",", value(depth - 1), ")"});
            case 3:
                return text({value(depth - 1), " between ", value(depth - 1), " and ", value(depth - 1)});
            case 4:
                return text({value(depth - 1), " is not null"});
            default:
                return text({value(depth > 0 ? depth - 1 : 0), " ", any(comparisons), " ",
                             value(depth > 0 ? depth - 1 : 0)});
        }
    }

    std::mt19937 random_;
};

class Translator : public testing::Test {
  protected:
    Translator() : file(folder.path() / "fuzz.db"), connection(test::open_as_shipped(file, true)) { reset(); }

    void reset() {
        for (const char* statement :
             {"drop view w", "drop table t", "drop table u", "drop table v",
              "create table t (a int not null primary key, b nvarchar(10) null, c real null, d datetime "
              "null)",
              "create table u (a int null, b nvarchar(10) null)", "create index u_b on u (b)",
              "create view w as select * from t", "insert into t values (1,'x',1.5,'2026/11/21')",
              "insert into t values (2,N'عربي',null,null)", "insert into u values (1,'X ')"}) {
            try {
                connection->execute(Sql::from_administrator(statement));
            } catch (const Error&) {
            }
        }
    }

    // Runs any text as a statement. Returns true if it ran.
    bool survive(const std::string& statement) {
        const auto begin = std::chrono::steady_clock::now();
        bool ran = false;
        try {
            connection->execute(Sql::from_administrator(statement));
            ran = true;
        } catch (const Error& error) {
            EXPECT_EQ(error.sqlstate().size(), 5U) << statement;
            EXPECT_STRNE(error.what(), "") << statement;
        } catch (const std::exception& other) {
            ADD_FAILURE() << "no Error but \"" << other.what() << "\": " << statement;
        }
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        EXPECT_LT(taken.count(), longest_s) << statement.substr(0, 200);
        return ran;
    }

    // Checks that the engine still works and its file is intact.
    void check_intact() {
        try {
            connection->execute("rollback");
        } catch (const Error&) {
        }
        reset();
        EXPECT_EQ(database::number_of(connection->scalar("select count(*) from w")), 2);
    }

    test::TemporaryFolder folder;
    std::filesystem::path file;
    std::unique_ptr<database::Connection> connection;
};

TEST_F(Translator, RandomTokens) {
    StatementMaker maker(20261121);
    for (int round = 0; round < 10'000 && !HasFailure(); ++round)
        survive(maker.random_tokens());
    check_intact();
}

TEST_F(Translator, RandomStatements) {
    StatementMaker maker(42);
    int ran = 0;
    for (int round = 0; round < 20'000 && !HasFailure(); ++round) {
        ran += survive(maker.statement()) ? 1 : 0;
        if (round % 100 == 0) check_intact();
    }
    EXPECT_GT(ran, 2'000) << "too few statements ran to test anything";
    check_intact();
}

TEST_F(Translator, DamagedStatementsOfTheProgram) {
    if (test::test_server()) GTEST_SKIP() << test::needs_shop_files;
    test::Shop shop;
    connection.reset();
    connection = database::open_embedded(shop.file());
    const std::vector<std::string> statements = test::data_lines("fuzz/data/statements.sql", "--");
    std::mt19937 random(300);
    for (int round = 0; round < 10'000 && !HasFailure(); ++round) {
        std::string statement = statements[random() % statements.size()];
        for (std::size_t changes = 1 + random() % 4; changes > 0 && !statement.empty(); --changes) {
            const std::size_t at = random() % statement.size();
            switch (random() % 6) {
                case 0:
                    statement.erase(at, 1 + random() % 8);
                    break;
                case 1:
                    statement.insert(at, pieces()[random() % pieces().size()]);
                    break;
                case 2:
                    statement[at] = static_cast<char>(random());
                    break;
                case 3:
                    statement.resize(at);
                    break;
                case 4:
                    statement.insert(at, statement.substr(random() % statement.size(), random() % 30));
                    break;
                default: {
                    const std::string& other = statements[random() % statements.size()];
                    statement = statement.substr(0, at) + other.substr(random() % other.size());
                }
            }
        }
        survive(statement);
    }
}

TEST_F(Translator, DeepAndLongStatements) {
    const auto repeated = [](const std::string& piece, int times) {
        std::string text;
        for (int i = 0; i < times; ++i)
            text += piece;
        return text;
    };
    for (const int times : {100, 1'000, 100'000}) {
        for (const auto& [before, piece, after] : std::vector<std::array<std::string, 3>>{
                 {"select ", "(", "1"},
                 {"select ", "-", "1"},
                 {"select 1 where ", "not ", "1=1"},
                 {"select 1", "+1", ""},
                 {"select 1 where 1=1", " or 1=1", ""},
                 {"select 1 where 1=1", " and not(1=1", ""},
                 {"select ", "case when 1=1 then ", "1"},
                 {"select * from t where a in (", "select a from t where a in (", "1"},
                 {"select ", "isnull(", "1"},
                 {"select * from t", ",t", ""},
                 {"select a from t", " union select a from t", ""},
                 {"insert into u values (1,'x')", ",(1,'x')", ""},
                 {"select '", "''", "'"},
                 {"", "/*", ""},
                 {"select 1 as [", "x", "]"},
                 {"select ", "9", ""},
                 {"create view v as select * from (", "select * from (", "t"}}) {
            survive(before + repeated(piece, times) + after);
            survive(before + repeated(piece, times) + after + repeated(")", times));
        }
        if (HasFailure()) break;
    }
    check_intact();
}

TEST_F(Translator, HostileValues) {
    // A value stays a value, whatever it holds.
    for (const std::string& text : std::vector<std::string>{
             "'", "''", "'; drop table t; --", "\"", "]", "?", "?1", "%", "\\", std::string("a\0b", 3),
             "\xff\xfe", "\xf0\x9f\x98\x80", std::string(100'000, '\''), "1e999", "-", "٣"}) {
        const std::string before = database::text_of(connection->scalar("select count(*) from t"));
        const database::Result result = connection->query(Sql("select ") + database::quoted(text) + " as v");
        EXPECT_EQ(result.front().text("v"), text);
        survive((Sql("select * from t where b = ") + database::quoted(text) + " or b like " +
                 database::quoted(text))
                    .text());
        survive((Sql("update t set b = ") + database::quoted(text) + " where a = 2").text());
        survive((Sql("select convert(int,") + database::quoted(text) + ")").text());
        survive((Sql("select isnumeric(") + database::quoted(text) + ")").text());
        survive((Sql("select cast(") + database::quoted(text) + " as datetime)").text());
        EXPECT_EQ(database::text_of(connection->scalar("select count(*) from t")), before);
    }
}

}  // namespace

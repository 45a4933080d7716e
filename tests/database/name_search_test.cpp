// Names found by what somebody typed: through the index of folded names, and by the statement as a server
// reads it.
#include "database/name_search.h"

#include <sqlite3.h>

#include "common/search.h"
#include "database/engine.h"

namespace {

class NameSearch : public test::Engine {
  protected:
    NameSearch() {
        run("create table items (code int not null primary key, [name] nvarchar(100) null, kind int null)");
        const char* names[] = {"قَهْوَة سادة",      "قهوه بالهيل",   "مقهى القاهرة", "أرز إسكندراني ٥ كيلو",
                               "Café [a]_b 50%", "جـــبنة قديمه", "ارز بسمتي 5"};
        for (const char* name : names)
            run("insert into items (code,name,kind) values (?,?,1)",
                {database::Value(++last), database::Value(name)});
        run("insert into items (code,name) values (99,null)");
    }
    std::string found(const database::Sql& condition) {
        return rows(
            (database::Sql("select code from items where kind = 1 and ") + condition + " order by code")
                .text());
    }
    std::int64_t last = 0;
};

TEST_F(NameSearch, FindsTheSameWithAndWithoutTheIndex) {
    const struct {
        const char *typed, *beginning, *words;
    } cases[] = {
        {"قهوة", "1 / 2", "1 / 2"},
        {"القاهره", "", "3"},
        {"قهوة ساده", "1", "1"},
        {"ساده قهوة", "", "1"},
        {"أرز", "4 / 7", "4 / 7"},
        {"اسكندرانى 5", "", "4"},
        {"جبنه", "6", "6"},
        {"CAFÉ", "5", "5"},
        {"a]", "", "5"},
        {"[", "", "5"},
        {"%", "", "5"},
        {"_", "", "5"},
        {"c_f", "", ""},
        {"'", "", ""},
        {"ارز ٥", "", "4 / 7"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        EXPECT_EQ(found(database::begins_with_typed("items.name", c.typed)), c.beginning);
        EXPECT_EQ(found(database::contains_typed_words("name", c.typed)), c.words);
        // Not the column alone, so the engine computes the whole expression.
        EXPECT_EQ(found(database::begins_with_typed("(name+'')", c.typed)), c.beginning);
        EXPECT_EQ(found(database::contains_typed_words("(name+'')", c.typed)), c.words);
    }
    EXPECT_EQ(rows((database::Sql("select count(*) from items where not (") +
                    database::begins_with_typed("name", "قهوة") + ")")
                       .text()),
              "5");
}

TEST_F(NameSearch, IndexFollowsItsTable) {
    const auto coffee = database::contains_typed_words("name", "قهوه");
    const auto indexes = [&] {
        sqlite3* raw = nullptr;
        sqlite3_open_v2(file.c_str(), &raw, SQLITE_OPEN_READONLY, nullptr);
        int count = 0;
        sqlite3_exec(
            raw, "select 1 from sqlite_schema where sql like '%ts_folded%'",
            [](void* counted, int, char**, char**) { return ++*static_cast<int*>(counted), 0; }, &count,
            nullptr);
        sqlite3_close(raw);
        return count;
    };
    EXPECT_EQ(indexes(), 1);
    run("update items set name = N'شاي' where code = 1");
    run("insert into items (code,name,kind) values (8,N'بن القهوة',1)");
    run("delete from items where code = 2");
    EXPECT_EQ(found(coffee), "8");
    run("alter table items alter column name nvarchar(200) null");
    run("alter table items add maker int not null default 3");
    EXPECT_EQ(found(coffee), "8");
    EXPECT_EQ(indexes(), 1);
    // A file of an earlier version has no such index.
    run("drop index [own folded name] on items");
    EXPECT_EQ(found(coffee), "8");
    connection = database::open_embedded(file);
    EXPECT_EQ(indexes(), 1);
    EXPECT_EQ(found(coffee), "8");
}

}  // namespace

// Reads every statement as a SQL Server of 2008 R2 or later would and refuses what only the embedded engine
// runs: a statement that a shop's server would refuse fails in tests and plays.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/embedded/connection.h"
#include "database/embedded/open.h"
#include "database/tsql/syntax.h"

namespace test {

class StrictReader final : public database::embedded::StatementObserver {
  public:
    // TALLVEX_SQL_LIST names a file that each statement is then added to, as one line: the verdict, a tab,
    // the statement, a tab, its values.
    StrictReader();
    // Gives every shop file that is opened from now on a reader, or none.
    static void install(bool on = true);

    // Throws Error with the server's SQLSTATE if a server would refuse the statement. Statements that no
    // engine runs are left for the engine to refuse.
    void before(std::string_view statement, const std::vector<database::Value>& values,
                const database::embedded::Catalog& catalog) override;
    bool rounds_reals() const override { return true; }

  private:
    std::string list_;
};

// Opens the embedded engine as shipped, without the strict reader.
inline std::unique_ptr<database::Connection> open_as_shipped(const std::filesystem::path& file,
                                                             bool create = false) {
    StrictReader::install(false);
    auto connection = database::open_embedded(file, create);
    StrictReader::install();
    return connection;
}

namespace strict {

using namespace database::tsql;      // the syntax tree
using namespace database::embedded;  // the catalog
using database::Value;

// Types by the server's precedence: of two unlike operands the lower is converted to the higher.
enum class Rank {
    unknown,
    null,
    text,
    large,  // text, ntext, image
    bit,
    tinyint,
    smallint,
    integer,
    bigint,
    money,
    numeric,
    real,
    floating,
    date,
    datetime
};
struct Typed {
    Rank rank = Rank::unknown;
    int length = 0;                        // of texts; 0 when unknown
    const std::string* literal = nullptr;  // a text in the statement
    bool is_text() const { return rank == Rank::text || rank == Rank::large; }
    bool is_number() const { return rank >= Rank::bit && rank <= Rank::floating; }
    bool is_whole() const { return rank >= Rank::bit && rank <= Rank::bigint; }
    bool is_moment() const { return rank >= Rank::date; }
};
Rank rank_of(const Type& type);
std::string_view name_of(Rank rank);
// Throws Error if a text of the statement cannot be read as a type.
void check_converts(const Typed& text, Rank to);
[[noreturn]] void refuse(std::string_view sqlstate, const std::string& why);

// Checks one statement and keeps track of the names that are known in each part of it.
class StatementCheck {
  public:
    // `marks`: the slots of values that stand as "?" in the statement and come with their own types.
    StatementCheck(const Catalog& catalog, const std::vector<Value>& values, std::set<std::size_t> marks)
        : catalog_(catalog), values_(values), marks_(std::move(marks)) {}
    void check(const Statement& statement);

  private:
    struct Known {
        std::string alias;
        const std::vector<Column>* columns;
    };
    struct Scope {
        std::vector<Known> sources;
        const Scope* outer = nullptr;
    };
    struct Head {  // a result column
        std::string name;
        Typed type;
    };
    enum class Place { statement, source, value };

    void check_insert(const Insert& insert);
    void check_update(const Update& update);
    void check_stored(const std::string& column, const Typed& value, const Type& type);

    std::vector<Head> query(const Select& select, Place place);
    std::vector<Head> simple_query(const Select& select);
    void add_sources(const std::vector<Source>& sources, Scope& scope);
    void check_groups(const Select& select);
    void check_order(const Select& select, const std::vector<Head>& heads);

    Typed type_of(const Expression& e);
    Typed type_within(const Expression& e);
    Typed column(const Expression& e) const;
    Typed value(std::size_t slot) const;
    Typed branch(const Expression& e);
    Typed value_of_query(const Expression& e);
    Typed binary(const Expression& e);
    Typed arithmetic(const std::string& op, const Typed& left, const Typed& right);
    Typed function(const Expression& e);
    Typed aggregate(const Expression& e);
    Typed meeting(const std::vector<Typed>& parts);
    void compare(const Typed& left, const Typed& right);
    // Returns true if the server considers two expressions the same.
    bool same(const Expression& a, const Expression& b) const;

    const Catalog& catalog_;
    const std::vector<Value>& values_;
    const std::set<std::size_t> marks_;
    const Scope* scope_ = nullptr;
    bool in_aggregate_ = false;
    int depth_ = 0;
    std::vector<std::unique_ptr<std::vector<Column>>> made_;  // the columns of queries in FROM
};

bool has_aggregate(const Expression& e);

}  // namespace strict

}  // namespace test

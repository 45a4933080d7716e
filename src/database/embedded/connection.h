// A shop in a file, for a shop without a server: Transact-SQL on SQLite.
#pragma once

#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/connection.h"
#include "database/embedded/catalog.h"
#include "database/tsql/outline.h"
#include "database/tsql/tokens.h"

namespace database {

// Told of every statement before it runs; what it throws ends the statement. Tests judge statements with it;
// a shop has none.
class StatementObserver {
  public:
    virtual ~StatementObserver() = default;
    virtual void before(std::string_view statement, const std::vector<Value>& values,
                        const tsql::Catalog& catalog) = 0;
    // Whether columns of type real keep seven digits only, as a server's do.
    virtual bool rounds_reals() const { return false; }
};

class EmbeddedConnection final : public Connection {
  public:
    // Opens a file that exists, or makes an empty shop where `create` is set and there is none. Throws Error
    // 08001 with the reason.
    EmbeddedConnection(const std::filesystem::path& file, bool create);
    ~EmbeddedConnection() override;

    // Gives every connection that is opened from now on an observer of its own.
    using MakeObserver = std::function<std::unique_ptr<StatementObserver>()>;
    static void observe_all(MakeObserver make) { make_observer_ = std::move(make); }

    Outcome run(std::string_view statement, const std::vector<Value>& values) override {
        return run(statement, values, false);
    }
    std::optional<Row> last_row(const Sql& statement) override;
    // Brings the log of the file to the disk: one sync for all that was written since the last.
    void make_durable() override;
    // How long a statement may wait for another program and run; then Error HYT00. 30 s unless set.
    void set_timeout(std::chrono::milliseconds timeout);
    bool is_embedded() const override { return true; }
    Table describe(std::string_view table) override { return *description(table); }
    std::shared_ptr<const Table> description(std::string_view table) override;
    std::vector<std::string> tables() override;

  private:
    struct Prepared {
        std::string key;
        std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement{nullptr, sqlite3_finalize};
        std::vector<tsql::Type> types;
        std::shared_ptr<const Columns> columns;
        bool is_orphan_deletion = false;
    };
    // A statement on its way to the engine.
    struct Passage {
        std::string_view statement;
        const std::vector<Value>& given;
        bool last_only;  // of a query's rows
        std::string key = {};
        tsql::Outline outline = {};
        const std::vector<Value>* values = nullptr;  // to be bound: those given, or the outline's
    };

    void open(const std::filesystem::path& file, bool create);
    void prepare_engine(bool fresh);
    Outcome run(std::string_view statement, const std::vector<Value>& values, bool last_only);
    Outcome run_once(Passage& passage);
    // The statement ready to run; null for one that defines tables, which has run by then.
    Prepared* prepared_for(Passage& passage);
    Prepared* find(const std::string& key);
    Prepared* prepare(Passage& passage);
    Outcome step(Prepared& prepared, const std::vector<Value>& values, std::string_view statement);
    Outcome delete_orphans(Prepared& deletion, const Passage& passage);
    void bind(sqlite3_stmt* statement, const std::vector<Value>& values);
    // Another program has changed the tables: everything known of them is read again. False when none has.
    bool refresh_catalog();
    void forget_statements();
    static void add_pinned(std::string& key, const std::set<std::size_t>& pinned,
                           const std::vector<Value>& values);

    std::filesystem::path file_;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> engine_{nullptr, sqlite3_close_v2};
    tsql::Catalog catalog_{nullptr};
    static inline MakeObserver make_observer_;
    const std::unique_ptr<StatementObserver> observer_ = make_observer_ ? make_observer_() : nullptr;
    std::int64_t schema_version_ = -1;
    // Statements, the last used first. The key is the text as it was given with the kinds of its values, or,
    // where literals stand in it, its shape; then the values that shaped the translation.
    std::list<Prepared> prepared_;
    std::unordered_map<std::string_view, std::list<Prepared>::iterator> by_key_;
    std::unordered_map<std::string, std::set<std::size_t>> pinned_of_key_;
    // What describe() has told, by the name it was asked for, until a table changes.
    std::map<std::string, std::shared_ptr<const Table>, std::less<>> described_;
    // Room that the last statement needed and the next one uses.
    std::string spare_key_;
    tsql::Outline spare_outline_;
    int log_file_ = -1;
    std::chrono::milliseconds timeout_{30'000};
    std::chrono::steady_clock::time_point deadline_;
};

}  // namespace database

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
#include "database/embedded/writer.h"
#include "database/tsql/scanner.h"

namespace database::embedded {

// Called before every statement; an exception stops the statement. Tests check statements with it; a shop has
// none.
class StatementObserver {
  public:
    virtual ~StatementObserver() = default;
    virtual void before(std::string_view statement, const std::vector<Value>& values,
                        const Catalog& catalog) = 0;
    // Whether columns of type real keep seven digits only, as a server's do.
    virtual bool rounds_reals() const { return false; }
};

class EmbeddedConnection final : public Connection {
  public:
    // Opens a shop file. If it is missing, makes an empty shop if `create` is set. Throws Error 08001 with
    // the reason.
    EmbeddedConnection(const std::filesystem::path& file, bool create);
    ~EmbeddedConnection() override;

    // Gives every connection that is opened from now on an observer of its own.
    using MakeObserver = std::function<std::unique_ptr<StatementObserver>()>;
    static void observe_all(MakeObserver make) { make_observer_ = std::move(make); }

    Outcome run(std::string_view statement, const std::vector<Value>& values) override;
    // Syncs the file's log, and with it everything that was written since the last sync.
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
        std::vector<Type> types;
        std::shared_ptr<const Columns> columns;
        bool is_orphan_deletion = false;
    };
    // A statement that is to run.
    struct Request {
        std::string_view statement;
        const std::vector<Value>& given;
        std::string key = {};
        tsql::Shape shape = {};
        const std::vector<Value>* values = nullptr;  // to be bound: those given, or the shape's
    };

    void open(const std::filesystem::path& file, bool create);
    void prepare_engine(bool fresh);
    Outcome run_once(Request& request);
    // Returns null for a statement that defines tables; it has been run by then.
    Prepared* prepared_for(Request& request);
    Prepared* find(const std::string& key);
    Prepared* prepare(Request& request);
    Translation translate(const tsql::Statement& tree, Writer& writer);
    // Runs a statement that defines tables. Returns false if it defines none.
    bool define(const tsql::Statement& tree, const std::vector<Value>& values);
    Prepared* keep(Prepared prepared);
    Outcome step(Prepared& prepared, const std::vector<Value>& values, std::string_view statement);
    Outcome delete_orphans(Prepared& deletion, const Request& request);
    void bind(sqlite3_stmt* statement, const std::vector<Value>& values);
    // Reads the tables again if another program has changed them. Returns false if none has.
    bool refresh_catalog();
    void forget_statements();
    static void add_pinned(std::string& key, const std::set<std::size_t>& pinned,
                           const std::vector<Value>& values);

    std::filesystem::path file_;
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> engine_{nullptr, sqlite3_close_v2};
    Catalog catalog_{nullptr};
    static inline MakeObserver make_observer_;
    const std::unique_ptr<StatementObserver> observer_ = make_observer_ ? make_observer_() : nullptr;
    std::int64_t schema_version_ = -1;
    // Statements, the last used first. The key is the text with the kinds of its values or, if it holds
    // literals, its shape; then the values that shaped the translation.
    std::list<Prepared> prepared_;
    std::unordered_map<std::string_view, std::list<Prepared>::iterator> by_key_;
    std::unordered_map<std::string, std::set<std::size_t>> pinned_of_key_;
    // Answers of description(), by the name asked for, until a table changes.
    std::map<std::string, std::shared_ptr<const Table>, std::less<>> described_;
    // Memory that is used again by each statement.
    std::string spare_key_;
    tsql::Shape spare_shape_;
    int log_file_ = -1;
    std::chrono::milliseconds timeout_{30'000};
    std::chrono::steady_clock::time_point deadline_;
};

}  // namespace database::embedded

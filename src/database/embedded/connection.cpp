#include "database/embedded/connection.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "database/embedded/definitions.h"
#include "database/embedded/engine.h"
#include "database/embedded/moments.h"
#include "database/embedded/writer.h"
#include "database/tsql/parser.h"

namespace database::embedded {

namespace {

// How many statements are kept prepared; a till uses about two hundred.
constexpr std::size_t most_prepared = 500;

Value cell_of(sqlite3_stmt* statement, int column, const Type& type) {
    const int storage = sqlite3_column_type(statement, column);
    if (storage == SQLITE_NULL) return Null{};
    const auto text = [&] {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        return std::string(bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
    };
    switch (type.kind) {
        case Type::Kind::datetime:
            if (storage != SQLITE_TEXT) return moment_of_ticks(sqlite3_column_int64(statement, column));
            return text();
        case Type::Kind::real:
            if (storage != SQLITE_TEXT) return sqlite3_column_double(statement, column);
            return text();
        case Type::Kind::text:
            return text();
        default:
            break;
    }
    if (storage == SQLITE_INTEGER) return std::int64_t{sqlite3_column_int64(statement, column)};
    if (storage == SQLITE_FLOAT) return sqlite3_column_double(statement, column);
    return text();
}

template <typename... Ts>
struct Cases : Ts... {
    using Ts::operator()...;
};

std::string transaction_word(tsql::Transaction::What what) {
    switch (what) {
        case tsql::Transaction::What::begin:
            return "BEGIN IMMEDIATE";
        case tsql::Transaction::What::commit:
            return "COMMIT";
        case tsql::Transaction::What::rollback:
            return "ROLLBACK";
    }
    return {};
}

// Errors carry their statement; those raised while it was translated do not know it yet.
Error with_statement(const Error& error, std::string_view statement) {
    return {error.sqlstate(), error.what(),
            error.statement().empty() ? std::string(statement) : error.statement(), error.kind()};
}

}  // namespace

EmbeddedConnection::EmbeddedConnection(const std::filesystem::path& file, bool create) : file_(file) {
    open(file, create);
}

EmbeddedConnection::~EmbeddedConnection() {
    forget_statements();
    if (log_file_ >= 0) ::close(log_file_);
}

Connection::Outcome EmbeddedConnection::run(std::string_view statement, const std::vector<Value>& values) {
    Request request{statement, values, std::move(spare_key_), std::move(spare_shape_)};
    const struct GiveBack {
        EmbeddedConnection& to;
        Request& request;
        ~GiveBack() {
            request.shape.values.clear();
            to.spare_key_ = std::move(request.key);
            to.spare_shape_ = std::move(request.shape);
        }
    } give_back{*this, request};
    try {
        return run_once(request);
    } catch (const Error& error) {
        // The tables may have been changed by another program since they were read.
        const bool unknown = error.sqlstate() == "42S02" || error.sqlstate() == "42S22" ||
                             error.sqlstate() == "42S01" || error.sqlstate() == "42S21";
        if (!unknown || !refresh_catalog()) throw with_statement(error, statement);
    }
    try {
        return run_once(request);
    } catch (const Error& error) {
        throw with_statement(error, statement);
    }
}

Connection::Outcome EmbeddedConnection::run_once(Request& request) {
    if (observer_) observer_->before(request.statement, request.given, catalog_);
    Prepared* prepared = prepared_for(request);
    if (prepared == nullptr) return {Result(std::make_shared<Columns>(std::vector<std::string>()), {}), 0};
    if (prepared->is_orphan_deletion) return delete_orphans(*prepared, request);
    Outcome outcome = step(*prepared, *request.values, request.statement);
    // The engine had to prepare it again: the tables have changed since "*" was expanded.
    sqlite3_stmt* used = prepared->statement.get();
    if (sqlite3_stmt_status(used, SQLITE_STMTSTATUS_REPREPARE, 1) > 0) {
        const bool reads = sqlite3_stmt_readonly(used) != 0;
        if (refresh_catalog() && reads) {
            return step(*prepared_for(request), *request.values, request.statement);
        }
    }
    return outcome;
}

Connection::Outcome EmbeddedConnection::delete_orphans(Prepared& deletion, const Request& request) {
    Outcome outcome{Result(deletion.columns, {}), 0};
    if (!can_have_orphans(engine_.get(), catalog_)) return outcome;
    // In one transaction, so that nobody writes between the deletion and its note.
    all_or_none(engine_.get(), [&] {
        outcome = step(deletion, *request.values, request.statement);
        if (catalog_.find("own.state") != nullptr) note_no_orphans(engine_.get());
    });
    return outcome;
}

void EmbeddedConnection::add_pinned(std::string& key, const std::set<std::size_t>& pinned,
                                    const std::vector<Value>& values) {
    for (const std::size_t slot : pinned)
        key += '\n' + text_of(values[slot]);
}

EmbeddedConnection::Prepared* EmbeddedConnection::find(const std::string& key) {
    // The rows of a document are written by the same statement again and again.
    if (!prepared_.empty() && prepared_.front().key == key) return &prepared_.front();
    const auto found = by_key_.find(key);
    if (found == by_key_.end()) return nullptr;
    prepared_.splice(prepared_.begin(), prepared_, found->second);
    return &prepared_.front();
}

EmbeddedConnection::Prepared* EmbeddedConnection::prepared_for(Request& request) {
    const auto& [statement, given, key, shape, values] = request;
    // Most statements with values beside them have no literals, and need not be scanned. No shape of a valid
    // statement begins with "=".
    if (!given.empty()) {
        request.key.assign(1, '=').append(statement).append(1, '\n');
        for (const Value& value : given)
            request.key += tsql::kind_mark(value);
        request.values = &given;
        if (Prepared* prepared = find(key)) return prepared;
    }
    tsql::read_shape(statement, given, request.shape);
    if (given.empty() || shape.values.size() != given.size()) {
        request.key = shape.text;
        request.values = &shape.values;
        if (Prepared* prepared = find(key)) return prepared;
    }
    if (const auto pinned = pinned_of_key_.find(key); pinned != pinned_of_key_.end()) {
        std::string with_values = key;
        add_pinned(with_values, pinned->second, *values);
        if (Prepared* prepared = find(with_values)) return prepared;
    }
    return prepare(request);
}

EmbeddedConnection::Prepared* EmbeddedConnection::prepare(Request& request) {
    const tsql::Tokens tokens = tsql::tokenize(request.statement, request.given);
    std::set<std::size_t> pinned;
    const tsql::Statement tree = tsql::Parser(request.statement, tokens, pinned).statement();
    if (define(tree, tokens.values)) return nullptr;
    Writer writer(catalog_, tokens.values, pinned);
    const Translation made = translate(tree, writer);

    Prepared prepared;
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v3(engine_.get(), made.sql.data(), static_cast<int>(made.sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
    if (code != SQLITE_OK) throw engine_error(engine_.get(), code, request.statement);
    prepared.statement.reset(raw);
    std::vector<std::string> names;
    for (const Column& column : made.columns) {
        names.push_back(column.name);
        prepared.types.push_back(column.type);
    }
    prepared.columns = std::make_shared<const Columns>(std::move(names));
    prepared.is_orphan_deletion = is_orphan_deletion(tokens);
    prepared.key = request.key;
    for (std::size_t slot = 0; prepared.is_orphan_deletion && slot < tokens.values.size(); ++slot)
        pinned.insert(slot);
    if (!pinned.empty()) {
        if (pinned_of_key_.size() > 4 * most_prepared) forget_statements();
        auto& known = pinned_of_key_[request.key];
        known.merge(pinned);
        add_pinned(prepared.key, known, tokens.values);
    }
    return keep(std::move(prepared));
}

bool EmbeddedConnection::define(const tsql::Statement& tree, const std::vector<Value>& values) {
    Definitions definitions(engine_.get(), catalog_, values);
    return std::visit(
        [&](const auto& statement) {
            if constexpr (requires { definitions.apply(statement); }) {
                forget_statements();
                definitions.apply(statement);
                schema_version_ = number(engine_.get(), "PRAGMA schema_version");
                return true;
            }
            return false;
        },
        tree);
}

Translation EmbeddedConnection::translate(const tsql::Statement& tree, Writer& writer) {
    return std::visit(Cases{[&](const std::unique_ptr<tsql::Select>& s) { return writer.select(*s); },
                            [&](const tsql::Insert& s) { return writer.insert(s); },
                            [&](const tsql::Update& s) { return writer.update(s); },
                            [&](const tsql::Delete& s) { return writer.remove(s); },
                            [&](const tsql::Transaction& s) {
                                return Translation{transaction_word(s.what), {}};
                            },
                            [](const auto&) {
                                return Translation{"SELECT 1 WHERE 0", {}};
                            }},
                      tree);
}

EmbeddedConnection::Prepared* EmbeddedConnection::keep(Prepared prepared) {
    while (prepared_.size() >= most_prepared) {
        by_key_.erase(prepared_.back().key);
        prepared_.pop_back();
    }
    prepared_.push_front(std::move(prepared));
    by_key_[prepared_.front().key] = prepared_.begin();
    return &prepared_.front();
}

void EmbeddedConnection::bind(sqlite3_stmt* statement, const std::vector<Value>& values) {
    const int count = sqlite3_bind_parameter_count(statement);
    for (int i = 0; i < count && i < static_cast<int>(values.size()); ++i) {
        const Value& value = values[static_cast<std::size_t>(i)];
        const int at = i + 1;
        if (const auto* whole = std::get_if<std::int64_t>(&value)) {
            sqlite3_bind_int64(statement, at, *whole);
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            // The values live until the statement has run.
            sqlite3_bind_text64(statement, at, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
        } else if (const auto* number = std::get_if<double>(&value)) {
            sqlite3_bind_double(statement, at, *number);
        } else if (const auto* moment = std::get_if<common::Moment>(&value)) {
            sqlite3_bind_int64(statement, at, ticks_of(*moment));
        } else {
            sqlite3_bind_null(statement, at);
        }
    }
}

Connection::Outcome EmbeddedConnection::step(Prepared& prepared, const std::vector<Value>& values,
                                             std::string_view statement) {
    sqlite3_stmt* raw = prepared.statement.get();
    const struct Reset {
        sqlite3_stmt* statement;
        std::chrono::steady_clock::time_point& deadline;
        ~Reset() {
            sqlite3_reset(statement);
            sqlite3_clear_bindings(statement);
            deadline = std::chrono::steady_clock::time_point::max();
        }
    } reset{raw, deadline_};
    bind(raw, values);
    deadline_ = std::chrono::steady_clock::now() + timeout_;
    std::vector<Row> rows;
    int code = SQLITE_DONE;
    while ((code = sqlite3_step(raw)) == SQLITE_ROW) {
        if (rows.empty()) rows.reserve(8);
        std::vector<Value> cells;
        cells.reserve(prepared.types.size());
        for (std::size_t i = 0; i < prepared.types.size(); ++i) {
            cells.push_back(cell_of(raw, static_cast<int>(i), prepared.types[i]));
        }
        rows.emplace_back(prepared.columns, std::move(cells));
    }
    if (code != SQLITE_DONE) throw engine_error(engine_.get(), code, statement);
    const bool changes = sqlite3_column_count(raw) == 0 && sqlite3_stmt_readonly(raw) == 0;
    return {Result(prepared.columns, std::move(rows)), changes ? sqlite3_changes64(engine_.get()) : 0};
}

void EmbeddedConnection::set_timeout(std::chrono::milliseconds timeout) {
    // The clock is read every so many steps of the engine, that is every few milliseconds.
    constexpr int steps = 200'000;
    timeout_ = timeout;
    deadline_ = std::chrono::steady_clock::time_point::max();
    sqlite3_busy_timeout(engine_.get(), static_cast<int>(timeout.count()));
    const auto is_late = [](void* self) {
        return std::chrono::steady_clock::now() > static_cast<EmbeddedConnection*>(self)->deadline_ ? 1 : 0;
    };
    sqlite3_progress_handler(engine_.get(), steps, is_late, this);
}

bool EmbeddedConnection::refresh_catalog() {
    const std::int64_t version = number(engine_.get(), "PRAGMA schema_version");
    if (version == schema_version_) return false;
    forget_statements();
    catalog_.load();
    schema_version_ = version;
    return true;
}

void EmbeddedConnection::forget_statements() {
    by_key_.clear();
    prepared_.clear();
    pinned_of_key_.clear();
    described_.clear();
}

std::shared_ptr<const Connection::Table> EmbeddedConnection::description(std::string_view name) {
    if (const auto known = described_.find(name); known != described_.end()) return known->second;
    const embedded::Table* table = catalog_.find(name);
    if (table == nullptr && refresh_catalog()) table = catalog_.find(name);
    if (table == nullptr) throw Error("42S02", "Invalid object name '" + std::string(name) + "'.", "");
    if (table->view) {
        if (const embedded::Table* real = renamed_table(catalog_, *table)) table = real;
    }
    auto described = std::make_shared<Table>();
    for (const Column& column : table->columns) {
        described->columns.push_back(column.name);
        described->types.push_back(column.type.written);
    }
    described->key = table->key;
    described_.emplace(name, described);
    return described;
}

std::vector<std::string> EmbeddedConnection::tables() {
    refresh_catalog();
    std::vector<std::string> names;
    for (const auto& [key, table] : catalog_.tables()) {
        const bool is_own = table.name.find('.') != std::string::npos;
        if (!table.view && !is_own) names.push_back(table.name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

void EmbeddedConnection::make_durable() {
    const std::string log = file_.string() + "-wal";
    const auto fail = [&](const char* what) {
        throw Error(
            "HY000",
            std::string("The shop file could not be made durable: ") + what + ": " + std::strerror(errno),
            "");
    };
    if (log_file_ < 0) {
        log_file_ = ::open(log.c_str(), O_RDWR | O_CLOEXEC);
        if (log_file_ < 0 && errno == ENOENT) return;  // nothing was ever written through the log
        if (log_file_ < 0) fail("open");
        // The log's directory entry must reach the disk as well as its content.
        const int folder = ::open(file_.parent_path().empty() ? "." : file_.parent_path().c_str(),
                                  O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder >= 0) {
            ::fsync(folder);
            ::close(folder);
        }
    }
    if (::fdatasync(log_file_) != 0) fail("sync");
}

}  // namespace database::embedded

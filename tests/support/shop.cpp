#include "support/shop.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include "common/text.h"
#include "database/embedded/open.h"
#include "database/schema/schema.h"
#include "database/sqlserver/open.h"

namespace test {

namespace fs = std::filesystem;
using database::Row;
using database::Sql;

namespace {

constexpr const char* seed_basic[] = {
    "insert into basic (aname,ename,tel,[print],cash,max_dis,st_d,mst,mcash) "
    "select N'بقالة النور','Al Noor','0123','win','com1',10,1,1,1",
    "insert into stocks (code,name) select 1,N'الفرع الرئيسي'",
    "insert into stocks (code,name) select 2,N'المخزن الثاني'",
    "insert into cash (code,name,stcode,copen,salary1) select 1,N'درج 1',1,0,0",
    "insert into cash (code,name,stcode,copen,salary1) select 2,N'درج 2',1,0,0",
    "insert into cash (code,name,stcode,copen,salary1) select 1,N'درج 1',2,0,0",
    "insert into worker (work_code,work_name) select 1,N'سعاد'",
};

void make_shop(database::Connection& connection) {
    database::create_base_schema(connection);
    for (const char* statement : seed_basic)
        connection.execute(Sql::from_administrator(statement));
    connection.execute(Sql::from_administrator(
        "insert into users (code,name,pass,perm) select 1,N'مدير','1','" + std::string(400, '1') + "'"));
    database::run_upgrade_list(connection);
    connection.make_durable();
}

// The shop that every test copies. A test program that runs by itself makes its own.
fs::path model_shop() {
    if (const char* made_before = std::getenv("TALLVEX_MODEL_SHOP")) return made_before;
    static const TemporaryFolder folder;
    static const fs::path file = [] {
        fs::path made = folder.path() / "model.db";
        make_model_shop(made);
        return made;
    }();
    return file;
}

// A server that answers "select getdate()" with the test's day.
class DatedConnection final : public database::Connection {
  public:
    explicit DatedConnection(std::unique_ptr<database::Connection> real) : real_(std::move(real)) {}
    void go_by(common::Clock& clock) { clock_ = &clock; }

    void make_durable() override { real_->make_durable(); }
    bool is_embedded() const override { return real_->is_embedded(); }
    Table describe(std::string_view table) override { return real_->describe(table); }
    std::vector<std::string> tables() override { return real_->tables(); }
    Outcome run(std::string_view statement, const std::vector<database::Value>& values) override {
        return dated(statement, real_->run(statement, values));
    }
    std::vector<Outcome> run_all(const std::vector<database::Command>& commands) override {
        std::vector<Outcome> outcomes = real_->run_all(commands);
        for (std::size_t i = 0; i < outcomes.size(); ++i)
            outcomes[i] = dated(commands[i].text(), std::move(outcomes[i]));
        return outcomes;
    }

  private:
    Outcome dated(std::string_view statement, Outcome outcome) {
        if (statement != "select getdate()") return outcome;
        constexpr common::Moment day{{2026, 11, 21}, {10, 42, 0, 0}};
        const auto columns = std::make_shared<const database::Columns>(std::vector<std::string>{""});
        const database::Value now = clock_ != nullptr ? clock_->now() : day;
        return {database::Result(columns, {database::Row(columns, {now})}), 0};
    }

    std::unique_ptr<database::Connection> real_;
    common::Clock* clock_ = nullptr;
};

}  // namespace

std::string TestServer::connection_string() const {
    return "Provider=SQLOLEDB.1;Password=" + password + ";Persist Security Info=True;User ID=" + user +
           ";Initial Catalog= " + database + ";Data Source=" + source + ";Encryption=off";
}

std::optional<TestServer> test_server() {
    const char* value = std::getenv("TALLVEX_TEST_SQLSERVER");
    if (value == nullptr || *value == '\0') return {};
    std::string rest = value;
    std::array<std::string, 4> parts;  // server, port, database, user
    for (std::string& part : parts) {
        const auto end = rest.find(';');
        if (end == rest.npos)
            throw std::runtime_error("TALLVEX_TEST_SQLSERVER is not \"server;port;database;user;password\"");
        part = rest.substr(0, end);
        rest.erase(0, end + 1);
    }
    return TestServer{parts[0] + "," + parts[1], parts[2], parts[3], rest};
}

std::unique_ptr<database::Connection> open_emptied(const TestServer& server) {
    if (common::lower_ascii(server.database).find("test") == std::string::npos)
        throw std::runtime_error("The database \"" + server.database +
                                 "\" is left alone: tests empty only one whose name says that it is for "
                                 "tests, such as shop_test.");
    auto connection = database::open_sqlserver(server.connection_string());
    for (const Row& view : connection->query("select name from sysobjects where xtype = 'V'"))
        connection->execute(Sql::from_administrator("drop view [" + view.text("name") + "]"));
    for (const Row& table : connection->query("select name from sysobjects where xtype = 'U'"))
        connection->execute(Sql::from_administrator("drop table [" + table.text("name") + "]"));
    return connection;
}

std::unique_ptr<database::Connection> open_shop(const fs::path& file) {
    if (const auto server = test_server()) return database::open_sqlserver(server->connection_string());
    return database::open_embedded(file);
}

void make_model_shop(const fs::path& file) {
    const auto connection = database::open_embedded(file, true);
    make_shop(*connection);
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "tallvex-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

Shop::Shop() : file_(folder_.path() / "shop.db") {
    if (const auto server = test_server()) {
        auto emptied = open_emptied(*server);
        make_shop(*emptied);
        connection_ = std::make_unique<DatedConnection>(std::move(emptied));
        return;
    }
    fs::copy_file(model_shop(), file_);
    connection_ = database::open_embedded(file_);
}

void Shop::go_by(common::Clock& clock) {
    if (auto* server = dynamic_cast<DatedConnection*>(connection_.get())) server->go_by(clock);
}

void Shop::sql(const std::string& statement) {
    connection_->execute(Sql::from_administrator(statement));
}

std::string Shop::cell(const std::string& query) {
    return database::text_of(connection_->scalar(Sql::from_administrator(query)));
}

double Shop::number(const std::string& query) {
    return database::number_of(connection_->scalar(Sql::from_administrator(query)));
}

}  // namespace test

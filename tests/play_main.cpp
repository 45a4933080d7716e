// tallvex-test-play: tallvex-play with every statement judged as a server would judge it, and on the server
// that TALLVEX_TEST_SQLSERVER names if it names one.
#include <cstdio>

#include "database/sqlserver/open.h"
#include "play/program.h"
#include "support/strict.h"
#include "support/test_server.h"

namespace {

std::optional<play::Server> server_of_tests() {
    const auto server = test::test_server();
    if (!server) return {};
    if (server->user != "sa") throw std::runtime_error("a play signs in to the server as \"sa\"");
    return play::Server{{server->source, server->database},
                        server->password,
                        [server] { return database::open_sqlserver(server->connection_string()); },
                        [server] { return test::open_emptied(*server); }};
}

}  // namespace

int main(int argc, char** argv) {
    test::StrictReader::install();
    try {
        return play::run_program(argc, argv, server_of_tests());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

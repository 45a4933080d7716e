// tallvex-test-play: tallvex-play with every statement checked as a server would check it, and on the server
// that TALLVEX_TEST_SQLSERVER names, if any.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "database/sqlserver/open.h"
#include "play/program.h"
#include "support/shop.h"
#include "support/strict.h"

namespace {

// Sends one line to the control socket of tds-bridge and returns its answer.
std::string command_bridge(const std::string& line) {
    const char* variable = std::getenv("TALLVEX_TEST_BRIDGE");
    const std::string path = variable != nullptr ? variable : "";
    sockaddr_un address{};
    if (path.empty() || path.size() >= sizeof address.sun_path)
        throw std::runtime_error("this play needs tds-bridge (TALLVEX_TEST_BRIDGE)");
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, path.size());
    const int bridge = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::string answer;
    if (connect(bridge, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
        const std::string question = line + "\n";
        send(bridge, question.data(), question.size(), MSG_NOSIGNAL);
        for (char c; recv(bridge, &c, 1, 0) == 1 && c != '\n';)
            answer += c;
    }
    close(bridge);
    return answer;
}

std::optional<play::Server> server_of_tests() {
    const auto server = test::test_server();
    if (!server) return {};
    if (server->user != "sa") throw std::runtime_error("a play signs in to the server as \"sa\"");
    return play::Server{{.server = server->source, .database = server->database, .encryption = "off"},
                        server->password,
                        [server] { return database::open_sqlserver(server->connection_string()); },
                        [server] { return test::open_emptied(*server); },
                        command_bridge};
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

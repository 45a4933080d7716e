// tds-bridge: the test server as a program. Runs tests or plays against it:
//     tds-bridge [--knows-less] COMMAND [argument...]
// starts a server with its own database, names it in TALLVEX_TEST_SQLSERVER (and its control socket in
// TALLVEX_TEST_BRIDGE), runs the command and ends as it ends. Without a command it prints the variable and
// serves until its input ends. What it is and what it is not: support/tds_bridge.h.
#include <spawn.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "support/shop.h"
#include "support/strict.h"
#include "support/tds_bridge.h"

extern char** environ;

int main(int count, char** arguments) {
    test::StrictReader::install();  // refuse what a server is known to refuse
    const test::TemporaryFolder folder;
    test::TdsBridge bridge(folder.path(), {.database = "shop_test"});
    if (count > 1 && std::string_view(arguments[1]) == "--knows-less") {
        bridge.know_less();
        --count;
        ++arguments;
    }
    const test::TdsControl control(bridge, folder.path() / "control");
    if (count < 2) {
        std::printf("TALLVEX_TEST_SQLSERVER='%s'\n", bridge.place().c_str());
        std::fflush(stdout);
        while (std::getchar() != EOF) {
        }
        return 0;
    }
    setenv("TALLVEX_TEST_SQLSERVER", bridge.place().c_str(), 1);
    setenv("TALLVEX_TEST_BRIDGE", control.path().c_str(), 1);
    pid_t child = 0;
    if (posix_spawnp(&child, arguments[1], nullptr, nullptr, arguments + 1, environ) != 0) {
        std::fprintf(stderr, "%s cannot be run\n", arguments[1]);
        return 127;
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

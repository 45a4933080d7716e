// What a play does to the server of the tests, through the control socket of the test server.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "play/player.h"

namespace play {

namespace {

// One line to the control socket, and its answer.
std::string ask_bridge(const std::string& line) {
    const char* path = std::getenv("TALLVEX_TEST_BRIDGE");
    sockaddr_un address{};
    if (path == nullptr || std::strlen(path) >= sizeof address.sun_path)
        throw std::runtime_error("this play needs the test server (TALLVEX_TEST_BRIDGE)");
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, path);
    const int line_out = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::string answer;
    if (connect(line_out, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
        const std::string question = line + "\n";
        send(line_out, question.data(), question.size(), MSG_NOSIGNAL);
        for (char c; recv(line_out, &c, 1, 0) == 1 && c != '\n';)
            answer += c;
    }
    close(line_out);
    return answer;
}

}  // namespace

Progress Player::do_server(const Step& step) {
    // What sees the rows for the play would only meet the same.
    rows_.reset();
    return ask_bridge(step.rest) == "ok" ? Progress::ok() : Progress::fail("the server knows no such thing");
}

Progress Player::expect_server(const std::string& rest) {
    const Halves said = split_at(rest, "=");
    const std::string answer = ask_bridge(said.before);
    return answer == said.after ? Progress::ok() : Progress::wait(answer);
}

}  // namespace play

#include "admin/password.h"

#include <termios.h>
#include <unistd.h>

#include <csignal>

#include "common/text.h"

namespace admin {

namespace {

// Keeps what is typed at a terminal from being shown.
class Unseen {
  public:
    Unseen() : active_(tcgetattr(STDIN_FILENO, &former_) == 0) {
        if (!active_) return;
        termios hidden = former_;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
        // Ctrl+C ends the reading and not the program, which would leave the terminal as it is.
        struct sigaction end_reading {};
        end_reading.sa_handler = [](int) {};
        sigaction(SIGINT, &end_reading, &former_interrupt_);
    }
    ~Unseen() {
        if (!active_) return;
        sigaction(SIGINT, &former_interrupt_, nullptr);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &former_);
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;

  private:
    termios former_{};
    struct sigaction former_interrupt_ {};
    bool active_;
};

std::string read_line(Tool& tool, std::string_view whose) {
    std::string line;
    if (!std::getline(tool.in, line)) throw Refused("no password of " + std::string(whose) + " was given");
    return std::string(common::trim(line));
}

std::string read_unseen(Tool& tool, std::string_view whose, const std::string& prompt) {
    tool.err << prompt << std::flush;
    const Unseen unseen;
    const std::string line = read_line(tool, whose);
    tool.err << '\n';
    return line;
}

}  // namespace

std::string ask_password(Tool& tool, std::string_view whose, std::string_view otherwise) {
    const bool typed = tool.terminal && isatty(STDIN_FILENO) != 0;
    const std::string password =
        typed ? read_unseen(tool, whose, "Password of " + std::string(whose) + ": ") : read_line(tool, whose);
    if (password.empty()) throw Refused("the password is empty; " + std::string(otherwise));
    if (typed && read_unseen(tool, whose, "The same again: ") != password)
        throw Refused("the two passwords differ; nothing was changed");
    return password;
}

}  // namespace admin

#include "admin/tool.h"

#include <termios.h>
#include <unistd.h>
#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstring>
#include <memory>
#include <streambuf>

#include "admin/arabic_help.h"
#include "common/text.h"
#include "database/error.h"

namespace admin {

namespace {

// Hides what is typed at a terminal.
class HiddenTyping {
  public:
    HiddenTyping() : active_(tcgetattr(STDIN_FILENO, &former_) == 0) {
        if (!active_) return;
        termios hidden = former_;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
        // Ctrl+C then ends only the reading; ending the program would leave the terminal without echo.
        struct sigaction end_reading {};
        end_reading.sa_handler = [](int) {};
        sigaction(SIGINT, &end_reading, &former_interrupt_);
    }
    ~HiddenTyping() {
        if (!active_) return;
        sigaction(SIGINT, &former_interrupt_, nullptr);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &former_);
    }
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;

  private:
    termios former_{};
    struct sigaction former_interrupt_ {};
    bool active_;
};

std::string read_line(Tool& tool, const std::string& what) {
    std::string line;
    if (!std::getline(tool.in, line)) throw Refused("no " + what + " was given");
    return std::string(common::trim(line));
}

std::string read_hidden(Tool& tool, const std::string& what, const std::string& prompt) {
    tool.err << prompt << std::flush;
    const HiddenTyping hidden;
    const std::string line = read_line(tool, what);
    tool.err << '\n';
    return line;
}

}  // namespace

namespace {

// Passes text on to a stream so that a name in the shop cannot disturb the terminal: all control characters
// but line ends, and all direction marks, are left out.
class PrintableBuffer final : public std::streambuf {
  public:
    explicit PrintableBuffer(std::ostream& to) : to_(to) {}
    ~PrintableBuffer() override { pass_on(); }

  protected:
    int_type overflow(int_type c) override {
        if (c == traits_type::eof()) return 0;
        held_ += static_cast<char>(c);
        if (c == '\n') pass_on();
        return c;
    }
    int sync() override {
        pass_on();
        to_.flush();
        return 0;
    }

  private:
    void pass_on() {
        const bool is_line = held_.ends_with('\n');
        const std::string_view end = held_.ends_with("\r\n") ? "\r\n" : is_line ? "\n" : "";
        to_ << common::printable(held_) << end;
        held_.clear();
    }
    std::ostream& to_;
    std::string held_;  // a line, so that no character is cut
};

// To be called before the commands are added, because they take over their program's help.
void set_up_help(CLI::App& program, const Tool& tool) {
    if (tool.arabic) {
        program.formatter(std::make_shared<ArabicHelp>());
        program.group("الأوامر");
    }
    program.description(
        tool.help("Sets up and looks after a Tallvex shop.", "ينشئ محلات تالفكس ويعتني بها."));
    program.set_version_flag(
        "--version", TALLVEX_VERSION,
        tool.help("Display program version information and exit", "يعرض إصدار البرنامج"));
    program.set_help_flag("-h,--help", tool.help("Print this help message and exit", "يعرض هذه المساعدة"));
    program.footer(tool.help(
        "Exit codes: 0 done, 1 refused or failed (nothing half-done is left), 2 wrong command line.\n"
        "Commands work on the shop in the folder that TALLVEX_HOME names, else in the working directory,\n"
        "else, without TALLVEX_HOME, on the shop of till.conf.",
        "رموز الانتهاء: 0 تم، 1 رفض أو فشل (ولا يبقى شيء ناقصا)، 2 سطر الأمر خطأ.\n"
        "تعمل الأوامر على المحل الذي في مجلد TALLVEX_HOME، وإلا فالذي في المجلد الحالي،\n"
        "وإلا فمحل الملف till.conf إذا لم يكن TALLVEX_HOME مكتوبا."));
}

}  // namespace

int run_tool(const std::vector<AddCommand>& commands, const std::vector<std::string>& arguments,
             Tool& given) {
    PrintableBuffer out_buffer(given.out);
    PrintableBuffer err_buffer(given.err);
    std::ostream out(&out_buffer);
    std::ostream err(&err_buffer);
    Tool tool{out, err, given.in, given.folder, given.clock, given.terminal, given.shop, given.arabic};
    CLI::App program("", "tallvex-admin");
    set_up_help(program, tool);
    program.require_subcommand(1);
    for (const AddCommand add : commands)
        add(program, tool);
    try {
        // For an unknown command the parser would only say that a command is missing.
        if (!arguments.empty() && !arguments.front().starts_with('-') &&
            program
                .get_subcommands([&](CLI::App* command) { return command->get_name() == arguments.front(); })
                .empty()) {
            throw CLI::ExtrasError("tallvex-admin", {arguments.front()});
        }
        // The parser expects the words in reverse order.
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return done;
    } catch (const CLI::ParseError& error) {
        // The help contains nothing from a shop, and its direction marks are intended.
        return program.exit(error, given.out, tool.err) == 0 ? done : usage;
    } catch (const Refused& error) {
        tool.err << "tallvex-admin: " << error.what() << '\n';
    } catch (const database::Error& error) {
        tool.err << "tallvex-admin: the database says: " << error.what();
        if (!error.statement().empty()) tool.err << "\n  in: " << error.statement();
        tool.err << '\n';
    } catch (const std::exception& error) {
        tool.err << "tallvex-admin: " << error.what() << '\n';
    }
    return refused;
}

Progress::Progress(Tool& tool, std::string label, std::size_t total)
    : tool_(tool), label_(std::move(label)), total_(total) {
    reach(0);
}

Progress::~Progress() {
    if (tool_.terminal != nullptr) *tool_.terminal << "\r\x1b[K" << std::flush;
}

void Progress::reach(std::size_t amount) {
    done_ = amount;
    if (tool_.terminal == nullptr) return;
    const int percent = total_ == 0 ? 100 : static_cast<int>(std::min(done_, total_) * 100 / total_);
    if (percent == percent_) return;
    percent_ = percent;
    constexpr int bar_cells = 40;
    const int filled = percent * bar_cells / 100;
    *tool_.terminal << '\r' << label_ << " [" << std::string(static_cast<std::size_t>(filled), '#')
                    << std::string(static_cast<std::size_t>(bar_cells - filled), '.') << "] " << percent
                    << "%\x1b[K" << std::flush;
}

std::string ask_secret(Tool& tool, const std::string& what, std::string_view otherwise) {
    const bool typed = tool.terminal != nullptr && isatty(STDIN_FILENO) != 0;
    std::string secret = typed ? read_hidden(tool, what, "The " + what + ": ") : read_line(tool, what);
    if (secret.empty()) throw Refused("the " + what + " is empty; " + std::string(otherwise));
    if (typed && read_hidden(tool, what, "The same again: ") != secret)
        throw Refused("the two are not the same; nothing was changed");
    return secret;
}

bool asks_for_arabic(const std::function<const char*(const char*)>& variable) {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = variable(name);
        if (value == nullptr || *value == '\0') continue;
        const std::string_view language(value, std::strcspn(value, "_.@"));
        return language == "ar";
    }
    return false;
}

}  // namespace admin

// tallvex-play: plays what a cashier does, from text files, on the real screens.
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>

#include "play/player.h"

namespace {

// Plays the steps from `first` on in a process of its own, which the play may end in mid-work.
int play_in_child(const play::Script& script, play::Stage& stage, const play::Settings& settings,
                  std::size_t first) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        // Off screen there is no window manager to give hints to, and Qt says so for every window.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            if (!text.contains("propagateSizeHints") && !text.contains("XDG_RUNTIME_DIR"))
                std::fprintf(stderr, "%s\n", text.toUtf8().constData());
        });
        int count = 1;
        char name[] = "tallvex-play";
        char* arguments[] = {name, nullptr};
        QApplication application(count, arguments);
        QApplication::setQuitOnLastWindowClosed(false);
        const int code = play::Player(script, stage, settings, first).play();
        std::fflush(nullptr);
        _exit(code);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::size_t steps_done(const play::Stage& stage) {
    std::size_t done = 0;
    std::ifstream(stage.progress_file()) >> done;
    return done;
}

bool play_file(const std::filesystem::path& file, const play::Settings& settings, const std::string& keep) {
    const play::Script script = play::read_script(file);
    play::Stage stage;
    std::size_t at = 0;
    for (;;) {
        const int code = play_in_child(script, stage, settings, at);
        if (code == 0) break;
        if (code == 1) return false;
        const std::size_t done = steps_done(stage);
        const int line = script.steps[std::min(done, script.steps.size() - 1)].line;
        if (code != play::killed) {
            std::fprintf(stderr, "%s:%d: the program crashed here (%d)\n", file.c_str(), line, code);
            return false;
        }
        // Ended as the play wanted; it goes on where the program is started again.
        at = done;
        while (at < script.steps.size() && script.steps[at].verb != "start")
            ++at;
        if (at == script.steps.size()) break;
    }
    if (!keep.empty()) {
        const auto kept = std::filesystem::path(keep) / "shop";
        std::filesystem::remove_all(kept);
        std::filesystem::copy(stage.folder(), kept, std::filesystem::copy_options::recursive);
        std::printf("The pictures are in %s, the shop with its ports and receipts in %s.\n", keep.c_str(),
                    kept.c_str());
    }
    if (settings.objects.empty()) std::printf("%s: %zu steps passed\n", file.c_str(), script.steps.size());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App program{"Plays what a cashier does, from text files, on the real screens."};
    std::vector<std::string> files;
    std::string pictures = "pictures";
    std::string keep;
    bool shown = false;
    bool list = false;
    program.add_option("plays", files, "The plays")->required()->check(CLI::ExistingFile);
    program.add_option("--pictures", pictures, "The folder for the pictures")->capture_default_str();
    program.add_option("--keep", keep, "A folder in which the pictures and the shop are left after the play");
    program.add_flag("--show", shown, "On the real screen instead of off screen");
    program.add_flag("--list-objects", list, "Lists every object name that the plays come across");
    CLI11_PARSE(program, argc, argv);
    if (!keep.empty()) pictures = keep;

    if (!shown) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("CUPS_SERVER", "/nonexistent/cups.sock", 1);  // what a play prints never leaves the machine
    const auto objects =
        std::filesystem::temp_directory_path() / ("tallvex-objects-" + std::to_string(getpid()));
    const play::Settings settings{pictures, shown, list ? objects : std::filesystem::path()};
    std::filesystem::create_directories(pictures);
    int failed = 0;
    for (const std::string& file : files) {
        try {
            if (!play_file(file, settings, keep)) ++failed;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
            ++failed;
        }
    }
    if (list) {
        std::ifstream stream(objects);
        std::set<std::string> lines;
        for (std::string line; std::getline(stream, line);)
            lines.insert(line);
        std::filesystem::remove(objects);
        for (const std::string& line : lines)
            std::printf("%s\n", line.c_str());
    }
    if (failed != 0) std::fprintf(stderr, "%d of %zu plays failed\n", failed, files.size());
    return failed == 0 ? 0 : 1;
}

#include "play/program.h"

#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>

#include "play/player.h"
#include "play/screens_page.h"

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
        QApplication::setCursorFlashTime(0);  // pictures of one screen are the same
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

// A step that works on the shop's file, which a shop on a server has not.
const play::Step* step_on_shop_file(const play::Script& script) {
    const auto found = std::find_if(script.steps.begin(), script.steps.end(), [](const play::Step& step) {
        return step.verb == "file" && step.rest.starts_with("shop.db");
    });
    return found == script.steps.end() ? nullptr : &*found;
}

bool play_file(const std::filesystem::path& file, const play::Settings& settings, const std::string& keep) {
    const play::Script script = play::read_script(file);
    if (const play::Step* step = step_on_shop_file(script); step != nullptr && settings.server) {
        std::printf("%s: skipped on a server: line %d works on the shop's file\n", file.c_str(), step->line);
        return true;
    }
    play::Stage stage(settings.server);
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

QSize read_size(const std::string& text) {
    int width = 0;
    int height = 0;
    if (std::sscanf(text.c_str(), "%dx%d", &width, &height) != 2 || width < 640 || height < 480)
        throw std::runtime_error("\"" + text + "\" is no size of the form 1024x768");
    return {width, height};
}

// The title and the screenshots of one play.
play::Section section_of(const std::filesystem::path& file, const std::filesystem::path& list) {
    play::Section section{file, file.stem().string(), {}};
    std::ifstream play(file);
    if (std::string line; std::getline(play, line) && line.starts_with("# ")) section.title = line.substr(2);
    std::ifstream stream(list);
    for (std::string name, screen, caption; std::getline(stream, name, '\t') &&
                                            std::getline(stream, screen, '\t') &&
                                            std::getline(stream, caption);)
        section.screenshots.push_back({name, caption, screen});
    return section;
}

// Plays every file at every size of the page of screens and writes the page. Returns how many plays failed.
int make_screens_page(const std::vector<std::string>& files, play::Settings settings,
                      const std::filesystem::path& folder) {
    settings.pictures = folder / "pictures" / "screens";
    std::filesystem::remove_all(settings.pictures);
    std::filesystem::create_directories(settings.pictures);
    const auto list =
        std::filesystem::temp_directory_path() / ("tallvex-screenshots-" + std::to_string(getpid()));
    std::vector<play::Section> sections;
    int failed = 0;
    for (const std::string& file : files) {
        for (const QSize& size : play::page_sizes()) {
            std::filesystem::remove(list);
            settings.screen = size;
            settings.screenshots = list;
            if (!play_file(file, settings, {})) ++failed;
        }
        sections.push_back(section_of(file, list));
    }
    std::filesystem::remove(list);
    play::write_screens_page(folder / "screens.md", sections);
    return failed;
}

}  // namespace

namespace play {

int run_program(int argc, char** argv, std::optional<Server> server) {
    CLI::App program{"Plays what a cashier does, from text files, on the real screens."};
    std::vector<std::string> files;
    std::string pictures = "pictures";
    std::string keep;
    bool shown = false;
    bool list = false;
    program.add_option("plays", files, "The plays")->required()->check(CLI::ExistingFile);
    program.add_option("--pictures", pictures, "The folder for the pictures")->capture_default_str();
    program.add_option("--keep", keep, "A folder in which the pictures and the shop are left after the play");
    std::string size;
    std::string page_folder;
    program.add_option("--size", size, "The size of the screen, such as 1024x768");
    program.add_option("--screens", page_folder,
                       "Plays at every size and writes the page of all screens into this folder");
    program.add_flag("--show", shown, "On the real screen instead of off screen");
    program.add_flag("--list-objects", list, "Lists every object name that the plays come across");
    CLI11_PARSE(program, argc, argv);
    if (!keep.empty()) pictures = keep;

    if (!shown) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("CUPS_SERVER", "/nonexistent/cups.sock", 1);  // what a play prints never leaves the machine
    const auto objects =
        std::filesystem::temp_directory_path() / ("tallvex-objects-" + std::to_string(getpid()));
    Settings settings;
    settings.server = std::move(server);
    settings.pictures = pictures;
    if (list) settings.objects = objects;
    int failed = 0;
    try {
        if (!size.empty()) settings.screen = read_size(size);
        if (!page_folder.empty()) {
            failed = make_screens_page(files, settings, page_folder);
            files.clear();
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    if (!files.empty()) std::filesystem::create_directories(pictures);
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
    if (failed != 0) std::fprintf(stderr, "%d plays failed\n", failed);
    return failed == 0 ? 0 : 1;
}

}  // namespace play

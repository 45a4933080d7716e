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

namespace play {

namespace {

// Connects the second monitor of a play, "monitor WIDTH x HEIGHT", beside the first. The platform reads its
// screens when it starts.
void connect_monitor(const Script& script, const PlayShop& shop, const QSize& screen) {
    const auto said = std::find_if(script.steps.begin(), script.steps.end(), [](const Step& step) {
        return step.verb == "monitor" && std::isdigit(static_cast<unsigned char>(step.rest.front()));
    });
    if (said == script.steps.end() || qgetenv("QT_QPA_PLATFORM") != "offscreen") return;
    int width = 0;
    int height = 0;
    std::sscanf(said->rest.c_str(), "%d x %d", &width, &height);
    const auto file = shop.progress_file().string() + ".screens";
    std::ofstream stream(file);
    const auto write = [&stream](const char* name, int left, int wide, int high) {
        stream << R"({"name":")" << name << R"(","x":)" << left << R"(,"y":0,"width":)" << wide
               << R"(,"height":)" << high << R"(,"logicalDpi":96,"logicalBaseDpi":96,"dpr":1})";
    };
    stream << R"({"screens":[)";
    write("till", 0, screen.width(), screen.height());
    stream << ',';
    write(customer_monitor, screen.width(), width, height);
    stream << "]}";
    stream.close();
    qputenv("QT_QPA_PLATFORM", QByteArray("offscreen:configfile=") + file.c_str());
}

// Plays the steps from `first` on in a process of its own, which the play may kill.
int play_in_child(const Script& script, PlayShop& shop, const Settings& settings, std::size_t first) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        // Off screen there is no window manager, and Qt warns about it for every window.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
            if (!text.contains("propagateSizeHints") && !text.contains("XDG_RUNTIME_DIR"))
                std::fprintf(stderr, "%s\n", text.toUtf8().constData());
        });
        connect_monitor(script, shop, settings.screen);
        int count = 1;
        char name[] = "tallvex-play";
        char* arguments[] = {name, nullptr};
        QApplication application(count, arguments);
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setCursorFlashTime(0);  // so that pictures of the same screen are equal
        const int code = Player(script, shop, settings, first).play();
        std::fflush(nullptr);
        _exit(code);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::size_t steps_done(const PlayShop& shop) {
    std::size_t done = 0;
    std::ifstream(shop.progress_file()) >> done;
    return done;
}

// A step that damages the shop's file, or begins without a shop; a shop on a server has none.
const Step* step_on_shop_file(const Script& script) {
    const auto found = std::find_if(script.steps.begin(), script.steps.end(), [](const Step& step) {
        return (step.verb == "file" && step.rest.starts_with("shop.db")) ||
               (step.verb == "shop" && (step.rest == "none" || step.rest.starts_with("from ")));
    });
    return found == script.steps.end() ? nullptr : &*found;
}

bool play_file(const std::filesystem::path& file, const Settings& settings, const std::string& keep) {
    const Script script = read_script(file);
    if (const Step* step = step_on_shop_file(script); step != nullptr && settings.server) {
        std::printf("%s: skipped on a server: line %d works on the shop's file\n", file.c_str(), step->line);
        return true;
    }
    PlayShop shop(settings.server);
    std::size_t at = 0;
    for (;;) {
        const int code = play_in_child(script, shop, settings, at);
        if (code == 0) break;
        if (code == 1) return false;
        const std::size_t done = steps_done(shop);
        const int line = script.steps[std::min(done, script.steps.size() - 1)].line;
        if (code != killed) {
            std::fprintf(stderr, "%s:%d: the program crashed here (%d)\n", file.c_str(), line, code);
            return false;
        }
        // The play killed the program, and continues where it is started again.
        at = done;
        while (at < script.steps.size() && script.steps[at].verb != "start")
            ++at;
        if (at == script.steps.size()) break;
    }
    if (!keep.empty()) {
        const auto kept = std::filesystem::path(keep) / "shop";
        std::filesystem::remove_all(kept);
        std::filesystem::copy(shop.folder(), kept, std::filesystem::copy_options::recursive);
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
Section section_of(const std::filesystem::path& file, const std::filesystem::path& list) {
    Section section{file, file.stem().string(), {}};
    std::ifstream play(file);
    if (std::string line; std::getline(play, line) && line.starts_with("# ")) section.title = line.substr(2);
    std::ifstream stream(list);
    for (std::string name, screen, caption; std::getline(stream, name, '\t') &&
                                            std::getline(stream, screen, '\t') &&
                                            std::getline(stream, caption);)
        section.screenshots.push_back({name, caption, {}, screen});
    return section;
}

// Plays every file at every size of the page of screens and writes the page. Returns how many plays failed.
int make_screens_page(const std::vector<std::string>& files, Settings settings,
                      const std::filesystem::path& folder) {
    settings.pictures = folder / "pictures" / "screens";
    std::filesystem::remove_all(settings.pictures);
    std::filesystem::create_directories(settings.pictures);
    const auto list =
        std::filesystem::temp_directory_path() / ("tallvex-screenshots-" + std::to_string(getpid()));
    std::vector<Section> sections;
    int failed = 0;
    for (const std::string& file : files) {
        for (const QSize& size : page_sizes()) {
            std::filesystem::remove(list);
            settings.screen = size;
            settings.screenshots = list;
            if (!play_file(file, settings, {})) ++failed;
        }
        sections.push_back(section_of(file, list));
    }
    std::filesystem::remove(list);
    write_screens_page(folder / "screens.md", sections);
    return failed;
}

struct Options {
    std::vector<std::string> files;
    std::string pictures = "pictures";
    std::string keep;
    std::string size;
    std::string page_folder;
    bool shown = false;
    bool list = false;
};

void add_options(CLI::App& program, Options& options) {
    program.add_option("plays", options.files, "The plays")->required()->check(CLI::ExistingFile);
    program.add_option("--pictures", options.pictures, "The folder for the pictures")->capture_default_str();
    program.add_option("--keep", options.keep,
                       "A folder in which the pictures and the shop are left after the play");
    program.add_option("--size", options.size, "The size of the screen, such as 1024x768");
    program.add_option("--screens", options.page_folder,
                       "Plays at every size and writes the page of all screens into this folder");
    program.add_flag("--show", options.shown, "On the real screen instead of off screen");
    program.add_flag("--list-objects", options.list, "Lists every object name that the plays meet");
}

// Plays all files one after the other. Returns how many failed.
int play_files(const Options& options, const Settings& settings) {
    std::filesystem::create_directories(settings.pictures);
    int failed = 0;
    for (const std::string& file : options.files) {
        try {
            if (!play_file(file, settings, options.keep)) ++failed;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
            ++failed;
        }
    }
    return failed;
}

// Prints the object names that the plays wrote to the file, each once, and removes it.
void print_objects(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::set<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.insert(line);
    std::filesystem::remove(file);
    for (const std::string& line : lines)
        std::printf("%s\n", line.c_str());
}

}  // namespace

int run_program(int argc, char** argv, std::optional<Server> server) {
    CLI::App program{"Plays what a cashier does, from text files, on the real screens."};
    Options options;
    add_options(program, options);
    CLI11_PARSE(program, argc, argv);

    if (!options.shown) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("CUPS_SERVER", "/nonexistent/cups.sock", 1);  // what a play prints never leaves the machine
    Settings settings;
    settings.server = std::move(server);
    settings.pictures = options.keep.empty() ? options.pictures : options.keep;
    if (options.list)
        settings.objects =
            std::filesystem::temp_directory_path() / ("tallvex-objects-" + std::to_string(getpid()));
    int failed = 0;
    try {
        if (!options.size.empty()) settings.screen = read_size(options.size);
        failed = options.page_folder.empty()
                     ? play_files(options, settings)
                     : make_screens_page(options.files, settings, options.page_folder);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    if (options.list) print_objects(settings.objects);
    if (failed != 0) std::fprintf(stderr, "%d plays failed\n", failed);
    return failed == 0 ? 0 : 1;
}

}  // namespace play

#include "play/player.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <cstdio>
#include <fstream>
#include <map>

#include "backup/automatic.h"
#include "common/text.h"
#include "database/sqlserver/open.h"
#include "office/office.h"
#include "play/screen_reader.h"
#include "shop/place.h"
#include "startup/connection_file.h"
#include "startup/shop_files.h"
#include "startup/start_up.h"
#include "startup/workstation.h"
#include "ui/till.h"
#include "ui/training.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/server_link.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace play {

namespace {

constexpr auto patience = std::chrono::seconds(8);
constexpr int retry_ms = 10;
constexpr int pause_ms = 1;  // between a step that was done and the next

}  // namespace

Player::Player(const Script& script, PlayShop& shop, const Settings& settings, std::size_t first)
    : script_(script), shop_(shop), settings_(settings), at_(first), screen_(settings.screen) {
    devices_ = std::make_unique<PlayDevices>(shop_.folder());
    ui::apply_style(*qApp, screen_);
    // After the till was killed, the play continues in a new process with the clock and screen set before.
    for (std::size_t before = 0; before < first; ++before) {
        const Step& step = script_.steps[before];
        if (step.verb == "clock") do_clock(step);
        if (step.verb == "screen") do_screen(step);
        if (step.verb == "start") read_cash_point(step);
    }
}

Player::~Player() = default;

int Player::play() {
    timer_.setProperty(ui::runs_while_waiting, true);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &Player::next);
    timer_.start(0);
    QApplication::exec();
    return code_;
}

const Player::Verb* Player::find_verb(const std::string& name) {
    static const std::map<std::string, Verb> verbs = {
        {"shop", {&Player::do_shop}},
        {"clock", {&Player::do_clock, true}},
        {"screen", {&Player::do_screen}},
        {"sql", {&Player::do_sql, true}},
        {"start", {&Player::do_start}},
        {"restart", {&Player::do_restart}},
        {"remember", {&Player::do_remember}},
        {"user", {&Player::do_user}},
        {"type", {&Player::do_type, false, true}},
        {"press", {&Player::do_press, true}},
        {"scan", {&Player::do_scan, true}},
        {"count", {&Player::do_count}},
        {"choose", {&Player::do_choose, false, true}},
        {"click", {&Player::do_click, false, true}},
        {"answer", {&Player::do_answer, true, true}},
        {"expect", {&Player::do_expect, true}},
        {"monitor", {&Player::do_monitor, true}},
        {"picture", {&Player::do_picture, true}},
        {"look", {&Player::do_look, true}},
        {"kill", {&Player::do_kill}},
        {"fail", {&Player::do_fail}},
        {"port", {&Player::do_port, true}},
        {"file", {&Player::do_file}},
        {"disk", {&Player::do_disk}},
        {"say", {&Player::do_say, true}},
        {"server", {&Player::do_server, true}},
    };
    const auto found = verbs.find(name);
    return found == verbs.end() ? nullptr : &found->second;
}

bool Player::is_settled() const {
    return input_.idle() && !keys_.is_undecided();
}

void Player::next() {
    if (!is_settled()) {
        timer_.start(pause_ms);
        return;
    }
    if (at_ == script_.steps.size()) {
        const ui::MessageBox* left = open_box();
        if (left != nullptr) {
            std::fprintf(stderr, "%s: the play ends with an open box: %s\n", script_.file.c_str(),
                         left->text().toUtf8().constData());
        }
        finish(left == nullptr && !faulty_ ? 0 : 1);
        return;
    }
    const Step& step = script_.steps[at_];
    if (!begun_) since_ = std::chrono::steady_clock::now();
    begun_ = true;
    if (!settings_.objects.empty()) {
        for (const Named& named : all_named())
            objects_.insert(("| `" + named.screen + "` | `" + named.name + "` | " + named.kind + " | " +
                             named.caption + " |")
                                .toStdString());
    }
    // Scheduled before the step is done, because the step may open a box and return only when it is answered.
    timer_.start(retry_ms);
    const Progress progress = take(step);
    if (progress.state == Progress::done) timer_.start(pause_ms);
    const bool timed_out = std::chrono::steady_clock::now() - since_ > patience;
    if (progress.state == Progress::failed || (progress.state == Progress::not_yet && timed_out)) {
        const ui::MessageBox* box = open_box();
        std::fprintf(stderr, "%s:%d: %s\n    seen: %s\n", script_.file.c_str(), step.line, step.text.c_str(),
                     progress.seen.c_str());
        if (box != nullptr) std::fprintf(stderr, "    open box: %s\n", box->text().toUtf8().constData());
        finish(1);
    }
}

Progress Player::take(const Step& step) {
    const Verb* verb = find_verb(step.verb);
    if (verb == nullptr) return Progress::fail("no step begins with this word");
    if (const ui::MessageBox* box = open_box(); box != nullptr && phase_ == 0 && !verb->while_box_is_open)
        return Progress::wait("a box that no step expects: " + box->text().toStdString());
    if (counting_ && verb->counts_no_keys)
        return Progress::fail("keys are being counted: press and scan alone");
    const std::size_t taken = at_;
    Progress progress;
    try {
        progress = (this->*verb->action)(step);
    } catch (const std::exception& error) {
        progress = Progress::fail(error.what());
    }
    if (progress.state == Progress::done && at_ == taken) {
        ++at_;
        begun_ = false;
        phase_ = 0;
        std::ofstream(shop_.progress_file(), std::ios::trunc) << at_;
    }
    return progress;
}

void Player::finish(int code) {
    if (!settings_.objects.empty()) {
        std::ofstream stream(settings_.objects, std::ios::app);
        for (const std::string& line : objects_)
            stream << line << '\n';
    }
    code_ = code;
    at_ = script_.steps.size();
    QApplication::exit(code);
}

void Player::start_program() {
    running_ = true;
    QTimer::singleShot(0, this, [this] {
        ui::ScreenPrompts prompts;
        startup::ActivityLog log(shop_.folder(), clock_);
        const common::Services services{prompts, clock_, *devices_, log};
        ui::ServerLink link(keys_, clock_);
        startup::Environment environment;
        environment.command_line = cash_point_;
        environment.is_office = in_office_;
        environment.program_folder = shop_.folder();
        environment.working_folder = shop_.folder();
        environment.open = [this, &link](const std::string& text, const std::filesystem::path& folder) {
            // On a server the till of a play does not wait as long as a real one.
            constexpr database::Patience patience_of_plays{2, 4};
            const bool on_server = settings_.server && text.find("Data Source=embedded") == text.npos;
            auto opened = on_server ? database::open_sqlserver(text, patience_of_plays)
                                    : startup::open_connection(text, folder);
            opened = link.attach(std::move(opened), [text] { return database::ping_server(text); });
            auto made = std::make_unique<PlayConnection>(std::move(opened), clock_);
            connection_ = made.get();
            return made;
        };
        environment.get_ip = [](std::string_view) { return std::string("Not Found"); };
        const auto show = [this](QWidget& window) { show_window(window); };
        environment.show_copying = [show](const startup::Environment::Copying& copying) {
            ui::show_copying(copying, show);
        };
        environment.wait_for_server = [show](const std::string& server,
                                             const std::function<bool()>& attempt) {
            return ui::wait_for_server(server, attempt, show);
        };
        if (in_office_)
            run_office(environment, services, link);
        else
            run_till(environment, services, link);
        connection_ = nullptr;
        running_ = false;
        if (std::exchange(start_again_, false)) start_program();
    });
}

void Player::show_window(QWidget& window) {
    window.resize(screen_);
    window.show();
}

void Player::back_up() {
    backup::back_up_to_folders(rows(), shop_.file(), clock_.now());
}

void Player::run_till(const startup::Environment& environment, const common::Services& services,
                      ui::ServerLink& link) {
    const auto show = [this](QWidget& window) { show_window(window); };
    ui::Training training(environment, services, keys_, show);
    const auto train = [&](const std::function<void()>& ready) {
        PlayConnection* const of_shop = connection_;
        training.run(startup::cash_point_of(cash_point_), ready);
        connection_ = of_shop;
    };
    if (std::exchange(in_training_, false)) train([] {});
    startup::StartUp start_up(environment, services);
    start_up.run([&](database::Connection& connection, signin::Session& session) {
        ui::run_till(
            connection, session,
            {services, keys_, link, [this] { return start_again_ = true; }, [this] { back_up(); }, show},
            train);
    });
}

void Player::run_office(const startup::Environment& environment, const common::Services& services,
                        ui::ServerLink& link) {
    const auto show = [this](QWidget& window) { show_window(window); };
    if (!shop::has_shop(environment.working_folder) &&
        !office::first_start(environment.working_folder, services, show))
        return;
    startup::StartUp(environment, services)
        .run([&](database::Connection& connection, signin::Session& session) {
            office::run(connection, session,
                        {services, keys_, link, [] { return false; }, [this] { back_up(); },
                         [this](QWidget& window) { show_window(window); }});
        });
}

database::Connection& Player::rows() {
    if (rows_ == nullptr) rows_ = shop_.open();
    return *rows_;
}

}  // namespace play

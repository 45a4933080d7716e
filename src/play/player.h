// Plays a script on the real screens, one step after the other, also while a box or dialog is open.
#pragma once

#include <QObject>
#include <QSize>
#include <QTimer>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "database/connection.h"
#include "play/environment.h"
#include "play/input_driver.h"
#include "play/play_shop.h"
#include "play/script.h"
#include "startup/start_up.h"
#include "ui/widgets/key_queue.h"

namespace ui {
class ServerLink;
}

namespace play {

struct Settings {
    std::filesystem::path pictures;     // the folder for pictures
    std::optional<Server> server;       // to play on; a shop file without one
    QSize screen{1366, 768};            // until a play says otherwise
    std::filesystem::path objects;      // a file to list the object names in; empty for none
    std::filesystem::path screenshots;  // a file to list the screenshots in; empty for none
};

// The name of the second monitor of a play.
inline constexpr auto customer_monitor = "customer";

// The state of a step: done, not yet (it is tried again until its time is over), or failed with what was
// seen.
struct Progress {
    enum { done, not_yet, failed } state = done;
    std::string seen;
    static Progress ok() { return {}; }
    static Progress wait(std::string what) { return {not_yet, std::move(what)}; }
    static Progress fail(std::string what) { return {failed, std::move(what)}; }
};

class Player : public QObject {
    Q_OBJECT
  public:
    Player(const Script& script, PlayShop& shop, const Settings& settings, std::size_t first);
    ~Player() override;
    // Returns 0 if every step passed, or 1 after reporting on stderr which one failed.
    int play();

  private:
    void next();
    Progress take(const Step& step);
    void finish(int code);
    bool read_cash_point(const Step& step);
    void start_program();
    void show_window(QWidget& window);
    void back_up();
    void run_till(const startup::Environment& environment, const common::Services& services,
                  ui::ServerLink& link);
    void run_office(const startup::Environment& environment, const common::Services& services,
                    ui::ServerLink& link);
    bool is_settled() const;

    // player_steps.cpp
    Progress do_shop(const Step& step);
    Progress do_clock(const Step& step);
    Progress do_screen(const Step& step);
    Progress do_sql(const Step& step);
    Progress do_start(const Step& step);
    Progress do_restart(const Step& step);
    Progress do_remember(const Step& step);
    Progress do_user(const Step& step);
    Progress do_type(const Step& step);
    Progress do_press(const Step& step);
    Progress do_scan(const Step& step);
    Progress do_count(const Step& step);
    Progress do_choose(const Step& step);
    Progress do_click(const Step& step);
    Progress do_answer(const Step& step);
    Progress do_monitor(const Step& step);
    Progress do_picture(const Step& step);
    Progress do_look(const Step& step);
    Progress do_kill(const Step& step);
    Progress do_fail(const Step& step);
    Progress do_disk(const Step& step);
    Progress do_port(const Step& step);
    Progress do_file(const Step& step);
    Progress do_say(const Step& step);
    Progress do_server(const Step& step);
    // player_expectations.cpp
    Progress do_expect(const Step& step);
    Progress expect_text(const std::string& rest);
    Progress expect_box(const std::string& text, bool question);
    Progress expect_cell(const std::string& rest);
    Progress expect_count(const std::string& rest);
    Progress expect_keys(const std::string& rest);
    Progress expect_seen(const std::string& rest);
    Progress expect_state(const std::string& what, const std::string& object);
    Progress expect_colour(const std::string& rest);
    Progress expect_rows(const std::string& rest);
    Progress expect_receipt(const std::string& rest);
    Progress expect_port(const std::string& rest);
    Progress expect_server(const std::string& rest);
    Progress expect_file(const std::string& name, const std::string& text);

    // What the first word of a step stands for.
    struct Verb {
        Progress (Player::*action)(const Step&);
        bool while_box_is_open = false;  // others fail a play on a box that no step expects
        bool counts_no_keys = false;     // a cashier would need an unknown number of keys for it
    };
    static const Verb* find_verb(const std::string& name);
    // The shop's database as a second program sees it.
    database::Connection& rows();
    std::string receipt_port();
    // Every file of the shop's folder with its sum.
    std::string fingerprints();

    const Script& script_;
    PlayShop& shop_;
    Settings settings_;
    std::size_t at_;
    int steps_done_ = 0;
    std::chrono::steady_clock::time_point since_;
    QTimer timer_;        // to the next step, or the next try of this one
    bool begun_ = false;  // the current step has been tried
    int phase_ = 0;       // of a step that has several parts
    // Keys and scans of the task that is being counted, and what was counted before, for `say keys`.
    struct Counted {
        std::string task;
        int keys = 0;
        int scans = 0;
        std::string text() const;
    };
    std::optional<Counted> counting_;
    std::vector<Counted> counted_;

    PlayClock clock_;
    std::unique_ptr<PlayDevices> devices_;
    std::unique_ptr<database::Connection> rows_;
    PlayConnection* connection_ = nullptr;  // that of the running till
    ui::KeyQueue keys_;
    InputDriver input_;
    QSize screen_;
    std::string cash_point_ = "1";  // the command line of the till
    std::string remembered_;        // fingerprints
    bool in_training_ = false;      // at the next start
    bool in_office_ = false;        // the program is the office
    bool running_ = false;
    bool start_again_ = false;
    int code_ = 0;
    bool faulty_ = false;            // an inspection found a fault
    std::set<std::string> objects_;  // lines of the table of object names
};

}  // namespace play

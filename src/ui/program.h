// What the till and the office do before they show their own windows.
#pragma once

#include <QSocketNotifier>
#include <memory>

#include "common/services.h"
#include "startup/start_up.h"
#include "ui/widgets/cash_point_renewal.h"

class QApplication;
class QWidget;

namespace ui {

class ServerLink;

// Returns false after saying so on stderr if there is no display. Qt would then end the program with a core
// dump.
bool has_screen(const char* program);
// Returns true on a desktop.
bool has_desktop();

// Environment variables that must be set before the application is made.
void prepare_application();
// Name, icon and style.
void set_up(QApplication& application, const char* name);

void show_full_screen(QWidget& window);

// Keeps the screen alive during what takes time: connecting, copying, and every statement on a server.
void keep_screen_alive(startup::Environment& environment, ServerLink& server);

// Runs tallvex-admin to copy the shop, as a separate process, so that neither a slow stick nor the end of one
// program holds up the other.
void back_up_beside(const startup::Environment& environment, common::Log& log);

// A program from start-up to its end. Starting it a second time brings it to the front; on a server its cash
// point is renewed.
class ProgramRun {
  public:
    ProgramRun(startup::Environment environment, const common::Services& services, ServerLink& server);
    // See startup::StartUp::run.
    bool run(const startup::StartUp::ShowSignIn& show_sign_in) { return start_up_.run(show_sign_in); }
    std::int64_t cash_point() { return start_up_.session().cash_point; }
    // Leaves the cash point to the program that was started in place of this one.
    void hand_over();

  private:
    startup::Environment listening(startup::Environment environment);

    startup::StartUp start_up_;
    std::unique_ptr<QSocketNotifier> second_start_;
    CashPointRenewal renewal_;
};

}  // namespace ui

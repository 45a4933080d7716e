// What the programs with windows, the till and the office, do before their own windows come.
#pragma once

#include <functional>
#include <string>

#include "common/services.h"
#include "startup/start_up.h"

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

// What takes time: connecting, copying, and every statement on a server.
void keep_screen_alive(startup::Environment& environment, ServerLink& server);

// Lets tallvex-admin, which stands beside this program, copy the shop: a program of its own, so that neither
// a slow stick nor the end of this one stops the other.
void back_up_beside(const startup::Environment& environment, common::Log& log);

}  // namespace ui

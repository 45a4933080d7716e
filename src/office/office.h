// The office from sign-in to exit.
#pragma once

#include <filesystem>
#include <functional>

#include "ui/workplace.h"

namespace office {

// Makes a shop in its folder where there is none. Returns false if the user left before there was one.
bool first_start(const std::filesystem::path& folder, const common::Services& services,
                 const std::function<void(QWidget&)>& show_window);

// Returns when the user has left the program.
void run(database::Connection& connection, signin::Session& session, const ui::Workplace::Program& program);

}  // namespace office

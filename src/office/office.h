// The office from sign-in to exit.
#pragma once

#include "ui/workplace.h"

namespace office {

// Returns when the user has left the program.
void run(database::Connection& connection, signin::Session& session, const ui::Workplace::Program& program);

}  // namespace office

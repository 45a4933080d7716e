// The machine that was measured, without its name.
#pragma once

#include <string>
#include <vector>

namespace bench {

// Processor, cores, memory, system, compiler, SQLite and Qt, one line each. What the system does not tell is
// left out.
std::vector<std::string> describe_machine();

}  // namespace bench

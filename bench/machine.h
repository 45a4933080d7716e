// What the figures were taken on, without the machine's name.
#pragma once

#include <string>
#include <vector>

namespace bench {

// Processor, cores, memory, system, compiler, SQLite and Qt, one line each; what the system does not tell is
// left out.
std::vector<std::string> describe_machine();

}  // namespace bench

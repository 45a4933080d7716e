// The embedded engine as shops have it, which refuses no more than it must; tests otherwise read statements
// as a server would.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "database/embedded/open.h"

namespace test {

inline std::unique_ptr<database::Connection> open_as_shipped(const std::filesystem::path& file,
                                                             bool create = false) {
    unsetenv("TALLVEX_STRICT_SQL");
    auto connection = database::open_embedded(file, create);
    setenv("TALLVEX_STRICT_SQL", "1", 1);
    return connection;
}

}  // namespace test

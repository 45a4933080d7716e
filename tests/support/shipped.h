// The embedded engine as shipped, without the strict reader of the tests.
#pragma once

#include <filesystem>
#include <memory>

#include "database/embedded/open.h"
#include "support/strict.h"

namespace test {

inline std::unique_ptr<database::Connection> open_as_shipped(const std::filesystem::path& file,
                                                             bool create = false) {
    StrictReader::install(false);
    auto connection = database::open_embedded(file, create);
    StrictReader::install();
    return connection;
}

}  // namespace test

// What tests say about the server that the environment may name.
#pragma once

#include "database/sqlserver/test_server.h"

namespace test {

using database::test_server;

// What a test that needs the server says when there is none.
inline constexpr const char* no_test_server = "skipped: TALLVEX_TEST_SQLSERVER is not set";
// What a test says on a server that works on shop files themselves.
inline constexpr const char* needs_shop_files = "skipped on a server: it works on shop files themselves";

}  // namespace test

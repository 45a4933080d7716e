// Every test program has the embedded engine refuse what a SQL Server would refuse.
#include <cstdlib>

namespace {

const int switched_on = setenv("TALLVEX_STRICT_SQL", "1", 0);

}  // namespace

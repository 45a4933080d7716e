// Every test program has the embedded engine refuse what a SQL Server would refuse.
#include "support/strict.h"

namespace {

const bool installed = (test::StrictReader::install(), true);

}  // namespace

#include "common/search.h"

#include <string>

#include "common/numbers.h"
#include "common/text.h"

namespace common {

bool contains_typed(std::string_view text, std::string_view typed) {
    return lower_ascii(western_digits(text)).find(lower_ascii(western_digits(typed))) != std::string::npos;
}

}  // namespace common

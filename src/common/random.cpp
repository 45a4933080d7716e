#include "common/random.h"

#include <random>

namespace common {

namespace {

std::int64_t between(std::int64_t lowest, std::int64_t highest) {
    static thread_local std::random_device source;  // opening it takes long
    return std::uniform_int_distribution<std::int64_t>(lowest, highest)(source);
}

}  // namespace

std::int64_t random_number(std::int64_t highest) {
    return between(1, highest);
}

std::int64_t random_id() {
    return random_number(std::int64_t{1} << 52);
}

std::string random_digits(std::size_t count) {
    std::string digits;
    while (digits.size() < count)
        digits += static_cast<char>('0' + between(0, 9));
    return digits;
}

}  // namespace common

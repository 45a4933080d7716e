// Random bytes in the connection file are decoded or refused.
#include "startup/connection_file.h"

#include <array>
#include <random>

#include "common/text.h"
#include "startup/reasons.h"

namespace {

std::string random_bytes(std::mt19937& random, std::size_t length) {
    // Blanks and keys are more frequent than by chance.
    std::string bytes(length, ' ');
    for (char& c : bytes) {
        switch (random() % 4) {
            case 0:
                break;
            case 1:
                c = static_cast<char>(5 + random() % 11);
                break;
            default:
                c = static_cast<char>(random() % 256);
        }
    }
    return bytes;
}

TEST(ConnectionFileFuzz, AnyBytesDecodeToValidText) {
    std::mt19937 random(20261121);
    for (int i = 0; i < 20'000; ++i) {
        const std::string bytes = random_bytes(random, random() % 260);
        if (bytes.size() < startup::connection_record_length) {
            EXPECT_THROW(startup::decode_connection(bytes), startup::StartUpError);
            continue;
        }
        const auto fields = [](const std::string& record) {
            return std::array{startup::unscramble(record.substr(0, 50)),
                              startup::unscramble(record.substr(50, 50)),
                              startup::unscramble(record.substr(100, 100))};
        };
        const auto before = fields(bytes);
        for (const std::string& field : before)
            ASSERT_EQ(common::utf8(common::code_points(field)), field);
        try {
            const auto record = startup::decode_connection(bytes);
            ASSERT_LE(startup::data_source_of(record).server.size(), record.server.size());
        } catch (const startup::StartUpError&) {  // no server, or names that nobody gives
        }
        // A new address leaves the other fields as they are, whatever they hold.
        const std::string renewed = startup::with_address(bytes, "10.0.0.1", random);
        ASSERT_EQ(renewed.size(), bytes.size());
        ASSERT_EQ(fields(renewed), (std::array<std::string, 3>{before[0], before[1], "10.0.0.1"}));
    }
}

TEST(ConnectionFileFuzz, AnyTextIsKeptOrRefused) {
    std::mt19937 random(42);
    int kept = 0;
    for (int i = 0; i < 20'000; ++i) {
        const std::string text = random_bytes(random, random() % 50);
        try {
            const std::string field = startup::scramble(text, 50, random);
            ASSERT_EQ(field.size(), 50U);
            ASSERT_EQ(startup::unscramble(field), text);
            ++kept;
        } catch (const startup::StartUpError&) {
        }
    }
    EXPECT_GT(kept, 100);
}

}  // namespace

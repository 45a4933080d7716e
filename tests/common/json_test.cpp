// Values as JSON texts.

#include "common/json.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

struct Part {
    std::string name;
    double quantity = 1;
    std::optional<common::Amount> price;
    bool operator==(const Part&) const = default;
};
TALLVEX_JSON(Part, name, quantity, price)

struct Whole {
    std::vector<Part> parts;
    std::vector<std::pair<int, bool>> marks;
    common::Date day;
    double most = std::numeric_limits<double>::infinity();
    bool operator==(const Whole&) const = default;
};
TALLVEX_JSON(Whole, parts, marks, day, most)

TEST(Json, HoldsWhatDiffersFromANewStructureAndIsReadBack) {
    Whole whole{{{"\"لبن\" \\ 1\n", 0.1, common::Amount(2.5)}, {}, {"", -3e-7, {}}},
                {{7, true}},
                {2026, 11, 22},
                std::numeric_limits<double>::infinity()};
    const std::string text = common::json_text(whole);
    EXPECT_EQ(text,
              R"({"parts":[{"name":"\"لبن\" \\ 1\u000a","quantity":0.1,"price":250},{},{"quantity":-3e-07}],)"
              R"("marks":[[7,true]],"day":{"year":2026,"month":11,"day":22}})");
    EXPECT_EQ(common::from_json_text<Whole>(text), whole);

    common::JsonWriter without({"name", "day"});
    without.value(whole);
    whole.parts[0].name.clear();
    whole.day = {};
    EXPECT_EQ(common::from_json_text<Whole>(without.text()), whole);
}

TEST(Json, BytesThatAreNoTextDoNotBreakIt) {
    for (const char* text : {"\xFF", "ab\xD8", "\xED\xA0\x80", "\xF0\x9F\x98"}) {
        const std::string written = common::json_text(std::string(text));
        EXPECT_NE(common::from_json_text<std::string>(written).find("\uFFFD"), std::string::npos) << written;
    }
    EXPECT_EQ(common::json_text(std::numeric_limits<double>::quiet_NaN()), "null");
}

}  // namespace

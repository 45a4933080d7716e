#include "admin/users.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "signin/permissions.h"

namespace {

using admin::permission_string;

std::string allowed(std::string_view permissions) {
    std::string names;
    for (const std::string_view name : admin::allowed_actions(permissions)) {
        names += (names.empty() ? "" : " ") + std::string(name);
    }
    return names;
}

TEST(PermissionString, ReadsLists) {
    const std::string before = permission_string("reprint");
    const struct {
        std::string_view list;
        std::string_view allowed;
    } cases[] = {
        {"none", ""},
        {"", ""},
        {"reprint+item_info", "reprint item_info"},
        {" reprint + item_info ", "reprint item_info"},
        {"221", "reprint"},
        {"+edit_price", "reprint edit_price"},
        {"-reprint", ""},
        {"+edit_price-reprint", "edit_price"},
        {"all-reprint+none+item_info", "item_info"},
    };
    for (const auto& c : cases) {
        const std::string permissions = permission_string(c.list, before);
        EXPECT_EQ(permissions.size(), admin::permission_places) << c.list;
        EXPECT_EQ(allowed(permissions), c.allowed) << c.list;
    }
    EXPECT_EQ(permission_string("all"), std::string(400, '1'));
    EXPECT_EQ(std::ranges::count(permission_string("named"), '1'),
              static_cast<std::ptrdiff_t>(signin::guarded_actions().size()));
}

TEST(PermissionString, AcceptsShortAndOverlongStrings) {
    EXPECT_EQ(permission_string("+reprint", "11").substr(0, 3), "110");
    EXPECT_EQ(permission_string("+reprint", std::string(500, '1')).size(), 400U);
    EXPECT_EQ(allowed("111"), "");
}

TEST(PermissionString, RefusesUnknownWords) {
    for (const std::string_view list : {"sell", "reprint+", "0", "401", "reprint,item_info", "+"}) {
        EXPECT_THROW(permission_string(list), admin::UnknownAction) << list;
    }
}

TEST(PermissionString, EveryActionHasItsOwnPlace) {
    std::set<int> places;
    std::set<std::string_view> names;
    for (const auto& action : signin::guarded_actions()) {
        EXPECT_TRUE(places.insert(action.position).second) << action.name;
        EXPECT_TRUE(names.insert(action.name).second) << action.name;
    }
}

}  // namespace

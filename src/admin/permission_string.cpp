#include "admin/permission_string.h"

#include <algorithm>

#include "common/numbers.h"
#include "common/text.h"
#include "signin/permissions.h"

namespace admin {

namespace {

void put(std::string& permissions, int position, char mark) {
    permissions.at(static_cast<std::size_t>(position) - 1) = mark;
}

void apply(std::string& permissions, std::string_view word, char mark) {
    if (word == "all") {
        permissions.assign(permission_places, mark);
        return;
    }
    if (word == "none") {
        permissions.assign(permission_places, '0');
        return;
    }
    bool found = false;
    for (const signin::Permission& action : signin::guarded_actions()) {
        if (word != "named" && word != action.name) continue;
        put(permissions, action.position, mark);
        found = true;
    }
    if (found) return;
    const auto place = common::parse_integer(word);
    if (!place || *place < 1 || *place > static_cast<long long>(permission_places)) {
        throw UnknownAction("\"" + std::string(word) + "\" is no guarded action and no place from 1 to " +
                            std::to_string(permission_places));
    }
    put(permissions, static_cast<int>(*place), mark);
}

}  // namespace

std::string permission_string(std::string_view list, std::string_view before) {
    list = common::trim(list);
    std::string permissions(permission_places, '0');
    if (list.starts_with('+') || list.starts_with('-')) {
        permissions.replace(0, std::min(before.size(), permission_places),
                            before.substr(0, permission_places));
    }
    char mark = '1';
    while (!list.empty()) {
        if (list.front() == '+' || list.front() == '-') {
            mark = list.front() == '+' ? '1' : '0';
            list.remove_prefix(1);
        }
        const std::size_t end = std::min(list.find_first_of("+-"), list.size());
        apply(permissions, common::trim(list.substr(0, end)), mark);
        list.remove_prefix(end);
    }
    return permissions;
}

std::vector<std::string_view> allowed_actions(std::string_view permissions) {
    std::vector<std::string_view> names;
    for (const signin::Permission& action : signin::guarded_actions())
        if (signin::has_permission(permissions, action.position)) names.push_back(action.name);
    return names;
}

}  // namespace admin

// Where a shop is: its folder with the files beside the program, and its database, opened as the till opens
// it; how both are created. Functions that cannot do their work throw Refused with the reason.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/connection.h"
#include "shop/refused.h"
#include "startup/connection_file.h"
#include "startup/reasons.h"

namespace shop {

// What the connection file says about the database.
using Place = startup::ConnectionRecord;
inline const Place new_place{std::string(startup::embedded_source), "shop.db"};  // of a new shop, by default

// Runs work on the shop's files and turns its failure into a refusal.
template <typename Work>
auto or_refuse(Work work) {
    try {
        return work();
    } catch (const startup::StartUpError& error) {
        throw Refused(error.what(), error.reason());
    }
}

bool is_embedded(const Place& place);

// Writes the connection file of a folder and returns its path.
std::filesystem::path write_place(const std::filesystem::path& folder, const Place& place);

std::unique_ptr<database::Connection> open_place(const std::filesystem::path& folder, const Place& place);

// The version string for new shops: this build's.
std::string shop_version();

// Writes the version file and an empty credit file into a folder if they are missing; returns the paths of
// those it wrote.
std::vector<std::filesystem::path> write_shop_files(const std::filesystem::path& folder);

// Whether the making of an embedded shop was cut off in this folder; it can be made again.
bool was_cut_off(const std::filesystem::path& folder, const Place& place);
// Whether a program can be started on the folder.
bool has_shop(const std::filesystem::path& folder);

// Creates the folder, the files and an empty database; `fill` gives it its schema and rows. Refused, and
// nothing is left, if there is a shop already or the folder cannot be written. An embedded shop gets its name
// when it is complete. On a server a failure leaves what was written; the message then says what to do.
// `keep_password` writes the password of a server's login, if none is kept, and returns its file.
void make_place(const std::filesystem::path& folder, const Place& place,
                const std::function<void(database::Connection&)>& fill,
                const std::function<std::filesystem::path()>& keep_password = {});

}  // namespace shop

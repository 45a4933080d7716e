// The file of a till's journal: events that are not in the table yet, and the end of the till's chain. It is
// only appended to, so that an event costs one small write; an unfinished last line is left out.
#pragma once

#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "audit/entry.h"

namespace audit {

// The journal files of a shop's tills in a till's folder, distinguished by the name of the database.
struct Place {
    std::filesystem::path folder;
    std::string database;  // its name, or that of its file

    std::filesystem::path file_of(std::int64_t till) const;
    std::set<std::int64_t> tills() const;
};

struct Kept {
    End end;
    std::vector<Entry> pending;
};
// Empty if the file cannot be read.
Kept read_kept(const std::filesystem::path& file);

// An event that cannot be written stays in memory until the program ends.
void keep_entry(const std::filesystem::path& file, const Entry& entry);
// Notes that the entries up to `last` are in the table.
void keep_end(const std::filesystem::path& file, const End& end, std::int64_t last);
// Rewrites the file with only what is still needed, if it has grown long or ends in half a line.
void shorten(const std::filesystem::path& file, const Kept& kept);

}  // namespace audit

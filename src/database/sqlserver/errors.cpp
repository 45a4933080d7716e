#include "database/sqlserver/errors.h"

#include <algorithm>
#include <array>
#include <string>

namespace database {

namespace {

struct Meaning {
    int number;
    const char* sqlstate;
    const char* words = "";
};

constexpr const char* no_database = "Cannot open database: ";
constexpr const char* no_login = "Login failed: ";
constexpr const char* disk_full = "The disk is full: ";
constexpr const char* read_only = "The database is read-only: ";

constexpr std::array meanings = {
    // A row: a key, a null, a constraint.
    Meaning{2627, "23000"},
    Meaning{2601, "23000"},
    Meaning{515, "23000"},
    Meaning{547, "23000"},
    // What there is not, or is already.
    Meaning{208, "42S02"},
    Meaning{3701, "42S02"},
    Meaning{4902, "42S02"},
    Meaning{207, "42S22"},
    Meaning{4924, "42S22"},
    Meaning{2714, "42S01"},
    Meaning{2705, "42S21"},
    Meaning{1913, "42S11"},
    Meaning{102, "42000"},
    Meaning{105, "42000"},
    Meaning{156, "42000"},
    // Values.
    Meaning{2628, "22001"},
    Meaning{8152, "22001"},
    Meaning{220, "22003"},
    Meaning{232, "22003"},
    Meaning{244, "22003"},
    Meaning{248, "22003"},
    Meaning{8115, "22003"},
    Meaning{241, "22007"},
    Meaning{242, "22007"},
    Meaning{8134, "22012"},
    Meaning{245, "22018"},
    Meaning{8114, "22018"},
    Meaning{109, "21S01"},
    Meaning{110, "21S01"},
    Meaning{213, "21S01"},
    // Other tills: chosen to give way, or waited too long.
    Meaning{1205, "40001"},
    Meaning{3960, "40001"},
    Meaning{1222, "HYT00"},
    // Log-in.
    Meaning{4060, "42000", no_database},
    Meaning{4064, "42000", no_database},
    Meaning{911, "42000", no_database},
    Meaning{916, "42000", no_database},
    Meaning{927, "42000", no_database},
    Meaning{942, "42000", no_database},
    Meaning{18452, "28000", no_login},
    Meaning{18456, "28000", no_login},
    Meaning{18470, "28000", no_login},
    Meaning{18486, "28000", no_login},
    Meaning{18487, "28000", no_login},
    Meaning{18488, "28000", no_login},
    // Room: of the files, of the log, of a database that is limited in size, of the disk.
    Meaning{1101, "HY000", disk_full},
    Meaning{1105, "HY000", disk_full},
    Meaning{1827, "HY000", disk_full},
    Meaning{5149, "HY000", disk_full},
    Meaning{9002, "HY000", disk_full},
    Meaning{3906, "HY000", read_only},
    Meaning{3908, "HY000", read_only},
};

}  // namespace

bool is_missing_database(int number) {
    return std::any_of(meanings.begin(), meanings.end(), [number](const Meaning& meaning) {
        return meaning.number == number && meaning.words == no_database;
    });
}

Error server_error(const Diagnostic& said, std::string_view statement) {
    const auto* meaning = std::find_if(meanings.begin(), meanings.end(),
                                       [&](const Meaning& one) { return one.number == said.native; });
    if (meaning == meanings.end()) return {said.sqlstate, said.text, std::string(statement)};
    const std::string_view words = meaning->words;
    const bool says_so =
        said.text.starts_with(words.substr(0, words.find(':')));  // a server that speaks English
    return {meaning->sqlstate, says_so ? said.text : meaning->words + said.text, std::string(statement)};
}

}  // namespace database

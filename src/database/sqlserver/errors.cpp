#include "database/sqlserver/errors.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace database {

namespace {

using Kind = Error::Kind;

struct Meaning {
    int number;
    const char* sqlstate;
    std::optional<Kind> kind = {};  // if the SQLSTATE does not tell
};

constexpr std::array meanings = {
    // A row: a key, a null, a constraint.
    Meaning{2627, "23000"},
    Meaning{2601, "23000"},
    Meaning{515, "23000"},
    Meaning{547, "23000"},
    // An object that does not exist, or exists already.
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
    // Other tills: a deadlock, a changed row, a lock held too long.
    Meaning{1205, "40001"},
    Meaning{3960, "40001"},
    Meaning{1222, "HYT00"},
    // Log-in.
    Meaning{4060, "42000", Kind::database_missing},
    Meaning{4064, "42000", Kind::database_missing},
    Meaning{911, "42000", Kind::database_missing},
    Meaning{916, "42000", Kind::database_missing},
    Meaning{927, "42000", Kind::database_missing},
    Meaning{942, "42000", Kind::database_missing},
    Meaning{18452, "28000"},
    Meaning{18456, "28000"},
    Meaning{18470, "28000"},
    Meaning{18486, "28000"},
    Meaning{18487, "28000"},
    Meaning{18488, "28000"},
    // Room: of the files, of the log, of a database that is limited in size, of the disk.
    Meaning{1101, "HY000", Kind::disk_full},
    Meaning{1105, "HY000", Kind::disk_full},
    Meaning{1827, "HY000", Kind::disk_full},
    Meaning{5149, "HY000", Kind::disk_full},
    Meaning{9002, "HY000", Kind::disk_full},
    Meaning{3906, "HY000", Kind::read_only},
    Meaning{3908, "HY000", Kind::read_only},
};

}  // namespace

bool is_missing_database(int number) {
    return std::any_of(meanings.begin(), meanings.end(), [number](const Meaning& meaning) {
        return meaning.number == number && meaning.kind == Kind::database_missing;
    });
}

Error server_error(const Diagnostic& said, std::string_view statement) {
    const auto* meaning = std::find_if(meanings.begin(), meanings.end(),
                                       [&](const Meaning& one) { return one.number == said.native; });
    if (meaning == meanings.end()) return {said.sqlstate, said.text, std::string(statement)};
    Error error(meaning->sqlstate, said.text, std::string(statement));
    if (!meaning->kind) return error;
    return {error.sqlstate(), said.text, std::string(statement), *meaning->kind};
}

}  // namespace database

// The password of the database login: from the environment, else from a file that its owner alone may read.
#include <sys/stat.h>

#include <cstdlib>

#include "common/text.h"
#include "startup/file_access.h"
#include "startup/messages.h"
#include "startup/shop_files.h"

namespace startup {

namespace fs = std::filesystem;

std::string read_sa_password(const fs::path& program_folder) {
    if (const char* given = std::getenv("TALLVEX_SA_PASSWORD")) return given;
    const auto file = find_file(program_folder, password_file_name);
    if (!file) {
        throw StartUpError("neither TALLVEX_SA_PASSWORD nor " +
                               (program_folder / password_file_name).string() +
                               " gives the password of the login",
                           std::string(message::no_password));
    }
    struct stat form {};
    if (stat(file->c_str(), &form) == 0 && (form.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw StartUpError(file->string() + ": may be used by others than its owner",
                           std::string(message::password_file_open));
    }
    const std::string text = read_whole(*file);
    std::string_view line = std::string_view(text).substr(0, text.find('\n'));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return std::string(line);
}

void write_sa_password(const fs::path& program_folder, std::string_view password) {
    replace_whole(find_file(program_folder, password_file_name).value_or(program_folder / password_file_name),
                  std::string(password) + "\n", S_IRUSR | S_IWUSR);
}

}  // namespace startup

#include "startup/open_connection.h"

#include "common/text.h"
#include "database/embedded/open.h"
#include "database/sqlserver/open.h"
#include "startup/shop_files.h"

namespace startup {

std::string connection_string(const ConnectionRecord& record, std::string_view password) {
    return "Provider=SQLOLEDB.1;Password=" + std::string(password) +
           ";Persist Security Info=True;User ID=sa;Initial Catalog= " + record.database +
           ";Data Source=" + data_source_of(record).data_source;
}

std::unique_ptr<database::Connection> open_connection(const std::string& connection_string,
                                                      const std::filesystem::path& folder) {
    if (!common::equal_ignoring_case(
            common::trim(database::connection_part(connection_string, "Data Source")), embedded_source)) {
        return database::open_sqlserver(connection_string);
    }
    const std::string file(common::trim(database::connection_part(connection_string, "Initial Catalog")));
    if (file.empty())
        throw database::Error("08001", "The connection names no shop file.", "",
                              database::Error::Kind::file_missing);
    return database::open_embedded(folder / file);
}

std::unique_ptr<database::Connection> open_shop(const ConnectionRecord& record,
                                                const std::filesystem::path& program_folder,
                                                const std::filesystem::path& working_folder,
                                                const OpenConnection& open) {
    const bool needs_password = !data_source_of(record).is_embedded();
    return open(connection_string(record, needs_password ? read_sa_password(program_folder) : std::string()),
                working_folder);
}

std::filesystem::path shop_file(const ConnectionRecord& record, const std::filesystem::path& working_folder) {
    return working_folder / common::trim(record.database);
}

}  // namespace startup

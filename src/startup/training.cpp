#include "startup/training.h"

#include <system_error>

#include "backup/backup.h"
#include "backup/copy_shop.h"
#include "common/named_values.h"
#include "common/ports.h"
#include "common/text.h"
#include "database/embedded/open.h"
#include "database/schema/schema.h"
#include "database/till_settings.h"
#include "database/till_tables.h"
#include "startup/messages.h"
#include "startup/shop_files.h"

namespace startup {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longest_name = 100;  // of basic.aname

// "shop-20261121.db": the copy of a day.
std::string name_of_day(const common::Date& day) {
    std::string digits = common::date_text(day);
    std::erase(digits, '/');
    return "shop-" + digits + ".db";
}

void remove_copies(const fs::path& folder, const std::string& but) {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("shop-") && !name.starts_with(but)) fs::remove(entry.path());
    }
}

// Marks the shop's name, so that whatever shows or prints it says that it is a training. Drops unfinished
// saves, which are finished in the shop itself, and the folders for backups.
void mark_as_training(const fs::path& file) {
    const auto copy = database::open_embedded(file);
    database::run_upgrade_list(*copy);
    const std::string name = std::string(signin::training_prefix) +
                             common::printable(database::text_of(copy->scalar("select aname from basic")));
    copy->execute(database::Sql("update basic set aname = ") +
                  database::quoted(common::cut_to_column(name, longest_name)));
    copy->execute("delete from till_save");
    copy->execute("delete from till_step");
    copy->execute("delete from till_claim");
    database::set_till_setting(*copy, database::setting::backup_to, "none");
    copy->make_durable();
}

}  // namespace

TrainingShop::TrainingShop(const Environment& shop, std::int64_t cash_point)
    : shop_(shop),
      cash_point_(cash_point),
      folder_(shop.program_folder / ("training-" + std::to_string(cash_point))) {}

void TrainingShop::prepare(const common::Moment& now, const std::function<void(int)>& tell) const {
    try {
        fs::create_directories(folder_);
        const std::string name = name_of_day(now.date);
        const fs::path file = folder_ / name;
        if (!fs::exists(file)) {
            const fs::path making = folder_ / (name + ".making");
            for (const char* ending : {"", "-wal", "-shm"})
                fs::remove(making.string() + ending);  // left by an attempt that was cut off
            copy(making, tell);
            mark_as_training(making);
            fs::rename(making, file);
        }
        remove_copies(folder_, name);
        set_up_files({std::string(embedded_source), name});
    } catch (const StartUpError&) {
        throw;
    } catch (const std::exception& error) {
        throw StartUpError(std::string("training: ") + error.what(), std::string(message::no_training_copy));
    }
}

void TrainingShop::copy(const fs::path& target, const std::function<void(int)>& tell) const {
    const ConnectionRecord record = read_connection_file(shop_.working_folder);
    if (data_source_of(record).is_embedded()) {
        backup::back_up(shop_file(record, shop_.working_folder), target,
                        [&](const std::string&, std::size_t done, std::size_t total) {
                            tell(total == 0 ? 100 : static_cast<int>(done * 100 / total));
                        });
        return;
    }
    // A connection of its own: the till's belongs to another thread.
    const auto source = open_shop(record, shop_.program_folder, shop_.working_folder);
    const auto made = database::open_embedded(target, true);
    int told = -1;
    backup::copy_shop(*source, *made, [&](std::int64_t done, std::int64_t total) {
        const int hundredths = static_cast<int>(done * 100 / std::max<std::int64_t>(total, 1));
        if (hundredths != std::exchange(told, hundredths)) tell(hundredths);
    });
}

// Writes the files beside the program, including the printer and screen choices of this workstation.
void TrainingShop::set_up_files(const ConnectionRecord& place) const {
    write_version_file(folder_, read_version_file(shop_.program_folder));
    write_credit_file(folder_, read_credit_file(shop_.working_folder));
    ensure_logs_folder(folder_);
    const auto copy = database::open_embedded(shop_file(place, folder_));
    std::string logo(common::trim(signin::read_settings(*copy).logo));
    for (const fs::path& file :
         {common::printer_file(shop_.program_folder, cash_point_),
          common::screen_file(shop_.program_folder, cash_point_), shop_.program_folder / logo}) {
        if (fs::is_regular_file(file))
            fs::copy_file(file, folder_ / file.filename(), fs::copy_options::overwrite_existing);
    }
    write_connection_file(folder_, place);
}

Environment TrainingShop::environment() const {
    Environment made = shop_;
    made.program_folder = folder_;
    made.working_folder = folder_;
    made.command_line = std::to_string(cash_point_);
    made.is_training = true;
    made.listen = {};
    return made;
}

// A device is used as it is. Any other port is a file, which belongs to the shop or to somebody else.
common::PortFault TrainingDevices::write_port(std::string_view port, std::string_view bytes,
                                              std::string_view document) {
    if (document.empty()) return common::PortFault::none;  // bytes for a drawer or a display
    const fs::path place = common::port_path(port);
    std::error_code ignored;
    const bool is_file =
        fs::is_regular_file(place, ignored) || (place.is_relative() && place.has_extension());
    return is_file ? files_.write_port(place.filename().string(), bytes, document)
                   : real_.write_port(port, bytes, document);
}

}  // namespace startup

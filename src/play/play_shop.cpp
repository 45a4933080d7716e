#include "play/play_shop.h"

#include <stdlib.h>

#include <stdexcept>

#include "backup/copy_shop.h"
#include "database/embedded/open.h"
#include "play/environment.h"
#include "shop/new_shop.h"
#include "shop/place.h"
#include "startup/shop_files.h"

namespace play {

namespace fs = std::filesystem;

namespace {

constexpr const char* shop_file = "shop.db";
constexpr std::string_view copied_from = "from ";

}  // namespace

PlayShop::PlayShop(std::optional<Server> server) : server_(std::move(server)) {
    std::string name = (fs::temp_directory_path() / "tallvex-play-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder can be made");
    root_ = name;
}

PlayShop::~PlayShop() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

void PlayShop::set_up(const std::string& kind) {
    if (kind == "none") {
        fs::remove_all(folder());
        fs::create_directories(folder() / "ports");
        return;
    }
    if (kind.starts_with(copied_from)) {
        copy_from(kind.substr(copied_from.size()));
        return;
    }
    if (kind != "demo" && kind != "empty")
        throw std::runtime_error("a shop is \"demo\", \"empty\", \"none\" or \"from FOLDER\"");
    const fs::path master = root_ / kind;
    if (!fs::exists(master)) {
        shop::NewShop wanted;
        wanted.folder = master;
        wanted.place = {"embedded", shop_file};
        wanted.administrator = "admin";
        wanted.password = "1";
        wanted.demo = kind == "demo";
        try {
            shop::make_shop(wanted, PlayClock().now());  // the demo rows are dated by it
        } catch (const std::exception& error) {
            throw std::runtime_error(std::string("the shop cannot be made: ") + error.what());
        }
    }
    fs::remove_all(folder());
    fs::copy(master, folder(), fs::copy_options::recursive);
    fs::create_directory(folder() / "ports");
    if (server_) move_to_server();
}

// Refuses a shop whose database is elsewhere, because the play would write to it.
void PlayShop::copy_from(const fs::path& source) {
    const auto place = startup::read_connection_file(source);
    if (!shop::is_embedded(place) || place.database != shop_file)
        throw std::runtime_error("the shop in " + source.string() + " has no " + shop_file + " of its own");
    fs::remove_all(folder());
    fs::copy(source, folder(), fs::copy_options::recursive);
    fs::create_directory(folder() / "ports");
}

void PlayShop::move_to_server() {
    {
        const auto file = database::open_embedded(folder() / shop_file);
        const auto emptied = server_->open_emptied();
        const auto copied = backup::copy_shop(*file, *emptied, [](std::int64_t, std::int64_t) {});
        if (!copied.differences.empty()) throw std::runtime_error(copied.differences.front());
    }
    for (const char* ending : {"", "-wal", "-shm"})
        fs::remove(folder() / (std::string(shop_file) + ending));
    startup::write_connection_file(folder(), server_->place);
    startup::write_sa_password(folder(), server_->password);
}

std::filesystem::path PlayShop::file() const {
    return folder() / shop_file;
}

std::unique_ptr<database::Connection> PlayShop::open() const {
    if (server_) return server_->open();
    return database::open_embedded(file());
}

}  // namespace play

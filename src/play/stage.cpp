#include "play/stage.h"

#include <stdlib.h>

#include <sstream>
#include <stdexcept>

#include "admin/new_shop.h"
#include "play/play_outside.h"

namespace play {

namespace fs = std::filesystem;

Stage::Stage() {
    std::string name = (fs::temp_directory_path() / "tallvex-play-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder can be made");
    root_ = name;
}

Stage::~Stage() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

void Stage::set_up(const std::string& kind) {
    if (kind != "demo" && kind != "empty") throw std::runtime_error("a shop is \"demo\" or \"empty\"");
    const fs::path master = root_ / kind;
    if (!fs::exists(master)) {
        std::ostringstream said;
        std::istringstream nothing;
        PlayClock clock;  // the demo rows are dated by it
        admin::Tool tool{said, said, nothing, root_, clock};
        admin::NewShop wanted;
        wanted.folder = master;
        wanted.place = {"embedded", "shop.db"};
        wanted.administrator = "admin";
        wanted.password = "1";
        wanted.demo = kind == "demo";
        try {
            admin::make_shop(wanted, tool);
        } catch (const std::exception& error) {
            throw std::runtime_error(std::string("the shop cannot be made: ") + error.what() + said.str());
        }
    }
    fs::remove_all(folder());
    fs::copy(master, folder(), fs::copy_options::recursive);
    fs::create_directory(folder() / "ports");
}

}  // namespace play

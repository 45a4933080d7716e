// The shop that a play is played in: a fresh copy in a temporary folder, with its database in a file there or
// on a server.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "database/connection.h"
#include "startup/connection_file.h"

namespace play {

// A server to play on instead of a shop file. Its database belongs to the plays alone.
struct Server {
    startup::ConnectionRecord place;
    std::string password;  // of "sa"
    std::function<std::unique_ptr<database::Connection>()> open;
    std::function<std::unique_ptr<database::Connection>()> open_emptied;
};

class Stage {
  public:
    explicit Stage(std::optional<Server> server);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    // Puts a new shop ("demo" or "empty") into the folder in the place of the one there. Each kind is made
    // once per run and copied. Throws std::runtime_error.
    void set_up(const std::string& kind);
    // The shop's folder: database, files beside the program, ports.
    std::filesystem::path folder() const { return root_ / "shop"; }
    // Opens the shop's database, as a second program beside the till does.
    std::unique_ptr<database::Connection> open() const;
    // How many steps of the play have been done, across the death of the till.
    std::filesystem::path progress_file() const { return root_ / "progress"; }

  private:
    void move_to_server();

    std::filesystem::path root_;
    std::optional<Server> server_;
};

}  // namespace play

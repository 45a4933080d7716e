// The shop of a play: a fresh copy in a temporary folder, with its database in a file there or on a server.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "database/connection.h"
#include "startup/connection_file.h"

namespace play {

// A server to play on instead of a shop file. Its database is used by plays only.
struct Server {
    startup::ConnectionRecord place;
    std::string password;  // of "sa"
    std::function<std::unique_ptr<database::Connection>()> open;
    std::function<std::unique_ptr<database::Connection>()> open_emptied;
    // Does what the step "server" says, or answers what "expect server" asks.
    std::function<std::string(const std::string&)> command;
};

class PlayShop {
  public:
    explicit PlayShop(std::optional<Server> server);
    ~PlayShop();
    PlayShop(const PlayShop&) = delete;
    PlayShop& operator=(const PlayShop&) = delete;

    // Replaces the shop by a new one ("demo" or "empty"), by none, or by a copy of the shop in a file that a
    // folder holds ("from FOLDER"). Each kind of new shop is made once per run and copied. Throws
    // std::runtime_error.
    void set_up(const std::string& kind);
    // The shop's folder: database, files beside the program, ports.
    std::filesystem::path file() const;  // of a shop that is not on a server
    std::filesystem::path folder() const { return root_ / "shop"; }
    // Opens the shop's database as a second program beside the till.
    std::unique_ptr<database::Connection> open() const;
    // The file with the number of steps done. It outlives a process that the play kills.
    std::filesystem::path progress_file() const { return root_ / "progress"; }

  private:
    void copy_from(const std::filesystem::path& source);
    void move_to_server();

    std::filesystem::path root_;
    std::optional<Server> server_;
};

}  // namespace play

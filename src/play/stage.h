// The shop that a play is played in: a fresh copy in a temporary folder; its database is on the server that
// TALLVEX_TEST_SQLSERVER names, when it names one.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "database/connection.h"
#include "database/sqlserver/test_server.h"

namespace play {

class Stage {
  public:
    Stage();
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
    std::optional<database::TestServer> server_;
};

}  // namespace play

// The same work written by hand in C on SQLite, without a program around it: the yardstick of the ratios.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/sizes.h"

struct sqlite3;
struct sqlite3_stmt;

namespace bench {

struct PlainLine {
    std::int64_t item;
    double quantity;
    double price;
};

class PlainTill {
  public:
    // Opens the plain shop file in write-ahead mode, as the program opens its own.
    explicit PlainTill(const std::filesystem::path& file);
    ~PlainTill();
    PlainTill(const PlainTill&) = delete;
    PlainTill& operator=(const PlainTill&) = delete;

    // One cash sale: shift, settings, stock of each line, next number, header, lines, batches; durable at the
    // end.
    void save(const std::vector<PlainLine>& lines);
    // The cash that a drawer must hold before a moment (seconds since 1970).
    double cash_position(int drawer, std::int64_t moment);
    // The first 200 items whose name begins with a text, with their stock.
    std::size_t search(const std::string& prefix);
    // One item by its code, with its stock.
    double look_up(std::int64_t item);

  private:
    struct Statements;
    double sum(sqlite3_stmt* statement, int drawer, std::int64_t moment);

    sqlite3* db_ = nullptr;
    std::unique_ptr<Statements> prepared_;
    std::string wal_;
};

}  // namespace bench

// A till on the measured shop, without a face, a printer or anybody to ask.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "bench/sizes.h"
#include "common/services.h"
#include "database/connection.h"
#include "printing/receipt_printer.h"
#include "sales/sales_screen.h"
#include "signin/session.h"
#include "startup/activity_log.h"

namespace bench {

// It is always noon of the last day; ports take everything.
class NobodyThere final : public common::Prompts,
                          public common::Devices,
                          public common::Clock,
                          public printing::ReceiptPrinter {
  public:
    // A message means that the measured road was left: the figure would be worthless. Says it and throws.
    void message(std::string_view text, common::Icon icon) override;
    bool question(std::string_view text, common::Icon icon) override;
    bool write_port(std::string_view, std::string_view) override { return true; }
    bool write_file(std::string_view, std::string_view) override { return true; }
    common::Moment now() override { return {last_day, {12, 0, 0, 0}}; }
    bool set(const common::Moment&) override { return true; }
    bool print(const printing::Receipt&, printing::Form) override { return true; }
    bool prints_text() const override { return true; }
};

// The barcode of the n-th item that is rung up.
std::string rung_up_code(const Sizes& sizes, std::int64_t n);

class Till {
  public:
    // On "shop.db" in a home folder, whose log it writes.
    Till(const std::filesystem::path& home, const Sizes& sizes);

    database::Connection& connection() { return *connection_; }
    signin::Session& session() { return session_; }
    common::Services services() { return {nobody_, nobody_, nobody_, log_}; }
    NobodyThere& nobody() { return nobody_; }
    sales::SalesScreen& screen() { return *screen_; }
    const Sizes& sizes() const { return sizes_; }

    // Rings up so many different items, from the n-th on.
    void ring_up(std::int64_t n, int lines);
    // F1: the payment is asked for. Then Enter: what is rung up is saved. Both throw when they are refused.
    void begin_save();
    void save();

  private:
    Sizes sizes_;
    std::unique_ptr<database::Connection> connection_;
    signin::Session session_;
    NobodyThere nobody_;
    startup::ActivityLog log_;
    std::unique_ptr<sales::SalesScreen> screen_;
};

}  // namespace bench

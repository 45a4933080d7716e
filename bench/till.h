// A till on the measured shop without screens and printer.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "bench/sizes.h"
#include "common/services.h"
#include "database/connection.h"
#include "printing/receipt_printer.h"
#include "sales/sales_desk.h"
#include "signin/session.h"
#include "startup/shop_files.h"

namespace bench {

// It is always noon of the last day; all ports work.
class NobodyThere final : public common::Prompts,
                          public common::Devices,
                          public common::Clock,
                          public printing::ReceiptPrinter {
  public:
    // A message means that the action failed and the figure would be worthless. Prints it and throws.
    void message(std::string_view text, common::Icon icon) override;
    common::Answer choose(std::string_view text, const common::Choices& choices, common::Icon icon) override;
    common::PortFault write_port(std::string_view, std::string_view, std::string_view) override {
        return common::PortFault::none;
    }
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
    // Opens "shop.db" in a home folder and writes the log there.
    Till(const std::filesystem::path& home, const Sizes& sizes);

    database::Connection& connection() { return *connection_; }
    signin::Session& session() { return session_; }
    common::Services services() { return {nobody_, nobody_, nobody_, log_}; }
    NobodyThere& nobody() { return nobody_; }
    sales::SalesDesk& screen() { return *screen_; }
    const Sizes& sizes() const { return sizes_; }

    // Rings up that many different items from the n-th on.
    void ring_up(std::int64_t n, int lines);
    // F1 opens the payment; then Enter saves the invoice. Both throw if they are refused.
    void begin_save();
    void save();

  private:
    Sizes sizes_;
    std::unique_ptr<database::Connection> connection_;
    signin::Session session_;
    NobodyThere nobody_;
    startup::ActivityLog log_;
    std::unique_ptr<sales::SalesDesk> screen_;
};

}  // namespace bench

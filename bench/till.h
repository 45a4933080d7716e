// A till on the measured shop, without a face, a printer or anybody to ask.
#pragma once

#include <filesystem>
#include <memory>

#include "bench/sizes.h"
#include "common/outside.h"
#include "database/connection.h"
#include "printing/receipt_printer.h"
#include "sales/sales_screen.h"
#include "signin/session.h"

namespace bench {

class NobodyThere final : public common::Prompts,
                          public common::Devices,
                          public common::Log,
                          public common::Clock,
                          public printing::ReceiptPrinter {
  public:
    void message(std::string_view text, common::Icon icon) override;
    bool question(std::string_view, common::Icon) override { return true; }
    bool write_port(std::string_view, std::string_view) override { return true; }
    bool write_file(std::string_view, std::string_view) override { return true; }
    void log_event(std::string_view, std::string_view) override {}
    common::Moment now() override;
    bool set(const common::Moment&) override { return true; }
    bool print(const printing::Receipt&, printing::Form) override { return true; }
    bool prints_text() const override { return true; }
};

class Till {
  public:
    explicit Till(const std::filesystem::path& shop);

    database::Connection& connection() { return *connection_; }
    signin::Session& session() { return session_; }
    common::Outside outside() { return {nobody_, nobody_, nobody_, nobody_}; }
    NobodyThere& nobody() { return nobody_; }
    sales::SalesScreen& screen() { return *screen_; }

    // Rings up `lines` different items; the next call takes others.
    void ring_up(int lines);
    // F1: the payment is asked for. Then Enter: what is rung up is saved. Both throw when they are refused.
    void begin_save();
    void save();

  private:
    std::unique_ptr<database::Connection> connection_;
    signin::Session session_;
    NobodyThere nobody_;
    std::unique_ptr<sales::SalesScreen> screen_;
    int next_item_ = 1;
};

}  // namespace bench

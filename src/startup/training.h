// Training: a copy of the shop on which a cashier practises for a day. Nothing from it reaches the shop.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "common/file_devices.h"
#include "startup/start_up.h"

namespace startup {

// The training shop of a cash point: a folder "training-1" beside the program with files of its own and an
// embedded copy of the shop, whichever engine the shop is on.
class TrainingShop {
  public:
    // `shop` is the environment in which the shop itself is started.
    TrainingShop(const Environment& shop, std::int64_t cash_point);

    const std::filesystem::path& folder() const { return folder_; }
    // Makes the copy, or keeps one made on the same day, and reports the percentage done. Only reads the
    // shop. Throws StartUpError and leaves the former copy.
    void prepare(const common::Moment& now, const std::function<void(int)>& tell) const;
    // The environment in which the training shop is started.
    Environment environment() const;

  private:
    void copy(const std::filesystem::path& target, const std::function<void(int)>& tell) const;
    void set_up_files(const ConnectionRecord& place) const;

    Environment shop_;
    std::int64_t cash_point_;
    std::filesystem::path folder_;
};

// The devices of a training: what is printed goes to the printer, or to a file of the training's folder where
// the shop has a file; drawers stay shut and customers' displays as they are.
class TrainingDevices final : public common::Devices {
  public:
    TrainingDevices(common::Devices& real, const std::filesystem::path& folder)
        : real_(real), files_(folder) {}

    common::PortFault write_port(std::string_view port, std::string_view bytes,
                                 std::string_view document) override;
    bool write_file(std::string_view, std::string_view) override { return true; }
    common::PortReport port_report() const override { return real_.port_report(); }
    void send_again() override { real_.send_again(); }
    void forget_failed() override { real_.forget_failed(); }
    void forget_unsent() override { real_.forget_unsent(); }

  private:
    common::Devices& real_;
    common::FileDevices files_;
};

}  // namespace startup

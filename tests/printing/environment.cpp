// The tests draw pages without a display and never reach a real print system.
#include <gtest/gtest.h>

#include <QApplication>
#include <memory>

#include "ui/widgets/style.h"

namespace {

class PagesEnvironment final : public ::testing::Environment {
  public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
        qputenv("QT_LOGGING_RULES", "qt.qpa.*=false");
        application_ = std::make_unique<QApplication>(count_, arguments_);
        ui::apply_style(*application_, {1366, 768});  // previews take their measures from it
    }
    void TearDown() override { application_.reset(); }

  private:
    char name_[16] = "printing_tests";
    char* arguments_[2] = {name_, nullptr};
    int count_ = 1;
    std::unique_ptr<QApplication> application_;
};

const auto* const environment = ::testing::AddGlobalTestEnvironment(new PagesEnvironment);

}  // namespace

// The application object that Qt needs for drawing and for the print system. No display is needed.
#pragma once

#include <QGuiApplication>
#include <memory>

namespace admin {

class QtProgram {
  public:
    QtProgram() {
        if (QCoreApplication::instance() != nullptr) return;
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // Silences the warning about a missing run-time folder in a nightly job.
        if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
            qputenv("QT_LOGGING_RULES", "default.warning=false");
        program_ = std::make_unique<QGuiApplication>(count_, arguments_);
    }

  private:
    int count_ = 1;
    char name_[14] = "tallvex-admin";
    char* arguments_[2] = {name_, nullptr};
    std::unique_ptr<QGuiApplication> program_;
};

}  // namespace admin

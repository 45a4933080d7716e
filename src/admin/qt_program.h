// The program that Qt wants around what it draws or asks of the print system; no display is needed.
#pragma once

#include <QGuiApplication>
#include <memory>

namespace admin {

class QtProgram {
  public:
    QtProgram() {
        if (QCoreApplication::instance() != nullptr) return;
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // Of a run-time folder that a nightly job has not; nobody needs to know.
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

// Chooses a picture file, from a stick too.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "common/services.h"
#include "ui/widgets/sheet.h"

class QLineEdit;

namespace ui {

class ListTable;

// The folders and pictures of a folder; its path can be typed. Closes with 1 when `take` accepts a file; it
// says why it does not.
class LogoSheet : public Sheet {
    Q_OBJECT
  public:
    using Take = std::function<bool(const std::filesystem::path& file)>;
    LogoSheet(QWidget* host, common::Prompts& prompts, const std::filesystem::path& folder, Take take);

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void show_folder(const std::filesystem::path& folder);
    void open(const std::filesystem::path& place);
    void choose();

    common::Prompts& prompts_;
    Take take_;
    std::filesystem::path folder_;
    std::vector<std::filesystem::path> places_;  // of the rows
    QLineEdit* path_;
    ListTable* list_;
};

}  // namespace ui

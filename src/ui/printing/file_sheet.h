// Chooses a file, from a stick too.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "common/services.h"
#include "ui/widgets/sheet.h"

class QLineEdit;

namespace ui {

class ListTable;

// What kind of file is chosen.
struct FileChoice {
    QString name;  // the object names of the sheet's parts begin with it
    QString title;
    QStringList patterns;  // "*.csv"
    QString kind;          // what such a file is called
    QString when_empty;
};
// Pictures, for a logo.
FileChoice picture_choice();
// Tables of comma-separated values.
FileChoice csv_choice();

// Shows the folders and the files of that kind in a folder; its path can also be typed. Closes with 1 when
// `take` accepts a file; `take` itself says why it refuses one.
class FileSheet : public Sheet {
    Q_OBJECT
  public:
    using Take = std::function<bool(const std::filesystem::path& file)>;
    FileSheet(QWidget* host, FileChoice choice, common::Prompts& prompts, const std::filesystem::path& folder,
              Take take);

  protected:
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void show_folder(const std::filesystem::path& folder);
    void open(const std::filesystem::path& place);
    void choose();

    FileChoice choice_;
    common::Prompts& prompts_;
    Take take_;
    std::filesystem::path folder_;
    std::vector<std::filesystem::path> places_;  // of the rows
    QLineEdit* path_;
    ListTable* list_;
};

}  // namespace ui

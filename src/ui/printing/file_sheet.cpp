#include "ui/printing/file_sheet.h"

#include <QDir>
#include <QImageReader>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "printing/messages.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace fs = std::filesystem;

namespace {

// "There is no file and no folder of this name: …"
constexpr std::string_view no_such_place = "لا يوجد ملف ولا مجلد بهذا الاسم : ";

fs::path path_of(const QString& text) {
    return utf8(text);
}

// Sticks and disks that are mounted in the system's usual places.
QFileInfoList sticks() {
    QFileInfoList found;
    for (const char* place : {"/media", "/run/media"}) {
        const auto filter = QDir::Dirs | QDir::NoDotAndDotDot;
        for (const QFileInfo& user : QDir(place).entryInfoList(filter))
            found += QDir(user.filePath()).entryInfoList(filter);
    }
    return found;
}

QStringList picture_names() {
    QStringList names;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        names << "*." + QString::fromLatin1(format);
    return names;
}

}  // namespace

FileChoice picture_choice() {
    return {"logo", "صورة الشعار", picture_names(), "صورة", "لا توجد صور في هذا المجلد"};
}

FileChoice csv_choice() {
    return {"csv", "ملف الأصناف", {"*.csv", "*.txt"}, "ملف", "لا توجد ملفات CSV في هذا المجلد"};
}

FileSheet::FileSheet(QWidget* host, FileChoice choice, common::Prompts& prompts, const fs::path& folder,
                     Take take)
    : Sheet(host, choice.title), choice_(std::move(choice)), prompts_(prompts), take_(std::move(take)) {
    setObjectName(choice_.name + "_sheet");
    set_card_width(720);
    path_ = digits_field(qPrintable(choice_.name + "_path"), 4000);
    body()->addWidget(captioned("المجلد أو الملف", path_));
    list_ = new ListTable(choice_.name + "_files", {"الاسم", "النوع"}, 0);
    list_->setMinimumHeight(px(320));
    list_->say_when_empty(choice_.when_empty);
    body()->addWidget(list_, 1);
    QHBoxLayout* row = add_row();
    set_role(
        foot_button(row, qPrintable(choice_.name + "_choose"), "اخت&يار  Enter", 2, [this] { choose(); }),
        "main");
    foot_button(row, qPrintable(choice_.name + "_back"), "ر&جوع", 1, [this] { leave(0); });
    connect(list_, &ListTable::row_taken, this, [this] { choose(); });
    connect(path_, &QLineEdit::returnPressed, this, [this] { open(path_of(path_->text().trimmed())); });
    show_folder(folder);
}

void FileSheet::show_folder(const fs::path& folder) {
    folder_ = folder.lexically_normal();
    path_->setText(qt(folder_.string()));
    places_.clear();
    std::vector<QStringList> rows;
    const auto add = [&](const fs::path& place, const QString& name, const QString& kind) {
        places_.push_back(place);
        rows.push_back({name, kind});
    };
    const QDir dir(qt(folder_.string()));
    if (folder_.has_relative_path()) add(folder_ / "..", "المجلد الأعلى", "Backspace");
    for (const QFileInfo& stick : sticks())
        add(path_of(stick.filePath()), stick.fileName(), "قرص خارجي");
    for (const QFileInfo& entry : dir.entryInfoList(
             choice_.patterns, QDir::AllDirs | QDir::Files | QDir::Readable | QDir::NoDotAndDotDot,
             QDir::DirsFirst | QDir::Name | QDir::IgnoreCase))
        add(path_of(entry.filePath()), entry.fileName(), entry.isDir() ? "مجلد" : choice_.kind);
    list_->show_rows(std::move(rows));
}

void FileSheet::open(const fs::path& place) {
    const QFileInfo info(qt((folder_ / place).string()));
    if (info.isDir()) {
        show_folder(path_of(info.absoluteFilePath()));
        list_->setFocus();
    } else if (info.exists()) {
        if (take_(path_of(info.absoluteFilePath()))) leave(1);
    } else {
        prompts_.message(printing::message::naming(no_such_place, place.string()), common::Icon::critical);
    }
}

void FileSheet::choose() {
    if (Sheet::top_of(window()) != this) return;
    const int row = list_->current_row();
    if (row >= 0 && static_cast<std::size_t>(row) < places_.size())
        open(places_[static_cast<std::size_t>(row)]);
}

void FileSheet::take_focus() {
    list_->setFocus();
}

void FileSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Backspace && folder_.has_relative_path()) {
        event->accept();
        open(folder_ / "..");
        return;
    }
    Sheet::keyPressEvent(event);
}

}  // namespace ui

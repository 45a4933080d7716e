#include "ui/goods/import_sheet.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <filesystem>

#include "common/code_page.h"
#include "common/files.h"
#include "goods/messages.h"
#include "signin/permissions.h"
#include "ui/goods/import_rows.h"
#include "ui/printing/file_sheet.h"
#include "ui/printing/progress.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr std::size_t largest_file = 200U << 20U;
constexpr std::size_t lines_between_looks = 256;

// The user ended the work; nothing was written.
struct Ended {};

}  // namespace

ImportSheet::ImportSheet(QWidget* host, const Context& context)
    : Sheet(host, "استيراد أصناف من ملف CSV"), context_(context) {
    setObjectName("import_sheet");
    body()->setSpacing(px(10));
    auto* first = new QHBoxLayout;
    first->setSpacing(px(10));
    path_ = digits_field("import_path", 4000);
    first->addWidget(captioned("&الملف", path_), 4);
    field_button(first, "import_choose", "ا&ختيار ملف", [this] { choose_file(); });
    read_ = field_button(first, "import_read", "&قراءة الملف", [this] { read_file(); });
    set_role(read_, "main");
    body()->addLayout(first);
    auto* second = new QHBoxLayout;
    second->setSpacing(px(26));
    update_ = new QCheckBox("ت&عديل الأصناف المسجلة، والخانة الخالية تبقى كما هي");
    update_->setObjectName("import_update");
    update_->setChecked(true);
    code_page_ = new QCheckBox("الملف بترميز &ويندوز العربي القديم");
    code_page_->setObjectName("import_1256");
    for (QCheckBox* box : {update_, code_page_}) {
        box->setMinimumHeight(px(least_target));
        second->addWidget(box);
        connect(box, &QCheckBox::toggled, this, [this] { forget_plan(); });
    }
    second->addStretch(1);
    body()->addLayout(second);
    lines_ = new ListTable("import_lines", import_headings(), import_stretched);
    lines_->setMinimumHeight(px(320));
    body()->addWidget(lines_, 1);
    said_ = label({}, "side", "import_said");
    said_->setWordWrap(true);
    body()->addWidget(said_);
    QHBoxLayout* row = add_row();
    apply_ = foot_button(row, "import_apply", "ا&ستيراد", 2, [this] { apply(); });
    set_role(apply_, "main");
    foot_button(row, "import_back", "&رجوع", 1, [this] { leave(0); });
    connect(path_, &QLineEdit::textEdited, this, [this] { forget_plan(); });
    connect(path_, &QLineEdit::returnPressed, this, [this] { read_file(); });
    forget_plan();
}

void ImportSheet::choose_file() {
    if (Sheet::top_of(window()) != this) return;
    FileSheet(this, csv_choice(), context_.services.prompts, context_.session.program_folder,
              [this](const std::filesystem::path& file) {
                  path_->setText(qt(file.string()));
                  forget_plan();
                  return true;
              })
        .run();
    read_->setFocus();
}

void ImportSheet::forget_plan() {
    plan_ = {};
    lines_->say_when_empty("اختر ملفا ثم اقرأه: يعرض هنا ما سيتغير قبل الاستيراد");
    lines_->show_rows({});
    said_->setText(
        "السطر الأول أسماء الأعمدة: كود والاسم وقطاعي، ويمكن الشركة والمجموعة والباركود والرصيد وغيرها");
    apply_->setEnabled(false);
}

goods::ImportProgress ImportSheet::progress(const std::string& title) const {
    return [show = show_progress(title, {"%1 من %2", "جار الحفظ"}), calls = std::size_t{0}](
               goods::ImportStage, std::size_t done, std::size_t total) mutable {
        if (++calls % lines_between_looks != 0) return;
        if (!show(static_cast<int>(done), static_cast<int>(total))) throw Ended{};
    };
}

void ImportSheet::read_file() {
    if (Sheet::top_of(window()) != this) return;
    forget_plan();
    guarded(context_.services, "ReadItemsFile", [&] {
        const std::filesystem::path typed = utf8(path_->text().trimmed());
        if (typed.empty()) {
            context_.services.prompts.message(goods::message::choose_file, common::Icon::exclamation);
            return;
        }
        try {
            std::string csv = common::read_file(context_.session.program_folder / typed, largest_file);
            if (code_page_->isChecked()) csv = common::from_code_page_1256(csv);
            plan_ =
                goods::plan_import(context_.connection, csv, update_->isChecked(), progress("قراءة الملف"));
        } catch (const Ended&) {
            return;
        } catch (const std::system_error&) {
            context_.services.prompts.message(std::string(goods::message::file_not_read) + typed.string(),
                                              common::Icon::critical);
            return;
        }
        repaint_rows();
    });
    (apply_->isEnabled() ? static_cast<QWidget*>(apply_) : path_)->setFocus();
}

void ImportSheet::repaint_rows() {
    lines_->say_when_empty("لا يوجد ما يتغير: الأصناف مسجلة كما في الملف");
    lines_->show_rows(import_rows(plan_));
    said_->setText(import_text(plan_));
    apply_->setEnabled(plan_.problems.empty() && plan_.added + plan_.changed > 0);
}

void ImportSheet::apply() {
    if (Sheet::top_of(window()) != this) return;
    goods::ImportOutcome outcome;
    bool is_written = false;
    guarded(context_.services, "ImportItems", [&] {
        if (!signin::authorise_change(context_.session, context_.services.prompts,
                                      signin::Action::edit_goods))
            return;
        try {
            outcome = goods::write_import(context_.connection, context_.session, plan_,
                                          context_.services.clock.now(), progress("استيراد الأصناف"));
        } catch (const Ended&) {
            return;
        }
        is_written = outcome.problems.empty();
    });
    if (!outcome.problems.empty()) {
        plan_.problems = outcome.problems;
        repaint_rows();
        lines_->setFocus();
        context_.services.prompts.message(goods::message::nothing_imported, common::Icon::critical);
    }
    if (!is_written) return;
    context_.session.note({.kind = audit::Kind::item_changed,
                           .what = "استيراد أصناف: جديدة " + std::to_string(outcome.items) + "، تغيرت " +
                                   std::to_string(outcome.changed)});
    context_.services.prompts.message("تم الاستيراد : أصناف جديدة " + std::to_string(outcome.items) +
                                          "، أصناف تغيرت " + std::to_string(outcome.changed),
                                      common::Icon::information);
    leave(1);
}

void ImportSheet::resizeEvent(QResizeEvent* event) {
    Sheet::resizeEvent(event);
    card()->setFixedWidth(std::min(width() - px(24), px(1180)));
}

void ImportSheet::take_focus() {
    path_->setFocus();
    path_->selectAll();
}

}  // namespace ui

#include "ui/sales/screen_sheet.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <system_error>

#include "common/named_values.h"
#include "database/error.h"
#include "printing/messages.h"
#include "signin/session.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/screen_choice.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

ScreenSheet::ScreenSheet(QWidget* host, const Context& context)
    : Sheet(host, "شاشة هذا الجهاز"), context_(context) {
    setObjectName("screen_sheet");
    set_card_width(620);
    add("screen_compact", "سطور م&تقاربة", "يظهر عدد أكبر من سطور البون على الشاشة",
        &ScreenChoice::compact_rows);
    add("screen_keypad", "لوحة الأ&رقام مفتوحة دائما", "للعمل باللمس. وتفتح وتغلق كذلك بالمفتاح Ctrl K",
        &ScreenChoice::keypad);
    add("screen_sounds", "أ&صوات", "صوت عند إضافة الصنف، وعند الرفض، وعند السؤال", &ScreenChoice::sounds);
    foot_button(add_row(), "screen_back", "رجو&ع", 1, [this] { leave(0); });
}

void ScreenSheet::add(const char* name, const QString& caption, const QString& meaning,
                      bool ScreenChoice::*member) {
    auto* option = new QCheckBox(caption);
    option->setObjectName(name);
    option->setMinimumHeight(px(least_target));
    option->setChecked(context_.screen_choice.*member);
    connect(option, &QCheckBox::toggled, this, [this, member](bool chosen) {
        context_.screen_choice.*member = chosen;
        keep();
    });
    body()->addWidget(option);
    body()->addWidget(label(meaning, "side"));
}

// If the choice cannot be kept, it holds until the program ends.
void ScreenSheet::keep() {
    const auto file = common::screen_file(context_.session.program_folder, context_.session.cash_point);
    try {
        keep_screen_choice(file, context_.screen_choice);
    } catch (const std::system_error& error) {
        context_.services.log.log_event(error.what(), "screen");
        context_.services.prompts.message(
            database::with_reason(printing::message::naming(printing::message::file_failed, file.string()),
                                  error),
            common::Icon::exclamation);
    }
}

}  // namespace ui

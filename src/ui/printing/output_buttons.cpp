#include "ui/printing/output_buttons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "printing/report_printer.h"
#include "ui/printing/reports.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"

namespace ui {

OutputButtons::OutputButtons(QWidget* screen, QHBoxLayout* row, const QString& name, const Context& context,
                             std::function<printing::Report()> report, QLabel* note)
    : QObject(screen), screen_(screen), context_(context), report_(std::move(report)), note_(note) {
    add(row, name + "_print", "&طباعة",
        [this] { return context_.reports.print(report_()) ? printed_text(context_) : QString(); });
    add(row, name + "_preview", "معاي&نة", [this] {
        context_.reports.preview(report_());
        return kept_text(context_);
    });
    add(row, name + "_pdf", "ملف P&DF", [this] { return keep_report(context_, report_(), ReportFile::pdf); });
    add(row, name + "_csv", "ملف &CSV", [this] { return keep_report(context_, report_(), ReportFile::csv); });
}

void OutputButtons::add(QHBoxLayout* row, const QString& name, const QString& caption,
                        std::function<QString()> action) {
    QPushButton* button = foot_button(row, qPrintable(name), caption, 0, [this, action = std::move(action)] {
        Sheet* top = Sheet::top_of(screen_->window());
        if (top != nullptr && top != screen_) return;
        guarded(context_.services, "Output", [&] {
            if (const QString told = action(); !told.isEmpty()) note_->setText(told);
        });
    });
    button->setMinimumHeight(px(least_target));
    buttons_.push_back(button);
}

void OutputButtons::set_enabled(bool enabled) {
    for (QPushButton* button : buttons_)
        button->setEnabled(enabled);
}

}  // namespace ui

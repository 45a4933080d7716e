#include "ui/printing/report_foot.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "printing/report_printer.h"
#include "ui/printing/reports.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/text.h"

namespace ui {

void add_report_buttons(QHBoxLayout* row, const QString& name, const Context& context,
                        std::function<printing::Report()> paper, QLabel* note) {
    const auto button = [&](const char* what, const QString& caption, auto action) {
        foot_button(row, utf8(name + what).c_str(), caption, 0, [=] {
            guarded(context.services, utf8(name + what), [&] {
                if (const QString said = action(); !said.isEmpty()) note->setText(said);
            });
        });
    };
    button("_print", "&طباعة",
           [=] { return context.reports.print(paper()) ? printed_text(context) : QString(); });
    button("_preview", "معاي&نة", [=] {
        context.reports.preview(paper());
        return kept_text(context);
    });
    button("_csv", "ملف &CSV", [=] { return keep_report(context, paper(), ReportFile::csv); });
}

}  // namespace ui

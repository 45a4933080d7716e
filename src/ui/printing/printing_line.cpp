#include "ui/printing/printing_line.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStringList>

#include "printing/messages.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

using common::PortDocument;
using common::PortReport;

constexpr int look_ms = 200;
constexpr qsizetype most_titles = 3;
constexpr std::string_view log_code = "print";

// "Printing: …"
constexpr std::string_view printing = "تجري الطباعة: ";
// "Not printed: …"
constexpr std::string_view not_printed = "لم يطبع: ";
// The answers to the question at the end of the program: print now, end without printing.
constexpr common::Choices at_the_end = {"طباعة الآن", "إنهاء دون طباعة"};

QString titles(const std::vector<PortDocument>& documents) {
    QStringList names;
    for (const PortDocument& document : documents)
        names << qt(document.title);
    if (names.size() <= most_titles) return names.join("، ");
    const auto more = names.size() - (most_titles - 1);
    return names.mid(0, most_titles - 1).join("، ") + QString(" و%1 غيرها").arg(more);
}

QString failure_text(const PortReport& report) {
    const PortDocument& last = report.failed.back();
    return qt(not_printed) + titles(report.failed) + " · " +
           qt(printing::message::port_words(last.fault, last.port));
}

// The screen shown at the end of the program until everything is printed.
class PrintingWait : public Sheet {
  public:
    PrintingWait(QWidget* host, const common::Devices& devices) : Sheet(host, "تجري الطباعة") {
        setObjectName("printing_wait");
        set_card_width(520);
        auto* text = label({}, "said", "printing_wait_text");
        text->setWordWrap(true);
        body()->addWidget(text);
        auto* row = add_row();
        foot_button(row, "printing_wait_end", "إ&نهاء دون انتظار", 1, [this] { leave(ended); });
        back_ = foot_button(row, "printing_wait_back", "رجو&ع", 1, [this] { leave(0); });
        const auto look = [this, text, &devices] {
            const PortReport report = devices.port_report();
            text->setText(titles(report.under_way) + "\nينتهي البرنامج عندما تنتهي الطباعة");
            if (report.under_way.empty()) leave(ended);
        };
        connect(&timer_, &QTimer::timeout, this, look);
        timer_.start(look_ms);
        look();
    }
    static constexpr int ended = 1;

  protected:
    // A hasty Enter drops nothing.
    void take_focus() override { back_->setFocus(); }

  private:
    QTimer timer_;
    QPushButton* back_;
};

}  // namespace

PrintingLine::PrintingLine(const common::Services& services, QWidget* parent)
    : Banner("printing_line", "printing_state", parent),
      services_(services),
      again_(add_button("print_again", "&طباعة الآن")),
      forget_(add_button("print_forget", "ع&دم الطباعة")) {
    connect(again_, &QPushButton::clicked, this, &PrintingLine::print_again);
    connect(forget_, &QPushButton::clicked, this, &PrintingLine::forget);
    connect(&timer_, &QTimer::timeout, this, &PrintingLine::refresh);
}

void PrintingLine::refresh() {
    const PortReport report = services_.devices.port_report();
    // A sheet may lie over this line.
    if (log_failures(report)) Sheet::tell(window(), failure_text(report));
    const bool has_failed = !report.failed.empty();
    QString text = has_failed ? failure_text(report) : QString();
    if (!report.under_way.empty()) text += (has_failed ? "\n" : "") + qt(printing) + titles(report.under_way);
    if (text.isEmpty()) text = said_;
    if (text != this->text()->text()) {
        set_colours(has_failed ? "#fbe9e7" : "#e3effa", has_failed ? colour::alarm : colour::focus);
        this->text()->setText(text);
    }
    again_->setVisible(has_failed);
    forget_->setVisible(has_failed);
    setVisible(!text.isEmpty());
    if (report.under_way.empty())
        timer_.stop();
    else if (!timer_.isActive())
        timer_.start(look_ms);
}

bool PrintingLine::log_failures(const PortReport& report) {
    const bool has_new = logged_ < report.failed.size();
    for (; logged_ < report.failed.size(); ++logged_) {
        const PortDocument& document = report.failed[logged_];
        services_.log.log_event("not printed on " + document.port + ": " + document.title, log_code);
    }
    return has_new;
}

void PrintingLine::print_again() {
    services_.devices.send_again();
    logged_ = 0;
    refresh();
    emit answered();
}

// What is being printed goes on.
void PrintingLine::forget() {
    log_dropped(services_.devices.port_report().failed);
    services_.devices.forget_failed();
    logged_ = 0;
    refresh();
    emit answered();
}

void PrintingLine::log_dropped(const std::vector<PortDocument>& documents) {
    for (const PortDocument& document : documents)
        services_.log.log_event("dropped unprinted: " + document.title, log_code);
}

void PrintingLine::drop_all() {
    const PortReport report = services_.devices.port_report();
    log_dropped(report.failed);
    log_dropped(report.under_way);
    services_.devices.forget_unsent();
    logged_ = 0;
}

bool PrintingLine::finish() {
    for (;;) {
        if (!services_.devices.port_report().under_way.empty() &&
            PrintingWait(this, services_.devices).run() != PrintingWait::ended)
            return false;
        refresh();
        const PortReport report = services_.devices.port_report();
        if (report.failed.empty()) break;
        const common::Answer answer =
            services_.prompts.choose(utf8(failure_text(report)), at_the_end, common::Icon::question);
        if (answer == common::Answer::closed) return false;
        if (answer == common::Answer::no) break;
        print_again();
    }
    drop_all();
    return true;
}

}  // namespace ui

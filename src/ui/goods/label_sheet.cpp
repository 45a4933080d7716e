#include "ui/goods/label_sheet.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <filesystem>
#include <system_error>

#include "common/named_values.h"
#include "common/numbers.h"
#include "printing/report_printer.h"
#include "signin/session.h"
#include "ui/printing/reports.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr std::string_view wrong_copies = "عدد الملصقات رقم صحيح من صفر إلى 1000";  // a whole number
constexpr std::string_view wrong_used = "الملصقات المستعملة رقم صحيح أقل من عدد ملصقات الورقة";
constexpr std::string_view no_labels = "لا توجد ملصقات للطباعة";  // nothing to print

// The paper that the workstation's printer holds, in a file beside the program: "paper = roll-50x25".
std::filesystem::path paper_file(const Context& context) {
    return context.session.program_folder / "labels.txt";
}
constexpr auto paper_key = "paper";

// The place of the kept paper, from 1; the first if none is kept.
std::int64_t kept_paper(const Context& context) {
    const common::NamedValues values = common::read_named_values(paper_file(context));
    const auto kept = values.find(paper_key);
    std::int64_t at = 1;
    for (const printing::LabelPaper& paper : printing::label_papers()) {
        if (kept != values.end() && kept->second == paper.name) return at;
        ++at;
    }
    return 1;
}

// If the choice cannot be kept, the user makes it again next time.
void keep_paper(const Context& context, const printing::LabelPaper& paper) {
    try {
        common::keep_named_values(paper_file(context), {{paper_key, std::string(paper.name)}});
    } catch (const std::system_error& error) {
        context.services.log.log_event(error.what(), "labels");
    }
}

}  // namespace

LabelSheet::LabelSheet(QWidget* host, const Context& context, std::vector<printing::Label> labels)
    : Sheet(host, "طباعة ملصقات"), context_(context), labels_(std::move(labels)) {
    setObjectName("label_sheet");
    set_card_width(880);
    auto* fields = new QHBoxLayout;
    fields->setSpacing(px(12));
    paper_ = choice_list("label_paper");
    std::vector<common::Choice> papers;
    for (const printing::LabelPaper& paper : printing::label_papers())
        papers.push_back({static_cast<std::int64_t>(papers.size()) + 1, std::string(paper.caption)});
    fill_choices(paper_, papers, kept_paper(context_));
    fields->addWidget(captioned("ال&ورق", paper_), 3);
    used_ = new NumberField("label_used");
    used_->setText("0");
    used_box_ = captioned("مستعمل من &أول ورقة", used_);
    const auto show_used = [this] {
        const auto at = static_cast<std::size_t>(choice_of(paper_).value_or(1)) - 1;
        used_box_->setVisible(printing::label_papers()[at].is_sheet());
    };
    show_used();
    fields->addWidget(used_box_, 1);
    body()->addLayout(fields);
    list_ = new ListTable("label_list", {"الصنف", "الوحدة", "السعر", "الباركود", "العدد"}, 0);
    list_->setMinimumHeight(px(260));
    list_->say_when_empty("لا يوجد صنف مختار");
    body()->addWidget(list_, 1);
    auto* copies = new QHBoxLayout;
    copies->setSpacing(px(10));
    copies_ = new NumberField("label_copies");
    copies->addWidget(captioned("&عدد ملصقات الصنف المختار", copies_), 2);
    field_button(copies, "label_set", "لل&صنف", [this] { take_copies(false); });
    field_button(copies, "label_set_all", "لل&كل", [this] { take_copies(true); });
    said_ = label({}, "side", "label_said");
    copies->addWidget(said_, 3, Qt::AlignBottom);
    body()->addLayout(copies);
    QHBoxLayout* row = add_row();
    set_role(foot_button(row, "label_print", "&طباعة", 2, [this] { print(); }), "main");
    foot_button(row, "label_preview", "معاي&نة", 1, [this] { preview(); });
    foot_button(row, "label_back", "&رجوع", 1, [this] { leave(0); });
    connect(paper_, &QComboBox::currentIndexChanged, this, show_used);
    connect(copies_, &QLineEdit::returnPressed, this, [this] { take_copies(false); });
    connect(list_, &ListTable::row_chosen, this, [this](int at) {
        if (at >= 0) copies_->setText(QString::number(labels_[static_cast<std::size_t>(at)].copies));
    });
    connect(list_, &ListTable::row_taken, this, [this] {
        copies_->setFocus();
        copies_->selectAll();
    });
    repaint_rows(0);
}

void LabelSheet::repaint_rows(int chosen) {
    std::vector<QStringList> rows;
    for (const printing::Label& one : labels_)
        rows.push_back({qt(one.name), qt(one.unit.empty() ? "وحدة" : one.unit), figure(one.price),
                        figure(one.barcode), figure(one.copies)});
    list_->show_rows(std::move(rows));
    if (chosen > 0) list_->choose_row(chosen);
    printing::LabelJob job;
    job.labels = labels_;
    said_->setText("عدد الملصقات " + QString::number(job.count()));
}

bool LabelSheet::take_copies(bool to_all) {
    const auto typed = common::parse_integer(utf8(copies_->text()));
    if (!typed || *typed < 0 || *typed > printing::most_copies) {
        context_.services.prompts.message(wrong_copies, common::Icon::critical);
        copies_->setFocus();
        copies_->selectAll();
        return false;
    }
    const int row = list_->current_row();
    for (std::size_t at = 0; at < labels_.size(); ++at)
        if (to_all || static_cast<int>(at) == row) labels_[at].copies = static_cast<int>(*typed);
    repaint_rows(row);
    list_->setFocus();
    return true;
}

std::optional<printing::LabelJob> LabelSheet::job() {
    printing::LabelJob job;
    const auto at = static_cast<std::size_t>(choice_of(paper_).value_or(1)) - 1;
    job.paper = printing::label_papers()[at];
    job.labels = labels_;
    if (job.paper.is_sheet()) {
        const auto used = common::parse_integer(utf8(used_->text()));
        if (!used || *used < 0 || *used >= job.paper.columns * job.paper.rows) {
            context_.services.prompts.message(wrong_used, common::Icon::critical);
            used_->setFocus();
            used_->selectAll();
            return std::nullopt;
        }
        job.used = static_cast<int>(*used);
    }
    if (job.count() > 0) {
        keep_paper(context_, job.paper);
        return job;
    }
    context_.services.prompts.message(no_labels, common::Icon::exclamation);
    return std::nullopt;
}

void LabelSheet::print() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "PrintLabels", [&] {
        const auto labels = job();
        if (labels && context_.reports.print_labels(*labels)) said_->setText(printed_text(context_));
    });
}

void LabelSheet::preview() {
    if (Sheet::top_of(window()) != this) return;
    guarded(context_.services, "PreviewLabels", [&] {
        if (const auto labels = job()) context_.reports.preview_labels(*labels);
        if (const QString kept = kept_text(context_); !kept.isEmpty()) said_->setText(kept);
    });
}

void LabelSheet::take_focus() {
    copies_->setFocus();
    copies_->selectAll();
}

}  // namespace ui

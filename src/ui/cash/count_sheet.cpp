#include "ui/cash/count_sheet.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "cash/messages.h"
#include "common/denominations.h"
#include "common/numbers.h"
#include "common/typed.h"
#include "ui/cash/daily_statement_screen.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_table.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

CountSheet::CountSheet(QWidget* host, const Context& context, cash::HandOver& logic)
    : Sheet(host, "عد نقدية الدرج"), context_(context), logic_(logic) {
    setObjectName("count_sheet");
    set_card_width(976);
    auto* halves = new QHBoxLayout;
    halves->setSpacing(px(24));
    halves->addWidget(build_pieces(), 5);
    halves->addWidget(build_figures(), 3);
    body()->addLayout(halves);
    causes_caption_ = label({}, "side", "count_causes_caption");
    body()->addWidget(causes_caption_);
    causes_ = new ListTable("count_causes", FigureRowsSheet::headings("السبب المحتمل"), 0);
    causes_->setFixedHeight(px(150));
    connect(causes_, &ListTable::row_taken, this, &CountSheet::open_cause);
    body()->addWidget(causes_);
    build_buttons();
    for (std::size_t at = 0; at < pieces_.size(); ++at) {
        QWidget* next = at + 1 < pieces_.size() ? static_cast<QWidget*>(pieces_[at + 1]) : other_;
        enter_leads_on({pieces_[at], next});
    }
    enter_leads_on({other_, compare_});
    show_state();
}

// The notes and coins, the largest first, in two columns from the top right.
QWidget* CountSheet::build_pieces() {
    auto* half = new QWidget;
    auto* grid = new QGridLayout(half);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(px(10));
    grid->setVerticalSpacing(px(8));
    const auto& pieces = logic_.count.pieces;
    const int rows = static_cast<int>(pieces.size() + 2) / 2;
    const auto place = [&](int at, const QString& caption, QLineEdit* field, QLabel* value) {
        const int column = at / rows * 3;
        field->setFixedSize(px(96), px(field_height));
        field->setAccessibleName(caption);
        grid->addWidget(label(caption, "figure"), at % rows, column);
        grid->addWidget(field, at % rows, column + 1);
        grid->addWidget(value, at % rows, column + 2);
        connect(field, &QLineEdit::textChanged, this, [this] { show_state(); });
    };
    for (std::size_t at = 0; at < pieces.size(); ++at) {
        const QString name = QString::number(at + 1);
        pieces_.push_back(new NumberField("pieces_" + name));
        values_.push_back(new Figure("pieces_value_" + name, "side"));
        values_.back()->setMinimumWidth(px(86));
        place(static_cast<int>(at), qt(common::denomination_text(pieces[at].denomination)) + " ×",
              pieces_.back(), values_.back());
    }
    other_ = new AmountField("count_other");
    place(static_cast<int>(pieces.size()), "أخرى", other_, new Figure("", "side"));
    return half;
}

QLabel* CountSheet::add_figure(QVBoxLayout* column, const char* name, const QString& caption) {
    auto* row = new QHBoxLayout;
    row->addWidget(label(caption, "plain"));
    row->addStretch(1);
    auto* figure = new Figure(name, "total");
    row->addWidget(figure);
    column->addLayout(row);
    return figure;
}

QWidget* CountSheet::build_figures() {
    auto* half = new QWidget;
    auto* column = new QVBoxLayout(half);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(10));
    auto* box = new QFrame;
    set_role(box, "net");
    auto* inside = new QVBoxLayout(box);
    inside->setContentsMargins(px(18), px(8), px(18), px(4));
    inside->addWidget(label("المعدود", "caption"));
    total_ = new Figure("count_total", "netfigure");
    total_->setFixedHeight(px(62));
    inside->addWidget(total_);
    column->addWidget(box);
    expected_ = add_figure(column, "count_expected", qt(cash::message::expected_cash));
    difference_box_ = new QFrame;
    set_role(difference_box_, "change");
    auto* difference = new QVBoxLayout(difference_box_);
    difference->setContentsMargins(px(14), px(6), px(14), px(6));
    difference_ = add_figure(difference, "count_difference", qt(cash::message::difference));
    column->addWidget(difference_box_);
    column->addStretch(1);
    return half;
}

void CountSheet::build_buttons() {
    QHBoxLayout* row = add_row();
    compare_ = foot_button(row, "count_compare", "&مقارنة بالرصيد الدفتري", 2, [this] { compare(); });
    accept_ = foot_button(row, "count_accept", "ا&عتماد العد", 2, [this] { leave(1); });
    again_ = foot_button(row, "count_again", "إعا&دة العد", 1, [this] { count_again(); });
    QPushButton* back = foot_button(row, "count_back", "&رجوع", 1, [this] { leave(0); });
    for (QPushButton* button : {compare_, accept_, again_, back})
        button->setMinimumHeight(px(50));
    set_role(compare_, "main");
    set_role(accept_, "main");
}

void CountSheet::take_focus() {
    pieces_.front()->setFocus();
}

QLineEdit* CountSheet::read() {
    QLineEdit* wrong = nullptr;
    for (std::size_t at = 0; at < pieces_.size(); ++at) {
        const auto count = cash::read_pieces(utf8(pieces_[at]->text()));
        if (!count && wrong == nullptr) wrong = pieces_[at];
        logic_.count.pieces[at].count = count.value_or(0);
    }
    const auto other = common::read_amount(utf8(other_->text()));
    if (!other.is_good() && wrong == nullptr) wrong = other_;
    logic_.count.other = other.is_good() ? other.value : common::Amount();
    return wrong;
}

// There is no total while a field holds no number.
void CountSheet::show_state() {
    const bool readable = read() == nullptr;
    const QString none = qt(cash::message::no_figure);
    for (std::size_t at = 0; at < values_.size(); ++at)
        values_[at]->setText(qt(logic_.count.pieces[at].value().text()));
    show_fitted(total_, readable ? qt(logic_.count.total().text()) : none, 44);
    const auto expected = logic_.expected();
    expected_->setText(expected ? qt(expected->text()) : none);
    const bool compares = expected && readable;
    difference_->setText(compares ? qt(logic_.difference().text()) : none);
    set_state(difference_box_, "short", compares && logic_.difference() < common::Amount());
    const bool compared = logic_.is_compared();
    for (QLineEdit* field : pieces_)
        set_fixed(field, compared);
    set_fixed(other_, compared);
    compare_->setVisible(!compared);
    accept_->setVisible(compared);
    again_->setVisible(compared);
    show_causes();
}

void CountSheet::show_causes() {
    const bool compared = logic_.is_compared();
    const bool differs = compared && !logic_.difference().is_zero();
    causes_->setVisible(differs && !logic_.causes().empty());
    QString text = "عد كل فئة، ثم قارن بالرصيد الدفتري";
    if (compared) text = "المعدود يساوي الرصيد الدفتري";
    if (differs) text = "لا توجد في الوردية حركة تفسر الفرق";
    if (causes_->isVisibleTo(this)) text = "حركات قد تفسر الفرق، Enter يفتح الحركة بين حركات الوردية:";
    causes_caption_->setText(text);
    if (!differs) return;
    std::vector<QStringList> rows;
    for (const cash::Cause& cause : logic_.causes()) {
        rows.push_back(
            FigureRowsSheet::cells(cause.text, logic_.movements().rows(cause.figure).rows[cause.row]));
    }
    causes_->show_rows(std::move(rows));
}

void CountSheet::compare() {
    if (Sheet::top_of(window()) != this) return;
    if (QLineEdit* wrong = read()) {
        const auto refusal = common::read_amount(utf8(other_->text())).refusal;
        context_.services.prompts.message(wrong == other_ ? refusal : cash::message::wrong_pieces,
                                          common::Icon::critical);
        wrong->setFocus();
        wrong->selectAll();
        return;
    }
    guarded(context_.services, "CompareCount", [this] { logic_.compare(); });
    show_state();
    if (logic_.is_compared()) accept_->setFocus();
}

void CountSheet::count_again() {
    logic_.count_again();
    show_state();
    take_focus();
}

void CountSheet::open_cause(int row) {
    if (Sheet::top_of(window()) != this) return;
    const cash::Cause& cause = logic_.causes()[static_cast<std::size_t>(row)];
    FigureRowsSheet(this, qt(cash::figure_headings[static_cast<std::size_t>(cause.figure)]),
                    logic_.movements().rows(cause.figure), static_cast<int>(cause.row))
        .run();
}

}  // namespace ui

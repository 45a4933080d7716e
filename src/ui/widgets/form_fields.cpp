#include "ui/widgets/form_fields.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>

#include "ui/widgets/fields.h"
#include "ui/widgets/messages.h"
#include "ui/widgets/segments.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

FieldGrid::FieldGrid(int columns, double between_rows) : grid_(new QGridLayout) {
    grid_->setHorizontalSpacing(px(14));
    grid_->setVerticalSpacing(px(between_rows));
    for (int column = 0; column < columns; ++column)
        grid_->setColumnStretch(column, 1);
}

void FieldGrid::place(const QString& caption, QWidget* field, int row, int column, int columns) {
    // A group of options keeps its own width; a higher neighbour leaves the captions on one line.
    const bool group = qobject_cast<Segments*>(field) != nullptr;
    const auto place =
        group ? Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignTop : Qt::Alignment(Qt::AlignTop);
    grid_->addWidget(captioned(caption, field), row, column, 1, columns, place);
}

QLineEdit* digits_field(const char* name, int longest) {
    QLineEdit* made = moment_field(name);
    made->setMaxLength(longest);
    return made;
}

std::optional<common::Date> date_in(QLineEdit* field, common::Prompts& prompts) {
    const auto moment = common::parse_moment(utf8(field->text()));
    if (moment) return moment->date;
    prompts.message(message::wrong_date, common::Icon::critical);
    field->setFocus();
    field->selectAll();
    return std::nullopt;
}

void enter_leads_on(std::initializer_list<QWidget*> fields) {
    for (auto field = fields.begin(); field != fields.end() && field + 1 != fields.end(); ++field) {
        QWidget* next = *(field + 1);
        auto* line = qobject_cast<QLineEdit*>(*field);
        if (const auto* list = qobject_cast<QComboBox*>(*field)) line = list->lineEdit();
        if (line == nullptr) continue;
        QObject::connect(line, &QLineEdit::returnPressed, next, [next] {
            next->setFocus(Qt::TabFocusReason);
            if (auto* entered = qobject_cast<QLineEdit*>(next)) entered->selectAll();
        });
    }
}

void set_fixed(QWidget* field, bool fixed) {
    field->setAttribute(Qt::WA_TransparentForMouseEvents, fixed);
    auto* line = qobject_cast<QLineEdit*>(field);
    auto* list = qobject_cast<QComboBox*>(field);
    if (list != nullptr) line = list->lineEdit();
    if (line != nullptr) line->setReadOnly(fixed);
    // Of a group only its options take the focus.
    const auto options = field->findChildren<QAbstractButton*>();
    if (line != nullptr || options.isEmpty())
        field->setFocusPolicy(fixed ? Qt::NoFocus : line != nullptr ? Qt::WheelFocus : Qt::StrongFocus);
    for (auto* option : options)
        option->setFocusPolicy(fixed ? Qt::NoFocus : Qt::StrongFocus);
    field->setProperty("fixed", fixed);
    field->style()->unpolish(field);
    field->style()->polish(field);
}

QPushButton* foot_button(QHBoxLayout* row, const char* name, const QString& caption, int share,
                         std::function<void()> action) {
    auto* made = new QPushButton(caption);
    made->setObjectName(name);
    made->setMinimumHeight(px(48));
    made->setAutoDefault(true);
    QObject::connect(made, &QPushButton::clicked, made, [action = std::move(action)] { action(); });
    row->addWidget(made, share);
    return made;
}

}  // namespace ui

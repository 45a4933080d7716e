#include "ui/widgets/form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <stdexcept>

#include "common/messages.h"
#include "common/text.h"
#include "common/typed.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

using common::FieldDescription;
using common::FieldKind;
using common::FieldValue;

namespace {

QWidget* widget_for(const FieldDescription& description) {
    switch (description.kind) {
        case FieldKind::digits:
            return digits_field(description.name);
        case FieldKind::code:
        case FieldKind::amount:
            return new AmountField(description.name);
        case FieldKind::date:
            return moment_field(description.name);
        case FieldKind::choice:
            return choice_list(description.name);
        case FieldKind::options: {
            std::vector<std::pair<int, QString>> options;
            for (const common::FieldOption& option : description.options)
                options.emplace_back(option.value, option.caption);
            return new Segments(description.name, options);
        }
        case FieldKind::check: {
            auto* box = new QCheckBox(description.caption);
            box->setObjectName(description.name);
            return box;
        }
        case FieldKind::figure:
            return new Figure(description.name, "figure");
        default:
            return text_field(description.name);
    }
}

}  // namespace

void FormFields::build(const FieldDescription& description, FieldGrid& grid) {
    QWidget* widget = widget_for(description);
    auto* line = qobject_cast<QLineEdit*>(widget);
    if (line != nullptr && description.longest > 0) line->setMaxLength(description.longest);
    const common::FieldPlace& place = description.place;
    if (description.kind == FieldKind::check) {
        grid.layout()->addWidget(widget, place.row, place.column, 1, place.columns, Qt::AlignBottom);
    } else {
        grid.add(description.caption, widget, place.row, place.column, place.columns);
    }
    fields_.push_back({description, widget});
}

const FormFields::Built& FormFields::built(std::string_view name) const {
    const auto found = std::find_if(fields_.begin(), fields_.end(),
                                    [&](const Built& field) { return field.description.name == name; });
    if (found == fields_.end()) throw std::logic_error("no field " + std::string(name));
    return *found;
}

QWidget* FormFields::field(std::string_view name) const {
    return built(name).widget;
}

QLineEdit* FormFields::line(std::string_view name) const {
    return qobject_cast<QLineEdit*>(field(name));
}

QComboBox* FormFields::list(std::string_view name) const {
    return qobject_cast<QComboBox*>(field(name));
}

Segments* FormFields::options(std::string_view name) const {
    return qobject_cast<Segments*>(field(name));
}

QLabel* FormFields::figure(std::string_view name) const {
    return qobject_cast<QLabel*>(field(name));
}

void FormFields::set_all_fixed(bool fixed) {
    for (const Built& field : fields_)
        set_fixed(field.widget, fixed);
}

void FormFields::set_row_height(double measure) {
    for (const Built& field : fields_) {
        if (auto* options = qobject_cast<Segments*>(field.widget)) {
            options->set_height(measure);
        } else if (field.description.kind != FieldKind::check) {
            field.widget->setFixedHeight(px(measure));
        }
    }
}

void FormFields::enlarge(std::string_view name) {
    QWidget* widget = field(name);
    set_role(widget, "large");
    widget->setMinimumHeight(0);
    widget->setMaximumHeight(QWIDGETSIZE_MAX);
}

void FormFields::lead_on(std::vector<std::string_view> names, QWidget* last) {
    QWidget* former = nullptr;
    for (const std::string_view name : names) {
        const Built& field = built(name);
        const FieldKind kind = field.description.kind;
        if (kind == FieldKind::options || kind == FieldKind::check || kind == FieldKind::figure) continue;
        if (former != nullptr) enter_leads_on({former, field.widget});
        former = kind == FieldKind::search ? nullptr : field.widget;
    }
    if (former != nullptr) enter_leads_on({former, last});
}

void FormFields::refuse(const common::Refusal& refusal, common::Prompts& prompts) const {
    prompts.message(refusal.text, common::Icon::critical);
    if (refusal.field.empty()) return;
    const Built& refused = built(refusal.field);
    refused.widget->setFocus();
    // An invalid number, date or name must be typed again.
    const FieldKind kind = refused.description.kind;
    if (kind == FieldKind::choice) list(refusal.field)->lineEdit()->selectAll();
    if (kind == FieldKind::date || kind == FieldKind::code || kind == FieldKind::amount)
        line(refusal.field)->selectAll();
}

void FormFields::show_value(std::string_view name, const FieldValue& value) {
    QWidget* widget = field(name);
    if (const auto* text = std::get_if<std::string>(&value)) {
        line(name)->setText(qt(*text));
        line(name)->setCursorPosition(0);
    } else if (const auto* date = std::get_if<common::Date>(&value)) {
        line(name)->setText(qt(common::date_text(*date)));
    } else if (const auto* code = std::get_if<std::optional<std::int64_t>>(&value)) {
        show_choice(list(name), *code);
    } else if (const auto* chosen = std::get_if<bool>(&value)) {
        if (auto* box = qobject_cast<QCheckBox*>(widget)) {
            box->setChecked(*chosen);
        } else {
            options(name)->show_chosen(*chosen ? 1 : 0);
        }
    }
}

std::optional<FieldValue> FormFields::read_value(std::string_view name) const {
    const Built& read = built(name);
    switch (read.description.kind) {
        case FieldKind::date: {
            const auto date = common::read_date(utf8(line(name)->text()));
            return date ? std::optional<FieldValue>(*date) : std::nullopt;
        }
        case FieldKind::choice:
            if (is_unknown(list(name))) return std::nullopt;
            return choice_of(list(name));
        case FieldKind::options:
            return options(name)->value() == 1;
        case FieldKind::check:
            return qobject_cast<QCheckBox*>(read.widget)->isChecked();
        case FieldKind::figure:
            return FieldValue();
        default:
            return std::string(common::trim(utf8(line(name)->text())));
    }
}

bool FormFields::is_hidden(std::string_view name) const {
    const QWidget* widget = field(name);
    return widget->isHidden() || widget->parentWidget()->isHidden();
}

common::Refusal FormFields::refusal_of(std::string_view name) const {
    const bool is_date = built(name).description.kind == FieldKind::date;
    return {name, is_date ? common::message::wrong_date : common::message::not_in_list};
}

}  // namespace ui

// The fields of a form on the screen, built, shown and read by the form's table.
#pragma once

#include <QWidget>
#include <optional>
#include <string_view>
#include <vector>

#include "common/form.h"
#include "common/refusal.h"
#include "common/services.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"

class QComboBox;
class QLabel;
class QLineEdit;

namespace ui {

class Segments;

// The part of a form that does not depend on the struct of its values.
class FormFields {
  public:
    // The field of an object name; throws std::logic_error if the form has none of that name.
    QWidget* field(std::string_view name) const;
    QLineEdit* line(std::string_view name) const;
    QComboBox* list(std::string_view name) const;
    Segments* options(std::string_view name) const;
    QLabel* figure(std::string_view name) const;

    // Fixed fields show their values, and no key or click changes them.
    void set_all_fixed(bool fixed);
    // In pixels of the 1366×768 screen; check boxes keep their own height.
    void set_row_height(double measure);
    // Shows an amount in large figures, at the height that they need.
    void enlarge(std::string_view name);
    // Shows why the form was refused, then moves the focus to the field at fault.
    void refuse(const common::Refusal& refusal, common::Prompts& prompts) const;
    // Shows the refusal, if there is one; returns true if there is none.
    bool accept(const std::optional<common::Refusal>& refusal, common::Prompts& prompts) const {
        if (refusal) refuse(*refusal, prompts);
        return !refusal;
    }

  protected:
    void build(const common::FieldDescription& description, FieldGrid& grid);
    void lead_on(std::vector<std::string_view> names, QWidget* last);
    void show_value(std::string_view name, const common::FieldValue& value);
    // Nothing if the text of a date is not a date, or a name is not in its list.
    std::optional<common::FieldValue> read_value(std::string_view name) const;
    bool is_hidden(std::string_view name) const;
    // Why there is no value.
    common::Refusal refusal_of(std::string_view name) const;

  private:
    struct Built {
        common::FieldDescription description;
        QWidget* widget;
    };
    const Built& built(std::string_view name) const;
    std::vector<Built> fields_;
};

template <typename Values>
class Form : public FormFields {
  public:
    // Builds the fields of a table in its order; Tab follows the same order.
    void add(common::FormTable<Values> table, FieldGrid& grid) {
        for (const auto& field : table) {
            build(field.description, grid);
            table_.push_back(field);
        }
    }

    // Enter leads from each field of a table to the next, and from the last one to `last`. Options and check
    // boxes are passed by; a search field keeps its Enter.
    void lead_on(common::FormTable<Values> table, QWidget* last) {
        std::vector<std::string_view> names;
        for (const auto& field : table)
            names.push_back(field.description.name);
        FormFields::lead_on(std::move(names), last);
    }

    // Lists must have been filled before.
    void show(const Values& values) {
        for (const auto& field : table_)
            show_value(field.description.name, value_of(field, values));
    }

    // Takes over the typed values. Refuses an invalid date or a name that is not in its list; all values then
    // stay as they were. A hidden field keeps its value.
    std::optional<common::Refusal> read(Values& values) const {
        Values typed = values;
        for (const auto& field : table_) {
            auto value = read_value(field.description.name);
            if (value) {
                set_value(field, typed, std::move(*value));
            } else if (!is_hidden(field.description.name)) {
                return refusal_of(field.description.name);
            }
        }
        values = std::move(typed);
        return std::nullopt;
    }

    // Reads the fields and calls `save` in the guard of actions; `save` returns a refusal or nothing. Returns
    // true if they were saved. A refusal shows what `save` corrected, says why, and moves the focus to the
    // field at fault.
    template <typename Save>
    bool save(const common::Services& services, std::string_view action, Values& values, Save save) {
        std::optional<common::Refusal> refusal;
        const bool ended = guarded(services, action, [&] {
            refusal = read(values);
            if (refusal) return;
            const Values typed = values;
            refusal = save();
            if (refusal) show_corrected(typed, values);
        });
        return accept(refusal, services.prompts) && ended;
    }

  private:
    void show_corrected(const Values& typed, const Values& values) {
        for (const auto& field : table_) {
            const common::FieldValue value = value_of(field, values);
            if (value != value_of(field, typed)) show_value(field.description.name, value);
        }
    }

    std::vector<common::FormField<Values>> table_;
};

}  // namespace ui

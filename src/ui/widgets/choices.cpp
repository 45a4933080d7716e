#include "ui/widgets/choices.h"

#include <QComboBox>
#include <QLineEdit>

#include "ui/widgets/text.h"

namespace ui {

void fill_choices(QComboBox* list, const std::vector<common::Choice>& choices,
                  std::optional<std::int64_t> chosen) {
    const QSignalBlocker quiet(list);
    list->clear();
    int at = -1;
    for (const common::Choice& choice : choices) {
        if (chosen == choice.code) at = list->count();
        list->addItem(qt(choice.name), QVariant::fromValue<qlonglong>(choice.code));
    }
    list->setCurrentIndex(at);
    if (at < 0) list->setEditText({});
    list->lineEdit()->home(false);  // a long name shows its beginning
}

std::optional<std::int64_t> choice_of(const QComboBox* list) {
    int index = list->currentIndex();
    if (list->isEditable() && list->currentText() != list->itemText(index)) {
        index = list->findText(list->currentText().trimmed(), Qt::MatchFixedString);
    }
    if (index < 0) return std::nullopt;
    return list->itemData(index).toLongLong();
}

}  // namespace ui

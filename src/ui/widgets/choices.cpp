#include "ui/widgets/choices.h"

#include <QAbstractTableModel>
#include <QButtonGroup>
#include <QComboBox>
#include <QCompleter>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableView>
#include <algorithm>
#include <memory>
#include <utility>

#include "common/numbers.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

class ChoiceList : public QComboBox {
  public:
    using QComboBox::QComboBox;

    // A short list shows its names whole, also below a narrow field.
    void showPopup() override {
        constexpr int short_list = 100;  // measuring a long one takes time
        if (count() <= short_list) view()->setMinimumWidth(view()->sizeHintForColumn(0) + px(24));
        QComboBox::showPopup();
    }

  protected:
    // Typing replaces the name that is shown.
    void focusInEvent(QFocusEvent* event) override {
        QComboBox::focusInEvent(event);
        const Qt::FocusReason reason = event->reason();
        if (lineEdit() != nullptr && reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            lineEdit()->selectAll();
    }

    void paintEvent(QPaintEvent* event) override {
        QComboBox::paintEvent(event);
        if (property("fixed").toBool()) return;  // nothing to choose
        // Draws the arrow, because a style sheet could only take it from a picture file.
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(
            QPen(QColor(isEnabled() ? colour::slate : colour::off), px(2), Qt::SolidLine, Qt::RoundCap));
        const QPointF tip(px(16), height() / 2.0 + px(2));
        const double half = px(4);
        painter.drawPolyline(QPolygonF({tip + QPointF(-half, -half), tip, tip + QPointF(half, -half)}));
    }
};

constexpr int name_column = 0;  // the one that is shown in the field
constexpr int code_column = 1;

// The entries of a list; their codes are a column of their own if it has a heading.
class ChoiceModel : public QAbstractTableModel {
  public:
    ChoiceModel(QStringList headings, QObject* parent)
        : QAbstractTableModel(parent), headings_(std::move(headings)) {}

    void replace(const std::vector<common::Choice>& choices) {
        beginResetModel();
        choices_ = choices;
        endResetModel();
    }
    bool shows_codes() const { return headings_.size() > code_column; }
    int place_of(std::int64_t code) const {
        const auto found = std::find_if(choices_.begin(), choices_.end(),
                                        [&](const common::Choice& choice) { return choice.code == code; });
        return found == choices_.end() ? -1 : static_cast<int>(found - choices_.begin());
    }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(choices_.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(headings_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid()) return {};
        const common::Choice& choice = choices_[static_cast<std::size_t>(index.row())];
        if (role == Qt::UserRole) return QVariant::fromValue<qlonglong>(choice.code);
        if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
        return index.column() == code_column ? figure(choice.code) : qt(choice.name);
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return headings_.value(section);
    }

  private:
    QStringList headings_;
    std::vector<common::Choice> choices_;
};

ChoiceModel* model_of(const QComboBox* list) {
    return dynamic_cast<ChoiceModel*>(list->model());
}

}  // namespace

QComboBox* choice_list(const QString& name, QWidget* parent) {
    auto* list = new ChoiceList(parent);
    list->setObjectName(name);
    list->setEditable(true);
    begin_right(list->lineEdit());
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setMaxVisibleItems(12);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(10);
    list->setItemDelegate(new QStyledItemDelegate(list));  // the default one knows no padding
    list->completer()->setCompletionMode(QCompleter::InlineCompletion);
    list->completer()->setCaseSensitivity(Qt::CaseInsensitive);
    return list;
}

void lead_on(QComboBox* list, QWidget* next) {
    const auto focus_next = [next] { next->setFocus(); };
    QObject::connect(list->lineEdit(), &QLineEdit::returnPressed, next, focus_next);
    // An arrow key chooses an entry as well, but the focus must stay for the next arrow.
    const auto picked = std::make_shared<bool>(false);
    QObject::connect(list->view(), &QAbstractItemView::pressed, next, [picked] { *picked = true; });
    QObject::connect(
        list, &QComboBox::activated, next,
        [picked, focus_next] {
            if (std::exchange(*picked, false)) focus_next();
        },
        Qt::QueuedConnection);  // the list takes the focus back as it closes
}

namespace {

// The entry of a code typed into a list that shows codes; -1 if there is none.
int entry_of_typed_code(const QComboBox* list) {
    const ChoiceModel* entries = model_of(list);
    if (entries == nullptr || !entries->shows_codes()) return -1;
    const auto code = common::parse_integer(utf8(list->currentText()));
    return code ? entries->place_of(*code) : -1;
}

}  // namespace

void show_codes(QComboBox* list, const QString& code_heading, const QString& name_heading) {
    list->setModel(new ChoiceModel({name_heading, code_heading}, list));
    auto* table = new QTableView(list);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(px(least_target));
    table->setShowGrid(false);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setView(table);
    QHeaderView* header = table->horizontalHeader();
    header->setSectionsClickable(false);
    header->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    header->moveSection(code_column, 0);
    header->resizeSection(code_column, px(90));
    header->setSectionResizeMode(name_column, QHeaderView::Stretch);
    // A typed code is replaced by its name.
    QObject::connect(list->lineEdit(), &QLineEdit::editingFinished, list, [list] {
        if (entry_of_typed_code(list) >= 0) show_choice(list, choice_of(list));
    });
}

void fill_choices(QComboBox* list, const std::vector<common::Choice>& choices,
                  std::optional<std::int64_t> chosen) {
    const QSignalBlocker quiet(list);
    if (model_of(list) == nullptr) list->setModel(new ChoiceModel(QStringList{QString()}, list));
    model_of(list)->replace(choices);
    show_choice(list, chosen);
}

void fill_optional_choices(QComboBox* list, const std::vector<common::Choice>& choices, std::int64_t chosen) {
    std::vector<common::Choice> all = choices;
    all.insert(all.begin(), {0, {}});
    fill_choices(list, all, common::contains(all, chosen) ? chosen : 0);
}

void show_choice(QComboBox* list, std::optional<std::int64_t> code) {
    const QSignalBlocker quiet(list);
    const int at = code && model_of(list) != nullptr ? model_of(list)->place_of(*code) : -1;
    list->setCurrentIndex(at);
    list->setEditText(list->itemText(at));  // replaces a name that was typed and is not in the list
    list->lineEdit()->home(false);          // a long name shows its beginning
}

std::optional<std::int64_t> choice_of(const QComboBox* list) {
    int index = list->currentIndex();
    if (list->isEditable() && list->currentText() != list->itemText(index)) {
        index = list->findText(list->currentText().trimmed(), Qt::MatchFixedString);
    }
    if (index < 0) index = entry_of_typed_code(list);
    if (index < 0) return std::nullopt;
    return list->itemData(index).toLongLong();
}

bool is_unknown(const QComboBox* list) {
    return !list->currentText().trimmed().isEmpty() && !choice_of(list);
}

Segments::Segments(const QString& name, const std::vector<std::pair<int, QString>>& options, QWidget* parent)
    : QWidget(parent) {
    setObjectName(name);
    set_role(this, "segments");
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(px(1), px(1), px(1), px(1));
    row->setSpacing(0);
    auto* group = new QButtonGroup(this);
    for (const auto& [value, caption] : options) {
        if (!buttons_.empty()) {
            auto* divider = new QFrame;
            set_role(divider, "divider");
            row->addWidget(divider);
        }
        auto* button = new QPushButton(caption);
        button->setObjectName(name + "_" + QString::number(value));
        button->setCheckable(true);
        button->setProperty("end", buttons_.empty()                        ? "first"
                                   : buttons_.size() + 1 == options.size() ? "last"
                                                                           : "");
        set_role(button, "segment");
        group->addButton(button);
        row->addWidget(button);
        buttons_.emplace_back(value, button);
        connect(button, &QPushButton::clicked, this,
                [this, chosen_value = value] { emit chosen(chosen_value); });
    }
    set_height(field_height);
}

void Segments::set_height(double measure) {
    for (const auto& [of, button] : buttons_)
        button->setFixedHeight(std::max(px(measure) - 2 * px(1), px(least_target)));
}

void Segments::show_chosen(int value) {
    for (const auto& [of, button] : buttons_)
        button->setChecked(of == value);
}

void Segments::set_enabled(int value, bool enabled) {
    for (const auto& [of, button] : buttons_)
        if (of == value) button->setEnabled(enabled);
}

int Segments::value() const {
    for (const auto& [of, button] : buttons_) {
        if (button->isChecked()) return of;
    }
    return 0;
}

}  // namespace ui

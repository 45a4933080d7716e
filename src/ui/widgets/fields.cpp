#include "ui/widgets/fields.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "common/keyboard_layout.h"
#include "common/messages.h"
#include "common/typed.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr auto hint_property = "hint";

}  // namespace

void HintedField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    const QString hint = property(hint_property).toString();
    if (!text().isEmpty() || hint.isEmpty()) return;
    QPainter painter(this);
    painter.setPen(QColor(colour::hint));
    painter.drawText(rect().adjusted(px(14), 0, -px(18), 0),
                     Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter, hint);
}

void set_hint(QLineEdit* field, const QString& text) {
    field->setProperty(hint_property, text);
    field->setAccessibleDescription(text);
    field->update();
}

NumberField::NumberField(const QString& name, QWidget* parent) : SelectingField(parent) {
    setObjectName(name);
    setProperty(keys_property, keys_no_scans);
    setLayoutDirection(Qt::LeftToRight);
    setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
}

AmountField::AmountField(const QString& name, QWidget* parent) : NumberField(name, parent) {}

QSize AmountField::sizeHint() const {
    constexpr double wide = 140;
    return {px(wide), QLineEdit::sizeHint().height()};
}

void SelectingField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    selectAll();
    clicked_into_ = event->reason() == Qt::MouseFocusReason;
}

void SelectingField::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    // The press has put the cursor into the old text: "10" typed there would turn 0.00 into 100.00.
    // So would a further click before anything is typed.
    const bool was_left_alone = !isModified() && !hasSelectedText();
    if (std::exchange(clicked_into_, false) || was_left_alone) selectAll();
}

void AmountField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        emit escaped();
        event->ignore();
        return;
    }
    // Under the Arabic layout the key of the point types a letter.
    if (common::on_latin_layout(utf8(event->text())) == ".") {
        QKeyEvent point(QEvent::KeyPress, Qt::Key_Period, event->modifiers(), ".");
        NumberField::keyPressEvent(&point);
        return;
    }
    NumberField::keyPressEvent(event);
}

Figure::Figure(const QString& name, const char* role, QWidget* parent) : QLabel(parent) {
    setObjectName(name);
    setLayoutDirection(Qt::LeftToRight);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    set_role(this, role);
}

void show_fitted(QLabel* figure, const QString& text, double largest) {
    constexpr double smallest = 16;
    QFont font = figure->font();
    font.setBold(true);
    int pixels = px(largest);
    for (; pixels > px(smallest); --pixels) {
        font.setPixelSize(pixels);
        if (QFontMetrics(font).horizontalAdvance(text) <= figure->contentsRect().width()) break;
    }
    const QString style = pixels == px(largest) ? QString() : QString("font-size: %1px;").arg(pixels);
    if (figure->styleSheet() != style) figure->setStyleSheet(style);
    figure->setText(text);
}

QLabel* label(const QString& text, const char* role, const char* name) {
    auto* made = new QLabel(sentence(text));
    made->setObjectName(name);
    made->setTextFormat(Qt::PlainText);
    made->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    set_role(made, role);
    return made;
}

QFrame* rule() {
    auto* made = new QFrame;
    set_role(made, "rule");
    return made;
}

QWidget* captioned(const QString& caption, QWidget* field, QWidget* parent) {
    // A field with a height of its own keeps it.
    if (auto* options = qobject_cast<Segments*>(field)) {
        options->set_height(field_height);
    } else if (qobject_cast<QLabel*>(field) != nullptr) {
        field->setMinimumHeight(px(field_height));
    } else if (field->property("role") != "large" && field->minimumHeight() != field->maximumHeight() &&
               (qobject_cast<QLineEdit*>(field) != nullptr || qobject_cast<QComboBox*>(field) != nullptr)) {
        field->setFixedHeight(px(field_height));
    }
    auto* pair = new QWidget(parent);
    auto* column = new QVBoxLayout(pair);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(4));
    QLabel* above = label(caption, "caption");
    above->setBuddy(field);
    field->setAccessibleName(QString(caption).remove('&'));
    column->addWidget(above);
    column->addWidget(field);
    return pair;
}

void begin_right(QLineEdit* field) {
    // An empty field takes the direction of the keyboard's language. No property overrides that, but the
    // direction key does.
    QKeyEvent direction(QEvent::KeyPress, Qt::Key_Direction_R, Qt::NoModifier);
    QCoreApplication::sendEvent(field, &direction);
}

QLineEdit* text_field(const QString& name, QWidget* parent) {
    auto* field = new HintedField(parent);
    field->setObjectName(name);
    begin_right(field);
    return field;
}

QLineEdit* moment_field(const QString& name, QWidget* parent) {
    auto* field = new HintedField(parent);
    field->setObjectName(name);
    field->setLayoutDirection(Qt::LeftToRight);
    field->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
    return field;
}

QLineEdit* digits_field(const char* name, int longest) {
    QLineEdit* made = moment_field(name);
    made->setMaxLength(longest);
    return made;
}

FieldGrid::FieldGrid(int columns, double between_rows) : grid_(new QGridLayout) {
    grid_->setHorizontalSpacing(px(14));
    grid_->setVerticalSpacing(px(between_rows));
    for (int column = 0; column < columns; ++column)
        grid_->setColumnStretch(column, 1);
}

void FieldGrid::place(const QString& caption, QWidget* field, int row, int column, int columns) {
    // Options keep their own width. Alignment at the top keeps the captions of a row on one line.
    const bool group = qobject_cast<Segments*>(field) != nullptr;
    const auto place =
        group ? Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignTop : Qt::Alignment(Qt::AlignTop);
    grid_->addWidget(captioned(caption, field), row, column, 1, columns, place);
}

std::optional<common::Date> date_in(QLineEdit* field, common::Prompts& prompts) {
    if (const auto date = common::read_date(utf8(field->text()))) return date;
    prompts.message(common::message::wrong_date, common::Icon::critical);
    field->setFocus();
    field->selectAll();
    return std::nullopt;
}

bool all_known(std::initializer_list<QComboBox*> lists, common::Prompts& prompts) {
    const auto unknown = std::find_if(lists.begin(), lists.end(), is_unknown);
    if (unknown == lists.end()) return true;
    prompts.message(common::message::not_in_list, common::Icon::critical);
    (*unknown)->setFocus(Qt::TabFocusReason);  // selects the name
    return false;
}

void take_typed(QWidget* field) {
    if (auto* list = qobject_cast<QComboBox*>(field); list != nullptr && list->isEditable()) {
        emit list->lineEdit()->editingFinished();
    } else if (auto* line = qobject_cast<QLineEdit*>(field); line != nullptr && line->isModified()) {
        emit line->editingFinished();
    }
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
    // In a row of options only the options themselves take the focus.
    const auto options = field->findChildren<QAbstractButton*>();
    if (line != nullptr || options.isEmpty())
        field->setFocusPolicy(fixed ? Qt::NoFocus : line != nullptr ? Qt::WheelFocus : Qt::StrongFocus);
    for (auto* option : options)
        option->setFocusPolicy(fixed ? Qt::NoFocus : Qt::StrongFocus);
    set_state(field, "fixed", fixed);
}

namespace {

QPushButton* button(const char* name, const QString& caption, std::function<void()> action) {
    auto* made = new QPushButton(caption);
    made->setObjectName(name);
    made->setAutoDefault(true);
    QObject::connect(made, &QPushButton::clicked, made, [action = std::move(action)] { action(); });
    return made;
}

}  // namespace

QPushButton* field_button(QHBoxLayout* row, const char* name, const QString& caption,
                          std::function<void()> action) {
    QPushButton* made = button(name, caption, std::move(action));
    made->setFixedHeight(px(field_height));
    row->addWidget(made, 0, Qt::AlignBottom);
    return made;
}

QPushButton* foot_button(QHBoxLayout* row, const char* name, const QString& caption, int share,
                         std::function<void()> action) {
    QPushButton* made = button(name, caption, std::move(action));
    made->setMinimumHeight(px(48));
    row->addWidget(made, share);
    return made;
}

}  // namespace ui

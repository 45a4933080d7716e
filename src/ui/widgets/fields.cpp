#include "ui/widgets/fields.h"

#include <QComboBox>
#include <QCompleter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>
#include <utility>

#include "ui/widgets/colours.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/segments.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

constexpr auto hint_property = "hint";

// A field of text or of a moment, with its hint.
class PlainField : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

  protected:
    void paintEvent(QPaintEvent* event) override {
        QLineEdit::paintEvent(event);
        const QString hint = property(hint_property).toString();
        if (!text().isEmpty() || hint.isEmpty()) return;
        QPainter painter(this);
        painter.setPen(QColor(colour::hint));
        painter.drawText(rect().adjusted(px(14), 0, -px(18), 0),
                         Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter, hint);
    }
};

}  // namespace

void set_hint(QLineEdit* field, const QString& text) {
    field->setProperty(hint_property, text);
    field->setAccessibleDescription(text);
    field->update();
}

AmountField::AmountField(const QString& name, QWidget* parent) : QLineEdit(parent) {
    setObjectName(name);
    setProperty(keys_property, keys_no_scans);
    setLayoutDirection(Qt::LeftToRight);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setMaxLength(15);
    static const QRegularExpression amount(
        R"([0-9\x{0660}-\x{0669}\x{06F0}-\x{06F9}]*[.,\x{066B}]?[0-9\x{0660}-\x{0669}\x{06F0}-\x{06F9}]*)");
    setValidator(new QRegularExpressionValidator(amount, this));
}

QSize AmountField::sizeHint() const {
    constexpr double wide = 140;
    return {px(wide), QLineEdit::sizeHint().height()};
}

void AmountField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    selectAll();
    clicked_into_ = event->reason() == Qt::MouseFocusReason;
}

void AmountField::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    // The press has set the cursor into the old amount: "10" typed there would make 0.00 into 100.00.
    if (std::exchange(clicked_into_, false)) selectAll();
}

void AmountField::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        emit escaped();
        event->ignore();
        return;
    }
    QLineEdit::keyPressEvent(event);
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
    const QString dress = pixels == px(largest) ? QString() : QString("font-size: %1px;").arg(pixels);
    if (figure->styleSheet() != dress) figure->setStyleSheet(dress);
    figure->setText(text);
}

QLabel* label(const QString& text, const char* role, QWidget* parent) {
    auto* made = new QLabel(text, parent);
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
    // A field that is to stand out has a height of its own.
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
    // An empty field takes the direction of the keyboard's language, which no property overrides; the key for
    // it does.
    QKeyEvent direction(QEvent::KeyPress, Qt::Key_Direction_R, Qt::NoModifier);
    QCoreApplication::sendEvent(field, &direction);
}

QLineEdit* text_field(const QString& name, QWidget* parent) {
    auto* field = new PlainField(parent);
    field->setObjectName(name);
    begin_right(field);
    return field;
}

QLineEdit* moment_field(const QString& name, QWidget* parent) {
    auto* field = new PlainField(parent);
    field->setObjectName(name);
    field->setLayoutDirection(Qt::LeftToRight);
    field->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    field->setMaxLength(10);
    return field;
}

namespace {

class ChoiceList : public QComboBox {
  public:
    using QComboBox::QComboBox;

  protected:
    // A name that stands in the list already is typed over, not added to.
    void focusInEvent(QFocusEvent* event) override {
        QComboBox::focusInEvent(event);
        const Qt::FocusReason reason = event->reason();
        if (lineEdit() != nullptr && reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            lineEdit()->selectAll();
    }

    void paintEvent(QPaintEvent* event) override {
        QComboBox::paintEvent(event);
        if (property("fixed").toBool()) return;  // nothing to choose
        // The arrow, which a style sheet can only draw from a picture file.
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(
            QPen(QColor(isEnabled() ? colour::slate : colour::off), px(2), Qt::SolidLine, Qt::RoundCap));
        const QPointF tip(px(16), height() / 2.0 + px(2));
        const double half = px(4);
        painter.drawPolyline(QPolygonF({tip + QPointF(-half, -half), tip, tip + QPointF(half, -half)}));
    }
};

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
    list->completer()->setCompletionMode(QCompleter::InlineCompletion);
    list->completer()->setCaseSensitivity(Qt::CaseInsensitive);
    return list;
}

qlonglong chosen_code(const QComboBox* list) {
    int index = list->currentIndex();
    if (list->isEditable() && list->currentText() != list->itemText(index)) {
        index = list->findText(list->currentText().trimmed(), Qt::MatchFixedString);
    }
    return index < 0 ? 0 : list->itemData(index).toLongLong();
}

}  // namespace ui

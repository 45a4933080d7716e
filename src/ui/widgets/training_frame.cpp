#include "ui/widgets/training_frame.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QWidget>

#include "ui/widgets/colours.h"
#include "ui/widgets/style.h"

namespace ui {

namespace {

constexpr auto frame_name = "training_frame";
// "Training: nothing here is entered in the shop's data."
constexpr auto training_text = "تدريب · لا يسجل شيء هنا في بيانات المحل";
constexpr double band = 24;  // above the screen, with the text
constexpr double edge = 6;   // on its other sides
constexpr double stripe = 16;

// Lies in the margins of a window: its screen and the sheets over it are laid out within them.
class Frame : public QWidget {
  public:
    explicit Frame(QWidget* window) : QWidget(window) {
        setObjectName(frame_name);
        setAccessibleName(training_text);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
        window->setContentsMargins(px(edge), px(band), px(edge), px(edge));
        window->installEventFilter(this);
        fit();
        show();
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Resize) fit();
        return QWidget::eventFilter(watched, event);
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(rect(), QColor(colour::training));
        painter.setPen(QPen(QColor(colour::night), px(stripe) / 2.0));
        for (int x = -height(); x < width() + height(); x += px(stripe))
            painter.drawLine(x, height(), x + height(), 0);
        QFont letters = font();
        letters.setPixelSize(px(14));
        letters.setBold(true);
        painter.setFont(letters);
        const int wide = painter.fontMetrics().horizontalAdvance(training_text) + px(60);
        const QRect label((width() - wide) / 2, 0, wide, px(band));
        painter.fillRect(label, QColor(colour::training));
        painter.setPen(QColor(colour::night));
        painter.drawText(label, Qt::AlignCenter, training_text);
    }

  private:
    void fit() {
        setGeometry(parentWidget()->rect());
        setMask(QRegion(rect()).subtracted(parentWidget()->contentsRect()));
    }
};

}  // namespace

TrainingFrame::TrainingFrame() {
    qApp->installEventFilter(this);
}

TrainingFrame::~TrainingFrame() {
    qApp->removeEventFilter(this);
}

bool TrainingFrame::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Show || !watched->isWidgetType()) return false;
    auto* window = static_cast<QWidget*>(watched);
    if (window->isWindow() && window->windowType() == Qt::Window &&
        window->findChild<QWidget*>(frame_name, Qt::FindDirectChildrenOnly) == nullptr)
        new Frame(window);
    return false;
}

}  // namespace ui

#include "bench/painted_till.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QTimer>
#include <stdexcept>

#include "bench/measure.h"
#include "printing/report_printer.h"
#include "ui/context.h"
#include "ui/key_queue.h"
#include "ui/neighbours.h"
#include "ui/sales_screen.h"
#include "ui/sheet.h"
#include "ui/style.h"

namespace bench {

namespace {

class NoReports final : public printing::ReportPrinter {
  public:
    bool print(const printing::Report&) override { return true; }
    void preview(const printing::Report&) override {}
    bool save_pdf(const printing::Report&, const std::filesystem::path&) override { return true; }
    bool save_csv(const printing::Report&, const std::filesystem::path&) override { return true; }
};

void press(QWidget& widget, int key, const QString& text = {},
           Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        QApplication::sendEvent(&widget, &event);
    }
}

}  // namespace

struct PaintedTill::Parts {
    explicit Parts(Till& till)
        : context{till.connection(), till.session(), till.outside(), till.nobody(), reports, choice, keys, {},
                  [](QWidget&) {}},
          screen(context, ui::neighbours(context)),
          canvas(1366, 768, QImage::Format_RGB32) {
        screen.resize(1366, 768);
        screen.show();
        screen.activateWindow();
        if (!screen.open()) throw std::runtime_error("the sales screen did not open");
        QCoreApplication::processEvents();
        entry = screen.findChild<QLineEdit*>("entry");
        if (entry == nullptr) throw std::runtime_error("the sales screen has no entry field");
    }
    void paint() {
        QCoreApplication::sendPostedEvents();
        screen.render(&canvas);
    }

    NoReports reports;
    printing::PrinterChoice choice;
    ui::KeyQueue keys;
    ui::Context context;
    ui::Form31 screen;
    QImage canvas;
    QLineEdit* entry = nullptr;
};

PaintedTill::PaintedTill(Till& till) : parts_(std::make_unique<Parts>(till)), sizes_(till.sizes()) {}
PaintedTill::~PaintedTill() = default;

void PaintedTill::type_code() {
    if (lines() >= 40) clear();
    parts_->entry->setText(QString::fromStdString(rung_up_code(sizes_, next_++)));
}

void PaintedTill::enter_and_paint() {
    const std::size_t before = lines();
    press(*parts_->entry, Qt::Key_Return, "\r");
    parts_->paint();
    if (lines() != before + 1) throw std::runtime_error("Enter added no line");
}

double PaintedTill::search_and_paint(const std::string& name) {
    ui::Form31& screen = parts_->screen;
    screen.activateWindow();
    for (int i = 0; i < 100 && !screen.isActiveWindow(); ++i)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    parts_->entry->setFocus();
    double taken = -1;
    // The panel runs a loop of its own until it is left.
    QTimer::singleShot(0, &screen, [&] {
        ui::Sheet* panel = ui::Sheet::top_of(&screen);
        auto* field = panel == nullptr ? nullptr : panel->findChild<QLineEdit*>("search_name");
        if (field == nullptr) return;
        for (const QChar letter : QString::fromStdString(name))
            press(*field, 0, QString(letter));
        parts_->paint();
        taken = milliseconds([&] {
            press(*field, Qt::Key_Down);
            parts_->paint();
        });
        panel->leave();
    });
    press(*parts_->entry, Qt::Key_F, {}, Qt::ControlModifier);
    if (taken < 0) throw std::runtime_error("the search panel did not open");
    return taken;
}

std::size_t PaintedTill::lines() const {
    return parts_->screen.logic().invoice().lines.size();
}

void PaintedTill::clear() {
    parts_->screen.logic().clear();
    parts_->screen.repaint_all();
}

}  // namespace bench

#include "bench/painted_till.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <stdexcept>

#include "printing/report_printer.h"
#include "ui/context.h"
#include "ui/key_queue.h"
#include "ui/neighbours.h"
#include "ui/sales_screen.h"
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

void press(QWidget& widget, int key, const QString& text = {}) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
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
        if (!screen.open()) throw std::runtime_error("the sales screen did not open");
        entry = screen.findChild<QLineEdit*>("entry");
        if (entry == nullptr) throw std::runtime_error("the sales screen has no entry field");
    }
    NoReports reports;
    printing::PrinterChoice choice;
    ui::KeyQueue keys;
    ui::Context context;
    ui::Form31 screen;
    QImage canvas;
    QLineEdit* entry = nullptr;
};

PaintedTill::PaintedTill(Till& till) : parts_(std::make_unique<Parts>(till)) {}
PaintedTill::~PaintedTill() = default;

void PaintedTill::type_code() {
    parts_->entry->setText(QString::number(next_item_));
    next_item_ = next_item_ % 9'000 + 1;
}

void PaintedTill::enter_and_paint() {
    const std::size_t before = lines();
    press(*parts_->entry, Qt::Key_Return, "\r");
    QCoreApplication::sendPostedEvents();
    parts_->screen.render(&parts_->canvas);
    if (lines() != before + 1) throw std::runtime_error("Enter added no line");
}

std::size_t PaintedTill::lines() const {
    return parts_->screen.logic().invoice().lines.size();
}

void PaintedTill::clear() {
    parts_->screen.logic().clear();
    parts_->screen.repaint_all();
}

void PaintedTill::sell(int count) {
    for (int line = 0; line < count; ++line) {
        type_code();
        enter_and_paint();
    }
    auto& logic = parts_->screen.logic();
    if (logic.begin_save() == sales::BeginSave::refused || logic.SaveInvoice() != sales::SaveOutcome::saved)
        throw std::runtime_error("an invoice was not saved");
    parts_->screen.repaint_all();
    QCoreApplication::processEvents();
}

}  // namespace bench

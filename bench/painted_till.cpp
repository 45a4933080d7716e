#include "bench/painted_till.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <optional>
#include <stdexcept>

#include "bench/measure.h"
#include "printing/report_printer.h"
#include "ui/sales/sales_window.h"
#include "ui/screens.h"
#include "ui/widgets/context.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/keypad.h"
#include "ui/widgets/screen_choice.h"
#include "ui/widgets/server_link.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/sounds.h"
#include "ui/widgets/style.h"

namespace bench {

namespace {

class NoReports final : public printing::ReportPrinter {
  public:
    bool print(const printing::Report&) override { return true; }
    void preview(const printing::Report&) override {}
    bool print_labels(const printing::LabelJob&) override { return false; }
    void preview_labels(const printing::LabelJob&) override {}
    bool save_pdf(const printing::Report&, const std::filesystem::path&) override { return true; }
    bool save_csv(const printing::Report&, const std::filesystem::path&) override { return true; }
};

// Notices when a list is painted.
class PaintWatch final : public QObject {
  public:
    explicit PaintWatch(QAbstractScrollArea* list) : list_(list->viewport()) {
        list_->installEventFilter(this);
    }
    bool is_painted() const { return painted_; }
    void expect_painted() const {
        if (!painted_) throw std::runtime_error("the list was not painted");
    }

  private:
    bool eventFilter(QObject*, QEvent* event) override {
        painted_ = painted_ || event->type() == QEvent::Paint;
        return false;
    }
    QPointer<QWidget> list_;
    bool painted_ = false;
};

}  // namespace

void press(QWidget& widget, int key, const QString& text, Qt::KeyboardModifiers modifiers) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        QApplication::sendEvent(&widget, &event);
    }
}

void paint(QWidget& window) {
    QCoreApplication::sendPostedEvents();
    QEvent frame(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &frame);
}

struct PaintedTill::Parts {
    explicit Parts(Till& till)
        : server(keys, till.services().clock),
          context{till.connection(),
                  till.session(),
                  till.services(),
                  till.nobody(),
                  reports,
                  choice,
                  screen_choice,
                  keypad,
                  sounds,
                  keys,
                  server,
                  {},
                  {},
                  [](QWidget&) {}},
          screen(context, ui::screen_commands()) {
        screen.resize(1366, 768);
        screen.show();
        screen.activateWindow();
        if (!screen.open()) throw std::runtime_error("the sales screen did not open");
        QCoreApplication::processEvents();
        entry = screen.findChild<QLineEdit*>("entry");
        lines = screen.findChild<QAbstractScrollArea*>("lines");
        if (entry == nullptr || lines == nullptr)
            throw std::runtime_error("the sales screen has no entry field or no lines");
    }

    NoReports reports;
    printing::PrinterChoice choice;
    ui::ScreenChoice screen_choice;
    ui::Keypad keypad{screen_choice};
    ui::Sounds sounds{screen_choice};
    ui::KeyQueue keys;
    ui::ServerLink server;
    ui::Context context;
    ui::SalesWindow screen;
    QLineEdit* entry = nullptr;
    QAbstractScrollArea* lines = nullptr;
};

PaintedTill::PaintedTill(Till& till) : parts_(std::make_unique<Parts>(till)), sizes_(till.sizes()) {}
PaintedTill::~PaintedTill() = default;

ui::SalesWindow& PaintedTill::window() {
    return parts_->screen;
}

const ui::Context& PaintedTill::context() const {
    return parts_->context;
}

void PaintedTill::paint() {
    bench::paint(parts_->screen);
}

void PaintedTill::type_code() {
    if (lines() >= 40) clear();
    parts_->entry->setText(QString::fromStdString(rung_up_code(sizes_, next_++)));
}

void PaintedTill::enter_and_paint() {
    const std::size_t before = lines();
    const PaintWatch watch(parts_->lines);
    press(*parts_->entry, Qt::Key_Return, "\r");
    paint();
    if (lines() != before + 1) throw std::runtime_error("Enter added no line");
    watch.expect_painted();
}

void PaintedTill::activate() {
    parts_->screen.activateWindow();
    for (int i = 0; i < 100 && !parts_->screen.isActiveWindow(); ++i)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    parts_->entry->setFocus();
}

double PaintedTill::search_and_paint(const std::string& name) {
    ui::SalesWindow& screen = parts_->screen;
    activate();
    double taken = -1;
    std::optional<PaintWatch> watch;
    // The panel runs its own loop until it is closed.
    QTimer::singleShot(0, &screen, [&] {
        ui::Sheet* panel = ui::Sheet::top_of(&screen);
        auto* field = panel == nullptr ? nullptr : panel->findChild<QLineEdit*>("search_name");
        auto* results = panel == nullptr ? nullptr : panel->findChild<QAbstractScrollArea*>("search_results");
        if (field == nullptr || results == nullptr) return;
        for (const QChar letter : QString::fromStdString(name))
            press(*field, 0, QString(letter));
        paint();
        watch.emplace(results);
        taken = milliseconds([&] {
            press(*field, Qt::Key_Down);
            paint();
        });
        panel->leave();
    });
    press(*parts_->entry, Qt::Key_F, {}, Qt::ControlModifier);
    if (taken < 0) throw std::runtime_error("the search panel did not open");
    watch->expect_painted();
    return taken;
}

double PaintedTill::match_and_paint(const std::string& words) {
    const QString typed = QString::fromStdString(words);
    auto* list = parts_->screen.findChild<QAbstractScrollArea*>("matches");
    if (list == nullptr) throw std::runtime_error("there is no list of matches");
    activate();
    parts_->entry->setText(typed.chopped(1));
    const PaintWatch watch(list);
    const double taken = milliseconds([&] {
        QKeyEvent letter(QEvent::KeyPress, 0, Qt::NoModifier, typed.right(1));
        letter.setTimestamp(typed_at_ += 1000);  // by hand
        QApplication::sendEvent(parts_->entry, &letter);
        // The clock of the window ends each wait within a second.
        for (int i = 0; i < 1000 && !list->isVisible(); ++i)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        for (int i = 0; i < 10 && !watch.is_painted(); ++i) {
            QCoreApplication::processEvents();
            paint();
        }
    });
    if (!list->isVisible()) throw std::runtime_error("the matches did not open");
    watch.expect_painted();
    parts_->entry->setText({});
    return taken;
}

std::size_t PaintedTill::lines() const {
    return parts_->screen.desk().invoice().lines.size();
}

void PaintedTill::clear() {
    parts_->screen.desk().checkout().CancelInvoice();
    parts_->screen.repaint_all();
}

}  // namespace bench

#include "ui/printing/progress.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>

#include "ui/widgets/fields.h"
#include "ui/widgets/sheet.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

constexpr int moment_ms = 400;  // work that ends sooner shows no bar

class ProgressSheet final : public Sheet {
  public:
    ProgressSheet(const QString& title, const ProgressWords& words)
        : Sheet(window_in_use(), title), words_(words) {
        setObjectName("progress");
        set_card_width(520);
        setFocusPolicy(Qt::StrongFocus);
        state_ = label({}, "said", "progress_state");
        body()->addWidget(state_);
        bar_ = new QProgressBar;
        bar_->setObjectName("progress_bar");
        bar_->setTextVisible(false);
        bar_->setFixedHeight(px(22));
        body()->addWidget(bar_);
        foot_button(add_row(), "progress_cancel", "إلغاء  Esc", 1, [this] { escape(); });
        started_.start();
    }
    ~ProgressSheet() override {
        if (isVisible()) shut();
    }

    bool show_state(int done, int total) {
        if (started_.elapsed() < moment_ms) return true;
        if (!isVisible()) open();
        bar_->setRange(0, total);
        bar_->setValue(done);
        state_->setText(done < total ? QString(words_.state).arg(done + 1).arg(total) : QString(words_.end));
        QCoreApplication::processEvents();
        return !is_cancelled_;
    }

  protected:
    // A hasty Enter ends nothing.
    void take_focus() override { setFocus(); }
    void escape() override { is_cancelled_ = true; }

  private:
    ProgressWords words_;
    QElapsedTimer started_;
    QLabel* state_;
    QProgressBar* bar_;
    bool is_cancelled_ = false;
};

}  // namespace

printing::pages::Progress show_progress(const std::string& title, const ProgressWords& words) {
    return [sheet = std::make_shared<ProgressSheet>(qt(title), words)](int done, int total) {
        return sheet->show_state(done, total);
    };
}

}  // namespace ui

// The till's journal on the screen: events of a period by user and kind, their totals, and both on paper and
// as CSV.
#pragma once

#include "audit/review.h"
#include "printing/report.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QLabel;

namespace ui {

class ListTable;
class Segments;

class JournalScreen : public Sheet {
    Q_OBJECT
  public:
    JournalScreen(QWidget* host, const Context& context);
    // Shows the events of today; returns false after a message if the user may not see them.
    bool open();

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* build_choices();
    QWidget* build_foot();
    void show_events();
    void repaint_rows();
    void show_row_text(int row);
    // What is on the screen, as a page.
    printing::Report paper() const;

    Context context_;
    audit::Review logic_;
    Form<audit::ReviewFields> form_;
    audit::ReviewFields shown_;  // the fields may have been changed since
    bool totals_shown_ = false;
    Segments* view_;
    ListTable* events_;
    ListTable* totals_;
    QLabel* row_text_;
    QLabel* note_;
};

}  // namespace ui

// The account statement: a customer's movements between two dates with the running balance.
#pragma once

#include <optional>
#include <vector>

#include "accounts/account_statement.h"
#include "printing/report.h"
#include "ui/printing/reports.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QLabel;
class QPushButton;

namespace ui {

class Figure;
class ListTable;

printing::Report report_of(const accounts::AccountStatement& statement, const signin::Session& session);

class AccountStatementScreen : public Sheet {
    Q_OBJECT
  public:
    AccountStatementScreen(QWidget* host, const Context& context);
    // With a customer, the statement of this month is shown at once.
    void open(std::optional<std::int64_t> customer = {});

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* build_choices();
    QWidget* build_sums();
    QWidget* build_foot();
    void show_statement();
    void keep_shown();
    void repaint_statement();
    void check_arrears();
    void show_row_text(int row);
    void print();
    void preview();
    void keep(ReportFile kind);

    Context context_;
    accounts::AccountStatement logic_;
    Form<accounts::StatementFields> form_;
    // The statement on the screen; the fields may have been changed since.
    printing::Report paper_;
    std::int64_t shown_customer_ = 0;
    Figure* sums_[4];
    ListTable* table_;
    QLabel* empty_;
    QLabel* note_;
    QLabel* row_text_;
    QList<QPushButton*> outputs_;
};

}  // namespace ui

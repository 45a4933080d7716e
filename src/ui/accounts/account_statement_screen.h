// The account statement: a customer's movements between two dates with the running balance.
#pragma once

#include <optional>

#include "accounts/account_statement.h"
#include "printing/report.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace ui {

class Figure;
class StatementModel;

printing::Report report_of(const accounts::AccountStatement& statement, const signin::Session& session);

class Form39 : public Sheet {
    Q_OBJECT
  public:
    Form39(QWidget* host, const Context& context);
    // With a customer his statement of this month is shown at once.
    void open(std::optional<std::int64_t> customer = {});

  protected:
    void take_focus() override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* build_choices();
    QWidget* build_sums();
    QWidget* build_foot();
    bool read_fields();
    void show_statement();
    void keep_shown();
    void repaint_statement();
    void check_arrears();
    void show_row_text(int row);
    void print();
    void preview();
    enum class Form { csv, pdf };
    // Into the folder `Receipts` beside the program, where every paper of this workstation without a printer
    // goes; the foot says which file it became.
    void keep(Form form);

    Context context_;
    accounts::AccountStatement logic_;
    // The statement on the screen, whatever has been typed into the fields since.
    printing::Report paper_;
    std::int64_t shown_customer_ = 0;
    QComboBox* customer_;
    QLineEdit* start_;
    QLineEdit* end_;
    Figure* sums_[4];
    StatementModel* model_;
    QTableView* table_;
    QLabel* empty_;
    QLabel* note_;
    QLabel* row_text_;
    QList<QPushButton*> outputs_;
};

}  // namespace ui

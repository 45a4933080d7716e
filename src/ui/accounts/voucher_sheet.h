// The sheets of vouchers: receipts (Form38) and payments (Form23), in cash or by cheque.
#pragma once

#include <vector>

#include "accounts/voucher.h"
#include "printing/report.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace ui {

class ListTable;

printing::Report report_of(const accounts::PrintedVoucher& voucher, const signin::Session& session);

// A saved voucher stays on the screen to be printed or corrected until a new one is begun.
class VoucherSheet : public Sheet {
    Q_OBJECT
  public:
    VoucherSheet(QWidget* host, const Context& context, accounts::VoucherKind kind);
    void open_new();
    // Returns false after a message if there is no such voucher.
    bool open_edit(const accounts::VoucherKey& key);

  protected:
    void take_focus() override;

  private:
    void build_fields();
    void build_foot();
    void connect_party();
    void connect_amounts();
    void connect_method();
    void lead_on();
    void show_voucher();
    void show_parties();
    void show_party();
    void show_method();
    // Formats a text that can be read as an amount; other texts are refused when the voucher is saved.
    void show_as_amount(QLineEdit* field);
    void choose_party();
    void save();
    void print(bool page);
    void choose_voucher();
    void begin_new();

    Context context_;
    accounts::Voucher logic_;
    Form<accounts::VoucherFields> form_;
    QLabel* title_;
    QLabel* said_;
    QPushButton* save_;
    QPushButton* print_;
    QPushButton* page_;
};

// The vouchers of a period, to choose the one to be edited. run() returns 1 if one was chosen.
class VoucherList : public Sheet {
    Q_OBJECT
  public:
    VoucherList(QWidget* host, const Context& context, accounts::VoucherKind kind);
    // Lists the vouchers of the last month. Returns false after a message if the database failed.
    bool open();
    const accounts::VoucherKey& chosen() const { return chosen_; }

  protected:
    void take_focus() override;

  private:
    void show();
    bool list();
    void take(int row);

    Context context_;
    accounts::VoucherKind kind_;
    std::vector<accounts::VoucherEntry> vouchers_;
    accounts::VoucherKey chosen_;
    accounts::VoucherPeriod period_;
    Form<accounts::VoucherPeriod> form_;
    ListTable* table_;
    QLabel* count_;
};

}  // namespace ui

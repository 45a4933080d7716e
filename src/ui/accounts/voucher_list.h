// The vouchers of a period, to choose the one that is to be edited.
#pragma once

#include <vector>

#include "accounts/voucher_records.h"
#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QLabel;
class QLineEdit;

namespace ui {

class ListTable;

// run() returns 1 when one was chosen.
class VoucherList : public Sheet {
    Q_OBJECT
  public:
    VoucherList(QWidget* host, const Context& context, accounts::VoucherKind kind);
    // Lists the vouchers of the last month; false when the database failed (the message has been shown).
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
    QLineEdit* from_;
    QLineEdit* to_;
    ListTable* table_;
    QLabel* count_;
};

}  // namespace ui

// The vouchers of a period, to choose the one that is to be edited.
#pragma once

#include <vector>

#include "accounts/voucher_records.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/sheet.h"

class QLabel;

namespace ui {

class ListTable;

// run() returns 1 when one was chosen.
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

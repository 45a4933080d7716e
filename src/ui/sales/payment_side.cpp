#include "ui/sales/payment_side.h"

#include "common/numbers.h"
#include "sales/invoice.h"
#include "ui/widgets/key_queue.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

PaymentLines::PaymentLines(const sales::Invoice& invoice)
    : ListTable("payment_lines", {"اسم الصنف", "وحدة", "كمية", "اجمالي"}, 0) {
    std::vector<QStringList> rows;
    rows.reserve(invoice.lines.size());
    for (const sales::Line& line : invoice.lines) {
        rows.push_back({qt(line.name), qt(line.unit_name), figure(common::format_quantity(line.quantity)),
                        figure(line.total().text())});
    }
    show_rows(std::move(rows));
    choose_row(static_cast<int>(invoice.lines.size()) - 1);
}

WaitingScans::WaitingScans(KeyQueue& keys, QWidget* parent) : QLabel(parent), keys_(keys) {
    setObjectName("payment_scans");
    set_role(this, "said");
    setWordWrap(true);
    connect(&keys, &KeyQueue::scan_waiting, this, &WaitingScans::refresh);
    refresh();
}

void WaitingScans::refresh() {
    const auto waiting = keys_.waiting_scans();
    setText("في الانتظار " + QString::number(waiting) + " · يدخل في البون التالي بعد التأكيد");
    setVisible(waiting > 0);
}

bool WaitingScans::may_leave(common::Prompts& prompts) {
    if (keys_.waiting_scans() == 0) return true;
    const QString question = "مررت على الماسح أثناء الدفع : " + QString::number(keys_.waiting_scans()) +
                             "\nهل تريد إضافته إلى هذا البون ؟\nلا : يلغى ولا يدخل في أي بون";
    const common::Answer answer = prompts.ask(utf8(question));
    if (answer == common::Answer::no) keys_.drop_waiting_scans();
    return answer != common::Answer::closed;
}

}  // namespace ui

// A saved voucher on paper.
#pragma once

#include "printing/report.h"
#include "ui/widgets/context.h"

namespace accounts {
struct PrintedVoucher;
}

namespace ui {

printing::Report report_of(const accounts::PrintedVoucher& voucher, const signin::Session& session);

// On the workstation's roll printer where it has one, else as a page. What went wrong has been said when they
// answer false.
bool print_voucher(const Context& context, const accounts::PrintedVoucher& voucher);
bool print_on_page(const Context& context, const accounts::PrintedVoucher& voucher);

}  // namespace ui

// A saved voucher on paper.
#pragma once

#include "printing/report.h"
#include "ui/widgets/context.h"

namespace accounts {
struct PrintedVoucher;
}

namespace ui {

printing::Report report_of(const accounts::PrintedVoucher& voucher, const signin::Session& session);

// print_voucher() prints on the workstation's roll printer if it has one, otherwise as a page. Both return
// false after showing what went wrong.
bool print_voucher(const Context& context, const accounts::PrintedVoucher& voucher);
bool print_on_page(const Context& context, const accounts::PrintedVoucher& voucher);

}  // namespace ui

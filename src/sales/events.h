// The events of an invoice for the till's journal.
#pragma once

#include "sales/sale.h"
#include "signin/session.h"

namespace sales {

// The whole invoice: how many lines, of what kind, for whom; its net.
audit::Event event_of(audit::Kind kind, const Invoice& invoice);

void note_deleted_line(const signin::Session& session, const Sale& sale, const Line& line);
// Does nothing unless the quantity became less.
void note_quantity(const signin::Session& session, const Sale& sale, const Line& line, double former);
// A line was turned to another unit. Does nothing unless that made it cheaper.
void note_unit(const signin::Session& session, const Sale& sale, const Line& line, const Line& former);
// Does nothing if no work is given up.
void note_cancelled(const signin::Session& session, const Sale& sale);
// Notes the return, changed prices, and discounts that were not on the receipt or offer it comes from. Called
// before the first row is written, so that a crash cannot leave an invoice without its events.
void note_save(const signin::Session& session, const Invoice& invoice);

}  // namespace sales

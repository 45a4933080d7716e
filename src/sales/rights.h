// The rights that an invoice needs, judged by what is on it.
#pragma once

#include "common/prompts.h"
#include "database/connection.h"
#include "sales/invoice.h"
#include "signin/session.h"

namespace sales {

// Returns true if the signed-in user may save or offer the invoice as it is, else false after showing why. No
// right is needed for an item's price on its card or at its entry, for a discount on the invoice up to the
// ceiling, and for what a receipt or offer that was brought back held, as long as the goods are no more than
// they were. Returns, other prices, other discounts and sales below stock need their right however they came
// onto the invoice. A supervisor's earlier approvals count as far as they went; new ones are kept on the
// invoice.
bool authorise_invoice(database::Connection& connection, const signin::Session& session,
                       common::Prompts& prompts, Invoice& invoice);

// Returns true if a line holds no more discount than was granted for its quantity, and an invoice no more
// than the receipt or offer it comes from granted for those lines.
bool has_granted_discount(const Line& line);
bool has_granted_discount(const Invoice& invoice);

// Grants the prices and discounts of an invoice that is put aside to whoever goes on with it, as far as the
// signed-in user may give them.
void grant_to_others(const signin::Session& session, Invoice& invoice);

}  // namespace sales

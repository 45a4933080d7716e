// Which sale a return was started from. `sales.inv_o` holds only the number, and two sales may share one. The
// tills' own table till_return names both invoices in full.
#pragma once

#include <optional>

#include "database/connection.h"
#include "sales/invoice_key.h"

namespace sales {

// The statement that writes which sale a return belongs to. Nothing if the shop lacks the table; its returns
// belong to the number then.
std::optional<database::Command> link_of_return(database::Connection& connection, const InvoiceIdentity& back,
                                                const InvoiceIdentity& sale);

// Removes the link of a return.
void unlink_return(database::Connection& connection, const InvoiceIdentity& back);

// The sale of a return; nothing if it was not recorded.
std::optional<InvoiceIdentity> linked_sale(database::Connection& connection, const InvoiceIdentity& back);

}  // namespace sales

// An invoice as a text (JSON) that holds all of it, to be kept in the database and read back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "common/date_time.h"
#include "sales/invoice.h"
#include "sales/payment.h"

namespace sales {

// An invoice with what else the rows and the receipt of its save are made of.
struct InvoiceToSave {
    Invoice invoice;
    PaymentTaken payment;
    common::Moment moment;  // of the save
    std::int64_t shift = 0;
    std::int64_t user = 0;
    std::string user_name;
    std::int64_t cash_point = 0;
    std::int64_t claim = 0;  // of its number and goods, as long as it is not saved
};

std::string text_of(const InvoiceToSave& save);
// Throws std::exception for any other text.
InvoiceToSave read_invoice_to_save(std::string_view text);

}  // namespace sales

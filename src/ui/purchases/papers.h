// Goods in on paper: a document, the list of documents, a supplier's statement.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "printing/report.h"
#include "purchases/saved_receipts.h"
#include "signin/session.h"

namespace ui {

// "Goods in", "return to supplier".
std::string_view name_of(purchases::PurchaseKind kind);

// A document as it is saved.
printing::Report paper_of(const purchases::Receipt& receipt, std::int64_t number, const std::string& supplier,
                          const std::string& store, const signin::Session& session);
// The headings of its lines in a table.
extern const std::array<std::string_view, 7> receipt_headings;
std::array<std::string, 7> cells_of(const purchases::Line& line);

// The headings of a list of documents.
extern const std::array<std::string_view, 7> receipts_headings;
std::array<std::string, 7> cells_of(const purchases::SavedRow& row);
printing::Report paper_of(const std::vector<purchases::SavedRow>& rows, const purchases::Period& period,
                          const signin::Session& session);

printing::Report paper_of(const accounts::VendorStatement& statement, const std::string& supplier,
                          const common::Date& start, const common::Date& end, const signin::Session& session);

}  // namespace ui

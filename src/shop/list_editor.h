// One list of the shop as it is edited: its rows, and a row added, changed or deleted.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/choice.h"
#include "common/refusal.h"
#include "common/services.h"
#include "database/connection.h"
#include "shop/lists.h"
#include "signin/session.h"

namespace shop {

class ListEditor {
  public:
    ListEditor(database::Connection& connection, const signin::Session& session, common::Services services)
        : connection_(connection), session_(session), services_(services) {}

    // Reads the rows of a list and of its parent.
    void open(const ListDescription& list);
    const ListDescription& list() const { return *list_; }
    const std::vector<ListRow>& rows() const { return rows_; }
    const std::vector<common::Choice>& parents() const { return parents_; }
    // The texts of a row: its code, then its fields.
    std::vector<std::string> cells(const ListRow& row) const;

    // An empty row, to be saved with code 0.
    ListRow new_row() const;
    // Saves the values of a row that was read, or of a new one. Refused if a value is missing or wrong, if
    // another row has the name, or if another office changed the row since: then the rows are read again.
    // Returns the row's code and parent in `row`. Without the right nothing happens and the refusal is empty.
    std::optional<common::Refusal> save(ListRow& row, const ListRow& read);
    // Deletes a row that nothing refers to.
    std::optional<common::Refusal> erase(const ListRow& row);

  private:
    std::optional<common::Refusal> check(const ListRow& row) const;
    std::optional<common::Refusal> write(ListRow& row, const ListRow& read);
    // The refusal if another office changed the row since it was read; nothing if it is unchanged.
    std::optional<common::Refusal> changed_since(const ListRow& read);
    ListRow row_of(const database::Row& row) const;
    database::Sql narrowed(database::Fragment statement, const ListRow& row) const;
    std::string uses(const ListRow& row);
    void note(std::string_view what, const ListRow& row);

    database::Connection& connection_;
    const signin::Session& session_;
    common::Services services_;
    const ListDescription* list_ = nullptr;
    std::vector<ListRow> rows_;
    std::vector<common::Choice> parents_;
};

}  // namespace shop

// The field of the office in which an item is named: by a scan, by its code, or by words with the matches
// below them, as the till's entry field does.
#pragma once

#include "goods/pick.h"
#include "sales/matches.h"
#include "ui/widgets/context.h"
#include "ui/widgets/fields.h"

namespace ui {

class Matches;

class ItemField : public HintedField {
    Q_OBJECT
  public:
    // The matches are shown over `over`, the page or sheet that the field stands on, as wide as the widget
    // that holds the field.
    ItemField(const QString& name, const Context& context, QWidget* over);

    // The store whose stock the matches show; at first that of the session.
    void set_store(std::int64_t store);

  signals:
    // An item was entered, scanned, or chosen from the matches. The field is empty by then.
    void picked(const goods::Pick& pick);
    // Down was pressed in a field without matches: the list below is meant.
    void left_downwards();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    class Source : public sales::MatchSource {
      public:
        explicit Source(const Context& context);
        sales::MatchQuery match_query(const sales::Entry& entry) const override;
        std::vector<sales::Match> match(const sales::MatchQuery& query) override;
        sales::Popular* popular() override { return nullptr; }
        std::int64_t store;

      private:
        Context context_;
    };
    void enter(const sales::Entry& entry);

    Context context_;
    Source source_;
    Matches* matches_;
};

}  // namespace ui

// The items that match the letters in an entry field: a list below the field that follows the typing. The
// focus stays in the field; codes and scans are ignored.
#pragma once

#include <QFrame>
#include <QPointer>
#include <QTimer>
#include <optional>
#include <vector>

#include "sales/entry.h"
#include "sales/matches.h"
#include "ui/widgets/context.h"
#include "ui/widgets/search_pause.h"

class QKeyEvent;
class QLabel;
class QLineEdit;

namespace ui {

class ListTable;

class Matches : public QFrame {
    Q_OBJECT
  public:
    // Shown over `over`, a window, page or sheet. `more_keys` are shown after the keys of the list.
    Matches(QWidget* over, sales::MatchSource& source, const Context& context, const QString& more_keys = {});

    void follow(QLineEdit* field);
    // Sees each key of a followed field first. Returns true if the list took it: arrows, Enter on a row that
    // was chosen with them, and the key for the next unit.
    bool take_key(const QKeyEvent& key);
    // The entry for Enter on the words in a field: the first match. Returns nothing after saying that there
    // is none, or if a scanner sent the words; the list then shows possible items.
    std::optional<sales::Entry> first_for(QLineEdit* field);
    // Shows the matches of the words in a field, or that there are none, when the words keep a key from
    // acting.
    void show_for(QLineEdit* field);

  signals:
    void taken(QLineEdit* field, const sales::Entry& entry);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void edited(QLineEdit* field);
    void answer();
    void answer_now();
    void show_matches(const std::string& typed, std::vector<sales::Match> found);
    void place();
    void shut();
    void choose(int row);
    void choose_next_unit(int step);
    void take(int row, int unit);
    sales::Entry entry_of(const sales::Match& match, int unit) const;
    sales::Entry typed_entry() const;
    void read_popular();
    void read_popular_days(int days);

    sales::MatchSource& source_;
    Context context_;
    QString more_keys_;
    ListTable* table_;
    QLabel* hint_;
    QPointer<QLineEdit> field_;  // the one that is typed into; null once it has lost the focus
    SearchPause pause_;
    QTimer popular_;
    std::vector<sales::Match> found_;
    std::string answered_;  // the words that they match
    int unit_ = 1;          // of the chosen row
    bool has_chosen_ = false;
    bool is_asking_ = false;  // a server
};

}  // namespace ui

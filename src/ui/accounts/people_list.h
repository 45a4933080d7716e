// Lists of people. Typing narrows the list; the buttons act on the chosen person.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "accounts/tips_receiver.h"
#include "ui/widgets/context.h"
#include "ui/widgets/form.h"
#include "ui/widgets/search_pause.h"
#include "ui/widgets/sheet.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;

namespace ui {

class ListTable;

struct Person {
    std::int64_t code = 0;
    QStringList cells;  // under the headings; figures made by figure()
};

class PeopleList : public Sheet {
    Q_OBJECT
  public:
    // The object names of its parts begin with `name`: "…_search", "…_list".
    PeopleList(QWidget* host, const QString& name, const QString& title, const QStringList& headings,
               int stretch, std::function<std::vector<Person>()> load);

  protected:
    // Adds a button; Enter presses the first one. The action gets the code of the chosen person, or 0 if
    // nobody is chosen and it needs nobody. If it returns true, the list is loaded again.
    using Action = std::function<bool(std::int64_t)>;
    void add_action(const char* name, const QString& caption, bool needs_person, Action action);
    // Adds the button that closes the list.
    void add_back();
    void take_focus() override;
    void keyPressEvent(QKeyEvent* event) override;
    void reload();

  private:
    struct Offered {
        bool needs_person;
        Action action;
    };
    void narrow();
    void act(const Offered& offered);

    std::function<std::vector<Person>()> load_;
    std::vector<Person> people_;
    std::vector<std::string> sought_;  // the texts of each person that a search looks in
    std::vector<Offered> actions_;
    QString name_;
    SearchPause pause_;
    QLineEdit* search_;
    ListTable* list_;
    QLabel* count_;
    QHBoxLayout* buttons_;
};

// The account customers: shows, adds and edits their cards, and opens their statements of account.
class AccountCustomersList : public PeopleList {
    Q_OBJECT
  public:
    AccountCustomersList(QWidget* host, const Context& context);
};

class TipsReceiversList : public PeopleList {
    Q_OBJECT
  public:
    TipsReceiversList(QWidget* host, const Context& context);
};

// Adds or edits a receiver of tips. run() returns 1 if the entry was saved.
class TipsReceiverSheet : public Sheet {
    Q_OBJECT
  public:
    TipsReceiverSheet(QWidget* host, const Context& context);
    void open_new();
    // Returns false after a message if there is no such receiver.
    bool open_edit(std::int64_t receiver);

  protected:
    void take_focus() override;

  private:
    void show_entry();
    void save();

    Context context_;
    accounts::TipsReceiver logic_;
    Form<accounts::TipsReceiverFields> form_;
    QLabel* title_;
};

}  // namespace ui

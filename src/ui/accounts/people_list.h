// Lists of people to choose one from, narrowed by what is typed above them, with what can be done to the one
// chosen.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "ui/widgets/context.h"
#include "ui/widgets/sheet.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;

namespace ui {

class ListTable;

struct Person {
    std::int64_t code = 0;
    QStringList cells;  // under the headings; figures begin with "\u200e"
};

class PeopleList : public Sheet {
    Q_OBJECT
  public:
    // The object names of its parts begin with `name`: "…_search", "…_list".
    PeopleList(QWidget* host, const QString& name, const QString& title, const QStringList& headings,
               int stretch, std::function<std::vector<Person>()> load);

  protected:
    // Enter runs the first action added. An action gets the code of the chosen person; one that needs none
    // runs on an empty list too. If it returns true the list is loaded again.
    using Action = std::function<bool(std::int64_t)>;
    void add_action(const char* name, const QString& caption, bool needs_person, Action action);
    // Ends the row of actions.
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
    std::vector<std::int64_t> shown_;
    std::vector<Offered> actions_;
    QString name_;
    QLineEdit* search_;
    ListTable* list_;
    QLabel* count_;
    QHBoxLayout* buttons_;
};

// The account customers: to look one up, take one in, change his card, or see his account.
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

}  // namespace ui

// The account customers, to look one up, take one in, change his card, or see his account.
#pragma once

#include "ui/context.h"
#include "ui/people_list.h"

namespace ui {

class AccountCustomers : public PeopleList {
    Q_OBJECT
  public:
    AccountCustomers(QWidget* host, const Context& context);
};

}  // namespace ui

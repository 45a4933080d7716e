// The account customers, to look one up, take one in, change his card, or see his account.
#pragma once

#include "ui/accounts/people_list.h"
#include "ui/widgets/context.h"

namespace ui {

class AccountCustomers : public PeopleList {
    Q_OBJECT
  public:
    AccountCustomers(QWidget* host, const Context& context);
};

}  // namespace ui

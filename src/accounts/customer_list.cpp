#include "accounts/customer_list.h"

namespace accounts {

std::vector<CustomerRow> list_customers(database::Connection& connection) {
    std::vector<CustomerRow> customers;
    for (const auto& row : connection.query("select * from custdata order by ccode")) {
        CustomerRow customer{row.integer("ccode"), row.text("cname"), row.text("cphone"), row.number("cacc")};
        if (customer.phone.empty()) customer.phone = row.text("mob");
        customers.push_back(std::move(customer));
    }
    return customers;
}

}  // namespace accounts

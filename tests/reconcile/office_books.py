"""What the reports of the office must say of the invoices, goods in and stock of a period: books in exact decimals."""
from collections import defaultdict, namedtuple
from decimal import Decimal as D

from money import ZERO, rounded, text

WEEKDAYS = ["الاثنين", "الثلاثاء", "الأربعاء", "الخميس", "الجمعة", "السبت", "الأحد"]
PAYMENTS = {"account": "آجل", "cash": "نقدي", "card": "بطاقة إئتمان", "tips": "أكراميات"}
GENERAL = "صنف عام"
NO_GROUP = "بدون مجموعة"
SUPPLY, VENDOR_RETURN = 1, 3
CAPTIONS = {
    "sales_by_day": "المبيعات باليوم", "sales_by_month": "المبيعات بالشهر", "sales_by_hour": "المبيعات بالساعة",
    "sales_by_item": "المبيعات بالصنف", "sales_by_group": "المبيعات بالمجموعة",
    "sales_by_cashier": "المبيعات بالكاشير", "sales_by_store": "المبيعات بالفرع",
    "sales_by_payment": "المبيعات بطريقة الدفع", "profit_by_day": "الربح باليوم", "profit_by_item": "الربح بالصنف",
    "profit_by_group": "الربح بالمجموعة", "discounts_and_returns": "الخصومات والمرتجعات",
    "suppliers": "البضاعة الواردة بالمورد", "ages_of_customers": "أعمار ديون العملاء",
    "ages_of_suppliers": "أعمار مستحقات الموردين", "stock_by_group": "قيمة المخزون بالمجموعة",
    "stock_by_store": "قيمة المخزون بالمخزن", "cash": "نقدية الخزائن الآن",
}

Purchase = namedtuple("Purchase", "number ctype vendor day total discount tax", defaults=(ZERO,))
Stocked = namedtuple("Stocked", "item store quantity")  # in base units


def net_of(purchase):
    return purchase.total - purchase.discount + purchase.tax


def percent(part, whole):
    """With one decimal, and no minus before zero."""
    return f"{rounded(part * 100 / whole, 1) or ZERO:.1f}%" if whole else ""


def shares_of(amount, values):
    """An amount on values by their share of the sum: rounded each, the last takes the rest."""
    whole, left = sum(values, ZERO), amount
    for at, value in enumerate(values):
        share = left if at + 1 == len(values) else rounded(amount * value / whole) if whole else ZERO
        left -= share
        yield share


class Line:
    """Of an invoice; without an item it is a general one."""

    def __init__(self, item, quantity, factor, price, discount, name):
        self.item, self.quantity, self.factor = item, quantity, factor
        self.price, self.discount, self.name = price, discount, name
        self.total = rounded(quantity * price - discount)
        self.pieces = quantity * factor


class Invoice:
    def __init__(self, number, ctype, store, user, payment, customer, moment, lines, discount):
        self.number, self.ctype, self.store, self.user = number, ctype, store, user
        self.payment, self.customer, self.moment, self.lines = payment, customer, moment, lines
        self.total = sum((line.total for line in lines), ZERO)
        self.discount = min(discount, self.total)
        self.paid = None  # what the customer hands over, if it is not the net

    @property
    def is_return(self):
        return self.ctype in (2, 3)

    @property
    def net(self):
        return self.total - self.discount

    def shares(self):
        return zip(self.lines, shares_of(self.discount, [line.total for line in self.lines]))


class OfficeBooks:
    """`invoices`, `purchases`, and the names of `stores`, `users`, `customers` and `vendors` are set by who keeps the
    books, and the methods without a body are his."""

    invoices, purchases = [], []
    stores, users, customers, vendors = {}, {}, {}, {}
    today = first = None  # the days of the ages and on which the period begins

    def group_of(self, item):
        """The name of an item's group, or None."""

    def cost(self, line, moment):
        """What the goods of a line cost at a moment."""

    def balance(self, customer):
        """What an account customer owes."""

    def owed(self, vendor):
        """What a supplier is owed."""

    def stock(self):
        """What the stores hold now, as `Stocked`, with the price and cost of the items."""

    def by(self, key):
        """Count, sales, discounts, returns, count of returns."""
        sums = defaultdict(lambda: [0, ZERO, ZERO, ZERO, 0])
        for one in self.invoices:
            row = sums[key(one)]
            if one.is_return:
                row[3] += one.net
                row[4] += 1
            else:
                row[0] += 1
                row[1] += one.total
                row[2] += one.discount
        return sums

    @staticmethod
    def sales_row(sums):
        count, sold, discounts, returned, _ = sums
        average = text((sold - discounts) / count) if count else ""
        return [str(count), text(sold), text(discounts), text(returned), text(sold - discounts - returned), average]

    @staticmethod
    def discount_row(sums):
        count, sold, discounts, returned, returns = sums
        return [str(count), text(sold), text(discounts), percent(discounts, sold), str(returns), text(returned),
                percent(returned, sold)]

    def of_lines(self, key):
        """Pieces, sales, shares of discounts, returns, cost."""
        sums = defaultdict(lambda: [ZERO] * 5)
        for one in self.invoices:
            for line, share in one.shares():
                row = sums[key(line.item)]
                sign = -1 if one.is_return else 1
                row[0] += sign * line.pieces
                if one.is_return:
                    row[3] += line.total - share
                else:
                    row[1] += line.total
                    row[2] += share
                row[4] += sign * self.cost(line, one.moment)
        return sums

    @staticmethod
    def line_row(sums):
        pieces, sold, shares, returned, _ = sums
        return [f"{rounded(pieces, 3):.3f}", text(sold), text(shares), text(returned), text(sold - shares - returned)]

    @staticmethod
    def profit_row(net, cost):
        return [text(net), text(cost), text(net - cost), percent(net - cost, net)]

    def ages(self, debts, balance):
        """What is still owed by age: the newest debts are the unpaid ones."""
        left, parts = max(balance, ZERO), [ZERO] * 4
        for day, amount in sorted(debts, reverse=True):
            open_part = min(left, amount)
            days = (self.today - day).days
            parts[0 if days <= 30 else 1 if days <= 60 else 2 if days <= 90 else 3] += open_part
            left -= open_part
        parts[3] += left
        return [text(balance)] + [text(part) for part in parts]

    def expected(self):
        """The rows of each report, without their order."""
        return self.expected_of_invoices() | self.expected_of_lines() | self.expected_of_accounts() | {
            "stock_by_group": self.stock_rows(lambda one: self.group_of(one.item) or NO_GROUP),
            "stock_by_store": self.stock_rows(lambda one: self.stores[one.store])}

    @staticmethod
    def day_of(invoice):
        return f"{invoice.moment:%Y/%m/%d} {WEEKDAYS[invoice.moment.weekday()]}"

    def expected_of_invoices(self):
        user = lambda one: self.users.get(one.user, str(one.user))
        reports = {}
        for report, key in {
                "sales_by_day": self.day_of, "sales_by_month": lambda one: f"{one.moment:%Y/%m}",
                "sales_by_hour": lambda one: f"{one.moment:%H}:00", "sales_by_cashier": user,
                "sales_by_store": lambda one: self.stores[one.store],
                "sales_by_payment": lambda one: PAYMENTS[one.payment],
        }.items():
            reports[report] = {label: self.sales_row(sums) for label, sums in self.by(key).items()}
            reports[report]["الإجمالي"] = self.sales_row(self.by(lambda one: 0)[0])
        reports["discounts_and_returns"] = {label: self.discount_row(sums) for label, sums in self.by(user).items()}
        return reports

    def expected_of_lines(self):
        name = lambda item: item.name if item else GENERAL
        group = lambda item: item and self.group_of(item) or NO_GROUP
        reports = {}
        for of_what, key in {"item": name, "group": group}.items():
            rows = self.of_lines(key)
            reports[f"sales_by_{of_what}"] = {label: self.line_row(sums) for label, sums in rows.items()}
            reports[f"sales_by_{of_what}"]["الإجمالي"] = self.line_row(self.of_lines(lambda item: 0)[0])
            reports[f"profit_by_{of_what}"] = {label: self.profit_row(sums[1] - sums[2] - sums[3], sums[4])
                                               for label, sums in rows.items()}
        costs = defaultdict(lambda: ZERO)
        for one in self.invoices:
            costs[self.day_of(one)] += (-1 if one.is_return else 1) * sum(
                (self.cost(line, one.moment) for line in one.lines), ZERO)
        reports["profit_by_day"] = {label: self.profit_row(sums[1] - sums[2] - sums[3], costs[label])
                                    for label, sums in self.by(self.day_of).items()}
        return reports

    def expected_of_accounts(self):
        reports = {"suppliers": {}}
        for code, name in self.vendors.items():
            bought = [one for one in self.purchases if one.vendor == code and one.day >= self.first]
            if not bought:
                continue
            came = [one for one in bought if one.ctype == SUPPLY]
            total, discount, tax = (sum((one[at] for one in came), ZERO) for at in (4, 5, 6))
            back = sum((net_of(one) for one in bought if one.ctype == VENDOR_RETURN), ZERO)
            reports["suppliers"][name] = [str(len(came)), text(total), text(discount), text(tax), text(back),
                                          text(total - discount + tax - back)]
        reports["ages_of_customers"] = {
            name: self.ages([(one.moment.date(), one.net) for one in self.invoices
                             if one.customer == code and not one.is_return], self.balance(code))
            for code, name in self.customers.items() if self.balance(code)}
        reports["ages_of_suppliers"] = {
            name: self.ages([(one.day, net_of(one)) for one in self.purchases
                             if one.vendor == code and one.ctype == SUPPLY], self.owed(code))
            for code, name in self.vendors.items() if self.owed(code)}
        return reports

    def stock_rows(self, key):
        """Items, pieces, value at the retail price and at the cost."""
        sums = defaultdict(lambda: [set(), ZERO, ZERO, ZERO])
        for one in self.stock():
            if not one.quantity:
                continue
            row = sums[key(one)]
            row[0].add(one.item)
            row[1] += one.quantity
            row[2] += one.quantity * one.item.price
            row[3] += one.quantity * one.item.cost
        return {label: [str(len(items)), f"{rounded(pieces, 3):.3f}", text(retail), text(cost)]
                for label, (items, pieces, retail, cost) in sums.items()}


def steps_of_reports(reports):
    """Keeps each report in a file, on the page of reports."""
    for report in reports:
        yield from (f"# {report}", f"choose {CAPTIONS[report]} in report_kind", "click report_show", "click report_csv")

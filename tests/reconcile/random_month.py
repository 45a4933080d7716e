"""A month of sales, returns and goods in of two stores, written as other programs would, and what every report of the
office must say of it: books of their own, in exact decimals."""
import random
from collections import defaultdict
from datetime import date, datetime, timedelta
from decimal import Decimal as D

from money import ZERO, rounded, text

FIRST, LAST = date(2026, 10, 1), date(2026, 10, 31)
NOW = datetime(2026, 11, 21, 10, 42)
COST_CHANGE = datetime(2026, 10, 16, 12, 0)  # the first item cost OLD_COST until then
OLD_COST = D("3.10")
STORES = {1: "الفرع الرئيسي", 2: "فرع الجيزة"}
USERS = {1: "admin", 2: "سلمى"}
GONE_USER = 9  # deleted since: the report shows his number
GROUPS = {1: "ألبان", 2: "بقالة"}
WEEKDAYS = ["الاثنين", "الثلاثاء", "الأربعاء", "الخميس", "الجمعة", "السبت", "الأحد"]
PAYMENTS = {"account": "آجل", "cash": "نقدي", "card": "بطاقة إئتمان", "tips": "أكراميات"}
STYPES = {"account": 0, "cash": 0, "card": 1, "tips": 2}
DIFFERENCE = "فرق بين البونات وسطورها"
GENERAL = "صنف عام"


class Item:
    def __init__(self, code, name, group, cost, price, weighed=False):
        self.code, self.name, self.group, self.weighed = code, name, group, weighed
        self.cost, self.price = D(cost), D(price)

    def cost_at(self, moment):
        return OLD_COST if self.code == 11 and moment < COST_CHANGE else self.cost


ITEMS = [
    Item(11, "حليب", 1, "3.35", "4.15"), Item(12, "زبادي", 1, "1.10", "1.75"),
    Item(13, "جبنة رومي", 1, "55.5", "69.99", weighed=True), Item(14, "ملح", 2, "5", "7.35"),
    Item(15, "بن", 2, "31.25", "39.95"), Item(16, "زيتون", 2, "33.3", "45.45", weighed=True),
    Item(17, "كيس", 0, "0", "0.35"), Item(18, "سمن", 2, "99.01", "129.33"),
]
CUSTOMERS = {101: "مطعم الركن", 102: "كافتيريا الميدان"}
VENDORS = {1: "ندوان للألبان", 2: "شركة الزيوت"}


class Invoice:
    def __init__(self, number, ctype, store, user, payment, customer, moment, lines, discount):
        self.number, self.ctype, self.store, self.user = number, ctype, store, user
        self.payment, self.customer, self.moment, self.lines = payment, customer, moment, lines
        self.total = sum((line.total for line in lines), ZERO)
        self.discount = min(discount, self.total)

    @property
    def is_return(self):
        return self.ctype in (2, 3)

    @property
    def net(self):
        return self.total - self.discount

    def shares(self):
        """The discount on the lines: by value, rounded each, the last takes the rest."""
        left = self.discount
        for at, line in enumerate(self.lines):
            share = left if at + 1 == len(self.lines) else (
                rounded(self.discount * line.total / self.total) if self.total else ZERO)
            left -= share
            yield line, share


class Line:
    def __init__(self, item, quantity, factor, price, discount, name):
        self.item, self.quantity, self.factor = item, quantity, factor
        self.price, self.discount, self.name = price, discount, name
        self.total = rounded(quantity * price - discount)
        self.pieces = quantity * factor


class RandomMonth:
    def __init__(self, seed):
        self.random = random.Random(seed)
        self.invoices = [self.invoice(number) for number in range(1, 141)]
        self.purchases = [self.purchase(number) for number in range(1, 15)]
        self.printed, self.reports = [], {}

    # The month ------------------------------------------------------------------------------------------------

    def moment(self):
        day = FIRST + timedelta(days=self.random.randrange((LAST - FIRST).days + 1))
        return datetime(day.year, day.month, day.day, self.random.randrange(8, 23), self.random.randrange(60),
                        self.random.randrange(60))

    def line(self):
        if self.random.random() < 0.05:
            return Line(None, D(1), 1, D(self.random.randrange(100, 9999)) / 100, ZERO, GENERAL)
        item = self.random.choice(ITEMS)
        factor = 1 if item.weighed else self.random.choice((1, 1, 1, 6))
        quantity = D(self.random.randrange(50, 3000)) / 1000 if item.weighed else D(self.random.randrange(1, 6))
        price = item.price * factor
        discount = rounded(quantity * price * D(self.random.choice((0, 0, 0, 5, 7))) / 100, 3)
        return Line(item, quantity, factor, price, discount, item.name)

    def invoice(self, number):
        ctype = self.random.choice((0,) * 12 + (1, 2, 2, 3))
        payment = self.random.choice(("cash", "cash", "cash", "card", "tips", "account"))
        customer = self.random.choice(list(CUSTOMERS)) if payment == "account" else -1
        lines = [self.line() for _ in range(self.random.randrange(1, 6))]
        discount = D(self.random.choice((0, 0, 333, 1005, 77))) / 100
        return Invoice(number, ctype, self.random.choice(list(STORES)),
                       self.random.choice(list(USERS) + [GONE_USER]), payment, customer, self.moment(), lines, discount)

    def purchase(self, number):
        total = D(self.random.randrange(10000, 500000)) / 100
        return (number, self.random.choice((1, 1, 1, 3)), self.random.choice(list(VENDORS)), self.moment().date(), total,
                rounded(total * D("0.033")))

    # Its rows -------------------------------------------------------------------------------------------------

    def rows(self):
        yield f"update stocks set [name] = '{STORES[1]}' where code = 1"
        yield f"insert into stocks (code, [name]) values (2, '{STORES[2]}')"
        yield f"insert into users (code, [name], pass, perm) values (2, '{USERS[2]}', '1', '')"
        for code, name in GROUPS.items():
            yield f"insert into item_types (code, [name]) values ({code}, '{name}')"
        for item in ITEMS:
            yield (f"insert into items (code, [name], itype, num1, price11, price12) values ({item.code}, '{item.name}', "
                   f"{item.group}, 1, {item.cost}, {item.price})")
        yield ("insert into till_price (num, icode, unit, level, old_price, new_price, moment) values "
               f"(1, 11, 1, 1, {OLD_COST}, {ITEMS[0].cost}, '{COST_CHANGE:%Y/%m/%d %H:%M:%S}')")
        for at, item in enumerate(ITEMS):
            yield f"insert into stk (icode, stcode, quan, edate) values ({item.code}, {at % 2 + 1}, {at * 7}.5, '3000/01/01')"
        for invoice in self.invoices:
            yield from self.rows_of(invoice)
        for number, ctype, vendor, day, total, discount in self.purchases:
            yield (f"insert into purchase (pnum, ctype, vcode, stcode, [date], ptot, pdis) values "
                   f"({number}, {ctype}, {vendor}, 1, '{day:%Y/%m/%d}', {total}, {discount})")
        for code, name in VENDORS.items():
            yield f"insert into vendata (vcode, vname, vopen, vacc) values ({code}, '{name}', 50, {self.owed(code)})"
        for code, name in CUSTOMERS.items():
            yield (f"insert into custdata (ccode, cname, copen, cacc, ctype) values "
                   f"({code}, '{name}', 10, {self.balance(code)}, 0)")

    @staticmethod
    def rows_of(invoice):
        key = (f"{invoice.number}, {invoice.ctype}, {invoice.customer}, {invoice.store}, "
               f"'{invoice.moment:%Y/%m/%d}', '{invoice.moment:%H:%M:%S}', {STYPES[invoice.payment]}")
        columns = "pnum, ctype, vcode, stcode, [date], time_, stype"
        yield (f"insert into sales ({columns}, ptype, [user], ptot, pdis) values "
               f"({key}, 1, {invoice.user}, {invoice.total}, {invoice.discount})")
        for serial, line in enumerate(invoice.lines, 1):
            code = "null" if line.item is None else line.item.code
            yield (f"insert into saledata ({columns}, serial, icode, note, quan, price, disc, unit1, scode, quan1) values "
                   f"({key}, {serial}, {code}, '{line.name}', {line.quantity}, {line.price}, {line.discount}, "
                   f"{line.factor}, 1, {line.pieces})")

    # The books ------------------------------------------------------------------------------------------------

    def owed(self, vendor):
        supplied = sum((total - discount) * (1 if ctype == 1 else -1)
                       for _, ctype, code, _, total, discount in self.purchases if code == vendor)
        return 50 + supplied

    def balance(self, customer):
        return 10 + sum((-1 if one.is_return else 1) * one.net for one in self.invoices if one.customer == customer)

    def by(self, key, invoices=None):
        """Count, sales, discounts, returns, net, average; count of returns."""
        sums = defaultdict(lambda: [0, ZERO, ZERO, ZERO, 0])
        for one in self.invoices if invoices is None else invoices:
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
        percent = lambda part: f"{rounded(part * 100 / sold, 1)}%" if sold else ""
        return [str(count), text(sold), text(discounts), percent(discounts), str(returns), text(returned),
                percent(returned)]

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
    def cost(line, moment):
        return ZERO if line.item is None else line.pieces * line.item.cost_at(moment)

    @staticmethod
    def line_row(sums):
        pieces, sold, shares, returned, _ = sums
        return [f"{rounded(pieces, 3):.3f}", text(sold), text(shares), text(returned), text(sold - shares - returned)]

    @staticmethod
    def profit_row(net, cost):
        percent = f"{rounded((net - cost) * 100 / net, 1)}%" if net else ""
        return [text(net), text(cost), text(net - cost), percent]

    def ages(self, debts, balance):
        """What is still owed by age: the newest debts are the unpaid ones."""
        left, parts = max(balance, ZERO), [ZERO] * 4
        for day, amount in sorted(debts, reverse=True):
            open_part = min(left, amount)
            days = (NOW.date() - day).days
            parts[0 if days <= 30 else 1 if days <= 60 else 2 if days <= 90 else 3] += open_part
            left -= open_part
        parts[3] += left
        return [text(balance)] + [text(part) for part in parts]

    def expected(self):
        """The rows of each report, without their order."""
        day = lambda one: f"{one.moment:%Y/%m/%d} {WEEKDAYS[one.moment.weekday()]}"
        group = lambda item: GROUPS.get(item.group, "بدون مجموعة") if item else "بدون مجموعة"
        name = lambda item: item.name if item else GENERAL
        user = lambda one: USERS.get(one.user, str(one.user))
        reports = {}
        for report, key in {
                "sales_by_day": day, "sales_by_month": lambda one: f"{one.moment:%Y/%m}",
                "sales_by_hour": lambda one: f"{one.moment:%H}:00", "sales_by_cashier": user,
                "sales_by_store": lambda one: STORES[one.store], "sales_by_payment": lambda one: PAYMENTS[one.payment],
        }.items():
            reports[report] = {label: self.sales_row(sums) for label, sums in self.by(key).items()}
            reports[report]["الإجمالي"] = self.sales_row(self.by(lambda one: 0)[0])
        reports["discounts_and_returns"] = {label: self.discount_row(sums) for label, sums in self.by(user).items()}
        for report, key in {"sales_by_item": name, "sales_by_group": group}.items():
            reports[report] = {label: self.line_row(sums) for label, sums in self.of_lines(key).items()}
            reports[report]["الإجمالي"] = self.line_row(self.of_lines(lambda item: 0)[0])
        for report, key in {"profit_by_item": name, "profit_by_group": group}.items():
            reports[report] = {label: self.profit_row(sums[1] - sums[2] - sums[3], sums[4])
                               for label, sums in self.of_lines(key).items()}
        costs = defaultdict(lambda: ZERO)
        for one in self.invoices:
            costs[day(one)] += (-1 if one.is_return else 1) * sum(
                (self.cost(line, one.moment) for line in one.lines), ZERO)
        reports["profit_by_day"] = {label: self.profit_row(sums[1] - sums[2] - sums[3], costs[label])
                                    for label, sums in self.by(day).items()}
        reports["suppliers"] = self.suppliers()
        reports["ages_of_customers"] = {
            CUSTOMERS[code]: self.ages([(one.moment.date(), one.net) for one in self.invoices
                                        if one.customer == code and not one.is_return], self.balance(code))
            for code in CUSTOMERS if self.balance(code)}
        reports["ages_of_suppliers"] = {
            VENDORS[code]: self.ages([(bought, total - discount) for _, ctype, vendor, bought, total, discount
                                      in self.purchases if vendor == code and ctype == 1], self.owed(code))
            for code in VENDORS if self.owed(code)}
        stock = defaultdict(lambda: [0, ZERO, ZERO, ZERO])
        for at, item in enumerate(ITEMS):
            row, quantity = stock[group(item)], D(at * 7) + D("0.5")
            row[0] += 1
            row[1] += quantity
            row[2] += quantity * item.price
            row[3] += quantity * item.cost
        reports["stock_by_group"] = {label: [str(count), f"{pieces:.3f}", text(retail), text(cost)]
                                     for label, (count, pieces, retail, cost) in stock.items()}
        return reports

    def suppliers(self):
        rows = {}
        for code, name in VENDORS.items():
            bought = [one for one in self.purchases if one[2] == code]
            if not bought:
                continue
            supplied = sum((one[4] for one in bought if one[1] == 1), ZERO)
            discount = sum((one[5] for one in bought if one[1] == 1), ZERO)
            back = sum((one[4] - one[5] for one in bought if one[1] == 3), ZERO)
            rows[name] = [str(sum(one[1] == 1 for one in bought)), text(supplied), text(discount), "0.00", text(back),
                          text(supplied - discount - back)]
        return rows

    # The play -------------------------------------------------------------------------------------------------

    CAPTIONS = {
        "sales_by_day": "المبيعات باليوم", "sales_by_month": "المبيعات بالشهر", "sales_by_hour": "المبيعات بالساعة",
        "sales_by_item": "المبيعات بالصنف", "sales_by_group": "المبيعات بالمجموعة",
        "sales_by_cashier": "المبيعات بالكاشير", "sales_by_store": "المبيعات بالفرع",
        "sales_by_payment": "المبيعات بطريقة الدفع", "profit_by_day": "الربح باليوم", "profit_by_item": "الربح بالصنف",
        "profit_by_group": "الربح بالمجموعة", "discounts_and_returns": "الخصومات والمرتجعات",
        "suppliers": "البضاعة الواردة بالمورد", "ages_of_customers": "أعمار ديون العملاء",
        "ages_of_suppliers": "أعمار مستحقات الموردين", "stock_by_group": "قيمة المخزون بالمجموعة",
    }

    def write(self):
        steps = ["shop empty", f"clock {NOW:%Y/%m/%d %H:%M:%S}", "start", "user admin password 1", "expect focus entry",
                 "press F12", "answer yes", "expect end"]
        steps += ["sql " + row for row in self.rows()]
        steps += ["start office", "user admin password 1", "expect shown today_page", "click office_reports",
                  "choose الشهر الماضي in report_preset"]
        for report, caption in self.CAPTIONS.items():
            steps += [f"# {report}", f"choose {caption} in report_kind", "click report_show", "click report_csv"]
        return "\n".join(steps) + "\n"

"""A month of sales, returns and goods in of two stores, written as other programs would, and what every report of the
office must say of it: books of their own, in exact decimals."""
import random
from datetime import date, datetime, timedelta
from decimal import Decimal as D

from money import ZERO, rounded
from office_books import GENERAL, Invoice, Line, OfficeBooks, Purchase, Stocked, net_of, steps_of_reports

FIRST, LAST = date(2026, 10, 1), date(2026, 10, 31)
NOW = datetime(2026, 11, 21, 10, 42)
COST_CHANGE = datetime(2026, 10, 16, 12, 0)  # the first item cost OLD_COST until then
OLD_COST = D("3.10")
STORES = {1: "الفرع الرئيسي", 2: "فرع الجيزة"}
USERS = {1: "admin", 2: "سلمى"}
GONE_USER = 9  # deleted since: the report shows his number
GROUPS = {1: "ألبان", 2: "بقالة"}
STYPES = {"account": 0, "cash": 0, "card": 1, "tips": 2}


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


class RandomMonth(OfficeBooks):
    stores, users, customers, vendors = STORES, USERS, CUSTOMERS, VENDORS
    today, first = NOW.date(), FIRST

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.invoices = [self.invoice(number) for number in range(1, 141)]
        self.purchases = [self.purchase(number) for number in range(1, 15)]

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
        return Purchase(number, self.random.choice((1, 1, 1, 3)), self.random.choice(list(VENDORS)),
                        self.moment().date(), total, rounded(total * D("0.033")))

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
        for number, ctype, vendor, day, total, discount, _ in self.purchases:
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
        return 50 + sum(net_of(one) * (1 if one.ctype == 1 else -1) for one in self.purchases if one.vendor == vendor)

    def balance(self, customer):
        return 10 + sum((-1 if one.is_return else 1) * one.net for one in self.invoices if one.customer == customer)

    def group_of(self, item):
        return GROUPS.get(item.group)

    def cost(self, line, moment):
        return ZERO if line.item is None else line.pieces * line.item.cost_at(moment)

    def stock(self):
        return [Stocked(item, at % 2 + 1, at * 7 + D("0.5")) for at, item in enumerate(ITEMS)]

    # The play -------------------------------------------------------------------------------------------------

    def write(self):
        steps = ["shop empty", f"clock {NOW:%Y/%m/%d %H:%M:%S}", "start", "user admin password 1", "expect focus entry",
                 "press F12", "answer yes", "expect end"]
        steps += ["sql " + row for row in self.rows()]
        steps += ["start office", "user admin password 1", "expect shown today_page", "click office_reports",
                  "choose الشهر الماضي in report_preset"]
        steps += steps_of_reports(self.expected())
        return "\n".join(steps) + "\n"

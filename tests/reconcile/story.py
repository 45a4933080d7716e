"""The story of a shop from its first start: items from a dirty file, goods in, sales, returns of customers and to
suppliers, a count while the till sells, a price rise; then every report of the office and every figure on the way
against books in exact decimals."""
import random
from datetime import date, datetime, timedelta
from decimal import Decimal as D

from money import ZERO, plain, rounded, text
from office_books import (SUPPLY, VENDOR_RETURN, Invoice, Line, OfficeBooks, Purchase, Stocked, net_of, shares_of,
                          steps_of_reports)
from shop import label
from story_items import GROUPS, MAIN, SECOND, Item, items_files
from till import Till

FIRST = date(2026, 10, 1)
OWNER, OWNER_PASSWORD, CASHIER, CASHIER_PASSWORD = "الحاج صابر", "987", "منى", "12"
OPENING_CASH = D("750.50")
DRAWER = "درج 1"
SUPPLIERS = {"شركة 'الوادي' للأغذية": D("1250.75"), "مصنع النيل": ZERO, "مخازن السلام": D("300")}
CUSTOMERS = {101: ("مطعم الركن", D("420.25")), 102: ("كافتيريا الميدان", ZERO)}


class Size:
    def __init__(self, items, days, sales, receipts, lines):
        self.items, self.days, self.sales, self.receipts, self.lines = items, days, sales, receipts, lines


# How much of everything: receipts of goods a day, and up to so many lines in each.
SIZES = {"small": Size(60, 4, 28, 2, 3), "large": Size(2000, 30, 3000, 3, 12)}


class Office:
    """What the owner does in the office."""

    def __init__(self, till):
        self.till, self.step = till, till.step

    def enter(self):
        self.step("start office", f"user {OWNER} password {OWNER_PASSWORD}", "expect shown today_page")

    def leave(self):
        self.step("click office_leave", "answer yes", "expect end")

    def add_to_list(self, name, caption, **more):
        self.step("click office_lists", f"choose {name} in lists_names", "click list_add",
                  f"type {caption} into list_name")
        for field, value in more.items():
            self.step(f"choose {value} in list_{field}")
        self.step("click list_save", f"expect text lists_said = تم الحفظ: {caption}")

    def add_supplier(self, name, opening):
        self.step("click office_suppliers", "click suppliers_new", f"type {name} into supplier_name",
                  f"type {plain(opening)} into supplier_opening", "click supplier_save", "expect hidden supplier_card")


class Story(OfficeBooks):
    users, stores = {1: OWNER, 2: CASHIER}, {MAIN: "الفرع الرئيسي", SECOND: "مخزن الجملة"}
    vendors = dict(enumerate(SUPPLIERS, 1))
    customers = {code: name for code, (name, _) in CUSTOMERS.items()}
    first = FIRST

    def __init__(self, seed, size, folder):
        self.random = random.Random(seed)
        self.size, self.folder = SIZES[size], folder
        self.now = datetime(FIRST.year, FIRST.month, FIRST.day, 8)
        self.items = [Item(code, self.random) for code in range(1001, 1001 + self.size.items)]
        self.till = Till()
        self.step = self.till.step
        self.office = Office(self.till)
        self.user = None  # who sits at the till
        self.invoices, self.purchases = [], []
        self.sold = []  # invoices of which nothing has come back, with the number to recall them by
        self.number = {}
        self.cash = OPENING_CASH
        self.cards_today = ZERO
        self.paid = {}  # to suppliers (by their code) and of customers, beside their invoices

    # Books ------------------------------------------------------------------------------------------------

    @property
    def today(self):
        return self.now.date()

    def group_of(self, item):
        return item.group

    def cost(self, line, moment):
        return line.pieces * line.item.cost_at(moment)

    def balance(self, customer):
        return CUSTOMERS[customer][1] - self.paid.get(customer, ZERO) + sum(
            (-1 if one.is_return else 1) * one.net for one in self.invoices if one.customer == customer)

    def owed(self, vendor):
        return SUPPLIERS[self.vendors[vendor]] - self.paid.get(vendor, ZERO) + sum(
            net_of(one) * (1 if one.ctype == SUPPLY else -1) for one in self.purchases if one.vendor == vendor)

    def stock(self):
        return [Stocked(item, store, held) for item in self.items for store, held in item.held.items()]

    def expected(self):
        return super().expected() | {"cash": {f"{DRAWER} · {self.stores[MAIN]}": [text(self.cash), text(self.cards_today), text(ZERO)]}}

    # The days ---------------------------------------------------------------------------------------------

    def write(self):
        self.first_start()
        for day in range(self.size.days):
            self.now = datetime(FIRST.year, FIRST.month, FIRST.day, 8, 30) + timedelta(days=day)
            self.cards_today = ZERO
            self.morning(day)
            sales = self.size.sales * (day + 1) // self.size.days - self.size.sales * day // self.size.days
            self.sit_down(CASHIER, CASHIER_PASSWORD)
            for _ in range(sales * 2 // 5):
                self.sale("cash", may_grant=False)
            self.sit_down(OWNER, OWNER_PASSWORD)
            for at in range(sales - sales * 2 // 5):
                self.at_the_till(at)
            if day == self.size.days // 2:
                self.end_count()
        self.stand_up()
        self.tick()
        self.office.enter()
        self.step("click office_reports", *steps_of_reports(self.expected()))
        self.office.leave()
        return "\n".join(self.till.steps) + "\n"

    def tick(self):
        self.now += timedelta(minutes=self.random.randint(2, 5), seconds=self.random.randint(0, 59))
        self.till.clock(self.now)

    def first_start(self):
        good, bad = items_files(self.items, self.random)
        for name, csv in (("good.csv", good), ("bad.csv", bad)):
            (self.folder / name).write_text(csv, encoding="utf-8", newline="")
        self.till.note("the first start")
        self.till.clock(self.now)
        self.step("shop none", "start office", "type بقالة 'الأمانة' into first_name", "click first_next",
                  f"type {OPENING_CASH} into first_opening_1", "click first_next", "choose lpt1 in first_ports",
                  "click first_next", f"type {OWNER} into first_owner",
                  f"type {OWNER_PASSWORD} into first_owner_password", f"type {OWNER_PASSWORD} into first_owner_again",
                  f"type {CASHIER} into first_cashier_1", f"type {CASHIER_PASSWORD} into first_password_1",
                  "click first_next", f"type {self.folder / 'bad.csv'} into first_items_file", "click first_next",
                  "expect message في الملف سطور لا تقبل، ولم يحفظ منه شيء...", "answer ok",
                  f"type {self.folder / 'good.csv'} into first_items_file", "click first_next",
                  f"expect text first_summary_6 = {len(self.items)}", "click first_next",
                  "expect text first_title = تم إنشاء المحل", "click first_next",
                  f"user {OWNER} password {OWNER_PASSWORD}", "expect shown today_page")
        self.step(f"expect rows select count(*) from items gives {len(self.items)}")
        for group in GROUPS:
            count = sum(item.group == group for item in self.items)
            self.step("expect rows select count(*) from items inner join item_types on itype = item_types.code where "
                      f"item_types.name = '{group}' gives {count}")
        for name, opening in SUPPLIERS.items():
            self.office.add_supplier(name, opening)
        self.office.add_to_list("الفروع والمخازن", self.stores[SECOND])
        self.office.add_to_list("البنوك", "بنك السنابل")
        self.office.add_to_list("المصروفات الرئيسية", "تشغيل")
        self.office.add_to_list("المصروفات الفرعية", "شاي", parent="تشغيل")
        self.office.leave()
        self.sit_down(OWNER, OWNER_PASSWORD)
        self.step("press F8", "choose بائع in shift_worker", "click shift_start", "expect message ...",
                  "answer ok", "expect hidden shift2s")
        for code, (name, opening) in CUSTOMERS.items():
            self.step("click menu_customers", "click customers_new", f"type {code} into customer_number",
                      f"type {name} into customer_name", f"type {plain(opening)} into customer_opening",
                      "click customer_save", "expect hidden Form7ca", "press Esc")

    def morning(self, day):
        self.stand_up()
        self.tick()
        self.office.enter()
        if day == 1:
            self.write_off()
        for _ in range(self.size.receipts):
            self.goods_in(earlier=self.random.choice((0, 0, 0, 15, 40, 70, 100)))
        if day == self.size.days // 3:
            self.raise_prices()
        if day == self.size.days // 2:
            self.begin_count()
        self.office.leave()

    def stand_up(self):
        if self.user is not None:
            self.step("press F12", "answer yes", "expect end")
        self.user = None

    def sit_down(self, user, password):
        self.stand_up()
        self.step("start as cash point 1", f"user {user} password {password}", "expect focus entry")
        self.user = user

    def at_the_till(self, at):
        what = self.random.random()
        if at == 0:
            self.money()
        if at == 1:
            self.sale("card")
        elif what < 0.12 and self.sold:
            self.return_of_sale()
        elif what < 0.16:
            self.sale("cash", is_return=True)
        elif what < 0.3:
            self.sale("card")
        elif what < 0.45:
            self.sale("account")
        else:
            self.sale("cash")

    # At the till ------------------------------------------------------------------------------------------

    def invoice(self, lines, discount, payment, is_return=False, customer=-1):
        user = next(code for code, name in self.users.items() if name == self.user)
        invoice = Invoice(0, 2 if is_return else 0, MAIN, user, payment, customer, self.now, lines, discount)
        series = "return" if is_return else "account" if payment == "account" else "cash"
        invoice.number = self.number[series] = self.number.get(series, 0) + 1
        for line in lines:
            line.item.held[MAIN] += line.pieces if is_return else -line.pieces
            line.item.is_touched = True
        if payment == "cash":
            self.cash += -invoice.net if is_return else invoice.net
        if payment == "card":
            self.cards_today += invoice.net
        self.invoices.append(invoice)
        self.till.note(f"{payment} {'return' if is_return else 'sale'} {invoice.number} of {self.now}")
        return invoice

    def random_line(self, item):
        if item.weighed:
            quantity = D(self.random.randrange(50, 2500)) / 1000
            return Line(item, min(quantity, item.held[MAIN]), 1, item.price, ZERO, item.name), 1
        unit = self.random.choice([unit for unit in item.units() if item.factor(unit) <= item.held[MAIN]])
        most = min(4, int(item.held[MAIN] / item.factor(unit)))
        quantity = D(self.random.choice((1, 1, self.random.randint(1, most))))
        return Line(item, quantity, item.factor(unit), item.prices[unit], ZERO, item.name), unit

    def sale(self, payment, may_grant=True, is_return=False):
        self.tick()
        items = [item for item in self.random.sample(self.items, 12) if item.held[MAIN] >= 1]
        lines = [self.random_line(item) for item in items[: self.random.randint(1, 5)]]
        total = sum((line.total for line, _ in lines), ZERO)
        percent, grant, discount = D(self.random.choice(("2.5", "3", "7.25"))), self.random.random(), ZERO
        # A discount that takes a line below its cost would be refused.
        may_grant = may_grant and all(line.price * D("0.9") > line.item.cost * line.factor for line, _ in lines)
        if may_grant and grant < 0.25:
            discount = rounded(total * percent / 100)
        elif may_grant and grant < 0.5:
            discount = rounded(total * percent / 100) + D("0.01")
        customer = self.random.choice(list(CUSTOMERS)) if payment == "account" else -1
        invoice = self.invoice([line for line, _ in lines], discount, payment, is_return, customer)
        if is_return:
            self.step("press F4")
        if payment == "account":
            self.till.choose_account(self.customers[customer])
        if payment == "card":
            self.till.choose_card(100000 + invoice.number)
        for line, unit in lines:
            if line.item.weighed:
                self.till.scan(label(line.item, int(line.quantity * 1000)))
                continue
            self.till.scan(line.item.code_of(unit))
            if line.quantity != 1:
                self.till.quantity_of_last(line.quantity)
        if discount:
            field, value = ("discount_percent", percent) if grant < 0.25 else ("discount_value", discount)
            self.till.discount(field, value)
        self.end(invoice)
        if not is_return:
            self.sold.append(invoice)

    def end(self, invoice):
        self.till.expect_sums(invoice)
        if invoice.payment == "cash" and not invoice.is_return and self.random.random() < 0.3:
            invoice.paid = invoice.net + self.random.randint(1, 200)
        self.till.save(invoice)

    def return_of_sale(self):
        """Some of the lines come back, with their share of the discount."""
        self.tick()
        sold = self.sold.pop(self.random.randrange(len(self.sold)))
        back = [line for line in sold.lines if self.random.random() < 0.6] or sold.lines
        lines = [Line(line.item, line.quantity, line.factor, line.price, ZERO, line.name) for line in back]
        total = sum((line.total for line in lines), ZERO)
        on_account = sold.payment == "account"
        invoice = self.invoice(lines, rounded(total * sold.discount / sold.total), "account" if on_account else "cash",
                               is_return=True, customer=sold.customer)
        self.till.recall(sold.number, on_account)
        self.step(f"expect count lines = {len(sold.lines)}")
        for line in sold.lines:
            if line not in back:
                self.step(f"choose {line.item.code} in lines", "press Delete")
        self.end(invoice)

    def money(self):
        """An expense; a customer pays, and a supplier is paid."""
        amount = lambda most: D(self.random.randint(100, most * 100)) / 100
        self.tick()
        spent = amount(40)
        self.till.expense(spent)
        self.tick()
        customer, got = self.random.choice(list(CUSTOMERS)), amount(200)
        self.till.voucher("Shift+F11", "customer", self.customers[customer], got, cheque=False)
        self.tick()
        vendor, given = self.random.choice(list(self.vendors)), amount(60)
        self.till.voucher("Shift+F12", "vendor", self.vendors[vendor], given, cheque=False)
        for party, paid in ((customer, got), (vendor, given)):
            self.paid[party] = self.paid.get(party, ZERO) + paid
        self.cash += got - given - spent

    # In the office ----------------------------------------------------------------------------------------

    def goods_in(self, earlier):
        """A supplier's invoice; `earlier` days old when it is entered. Some of it goes back."""
        self.tick()
        vendor = self.random.choice(list(self.vendors))
        store = MAIN if self.random.random() < 0.8 else SECOND
        items = self.random.sample(self.items, self.random.randint(1, self.size.lines))
        margin = self.random.random() < 0.25
        day = self.today - timedelta(days=earlier)
        self.till.note(f"goods in of {self.now}")
        self.step("click office_intake", "click receipts_new", f"choose {self.vendors[vendor]} in receipt_supplier",
                  f"type F-{len(self.purchases) + 1} into receipt_invoice", f"type {day:%d/%m/%Y} into receipt_date",
                  "press Enter")
        if store != MAIN:
            self.step(f"choose {self.stores[store]} in receipt_store")
        lines = [self.line_in(item) for item in items]
        total = sum((line.total for line in lines), ZERO)
        discount = self.random.choice((ZERO, rounded(total * D("2.5") / 100)))
        tax = self.random.choice((ZERO, ZERO, rounded(total * D("1.4") / 100)))
        if discount:
            self.step("type 2.5% into receipt_discount", "press Enter")
        if tax:
            self.step(f"type {tax} into receipt_tax", "press Enter")
        if margin:
            self.step("type 22.5 into margin_percent", "click margin_all")
        net = total - discount + tax
        in_cash = store == MAIN and not earlier and ZERO < net < self.cash - 200 and self.random.random() < 0.3
        if in_cash:
            self.step(f"choose {DRAWER} in receipt_drawer")
        self.step(f"expect text receipt_total = {text(total)}", f"expect text receipt_net = {text(net)}",
                  "click receipt_save", "expect shown saved_receipt", f"expect text saved_receipt_net = {text(net)}")
        shares = list(shares_of(tax - discount, [line.total for line in lines]))
        for line, share in zip(lines, shares):
            self.take_in(line, line.total + share, store, margin)
        if in_cash:
            self.cash -= net
            self.paid[vendor] = self.paid.get(vendor, ZERO) + net
        number = self.documents(SUPPLY) + 1
        self.purchases.append(Purchase(number, SUPPLY, vendor, day, total, discount, tax))
        if self.random.random() < 0.3:
            self.give_back(lines, [line.total + share for line, share in zip(lines, shares)], vendor, store)
        else:
            self.step("press Esc", "expect hidden saved_receipt")

    def documents(self, ctype):
        return sum(one.ctype == ctype for one in self.purchases)

    def line_in(self, item):
        unit = self.random.choice(item.units())
        quantity = D(self.random.randrange(500, 9000)) / 1000 if item.weighed else D(self.random.randint(1, 40))
        price = rounded(item.prices[unit] * self.random.randrange(550, 850) / 1000, 3)
        discount = rounded(quantity * price * D(self.random.choice((0, 0, 5))) / 100)
        if unit == 1 and 1 not in item.barcodes:
            self.step(f"type {item.code} into receipt_item", "press Enter")
        else:
            self.step(f"scan {item.code_of(unit)}")
        self.step(f"expect text line_name = {item.name}", f"type {plain(quantity)} into line_quantity", "press Enter",
                  f"type {plain(price)} into line_price", "press Enter")
        if discount:
            self.step(f"type {plain(discount)} into line_discount", "press Enter")
        if self.random.random() < 0.5:
            self.step(f"type 15/{self.random.randint(1, 12)}/2028 into line_expiry", "press Enter")
        self.step(f"expect text line_total = {text(rounded(quantity * price - discount))}")
        line = Line(item, quantity, item.factor(unit), price, discount, item.name)
        line.unit = unit
        return line

    def take_in(self, line, value, store, margin):
        """What the goods cost counts in the average of the item in all stores."""
        item = line.item
        worth = max(item.quantity, ZERO) * item.cost + value
        self.set_cost(item, worth / (max(item.quantity, ZERO) + line.pieces))
        item.held[store] += line.pieces
        item.is_touched = True
        if margin:
            for unit in item.units():
                self.set_price(item, unit, value / line.pieces * item.factor(unit) * D("122.5") / 100)

    def set_cost(self, item, cost):
        if rounded(cost, 4) != item.cost:
            item.costs.append((self.now, rounded(cost, 4)))

    @staticmethod
    def set_price(item, unit, price):
        """The nearest quarter of a pound, half of it upwards."""
        item.prices[unit] = rounded(price * 4, 0) / 4

    def give_back(self, lines, values, vendor, store):
        """Part of one line of the receipt goes back at what it cost."""
        at = self.random.randrange(len(lines))
        line, item = lines[at], lines[at].item
        quantity = line.quantity if line.quantity <= 1 else rounded(line.quantity / 3, 0) or D(1)
        value = rounded(quantity * values[at] / line.quantity)
        self.till.note(f"back to the supplier: {quantity} of {item.code}")
        self.step("click saved_receipt_return", "expect shown goods_in", f"expect count receipt_lines = {len(lines)}")
        for other in lines:
            if other is not line:
                self.step(f"choose {other.item.name} in receipt_lines", "click receipt_remove")
        self.step("expect count receipt_lines = 1", f"type {plain(quantity)} into line_quantity", "press Enter",
                  f"expect text receipt_net = {text(value)}", "click receipt_save",
                  "expect text saved_receipt_title = مرتجع لمورد رقم " + str(self.documents(VENDOR_RETURN) + 1),
                  "press Esc", "expect hidden saved_receipt")
        gone = quantity * line.factor
        rest = item.quantity - gone
        if rest > 0 and item.quantity * item.cost >= value:
            self.set_cost(item, (item.quantity * item.cost - value) / rest)
        item.held[store] -= gone
        self.purchases.append(Purchase(self.documents(VENDOR_RETURN) + 1, VENDOR_RETURN, vendor, self.today, value, ZERO))

    def raise_prices(self):
        """10 % on a group, to the quarter."""
        self.tick()
        group = self.random.choice(GROUPS)
        self.till.note(f"prices of {group}")
        below = False
        for item in self.items:
            if item.group != group:
                continue
            for unit in item.units():
                self.set_price(item, unit, item.prices[unit] * D("1.1"))
                below = below or item.prices[unit] < item.cost * item.factor(unit)
        self.step("click office_goods", f"choose {group} in goods_group", "click goods_prices",
                  "type 10 into prices_percent", "click prices_step_25", "click prices_show", "click prices_apply")
        if below:
            self.step("expect question أسعار أقل من التكلفة :...", "answer yes")
        self.step("expect question تم حفظ الأسعار...", "answer no", "expect hidden price_sheet")

    def begin_count(self):
        self.step("click office_counting", "click count_new", "type جرد الشهر into count_title",
                  "click new_count_begin", "expect shown stock_count")
        items = self.random.sample(self.items, max(6, len(self.items) // 20))
        self.differences = []
        self.count(items[::2])
        self.step("click stock_count_back", "expect hidden stock_count")
        self.left_to_count = items[1::2]

    def count(self, items):
        """Whole items of the main store; each difference is that of its moment."""
        for item in items:
            self.tick()
            counted = max(ZERO, item.held[MAIN] + D(self.random.choice((0, 0, -2, -1, 3))))
            self.step(f"type {plain(counted)}*{item.code} into count_item", "press Enter", "expect focus count_item")
            self.differences.append((item, counted - item.held[MAIN], rounded((counted - item.held[MAIN]) * item.cost)))

    def end_count(self):
        self.stand_up()
        self.tick()
        self.office.enter()
        self.till.note("the end of the count")
        self.step("click office_counting", "press Enter", "expect shown stock_count")
        self.count(self.left_to_count)
        self.tick()
        self.step("click count_book", "expect question أصناف لها رصيد ولم تعد...", "answer no", "expect question ...",
                  "answer yes", "expect hidden count_item", "press Esc")
        for item, difference, _ in self.differences:
            item.held[MAIN] += difference
            item.is_touched = True
        self.office.leave()
        net = sum((value for _, _, value in self.differences), ZERO)
        self.expect_event("stock_counted", net)

    def write_off(self):
        self.tick()
        self.till.note("damaged goods")
        self.step("click office_counting", "click counting_view_1")
        net = ZERO
        for item in [item for item in self.items if not item.is_touched and not item.weighed][:2]:
            self.step(f"scan {item.code_of(1)}", "expect focus write_off_quantity", "type 3 into write_off_quantity",
                      "press Enter", "press Enter", "expect focus write_off_item")
            item.held[MAIN] -= 3
            item.is_touched = True
            net += rounded(3 * item.cost)
        self.step("click write_off_save", "answer yes", "expect count write_off_lines = 0")

    def expect_event(self, kind, amount):
        self.step(f"expect rows select amount from till_journal where kind = '{kind}' gives {plain(amount)}")

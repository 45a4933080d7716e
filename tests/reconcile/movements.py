"""Random movements of a shop: each is done at the till and entered in the books."""
import random
from datetime import timedelta
from decimal import Decimal as D

import shop
from books import CASH_VOUCHER, CHEQUE, Books, Expense, Voucher
from invoices import ACCOUNT, CARD, CASH, TIPS, Invoice, Line, refund_of
from money import ZERO, rounded
from till import Till


class Movements:
    def __init__(self, seed, start):
        self.random = random.Random(seed)
        self.books = Books(shop.OPENINGS)
        self.till = Till()
        self.now = start
        self.number = {}  # the last of each series of invoice numbers
        self.printed = []  # the invoices whose receipts the printer must have
        self.reports = {}  # files: the amounts of the rows in ascending order, and those of the figures under them

    def tick(self):
        self.now += timedelta(minutes=self.random.randint(2, 6), seconds=self.random.randint(0, 59))
        self.till.clock(self.now)

    def moment(self):
        return f"'{self.now:%Y/%m/%d}', '{self.now:%H:%M:%S}'"

    def amount(self, low, high):
        return D(self.random.randint(low * 100, high * 100)) / 100

    # Invoices ---------------------------------------------------------------------------------------------

    def start(self, what, **kind):
        invoice = Invoice([], drawer=self.till.drawer, moment=self.now, **kind)
        series = "return" if invoice.is_return else "account" if invoice.payment == ACCOUNT else "cash"
        invoice.number = self.number[series] = self.number.get(series, 0) + 1
        self.till.note(f"{what}: {series} invoice {invoice.number} of {self.now:%H:%M:%S} in drawer {invoice.drawer}")
        return invoice

    def finish(self, invoice):
        self.till.expect_sums(invoice)
        if invoice.payment in (CASH, TIPS) and self.random.random() < 0.3:
            invoice.paid = rounded(invoice.net) + self.random.randint(1, 200)
        self.till.save(invoice)
        invoice.left = [line.quantity for line in invoice.lines]
        self.books.invoices.append(invoice)
        self.printed.append(invoice)

    def ring_up(self, invoice, count, items=None):
        for item in self.random.sample(items or shop.PLAIN, count):
            if item.sale_only and invoice.is_return:
                continue
            if item in shop.WEIGHED:
                self.weigh(invoice, item)
            else:
                self.ring_up_one(invoice, item)

    def weigh(self, invoice, item):
        grams = self.random.randint(5, 2500)
        self.till.scan(shop.label(item, grams))
        invoice.lines.append(Line(item.code, D(grams) / 1000, item.units[0][1]))

    def ring_up_one(self, invoice, item):
        unit = self.random.choice((1, 1, 1, 1, 1, 1, 2, 3))
        factor, price = item.units[unit - 1]
        if self.now >= shop.PERIOD:
            price = rounded(price * (100 - item.period) / 100)
        self.till.scan(shop.barcode(item, unit))
        line = Line(item.code, D(1), price, factor)
        invoice.lines.append(line)
        how = self.random.random()
        if how < 0.3:
            line.quantity = D(self.random.randint(2, 4))
            self.till.quantity_of_last(line.quantity)
        elif how < 0.45:
            self.till.scan(shop.barcode(item, unit), again="yes")
            line.quantity += 1
        elif how < 0.55:
            self.till.scan(shop.barcode(item, unit), again="no")
            invoice.lines.append(Line(item.code, D(1), price, factor))

    def grant(self, invoice):
        """A discount on the whole invoice, as an amount or as a percentage."""
        if self.random.random() < 0.5:
            percent = D(self.random.choice(("2.5", "3", "5", "7.25", "10", "12.5")))
            self.till.discount("discount_percent", percent)
            invoice.discount = rounded(invoice.total * percent / 100)
        else:
            invoice.discount = rounded(invoice.total * self.random.randint(1, 30) / 100) + D("0.01")
            self.till.discount("discount_value", invoice.discount)

    def sale(self, what="sale", **kind):
        invoice = self.start(what, **kind)
        self.ring_up(invoice, self.random.randint(1, 4))
        self.finish(invoice)

    def sale_of_weighed(self):
        invoice = self.start("weighed goods")
        self.ring_up(invoice, self.random.randint(1, 3), shop.WEIGHED)
        if self.random.random() < 0.4:
            self.grant(invoice)
        self.finish(invoice)

    def discounted_lines(self):
        invoice = self.start("discounts on lines")
        self.ring_up(invoice, self.random.randint(1, 3), shop.WEIGHED + shop.PLAIN)
        for line in invoice.lines:
            if sum(other.item == line.item for other in invoice.lines) > 1 or self.is_in_period(line):
                continue
            worth = line.quantity * line.price
            if self.random.random() < 0.5:
                percent = D(self.random.choice(("1", "2.5", "3.75", "10", "33")))
                line.discount = worth * percent / 100
                self.till.edit(line.item, "خصم %", percent)
            else:
                line.discount = rounded(worth * self.random.randint(1, 60) / 100)
                self.till.edit(line.item, "خصم ق", line.discount)
        if self.random.random() < 0.5:
            self.grant(invoice)
        self.finish(invoice)

    def is_in_period(self, line):
        return any(item.code == line.item and item.period for item in shop.ITEMS)

    def discounted(self):
        invoice = self.start("a discount on the invoice")
        self.ring_up(invoice, self.random.randint(1, 4))
        self.grant(invoice)
        self.finish(invoice)

    def card_sale(self):
        invoice = self.start("card sale", payment=CARD)
        self.till.choose_card(100000 + invoice.number)
        self.ring_up(invoice, 2, shop.WEIGHED + shop.PLAIN)
        if self.random.random() < 0.5:
            self.grant(invoice)
        self.finish(invoice)

    def account_sale(self):
        customer = self.random.choice(list(shop.CUSTOMERS))
        invoice = self.start("account sale", payment=ACCOUNT, customer=customer)
        self.till.choose_account(shop.CUSTOMERS[customer][0])
        self.ring_up(invoice, 3, shop.WEIGHED + shop.PLAIN)
        if self.random.random() < 0.6:
            self.grant(invoice)
        self.finish(invoice)

    def tips_sale(self):
        invoice = self.start("tips sale", payment=TIPS)
        self.till.choose_receiver(shop.RECEIVER)
        self.ring_up(invoice, self.random.randint(1, 3))
        self.grant(invoice)
        self.finish(invoice)

    def sale_elsewhere(self, drawer, **kind):
        """A sale of another program, which does not round."""
        price = D(self.random.randint(100000, 999999)) / 10000
        discount = self.random.choice((ZERO, D(self.random.randint(100, 9999)) / 10000))
        invoice = Invoice([Line("", D(1), price)], discount, drawer=drawer, moment=self.now, exact=True, **kind)
        series = "cash" if invoice.in_drawer else "account"
        invoice.number = self.number[series] = self.number.get(series, 0) + 1
        self.till.note(f"sale of another program: {price} - {discount}, {kind}, drawer {drawer}")
        key = f"{invoice.number}, {invoice.customer}, {self.moment()}, 0, 1"
        stype, safe = (4, 0) if invoice.uncollected else (3, "null") if invoice.coupon else (0, "null")
        self.till.step("sql insert into sales (pnum, vcode, [date], time_, ctype, stcode, ptot, pdis, stype, ptype, "
                       f"disboun, safe) values ({key}, {price}, {discount}, {stype}, {drawer}, {invoice.coupon}, {safe})",
                       "sql insert into saledata (pnum, vcode, [date], time_, ctype, stcode, serial, note, quan, quan1, "
                       f"unit1, price, disc) values ({key}, 1, 'صنف', 1, 1, 1, {price}, 0)")
        self.books.invoices.append(invoice)

    # Returns ----------------------------------------------------------------------------------------------

    def return_without_receipt(self):
        invoice = self.start("return without receipt", is_return=True)
        self.till.step("press F4")
        self.ring_up(invoice, 3, shop.WEIGHED + shop.PLAIN)
        if self.random.random() < 0.5:
            self.grant(invoice)
        self.finish(invoice)

    def account_return(self):
        customer = self.random.choice(list(shop.CUSTOMERS))
        invoice = self.start("return on account", payment=ACCOUNT, customer=customer, is_return=True)
        self.till.step("press F4")
        self.till.choose_account(shop.CUSTOMERS[customer][0])
        self.ring_up(invoice, 2, shop.WEIGHED)
        self.finish(invoice)

    def return_of_sale(self):
        sales = [one for one in self.books.invoices if not one.is_return and any(one.left) and not one.has_service]
        if not sales:
            return self.account_sale()
        sold = self.random.choice(sales)
        on_account = sold.payment == ACCOUNT
        invoice = self.start(f"return of {sold.payment} sale {sold.number}", is_return=True, customer=sold.customer,
                             payment=ACCOUNT if on_account else CASH)
        self.till.recall(sold.number, on_account)
        back = [line for line, left in zip(sold.lines, sold.left) if left]
        self.till.step(f"expect count lines = {len(back)}")
        kept = [line for line in back if len(back) == 1 or self.random.random() < 0.7
                or sum(other.item == line.item for other in sold.lines) > 1] or back
        if sold.payment == TIPS:
            kept = back
        for line in back:
            if line not in kept:
                self.till.step(f"choose {line.item} in lines", "press Delete")
        # The discount of a tips sale is in the lines of its return. The share of each is known if there is only one.
        in_line = sold.discount if sold.payment == TIPS and len(sold.lines) == 1 else ZERO
        for at, line in enumerate(sold.lines):
            if line not in kept:
                continue
            before, quantity = line.quantity - sold.left[at], self.some_of(sold, line, sold.left[at])
            back = Line(line.item, quantity, line.price, line.factor)
            if line.discount + in_line:
                back.refund = refund_of(line, line.discount + in_line, before, quantity)
            invoice.lines.append(back)
            sold.left[at] -= quantity
        if sold.payment != TIPS:
            invoice.discount = rounded(invoice.total * sold.discount / sold.total)
        elif not in_line:
            invoice.spread = sold.discount
        self.finish(invoice)

    def some_of(self, sold, line, left):
        """Types how much of a line comes back, or leaves all that is left of it."""
        alone = sum(other.item == line.item for other in sold.lines) == 1
        whole = sold.payment == TIPS and len(sold.lines) > 1
        if left <= 1 or not alone or whole or self.random.random() < 0.5:
            return left
        quantity = D(self.random.randint(1, int(left * 4) - 1)) / 4 if left % 1 == 0 else rounded(left / 3, 3)
        self.till.edit(line.item, "كمية", quantity)
        return quantity

    # Cash -------------------------------------------------------------------------------------------------

    def voucher(self, what, key, party, code, name, sign, amount, kind=CASH_VOUCHER):
        self.till.note(f"{what} of {amount} in drawer {self.till.drawer}")
        self.till.voucher(key, party, name, amount, cheque=kind == CHEQUE)
        drawer = self.till.drawer if kind == CASH_VOUCHER else None
        self.books.vouchers.append(Voucher(self.now, drawer, party, code, sign, kind, amount))

    def receipt(self):
        code = self.random.choice(list(shop.CUSTOMERS))
        self.voucher("receipt", "Shift+F11", "customer", code, shop.CUSTOMERS[code][0], 1, self.amount(5, 300))

    def cheque(self):
        code = self.random.choice(list(shop.CUSTOMERS))
        self.voucher("cheque", "Shift+F11", "customer", code, shop.CUSTOMERS[code][0], 1, self.amount(5, 300), CHEQUE)

    def payment(self):
        self.voucher("payment", "Shift+F12", "vendor", shop.VENDOR, shop.VENDOR_NAME, -1, self.amount(5, 60))

    def direct_receipt(self):
        code = self.random.choice(list(shop.CUSTOMERS))
        amount = self.amount(1, 90)
        name, opening = shop.CUSTOMERS[code]
        self.till.note(f"direct receipt of {amount} in drawer {self.till.drawer}")
        self.till.direct_receipt(name, self.books.owed_by(code, opening), amount)
        self.books.vouchers.append(Voucher(self.now, self.till.drawer, "customer", code, 1, CASH_VOUCHER, amount))

    def expense(self):
        amount = self.amount(1, 40)
        self.till.note(f"expense of {amount} in drawer {self.till.drawer}")
        self.till.expense(amount)
        self.books.expenses.append(Expense(self.now, self.till.drawer, amount))

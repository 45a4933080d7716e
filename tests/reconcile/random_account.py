"""A random history of account customers over some months, as a play: balances, cards, statements, arrears."""
from datetime import datetime, timedelta
from decimal import Decimal as D

import shop
from books import ADDITION_NOTICE, CASH_VOUCHER, DISCOUNT_NOTICE, Voucher
from invoices import ACCOUNT
from money import ZERO, rounded, text
from movements import Movements
from till import WORKER

START = datetime(2026, 8, 1, 9)
MOVEMENTS = ("account_sale " * 22 + "return_of_sale " * 10 + "account_return " * 4 + "receipt " * 8 + "cheque " * 4 +
             "customer_payment " * 4 + "direct_receipt " * 6 + "corrected_receipt " * 4 + "notice " * 3 +
             "account_sale_elsewhere " * 5).split()


class RandomAccount(Movements):
    def __init__(self, seed):
        super().__init__(seed, START)

    def write(self):
        self.till.step("shop empty", *("sql " + row for row in shop.rows()))
        self.till.step("sql insert into shift (scode, stcode, cash_no, s_date, man_) values (1, 1, 1, '2026/07/31', 1)")
        self.till.clock(self.now)
        self.till.sit_down(1)
        movements = MOVEMENTS[:]
        self.random.shuffle(movements)
        movements.sort(key=lambda what: what == "return_of_sale" and self.random.random() < 0.8)
        for what in movements:
            self.next_day()
            getattr(self, what)()
        for customer in shop.CUSTOMERS:
            self.look_at(customer)
        return "\n".join(self.till.steps) + "\n"

    def next_day(self):
        """One movement a day, so that their order on the statement is known."""
        self.now = datetime(self.now.year, self.now.month, self.now.day, 9) + timedelta(days=1)
        self.tick()

    def balance(self, customer):
        return self.books.owed_by(customer, shop.CUSTOMERS[customer][1])

    # Movements --------------------------------------------------------------------------------------------

    def customer_payment(self):
        code = self.random.choice(list(shop.CUSTOMERS))
        self.voucher("payment", "Shift+F12", "customer", code, shop.CUSTOMERS[code][0], -1, self.amount(1, 60))

    def corrected_receipt(self):
        """Saved, and saved again with another amount; half of the time after it was chosen from the list."""
        code = self.random.choice(list(shop.CUSTOMERS))
        name = shop.CUSTOMERS[code][0]
        wrong, right = self.amount(5, 300), self.amount(5, 300)
        self.till.note(f"receipt of {wrong}, corrected to {right}, from {code}")
        self.till.step("press Shift+F11", f"choose {name} in voucher_party",
                       f"expect text voucher_balance = {text(self.balance(code))}",
                       f"type {wrong} into voucher_amount", "click voucher_save", "expect focus voucher_print")
        if self.random.random() < 0.5:
            self.till.step("press Esc", "expect hidden Form38", "press Shift+F11", "click voucher_choose",
                           f"choose {text(wrong)} in vouchers", "press Enter", f"expect text voucher_amount = {text(wrong)}")
        self.till.step(f"type {right} into voucher_amount", "click voucher_save",
                       f"expect text voucher_balance = {text(self.balance(code) - right)}", "press Esc",
                       "expect hidden Form38")
        self.books.vouchers.append(Voucher(self.now, 1, "customer", code, 1, CASH_VOUCHER, right))

    def notice(self):
        """A discount or an addition notice of the back office, with more than two decimals."""
        code, kind = self.random.choice(list(shop.CUSTOMERS)), self.random.choice((DISCOUNT_NOTICE, ADDITION_NOTICE))
        amount = D(self.random.randint(1000, 90000)) / 1000
        row = Voucher(self.now, None, "customer", code, 1, kind, amount)
        number = 9000 + len(self.books.vouchers)
        self.till.note(f"notice of kind {kind} over {amount}, customer {code}")
        self.till.step("sql insert into vencuspay (pay_id, chkno, ptype, ztype, vcode, [date], time_, [type], quan, dis, "
                       f"quan1, stcode) values ({number}, 'N{number}', 2, 2, {code}, {self.moment()}, {kind}, {amount}, "
                       f"0, {amount}, 1)")
        self.books.vouchers.append(row)
        self.set_balance(code)

    def account_sale_elsewhere(self):
        code = self.random.choice(list(shop.CUSTOMERS))
        self.sale_elsewhere(1, customer=code, payment=ACCOUNT)
        self.set_balance(code)

    def set_balance(self, code):
        self.till.step(f"sql update custdata set cacc = {self.balance(code)} where ccode = {code}")

    # What must be seen ------------------------------------------------------------------------------------

    def look_at(self, customer):
        name = shop.CUSTOMERS[customer][0]
        self.till.note(f"the card and the statement of customer {customer}")
        balance = self.balance(customer)
        self.till.step(f"expect rows select round(cacc, 4) from custdata where ccode = {customer} gives "
                       f"{balance.normalize():f}", "click menu_customers", f"type {customer} into customers_search",
                       "expect count customers_list = 1", f"expect cell 1 الرصيد of customers_list = {text(balance)}",
                       "press Esc", "expect hidden account_customers")
        self.till.step("click menu_account_statement", f"choose {name} in statement_customer")
        middle = self.now.date() - timedelta(days=self.random.randint(20, 60))
        for first, last in ((START.date(), middle), (middle + timedelta(days=1), self.now.date())):
            self.statement(customer, first, last)
        owed = rounded(balance)
        self.till.step("click statement_arrears", f"expect message توجد متأخرات بمبلغ {text(owed)}" if owed > 0
                       else "expect message لا توجد متأخرات", "answer ok", "press Esc", "expect hidden Form39")

    def statement(self, customer, first, last):
        rows = self.books.account_of(customer)
        balance = shop.CUSTOMERS[customer][1] + sum((row[2] - row[1] for row in rows if row[0] < first), ZERO)
        shown = [row for row in rows if first <= row[0] <= last]
        self.till.note(f"the statement of customer {customer} from {first} to {last}")
        self.till.step(f"type {first:%Y/%m/%d} into statement_start", f"type {last:%Y/%m/%d} into statement_end",
                       "click statement_show", f"expect text statement_forward = {text(balance)}",
                       f"expect count statement_rows = {len(shown) + 2}",
                       f"expect cell 1 الرصيد of statement_rows = {text(balance)}")
        for at, (date, credit, debit) in enumerate(shown, 2):
            balance += debit - credit
            for heading, cell in (("التاريخ", f"{date:%Y/%m/%d}"), ("دائن", text(credit)), ("مدين", text(debit)),
                                  ("الرصيد", text(balance))):
                self.till.step(f"expect cell {at} {heading} of statement_rows = {cell}")
        self.till.step(f"expect text statement_credits = {text(sum((row[1] for row in shown), ZERO))}",
                       f"expect text statement_debits = {text(sum((row[2] for row in shown), ZERO))}",
                       f"expect text statement_closing = {text(balance)}")

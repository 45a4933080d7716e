"""A random day of two drawers, as a play, with what must be seen on its way and at its end."""
from datetime import datetime, timedelta
from decimal import Decimal as D

import shop
from books import AT_SHIFT_START, MAIN_DRAWER, Bank, Count, Personal, Transfer
from money import ZERO, plain, text
from movements import Movements
from till import WORKER

PARTS = 5  # the drawers are used in turn
DAY = datetime(2026, 11, 21)
SALES = ("sale sale sale sale sale sale sale sale_of_weighed sale_of_weighed sale_of_weighed discounted_lines "
         "discounted_lines discounted discounted discounted card_sale account_sale tips_sale").split()
MOVEMENTS = SALES * 3 + ("return_of_sale " * 10 + "return_without_receipt " * 4 + "account_return account_return "
                         "receipt receipt payment payment cheque direct_receipt direct_receipt expense expense "
                         "bank personal").split()


class RandomDay(Movements):
    def __init__(self, seed):
        super().__init__(seed, DAY + timedelta(hours=8))
        self.started = {}  # the shift of each drawer
        self.moves = []  # (drawer, amount): what the start of a shift moves to the main drawer

    # The day ----------------------------------------------------------------------------------------------

    def write(self):
        self.till.step("shop empty", *("sql " + row for row in shop.rows()))
        self.yesterday()
        self.open(1)
        self.open(2)
        movements = MOVEMENTS[:]
        self.random.shuffle(movements)
        # Nothing can come back before it was sold.
        movements.sort(key=lambda what: what == "return_of_sale" and self.random.random() < 0.8)
        for part in range(PARTS):
            drawer = part % 2 + 1
            self.till.sit_down(drawer)
            for what in movements[part::PARTS]:
                self.tick()
                getattr(self, what)()
            self.tick()
            self.till.look_at_cash(self.books.position_before(drawer, self.now))
            if part == 1:
                self.hand_over()
        self.evening()
        return "\n".join(self.till.steps) + "\n"

    def yesterday(self):
        """What another program left: the statement begins with it."""
        today, self.now = self.now, self.now - timedelta(days=1)
        for drawer in shop.OPENINGS:
            self.sales_elsewhere(drawer)
        self.now = today

    def sales_elsewhere(self, drawer):
        self.sale_elsewhere(drawer)
        self.sale_elsewhere(drawer, coupon=D("3.125"))
        self.sale_elsewhere(drawer, uncollected=True)

    def evening(self):
        """The drawers are counted, the shifts closed, and every figure of the day is looked at."""
        for drawer in shop.OPENINGS:
            self.till.sit_down(drawer)
            self.tick()
            self.sales_elsewhere(drawer)
            self.tick()
            self.count(drawer)
            self.tick()
            self.close(drawer)
        for drawer in shop.OPENINGS:
            self.statement(drawer, DAY)
            self.statement(drawer, DAY - timedelta(days=1))
        self.balances()

    # Shifts and counts ------------------------------------------------------------------------------------

    def open(self, drawer):
        self.tick()
        self.till.note(f"the shift of drawer {drawer} begins")
        self.till.sit_down(drawer)
        self.till.step("press F8", f"choose {WORKER} in shift_worker", "type 0 into shift_leave", "press Tab",
                       "click shift_start")
        self.empty_drawers()
        self.started[drawer] = self.now

    def empty_drawers(self):
        """The start of a shift moves the cash of every drawer but the main one, unless it has just left, and asks before it
        moves that of another drawer than the till's."""
        asks = False
        for drawer in shop.OPENINGS:
            cash = self.books.position(drawer, lambda when: when < self.now, AT_SHIFT_START)
            gone = any(source == drawer for source, _ in self.moves)
            if cash <= 0:
                self.till.step(f"expect message تم بدء وردية جديدة .. رصيد الخزينه -- {text(cash)} -- صفر أو أقل لم يتم "
                               "تحويل النقديه منها", "answer ok")
            elif drawer != MAIN_DRAWER and not gone:
                self.moves.append((drawer, cash))
                asks = asks or drawer != self.till.drawer
        if asks:
            self.till.step("expect question ستحول إلى الخزينة الرئيسية نقدية هذه الأدراج :...", "answer yes")
        self.till.step("expect hidden shift2s")
        while self.moves:
            self.move_to_main(*self.moves.pop(0))

    def difference(self):
        return D(self.random.randint(-2000, 2000)) / 100

    def hand_over(self):
        """The cashier of the second drawer leaves; what he does not leave in it goes to the main drawer."""
        self.tick()
        drawer, leave = self.till.drawer, D("37.25")
        self.till.note(f"drawer {drawer} changes hands")
        expected = self.books.position_before(drawer, self.now)
        self.till.step("press F8")
        counted = self.write_count(expected, leave)
        self.till.step(f"choose {WORKER} in shift_worker", "click shift_start")
        self.moves.append((drawer, expected - leave))
        self.empty_drawers()
        self.report(drawer, expected, counted)
        self.started[drawer] = self.now

    def close(self, drawer):
        leave = D("20.5") if drawer != MAIN_DRAWER else ZERO
        self.till.note(f"the shift of drawer {drawer} ends")
        expected = self.books.position_before(drawer, self.now)
        self.till.step("press F8")
        counted = self.write_count(expected, leave)
        self.till.step("click shift_close", "expect question هل تريد اغلاق الورديه الحاليه ؟", "answer yes",
                       "expect hidden shift2s")
        self.report(drawer, expected, counted)
        if drawer != MAIN_DRAWER:
            self.move_to_main(drawer, expected - leave)

    def write_count(self, expected, leave):
        counted = expected + self.difference()
        self.till.step(f"type {plain(counted)} into shift_counted", f"type {plain(leave)} into shift_leave", "press Tab")
        return counted

    def report(self, drawer, expected, counted):
        cells = (counted, expected, counted - expected,
                 self.books.card_sales(drawer, self.started[drawer], self.now))
        self.till.step("expect rows select f1, F2, f3, f4 from [print] gives " + " | ".join(map(text, cells)))
        self.reports[f"shift-{self.now:%Y%m%d-%H%M%S}.pdf"] = [], [
            *cells, *self.books.beside(drawer, self.started[drawer], self.now)]

    def move_to_main(self, drawer, amount):
        assert amount > 0
        self.till.step("expect rows select top 1 caml, cash_nf, cash_nt, convert(varchar, cdate, 111), "
                       "convert(varchar, time_, 8) from cach_t order by cnum desc gives "
                       f"{plain(amount)} | {drawer} | {MAIN_DRAWER} | {self.now:%Y/%m/%d} | {self.now:%H:%M:%S}")
        self.books.transfers.append(Transfer(self.now, drawer, MAIN_DRAWER, amount))

    def count(self, drawer):
        self.till.note(f"drawer {drawer} is counted")
        expected = self.books.position_before(drawer, self.now)
        counted = expected + self.difference()
        self.till.count(expected, counted)
        self.books.counts[DAY.date(), drawer] = Count(self.now, counted - expected)

    # What must be seen ------------------------------------------------------------------------------------

    def statement(self, drawer, day):
        self.till.note(f"the statement of drawer {drawer} on {day:%Y/%m/%d}")
        self.till.step("press F9", f"choose درج {drawer} in statement_drawer", f"type {day:%Y/%m/%d} into statement_date",
                       "press Enter")
        for name, figure in self.books.statement(drawer, day).items():
            self.till.step(f"expect text figure_{name} = {text(figure)}")
        journal = [one for one in self.books.invoices if one.moment.date() == day.date()]  # of the store
        self.till.step(f"expect count journal = {len(journal)}")
        if drawer == MAIN_DRAWER and day == DAY:
            self.print_statement([one.total for one in journal], self.books.statement(drawer, day))
        self.till.step("choose ملخص اليوم in statement_view")
        for at, figure in self.books.summary(drawer, day.date()).items():
            self.till.step(f"expect text summary_{at} = {figure if at == 0 else text(figure)}")
        self.till.step("choose الكشف in statement_view", "press Esc", "expect hidden daily_statement")

    def print_statement(self, journal, figures):
        file = f"statement-{self.now:%Y%m%d-%H%M%S}.pdf"
        self.till.step("click statement_print",
                       f"expect text statement_note = لا توجد طابعة .. تم الحفظ في الملف Receipts/{file}")
        self.reports[file] = sorted(journal), [figures[name] for name in (
            "discounts", "returned_discounts", "net_cash", "total_deposits", "total_outgoings", "net",
            "previous_balance", "current_balance")]

    def balances(self):
        self.till.note("balances and stock")
        for code, (name, opening) in shop.CUSTOMERS.items():
            owed = self.books.owed_by(code, opening)
            self.till.step("click menu_customers", f"type {code} into customers_search", "expect count customers_list = 1",
                           f"expect cell 1 الرصيد of customers_list = {text(owed)}", "press Esc",
                           "expect hidden account_customers")
        self.till.step(f"expect rows select round(vacc, 4) from vendata gives {plain(self.books.owed_to(shop.VENDOR, shop.OWED_TO_VENDOR))}")
        for item in shop.ITEMS:
            if not item.sale_only:
                left = shop.OPENING_STOCK + self.books.pieces_moved(item.code)
                self.till.step(f"expect rows select round(sum(quan), 6) from stk where icode = {item.code} gives {plain(left)}")

    # Movements of the back office -------------------------------------------------------------------------

    def bank(self):
        amount, sign = self.amount(1, 50), self.random.choice((-1, 1))
        self.till.note(f"bank {sign * amount} in drawer {self.till.drawer}")
        self.till.step("sql insert into btran (ser, bcode, [date], time_, quan, [type], type1, stcode, cash_n) values "
                       f"(9, 1, {self.moment()}, {amount}, {int(sign < 0)}, 1, 1, {self.till.drawer})")
        self.books.bank.append(Bank(self.now, self.till.drawer, sign, amount))

    def personal(self):
        amount, sign = self.amount(1, 50), self.random.choice((-1, 1))
        self.till.note(f"personal {sign * amount} in drawer {self.till.drawer}")
        self.till.step("sql insert into in_out ([date], time_, stcode, cash_n, aml, type1) values "
                       f"({self.moment()}, 1, {self.till.drawer}, {amount}, {int(sign > 0)})")
        self.books.personal.append(Personal(self.now, self.till.drawer, sign, amount))

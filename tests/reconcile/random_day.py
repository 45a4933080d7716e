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
        self.counted = {}  # what each drawer was expected to hold at its count, and held
        # The numbers of the shifts; those of the first drawer are always the higher ones.
        self.numbers = {1: 7, 2: 0}
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
            self.look_at_cash(drawer)
            if part in (1, 2):
                self.hand_over(leave=D("37.25"))
            if part == 2:
                self.tick()
                self.count(drawer)
        self.evening()
        return "\n".join(self.till.steps) + "\n"

    def yesterday(self):
        """What another program left: the statement begins with it."""
        today, self.now = self.now, self.now - timedelta(days=1)
        self.till.step("sql insert into shift (scode, stcode, cash_no, s_date, e_date, man_) values "
                       f"({self.numbers[1]}, 1, 1, '{self.now:%Y/%m/%d} 08:00:00', '{self.now:%Y/%m/%d} 20:00:00', 1)")
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
        self.till.step("press F8", f"choose {WORKER} in shift_worker", "click shift_start")
        self.numbers[drawer] += 1
        self.started[drawer] = self.now
        self.empty_drawers()

    def empty_drawers(self, agreed=True):
        """The start of a shift moves the cash of the other drawers, which it names and asks about, to the main one. It
        counts up to the start of the shift with the highest number in the store."""
        newest = self.started[max(self.started, key=lambda drawer: self.numbers[drawer])]
        empty, others = [], []
        for drawer in shop.OPENINGS:
            cash = self.books.position(drawer, lambda when: when < newest, AT_SHIFT_START)
            gone = sum((row.amount for row in self.books.transfers
                        if row.source == drawer and row.moment >= newest), ZERO)
            gone += sum((amount for source, amount in self.moves if source == drawer), ZERO)
            if cash <= 0:
                empty.append(cash)
            elif drawer not in (MAIN_DRAWER, self.till.drawer) and cash > gone:
                others.append((drawer, cash - gone))
        if others:
            self.till.step("expect question ستحول إلى الخزينة الرئيسية نقدية هذه الأدراج :...",
                           f"answer {'yes' if agreed else 'no'}")
        for cash in empty:
            self.till.step(f"expect message تم بدء وردية جديدة .. رصيد الخزينه -- {text(cash)} -- صفر أو أقل لم يتم تحويل "
                           "النقديه منها", "answer ok")
        self.till.step("expect hidden shift2s")
        for move in self.moves + (others if agreed else []):
            self.move_to_main(*move)
        self.moves = []

    def difference(self):
        return D(self.random.randint(-2000, 2000)) / 100

    def hand_over(self, leave):
        """A cashier follows another. What is not left in the second drawer goes to the main drawer."""
        self.tick()
        drawer = self.till.drawer
        self.till.note(f"drawer {drawer} changes hands")
        expected = self.books.position_before(drawer, self.now)
        leave = leave if expected > leave else ZERO
        self.till.step("press F8")
        counted = self.write_count(expected, leave)
        self.till.step(f"choose {WORKER} in shift_worker", "click shift_start")
        if drawer != MAIN_DRAWER and expected > 0:
            self.moves.append((drawer, expected - leave))
        started, self.started[drawer] = self.started[drawer], self.now
        self.numbers[drawer] += 1
        self.empty_drawers(agreed=self.random.random() < 0.5)
        self.report(drawer, started, expected, counted)
        self.started[drawer] = self.now

    def close(self, drawer):
        leave = D("20.5") if drawer != MAIN_DRAWER else ZERO
        self.till.note(f"the shift of drawer {drawer} ends")
        expected = self.books.position_before(drawer, self.now)
        leave = leave if expected > leave else ZERO
        self.till.step("press F8")
        counted = self.write_count(expected, leave)
        self.till.step("click shift_close", "expect question هل تريد اغلاق الورديه الحاليه ؟", "answer yes",
                       "expect hidden shift2s")
        self.report(drawer, self.started[drawer], expected, counted)
        if drawer != MAIN_DRAWER and expected > 0:
            self.move_to_main(drawer, expected - leave)

    def write_count(self, expected, leave):
        counted = expected + self.difference()
        self.till.step(f"type {plain(counted)} into shift_counted", f"type {plain(leave)} into shift_leave", "press Tab")
        return counted

    def report(self, drawer, start, expected, counted):
        cells = (counted, expected, counted - expected, self.books.card_sales(drawer, start, self.now))
        self.till.step("expect rows select f1, F2, f3, f4 from [print] gives " + " | ".join(map(text, cells)))
        self.reports[f"shift-{self.now:%Y%m%d-%H%M%S}.pdf"] = [], [
            *cells, *self.books.beside(drawer, start, self.now)]

    def move_to_main(self, drawer, amount):
        assert amount > 0
        self.till.step("expect rows select top 1 caml, cash_nf, cash_nt, convert(varchar, cdate, 111), "
                       "convert(varchar, time_, 8) from cach_t "
                       f"where cash_nf = {drawer} order by cnum desc gives "
                       f"{plain(amount)} | {drawer} | {MAIN_DRAWER} | {self.now:%Y/%m/%d} | {self.now:%H:%M:%S}")
        self.books.transfers.append(Transfer(self.now, drawer, MAIN_DRAWER, amount))

    def count(self, drawer):
        """Another count of the day takes the place of the first."""
        self.till.note(f"drawer {drawer} is counted")
        self.books.counts.pop((DAY.date(), drawer), None)
        expected = self.books.position_before(drawer, self.now)
        counted = expected + self.difference()
        self.till.count(expected, counted)
        self.books.counts[DAY.date(), drawer] = Count(self.now, counted - expected)
        self.counted[drawer] = expected, counted

    def look_at_cash(self, drawer):
        position = self.books.position_before(drawer, self.now)
        self.till.look_at_cash(position, *self.counted.get(drawer, ()))

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

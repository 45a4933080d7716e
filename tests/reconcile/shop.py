"""The shop of the tests: its rows, in the words of the database, and what a cashier needs to know of them."""
from collections import namedtuple
from datetime import datetime
from decimal import Decimal as D

from invoices import SERVICE

# factor and price of each unit: piece, pack, carton
Item = namedtuple("Item", "code name units period sale_only", defaults=(D(0), False))

PLAIN = [
    Item("11", "حليب", [(1, D("41.5")), (6, D("245.25")), (12, D("480.5"))]),
    Item("12", "زيت", [(1, D("19.99")), (6, D("118.75")), (12, D("233.33"))]),
    Item("13", "ملح", [(1, D("7.35")), (6, D("43.05")), (12, D("84.9"))]),
    Item("14", "سمن", [(1, D("129.33")), (6, D("770.01")), (12, D("1525.5"))]),
    Item("15", "علكة", [(1, D("0.75")), (6, D("4.25")), (12, D("8.05"))]),
    Item("16", "بن", [(1, D("39.95")), (6, D("236.6")), (12, D("470.15"))], period=D("7.5")),
    Item(SERVICE, "توصيل", [(1, D("15")), (6, D("90")), (12, D("180"))], sale_only=True),
]
WEIGHED = [
    Item("501", "جبنة رومي", [(1, D("69.99")), (6, D("0")), (12, D("0"))]),
    Item("502", "لانشون", [(1, D("327")), (6, D("0")), (12, D("0"))]),
    Item("503", "زيتون", [(1, D("45.45")), (6, D("0")), (12, D("0"))]),
]
ITEMS = PLAIN + WEIGHED
OPENING_STOCK = 5000
TELEPHONE = "0220000123"
PERIOD = datetime(2026, 11, 1)  # the first day of the period prices

OPENINGS = {1: D("500.5"), 2: D("0")}  # cash of the drawers
CUSTOMERS = {101: ("مطعم الركن", D("1250.75")), 102: ("كافتيريا الميدان", D("-80.05"))}
VENDOR, VENDOR_NAME, OWED_TO_VENDOR = 1, "ندوان للألبان", D("8400")
RECEIVER = "جمال الحمال"


def barcode(item, unit):
    """Each unit has a barcode of its own."""
    return f"62200{unit}{int(item.code):06}"


def label(item, grams):
    """The label of a scale: 20, the item, the weight, a check digit that nobody reads."""
    return f"20{int(item.code):05}{grams:05}0"


def rows():
    """The statements that make the shop from an empty one."""
    yield f"update basic set [Print] = 'lpt1', max_dis = 100, tel = '{TELEPHONE}', prn_csh_rep = 1, clos_bal = 0, mst = 1, mcash = 1"
    yield f"update cash set copen = {OPENINGS[1]}, salary1 = {OPENINGS[1]}"
    yield f"insert into cash (code, name, stcode, copen, salary1) values (2, 'درج 2', 1, {OPENINGS[2]}, {OPENINGS[2]})"
    for item in ITEMS:
        prices = ", ".join(f"num{at}, price{at}1, price{at}2" for at in (1, 2, 3))
        values = ", ".join(f"{factor}, 0.01, {price}" for factor, price in item.units)
        yield (f"insert into items (code, name, sale_only, {prices}) values "
               f"({item.code}, '{item.name}', {int(item.sale_only)}, {values})")
        for unit in (1, 2, 3):
            yield f"insert into barcode (bar, code, scode) values ('{barcode(item, unit)}', {item.code}, {unit})"
        if not item.sale_only:
            yield f"insert into stk (icode, stcode, quan, edate) values ({item.code}, 1, {OPENING_STOCK}, '3000/01/01')"
        if item.period:
            yield f"insert into sale_price (sale_prd, icode, p_per, s_price) values (1, {item.code}, {item.period}, 1)"
    yield f"insert into sal_prd (sale_no, name, sale_from, sale_to) values (1, 'عروض', '{PERIOD:%Y/%m/%d}', '2026/12/31')"
    yield ("insert into stk_f_q (icode, stcode, quan, edate, [date], f_q, B_no) "
           "select icode, stcode, quan, edate, '2026/01/01', 1, 'opening' from stk")
    for code, (name, opening) in CUSTOMERS.items():
        yield f"insert into custdata (ccode, cname, copen, cacc, ctype) values ({code}, '{name}', {opening}, {opening}, 0)"
    yield (f"insert into vendata (vcode, vname, vopen, vacc) values "
           f"({VENDOR}, '{VENDOR_NAME}', {OWED_TO_VENDOR}, {OWED_TO_VENDOR})")
    yield f"insert into boundata (ccode, cname) values (1, '{RECEIVER}')"
    yield "insert into bankdata (bcode, bname, mob) values (1, 'بنك السنابل', 0)"
    yield "insert into mainx (code, name) values (1, 'تشغيل')"
    yield "insert into subx (code, name, mcode) values (1, 'شاي', 1)"

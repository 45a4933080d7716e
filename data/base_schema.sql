-- The base schema of a new shop, in Transact-SQL: the tables, columns, keys and indexes that the upgrade list
-- requires. The list runs at every start and adds the rest. A column that it adds is here only if an index or the first
-- settings row needs it, with the type that the list would give it. On a server, create the database with the
-- collation Arabic_CI_AS. "GO" ends a statement.
--
-- Amounts and quantities are float, codes int. Invoice, voucher and transfer numbers are not unique: several programs
-- take the highest number plus one, and a sale must not fail because two took the same.

-- Settings, users, stores, drawers, workers ---------------------------------------------------------------------

-- One row: the settings of the shop.
create table basic (aname nvarchar(100) null, ename nvarchar(100) null, tel nvarchar(100) null, warn int null,
    [type] int null, [print] nvarchar(255) null, cash nvarchar(255) null, pname nvarchar(255) null,
    max_dis real null, st_d int null, win int null, mst int null, mcash int null)
GO
create table users (code int not null primary key, [name] nvarchar(100) null, pass nvarchar(100) null,
    perm nvarchar(400) null)
GO
-- The password screen's statement names the table [user].
create view [user] as select * from users
GO
create table stocks (code int not null primary key, [name] nvarchar(100) null)
GO
create table cash (code int not null, [name] nvarchar(100) null, stcode int not null, copen float null,
    salary1 float null, notes nvarchar(255) null, primary key (stcode, code))
GO
create table worker (work_code int not null primary key, work_name nvarchar(100) null, note nvarchar(255) null,
    notes nvarchar(255) null)
GO
-- Shifts of a drawer; the list adds man_, man, cur_bal and dep.
create table shift (stcode int null, cash_no int null, scode bigint null, s_date datetime null, e_date datetime null)
GO
create index shift_drawer on shift (stcode, cash_no, scode)
GO

-- Items, stock, prices ------------------------------------------------------------------------------------------

-- fact and itype are codes of makers and item_types.
create table items (code int not null primary key, [name] nvarchar(100) null, fact int null, itype int null,
    [desc] nvarchar(255) null, mquan float null, num1 float null, num2 float null, num3 float null,
    price11 float null, price12 float null, price13 float null, price21 float null, price22 float null,
    price23 float null, price31 float null, price32 float null, price33 float null, sale_only bit null)
GO
create index items_name on items ([name])
GO
create table item_types (code int not null primary key, [name] nvarchar(100) null)
GO
create table makers (code int not null primary key, [name] nvarchar(100) null)
GO
create table unit1 (code int not null primary key, [name] nvarchar(50) null)
GO
-- scode is the unit of the barcode: 1 unit, 2 pack, 3 carton.
create table barcode (bar nvarchar(50) null, code int null, scode int null)
GO
create index barcode_bar on barcode (bar, code, scode)
GO
create index barcode_code on barcode (code)
GO
create table stk (icode int not null, stcode int not null, quan float null, edate datetime null)
GO
create index stk_batch on stk (icode, stcode, edate, quan)
GO
create index stk_store on stk (stcode)
GO
-- Sale periods, their prices, and the prices of the period that runs today.
create table sal_prd (sale_no int not null primary key, [name] nvarchar(100) null, sale_from datetime null,
    sale_to datetime null)
GO
create table sale_price (sale_prd int null, icode int null, p_per float null, s_price float null)
GO
create index sale_price_period on sale_price (sale_prd, icode)
GO
create table tmp_price (icode int null, p_per float null, s_price float null)
GO
create index tmp_price_item on tmp_price (icode)
GO
-- Craftsman work lines: made (qty) and not sold yet (cqty), price in tot.
create table salver (scode int not null primary key, wcode int null, icode int null, [date] datetime null,
    tot float null, qty float null, cqty float null)
GO

-- Invoices ------------------------------------------------------------------------------------------------------

create table sales (pnum int null, vcode int null, [date] datetime null, ctype int null, ptot float null,
    pdis float null, ptax float null, stcode int null, [user] int null, wcode int null, types int null,
    link int null, time_ datetime null, stype int null, ptype int null, inv_type int null, note nvarchar(255) null,
    safe int null, disboun float null, teln nvarchar(50) null)
GO
-- A receipt by its number.
create index sales_number on sales (pnum, ctype, stcode, [date], vcode)
GO
-- The next number of the cash series and of a store's returns; the account series walks down sales_number.
create index sales_party on sales (vcode, pnum, ctype)
GO
create index sales_store_number on sales (stcode, ctype, pnum)
GO
-- The cash position reads this alone.
create index sales_drawer on sales (stcode, ptype, vcode, ctype, stype, [date], time_, ptot, disboun, safe)
GO
-- The day's journal finds its invoices in this alone.
create index sales_day on sales (stcode, [date], time_, ptype)
GO
-- edate is the expiry date of the batch that a recalled line came from or goes back to.
create table saledata (pnum int null, vcode int null, [date] datetime null, ctype int null, stcode int null,
    stype int null, sid int null, link int null, inv_type int null, serial int null, icode int null,
    note nvarchar(255) null, note1 nvarchar(255) null, quan float null, price float null, disc float null,
    unit1 float null, scode int null, salvcode int null, quan1 float null, edate datetime null)
GO
create index saledata_number on saledata (pnum, ctype, stcode, [date], vcode)
GO
-- Delivery permits of account invoices.
create table inv_d (pnum int null, ctype int null, stcode int null, [date] datetime null, vcode int null,
    serial int null, icode int null, quan float null, price float null, unit1 float null, edate datetime null,
    note nvarchar(255) null)
GO
create index inv_d_number on inv_d (pnum, ctype, stcode)
GO
create table purchase (pnum int null, vcode int null, [date] datetime null, ctype int null, ptot float null,
    pdis float null, ptax float null, stcode int null, [user] int null, perm_no nvarchar(20) null,
    note nvarchar(255) null)
GO
create index purchase_party on purchase (vcode, [date], ctype, ptot)
GO
create table purdata (pnum int null, vcode int null, [date] datetime null, ctype int null, stcode int null,
    serial int null, icode int null, quan float null, price float null, disc float null, unit1 float null,
    scode int null, quan1 float null, edate datetime null, note nvarchar(255) null)
GO
create index purdata_number on purdata (pnum, ctype, stcode)
GO

-- Cash movements ------------------------------------------------------------------------------------------------

-- Transfers between drawers.
create table cach_t (cnum int null, cdate datetime null, caml float null, cfr int null, cto int null,
    note1 nvarchar(255) null, cash_nf int null, cash_nt int null, user_c int null, time_ datetime null)
GO
create index cach_t_number on cach_t (cnum)
GO
create index cach_t_from on cach_t (cfr, cash_nf, cdate, time_, caml)
GO
create index cach_t_to on cach_t (cto, cash_nt, cdate, time_, caml)
GO
create table cash_t (cnum int null, cdate datetime null, caml float null, stcode int null, cash_n int null,
    note1 nvarchar(255) null)
GO
-- type1: 0 a withdrawal from the drawer, 1 a deposit into it.
create table in_out (ser int null, [date] datetime null, stcode int null, cash_n int null, aml float null,
    type1 int null, note nvarchar(255) null, remark nvarchar(255) null, time_ datetime null)
GO
create index in_out_drawer on in_out (stcode, cash_n, [date], time_, type1, aml)
GO
create table dailyexp (expdate datetime null, [value] float null, notes nvarchar(255) null, stcode int null,
    cash_n int null, mcode int null, scode int null, time_ datetime null)
GO
create index dailyexp_drawer on dailyexp (stcode, cash_n, expdate, time_, [value])
GO
create table mainx (code int not null primary key, [name] nvarchar(100) null)
GO
create table subx (code int not null, [name] nvarchar(100) null, mcode int not null, primary key (mcode, code))
GO
-- Surplus (positive) and shortage (negative) of a drawer's day.
create table mor_les ([date] datetime null, stcode int null, ptype int null, aml float null, time_ datetime null)
GO
create index mor_les_drawer on mor_les (stcode, ptype, [date], time_, aml)
GO
create table bankdata (bcode int not null primary key, bname nvarchar(100) null)
GO
-- type: 1 to the bank, 0 from it; type1 1 moves the drawer's cash.
create table btran (ser int null, bcode int null, [date] datetime null, quan float null, [type] int null,
    type1 int null, stcode int null, cash_n int null, note nvarchar(255) null, note1 nvarchar(255) null,
    time_ datetime null)
GO
create index btran_number on btran (ser)
GO
create index btran_drawer on btran (stcode, cash_n, type1, [type], [date], time_, quan)
GO

-- Customers, vendors, vouchers ----------------------------------------------------------------------------------

create table custdata (ccode int not null primary key, cname nvarchar(100) null, caddress nvarchar(255) null,
    cphone nvarchar(50) null, mob nvarchar(50) null, bname nvarchar(100) null, mname nvarchar(100) null,
    copen float null, cacc float null, ctype int null, link int null, note nvarchar(255) null)
GO
-- Walk-in customers.
create table cust_cash (zcode int not null, zname nvarchar(100) null, zphone nvarchar(70) null,
    zmail nvarchar(70) null)
GO
create index cust_cash_code on cust_cash (zcode)
GO
create table vendata (vcode int not null primary key, vname nvarchar(100) null, vaddress nvarchar(255) null,
    vphone nvarchar(50) null, vopen float null, vacc float null, note nvarchar(255) null)
GO
-- Receivers of tips.
create table boundata (ccode int not null primary key, cname nvarchar(100) null, note nvarchar(255) null)
GO
create table boun (bnum int null, [date] datetime null, ccode int null, aml float null, stcode int null,
    cash_n int null, note nvarchar(255) null)
GO
-- Representatives.
create table link (ccode int not null primary key, cname nvarchar(100) null, cphone nvarchar(50) null)
GO
create table vencuspay (chkno nvarchar(50) null, ptype int null, ztype int null, vcode int null,
    [date] datetime null, [type] int null, quan float null, dis float null, quan1 float null, note nvarchar(255) null,
    link int null, stcode int null, cash_n int null, tdate datetime null, bcode int null, chowner nvarchar(100) null,
    ctype int null, chk int null, time_ datetime null, pay_id real null)
GO
create index vencuspay_id on vencuspay (pay_id)
GO
create index vencuspay_party on vencuspay (vcode, ptype, [date], ztype, [type], quan, quan1)
GO
create index vencuspay_number on vencuspay (chkno, ptype, vcode)
GO
create index vencuspay_drawer on vencuspay (stcode, cash_n, [type], [date], time_, ptype, quan)
GO
create table cuspay (ccode int null, [date] datetime null, quan float null, note nvarchar(255) null)
GO
create table premiumpay (pnum int null, ccode int null, [date] datetime null, quan float null)
GO
create table premiumpay_d (pnum int null, ser int null, [date] datetime null, quan float null)
GO
create table partener (code int not null primary key, [name] nvarchar(100) null, copen float null)
GO

-- Store transfers and stock taking ------------------------------------------------------------------------------

create table sttran (tnum int null, tdate datetime null, tfrom int null, tto int null)
GO
create index sttran_number on sttran (tnum)
GO
create table transdata (tnum int null, tdate datetime null, icode int null, quan1 float null, scode int null,
    stcode int null, stcode1 int null, quan float null)
GO
create index transdata_number on transdata (tnum)
GO
create table tmp_tran (tnum int null, icode int null, edate datetime null, quan float null, stcode int null,
    stcode1 int null)
GO
create index tmp_tran_number on tmp_tran (tnum)
GO
create table f_q (icode int null, stcode int null, [date] datetime null, quan float null, edate datetime null)
GO
create table modify (icode int null, stcode int null, [date] datetime null, quan float null, edate datetime null,
    [user] int null)
GO
create table sav_1 (icode int null, stcode int null, quan float null, edate smalldatetime null)
GO
create table bad_data (bnum int null, [date] datetime null, icode int null, stcode int null, quan float null,
    edate datetime null, note nvarchar(255) null)
GO
create table frm_to (fnum int null, [date] datetime null, icode int null, stcode int null, quan float null,
    note nvarchar(255) null)
GO

-- Scratch tables, printer codes, maintenance --------------------------------------------------------------------

-- Lines of a report; a workstation's rows carry its cash point in f18 and its user.
create table [print] (f1 nvarchar(50) null, f2 nvarchar(100) null, f3 nvarchar(100) null, f4 nvarchar(100) null,
    f5 nvarchar(100) null, f6 nvarchar(100) null, f7 nvarchar(100) null, f8 nvarchar(100) null,
    f9 nvarchar(100) null, f10 nvarchar(100) null, f11 nvarchar(100) null, f12 nvarchar(100) null,
    f13 nvarchar(100) null, f14 nvarchar(100) null, f15 nvarchar(100) null, f16 nvarchar(100) null,
    f17 nvarchar(100) null, f18 nvarchar(100) null, f19 nvarchar(100) null, f20 nvarchar(100) null,
    [user] nvarchar(100) null)
GO
create index print_user on [print] ([user], f18)
GO
-- Characters of code page 1256 (wc) and the printer's codes for them, joined (pc) and unjoined (pc1).
create table codes (wc int not null primary key, pc int null, pc1 int null)
GO
-- Costs of items in a report of purchases; entries of the list that widen them are no statements of the server.
create table pur_tmp (itemcode real null, vencode int null, vcode int null, tprice real null, mdisp real null,
    edisp real null, inv_ser real null)
GO
create table pur_tmp2 (itemcode real null, vencode int null, vcode int null, tprice real null, mdisp real null,
    edisp real null, [type] int null, inv_ser real null)
GO
create table maintain (code int null, [date] datetime null, ccode int null, note nvarchar(255) null)
GO
create table netmaint (code int null, [date] datetime null, ccode int null, note nvarchar(255) null)
GO

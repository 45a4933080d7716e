-- Every kind of statement that the program sends, one a line, with values of a working day.

-- start-up and sign-in
select getdate()
set dateformat ymd
select * from basic
Update basic set   cr_v = '2026.11'
select * from [users]
select * from [users] where code = 1
select * from stocks where code = 1
select * from cash where stcode = 1 and code = 1
update [user] set pass = '2' where code = 1

-- the upgrade list procedures
 select * from stocks
ALTER TABLE items add p_77 nvarchar(20) null
select * from shift where cash_no is null 
select max(pay_id) as xl from vencuspay 
select * from vencuspay where pay_id is null

-- the sales screen
 select max(pnum) as last_i from sales where (ctype = 0 or ctype = 1)  and vcode <> -1 
 select max(pnum) as last_i from sales where (ctype = 0 or ctype = 1) and vcode = -1
 select max(pnum) as last_i from sales where (ctype = 2 or ctype = 3) and stcode =1
select * from sales
select * from saledata
select * from inv_d
select * from stocks
select * from users
select * from bankdata where isnull(mob,0) = 0 
delete from tmp_price
select * from sal_prd where sale_from <='2026/11/21' and sale_to >= '2026/11/21'
INSERT INTO tmp_price (icode,p_per,s_price) select icode,isnull(p_per,0),s_price from sale_price where sale_prd = 1
select * from news

-- items and lines
SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.num3 ,items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only
SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.num3 ,items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only Having name like 'لبن%'
SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.num3 ,items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only Having (name) like '%بن%'
SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.num3 ,items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only Having code = 101
SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.num3 ,items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only Having fact = 2
SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.num3 ,items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only Having itype = 3
SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.num3 ,items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only Having isnull(items.stop,0)= 0
SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.num3 ,items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only Having name like 'لبن%' and code = 101 and price12 =25 and fact = 2 and itype = 3 and isnull(items.stop,0) = 0
SELECT Sum(stk.quan) AS s1, items.code,items.stop, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.num3 ,items.sale_only FROM items LEFT JOIN stk ON items.code = stk.icode GROUP BY items.code, items.name, items.fact, items.[desc], items.itype, items.mquan, items.price11, items.price12, items.price13, items.price21, items.price22, items.price23, items.price31, items.price32, items.price33, items.num1, items.num2, items.stop,items.num3,items.sale_only Having price12 = 25
select * from items where code =101
SELECT Sum(stk.quan) AS xq From stk WHERE stk.icode=101 AND stk.stcode=1
SELECT edate  From stk WHERE stk.icode=101
select * from barcode where bar ='6221033101234 '
select * from barcode where bar = '6221033101234'
select * from salver where scode = 7 and cqty > 0
select * from salver where scode = 7 and cqty < qty
SELECT items.*, IsNull(tmp_price.p_per,0) AS Expr1, tmp_price.s_price FROM items LEFT JOIN tmp_price ON items.code = tmp_price.icode  where code = 101
select sum(quan) as qt from stk where icode = 101 AND stcode = 1
select sum(quan1) as rq from reservd where icode = 101

-- payment and saving
select * from worker
select * from shift where  stcode = 1and cash_no = 1 order by scode 
select SUM(QUAN) as quan from stk where icode = 101 and stcode = 1
select * from sales where pnum = 12 and ctype = 0 and stcode = 1 and date = '2026/11/21'
select * from cust_cash 
select * from cust_cash where zcode = 3
select * from basic 
update custdata set cacc = [cacc] + 12.5 where ccode = 5
update custdata set cacc = [cacc] - 12.5 where ccode = 5
select max(ser) as xmax from btran 
INSERT INTO btran (ser,bcode,[date],quan,type,type1,stcode,note1) select 8 , 1 , '2026/11/21' , 12.5 , 1, 0, 0 , ' مبيعات إئتمان رقم مرجعي 77'
INSERT INTO btran (ser,bcode,[date],quan,type,type1,stcode,note1) select 9 , 1 , '2026/11/21' , 12.5 , 0, 0, 0 , ' مرتجع إئتمان رقم مرجعي 77'
select * from stk where icode = 101 order by edate
select * from stk where icode = 101 order by edate desc
select * from stk where icode = 101 and stcode = 1 and edate = '3000/01/01'
update salver set cqty = [cqty] - 1 where scode = 7
update salver set cqty = [cqty] + 1 where scode = 7
Update reservd set quan1 = quan1 - 2 , quan = quan - 2 Where quan1 > 0 and icode = 101 and ccode = 5

-- printing
delete from [print] where f18='1' and [user] = 'سعاد'
select * from [print] where f18='1' and [user] = 'سعاد'
delete from [print] where [user] = 'سعاد'
select * from [print] where [user] = 'سعاد'
delete from [print] where [user] ='سعاد'
select * from [print]
select * from codes
select * from elec_inv

-- shifts
select max(scode) as last_i from shift where stcode = 1 and cash_no = 1
select * FROM shift  where stcode = 1 and cash_no = 1  Order By scode
select * FROM shift  where stcode = 1 and cash_no = 1 Order By scode
select * from worker RIGHT OUTER JOIN shift ON worker.work_code = shift.man_  where stcode = 1 AND cash_no = 1  and scode = 4
select * from shift where  stcode = 1 and cash_no = 1 and scode = 4
select * from shift 
select * FROM shift  where stcode = 1 Order By scode
select * from shift Order By s_date

-- cash position of the store
select * from cash where stcode = 1
select sum(copen) as xtot from cash where stcode = 1 and code = 1
select sum(ptot) as xs from sales where  cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype <> 1  and ptype = 1
select sum(ptot) as xs from sales where  (cast(convert(varchar,date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)>'2026/11/21 08:00:00 ' and cast(convert(varchar,date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 10:42:00') and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 1  and ptype = 1
select sum(ptot) as xs from sales where  (cast(convert(varchar,date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)>'2026/11/21 08:00:00 ' and cast(convert(varchar,date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 10:42:00') and stcode = 1 and (ctype = 2 Or ctype = 3) and vcode = -1 and stype = 1 and ptype = 1
select sum(disboun) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2  and ptype = 1
select sum(disboun) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 3  and ptype = 1
select sum(ptot) as xs from sales where (cast(convert(varchar,date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)>'2026/11/21 08:00:00 ' and cast(convert(varchar,date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 10:42:00')  and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0  and ptype = 1
select sum(ptot) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0  and ptype = 1
select sum(ptot) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 3 Or ctype = 2) and vcode = -1   and stype <> 1 and ptype = 1
select sum(disboun) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 2 Or ctype = 3) and vcode = -1 and stype = 3  and ptype = 1
SELECT Sum(case when [ptype]=1 then [quan] else 0 end ) AS a1, Sum(case when [ptype]=2 then [quan] else 0 end ) AS a2 From vencuspay WHERE  vencuspay.type=1 AND cast(convert(varchar,vencuspay.date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' And stcode = 1 and cash_n = 1
SELECT Sum(btran.quan) AS xs From btran Where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and btran.Type = 1 And btran.type1 = 1   And stcode = 1 and cash_n = 1
SELECT Sum(btran.quan) AS xs From btran Where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and btran.Type = 0 And btran.type1 = 1  And stcode = 1 and cash_n = 1
SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cfr=1  and cast(convert(varchar,cdate,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00'  and cach_t.cash_nf = 1
SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cto=1  and cast(convert(varchar,cdate,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00'  and cach_t.cash_nt = 1
SELECT Sum(case when [type1]=0 then [aml] else 0 end ) AS Expr1, Sum(case when [type1]=1 then [aml] else 0 end ) AS Expr2 From in_out WHERE cast(convert(varchar,in_out.date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' And stcode = 1 and cash_n = 1
 select sum(value) as xs from dailyexp where cast(convert(varchar,expdate,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00'  And stcode = 1 and cash_n = 1
SELECT  sum(mor_les.aml) as xs FROM mor_les where (cast(convert(varchar,date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00')  And stcode = 1 and ptype = 1
 select max(cnum) as last_i from cach_t 
Insert Into cach_t (cnum,cdate,caml,cfr,cto,note1,cash_nf,cash_nt,user_c,time_) select 1,'2026/11/21',250.5,1,1,'تحويل من درج 1',2,1,1,'10:42:00'

-- cash position of the shift screens
select sum(salary1) as xtot from cash where stcode = 1 and code = 1
select sum(round(ptot,2)) as xs from sales where  cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1  and ptype = 1
select sum(round(ptot,2)) as xs from sales where  cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 1  and ptype = 1
select sum(round(disboun,2)) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2  and ptype = 1
select sum(round(ptot,2)) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0  and ptype = 1
select sum(round(ptot,2)) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 1 Or ctype = 2) and vcode = -1   and ptype = 1
select sum(round(ptot,2)) as xs from sales where  cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1  and ptype = 1
select sum(round(ptot,2)) as xs from sales where  cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 1  and ptype = 1
select sum(round(disboun,2)) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2  and ptype = 1
select sum(round(ptot,2)) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 4 and safe = 0  and ptype = 1
select sum(round(ptot,2)) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 1 Or ctype = 2) and vcode = -1   and ptype = 1
SELECT Sum(round(btran.quan,2)) AS xs From btran Where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and btran.Type = 0 And btran.type1 = 1  And stcode = 1 and cash_n = 1
SELECT Sum(round(btran.quan,2)) AS xs From btran Where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00') as datetime)<'2026/11/21 10:42:00' and btran.Type = 1 And btran.type1 = 1   And stcode = 1 and cash_n = 1
SELECT  sum(mor_les.aml) as xs FROM mor_les where (date <'2026/11/21 10:42:00' )  And stcode = 1 and ptype = 1

-- daily statement, journal, summary
select sum(ptot) as xs from sales where ptype = 1 and cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)>'2026/11/21 00:00:00' and cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode <> -1 
select sum(ptot) as xs from sales where ptype = 1 and cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)>'2026/11/21 00:00:00' and cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and stcode = 1 and (ctype = 1 Or ctype = 2) and vcode <> -1  
select sum(ptot) as xs from sales where ptype = 1 and cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)>'2026/11/21 00:00:00' and cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1  
select sum(disboun) as xs from sales where ptype = 1 and cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)>'2026/11/21 00:00:00' and cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2
select sum(ptot) as xs from sales where ptype = 1 and cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 00:00:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 
SELECT  sum(mor_les.aml) as xs FROM mor_les where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 00:00:00' and ptype = 1
SELECT Sum(round(cach_t.caml,2)) AS xs From cach_t WHERE cach_t.cto=1 and cast(convert(varchar,cdate,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)>'2026/11/21 00:00:00' and cast(convert(varchar,cdate,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and cach_t.cash_nt = 1
SELECT sales.pnum, case when sales.ctype = 0 or sales.ctype = 1 then 'مبيعات' else 'مرتجعات' end AS E1, case when sales.vcode = -1 then 'نقدية' else 'آجلة' end AS E2, sales.ptot, worker.work_name, custdata.cname, vendata.vname, boundata.cname AS bname, link.cname AS lname, sales.time_, sales.Date, sales.note, users.Name, sales.vcode, sales.ctype, sales.stype, sales.pdis, sales.inv_type, sales.Shift, sales.link, sales.teln FROM sales LEFT OUTER JOIN users ON sales.[user] = users.code LEFT OUTER JOIN worker ON sales.wcode = worker.work_code LEFT OUTER JOIN custdata ON sales.vcode = custdata.ccode LEFT OUTER JOIN vendata ON sales.vcode = vendata.vcode LEFT OUTER JOIN boundata ON sales.link = boundata.ccode LEFT OUTER JOIN link ON sales.link = link.ccode where cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)>='2026/11/21 00:00:00' and cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and sales.stcode = 1 order by pnum;
SELECT sales.pnum, case when sales.ctype = 0 or sales.ctype = 1 then 'مبيعات' else 'مرتجعات' end AS E1, case when sales.vcode = -1 then 'نقدية' else 'آجلة' end AS E2, sales.ptot, worker.work_name, custdata.cname, vendata.vname, boundata.cname AS bname, link.cname AS lname, sales.time_, sales.Date, sales.note, users.Name, sales.vcode, sales.ctype, sales.stype, sales.pdis, sales.inv_type, sales.Shift, sales.link, sales.teln FROM sales LEFT OUTER JOIN users ON sales.[user] = users.code LEFT OUTER JOIN worker ON sales.wcode = worker.work_code LEFT OUTER JOIN custdata ON sales.vcode = custdata.ccode LEFT OUTER JOIN vendata ON sales.vcode = vendata.vcode LEFT OUTER JOIN boundata ON sales.link = boundata.ccode LEFT OUTER JOIN link ON sales.link = link.ccode where cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)>='2026/11/21 00:00:00' and cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and sales.stcode = 1 and (sales.ctype = 0 or sales.ctype = 1) and sales.vcode = -1  order by pnum;
SELECT sales.pnum, case when sales.ctype = 0 or sales.ctype = 1 then 'مبيعات' else 'مرتجعات' end AS E1, case when sales.vcode = -1 then 'نقدية' else 'آجلة' end AS E2, sales.ptot, worker.work_name, custdata.cname, vendata.vname, boundata.cname AS bname, link.cname AS lname, sales.time_, sales.Date, sales.note, users.Name, sales.vcode, sales.ctype, sales.stype, sales.pdis, sales.inv_type, sales.Shift, sales.link, sales.teln FROM sales LEFT OUTER JOIN users ON sales.[user] = users.code LEFT OUTER JOIN worker ON sales.wcode = worker.work_code LEFT OUTER JOIN custdata ON sales.vcode = custdata.ccode LEFT OUTER JOIN vendata ON sales.vcode = vendata.vcode LEFT OUTER JOIN boundata ON sales.link = boundata.ccode LEFT OUTER JOIN link ON sales.link = link.ccode where cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)>='2026/11/21 00:00:00' and cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and sales.stcode = 1 and (sales.ctype = 0 or sales.ctype = 1) and sales.vcode <> -1  order by pnum;
SELECT sales.pnum, case when sales.ctype = 0 or sales.ctype = 1 then 'مبيعات' else 'مرتجعات' end AS E1, case when sales.vcode = -1 then 'نقدية' else 'آجلة' end AS E2, sales.ptot, worker.work_name, custdata.cname, vendata.vname, boundata.cname AS bname, link.cname AS lname, sales.time_, sales.Date, sales.note, users.Name, sales.vcode, sales.ctype, sales.stype, sales.pdis, sales.inv_type, sales.Shift, sales.link, sales.teln FROM sales LEFT OUTER JOIN users ON sales.[user] = users.code LEFT OUTER JOIN worker ON sales.wcode = worker.work_code LEFT OUTER JOIN custdata ON sales.vcode = custdata.ccode LEFT OUTER JOIN vendata ON sales.vcode = vendata.vcode LEFT OUTER JOIN boundata ON sales.link = boundata.ccode LEFT OUTER JOIN link ON sales.link = link.ccode where cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)>='2026/11/21 00:00:00' and cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and sales.stcode = 1 and (sales.ctype = 2 or sales.ctype = 3) and sales.vcode = -1  order by pnum;
SELECT sales.pnum, case when sales.ctype = 0 or sales.ctype = 1 then 'مبيعات' else 'مرتجعات' end AS E1, case when sales.vcode = -1 then 'نقدية' else 'آجلة' end AS E2, sales.ptot, worker.work_name, custdata.cname, vendata.vname, boundata.cname AS bname, link.cname AS lname, sales.time_, sales.Date, sales.note, users.Name, sales.vcode, sales.ctype, sales.stype, sales.pdis, sales.inv_type, sales.Shift, sales.link, sales.teln FROM sales LEFT OUTER JOIN users ON sales.[user] = users.code LEFT OUTER JOIN worker ON sales.wcode = worker.work_code LEFT OUTER JOIN custdata ON sales.vcode = custdata.ccode LEFT OUTER JOIN vendata ON sales.vcode = vendata.vcode LEFT OUTER JOIN boundata ON sales.link = boundata.ccode LEFT OUTER JOIN link ON sales.link = link.ccode where cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)>='2026/11/21 00:00:00' and cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and sales.stcode = 1 and (sales.ctype = 2 or sales.ctype = 3) and sales.vcode <> -1  order by pnum;
select count(pnum) as xc from sales where ptype = 1 and date ='2026/11/21' and stcode = 1
select sum(ptot) as xs from sales where ptype = 1 and date ='2026/11/21' and stcode = 1 and ctype = 0 and vcode = -1 and (stype = 0 Or stype = 2)
select sum(ptot) as xs from sales where ptype = 1 and date ='2026/11/21' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode <> -1 
select sum(ptot) as xs from sales where ptype = 1 and date ='2026/11/21' and stcode = 1 and ctype = 0 and vcode = -1 and stype = 1 
select sum(aml) as xs from mor_les where ptype = 1 and date ='2026/11/21' and stcode = 1
select sum(disboun) as xs from sales where ptype = 1 and date ='2026/11/21' and stcode = 1 and ctype = 0 and vcode = -1 and stype = 2 
select sum(ptot) as xs ,sum(disboun) as xy from sales where ptype = 1 and date ='2026/11/21' and stcode = 1 and (ctype = 2 Or ctype = 3) and vcode = -1
select sum(ptot) as xs from sales where ptype = 1 and date ='2026/11/21' and stcode = 1 and (ctype = 2 Or ctype = 3) and vcode <> -1

-- expenses, surplus and shortage
select * from cash where stcode =1
select * from mainx
select * from subx where mcode=1
select * from dailyexp
select * from mor_les where  ptype = 1 and date ='2026/11/21' and stcode = 1

-- customers
select * from gover where ccode=1
select * from cityn where cgov=1
select * from dist where ccity=1
select * from cust_typ
select * from country
select * from link
select * from custdata order by ccode
select * from cust_typ  Where code = 1
select * from cust_typ  Where name like '%جملة%'
select max(zcode) as last_ from cust_cash
 select * from cust_cash Where zname like '%سع%'
 select * from cust_cash Where zphone like '%010%'
 select * from cust_cash Where zmail like '%@%'
select * from custdata where ccode = 5 order by ccode

-- vouchers
 select vcode as x1,vname as x2 from vendata
select ccode as x1,cname as x2 from custdata where isnull(ctype,0) = 0 order by ccode
select ccode as x1,cname as x2 from custdata where ctype = 1 order by ccode
select * from link where ccode =1
select * from bankdata
select max(case when isnumeric(chkno)=1 then case when chkno = '.' then 0 else  cast(chkno as real) end else 0 end) as last_c from vencuspay where type <> 0 and ptype = 2
select max(case when isnumeric(chkno)=1 then case when chkno = '.' then 0 else  convert(real,chkno) end else 0 end) as last_c from vencuspay where type <> 0 and ptype = 1
select * from vencuspay where vcode = 5 and ptype = 2 and [date] = '2026/11/21' and quan = 100 and chkno = '12' and ztype = 2
select * from vencuspay where vcode = 5 and date = '2026/11/21' and quan  = 100 and ptype = 1 and chkno = '12'
SELECT vencuspay.chkno, vencuspay.vcode, custdata.mname FROM vencuspay INNER JOIN custdata ON vencuspay.vcode = custdata.ccode WHERE (vencuspay.chkno = '12') AND (vencuspay.ptype = 2)
SELECT vencuspay.chkno FROM vencuspay INNER JOIN vendata ON vencuspay.vcode = vendata.vcode WHERE (vencuspay.chkno = '12')and vencuspay.ptype = 1
select * from vencuspay
select max(pay_id) as last_c from vencuspay 
select * from custdata where ccode = 5
select * from vendata where vcode = 5
select max(chkno) as last_ from vencuspay where ztype = 2 and ptype = 2 and vcode=5

-- account statement
SELECT  Sum(case when[ctype]=1 then [ptot]  else 0 end ) AS am1, Sum(case when [ctype]=3 then [ptot] else 0 end ) AS am2 From purchase Where (purchase.ctype=1 OR purchase.ctype=3) AND purchase.vcode =5 AND (purchase.date <'2026/11/21');
SELECT  Sum(case when [ctype]=2 then [ptot] else 0 end ) AS am1, Sum(case when [ctype]=0 then [ptot] else 0 end ) AS am2 From sales Where (sales.ctype=0 OR sales.ctype=2) AND sales.vcode=5 AND (sales.date<'2026/11/21' );
SELECT  Sum(case when[ctype]=1 then [ptot]  else 0 end ) AS am1, Sum(case when [ctype]=3 then [ptot] else 0 end ) AS am2 From purchase Where (purchase.ctype=1 OR purchase.ctype=3) AND purchase.vcode =5 AND (purchase.date <='2026/11/21');
SELECT  Sum(case when [ctype]=2 then [ptot] else 0 end ) AS am1, Sum(case when [ctype]=0 then [ptot] else 0 end ) AS am2 From sales Where (sales.ctype=0 OR sales.ctype=2) AND sales.vcode=5 AND (sales.date<='2026/11/21' );
SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan] else 0 end ) AS am1, Sum(case when [type]=3 then [quan] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=5 and ptype = 2 AND (vencuspay.date<'2026/11/21' ) and (ztype = 2 or ztype = 3);
SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan] else 0 end ) AS am1, Sum(case when [type]=3 then [quan] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=5 and ptype = 1 AND (vencuspay.date<'2026/11/21' ) and (ztype = 2 or ztype = 3);
SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan1] else 0 end ) AS am1, Sum(case when [type]=3 then [quan1] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=5 and ptype = 2 AND (vencuspay.date<='2026/11/21' ) and (ztype = 2 or ztype = 3);
SELECT Sum(case when [type]=0 Or [type]=1 Or [type]=2 then [quan1] else 0 end ) AS am1, Sum(case when [type]=3 then [quan1] else 0 end ) AS am2 From vencuspay WHERE vencuspay.vcode=5 and ptype = 1 AND (vencuspay.date<='2026/11/21' ) and (ztype = 2 or ztype = 3);
delete  from tmp_acc
INSERT INTO tmp_acc ([date],am1,am2,note1,f1,f2,f3,f4,f6) SELECT [date], case when [ctype]=1 then [ptot] else 0 end, case when [ctype]=3 then [ptot] else 0 end, case when [ctype]=1 then 'توريد : فاتورة رقم ' + convert(varchar,pnum) else 'مرتجع مورد : اذن رقم ' + convert(varchar,pnum) end, pnum, ptot, ctype, stcode, case when [ctype]=1 then 1 else 5 end From purchase Where (purchase.ctype=1 OR purchase.ctype=3) AND purchase.vcode =5 AND (purchase.date>='2026/11/01' AND purchase.date<='2026/11/30');
INSERT INTO tmp_acc ([date],am2,am1,note1,f1,f2,f3,f10,f12,f11,f5,f4,f8,f9,f6,note2) SELECT [date], case when [ctype]=0 then [ptot] else 0 end, case when [ctype]=2 then [ptot] else 0 end, case when [ctype]=0 then 'مبيعات : إذن رقم ' + convert(varchar,pnum) else 'مرتجع مبيع : اذن رقم ' + convert(varchar,pnum) end, pnum, ptot, ctype, stcode, pdis, ptax, perm_no, stcode, stype, ptype, case when [ctype]=0 then 2 else 6 end, case when isnull(perm_no,'') <> '' then 'فاتورة رقم :' + perm_no else '' end From sales Where (sales.ctype=0 OR sales.ctype=2) AND sales.vcode=5 AND (sales.date>='2026/11/01' AND sales.date<='2026/11/30' );
INSERT INTO tmp_acc ([date],am1,am2,note1,note2,f6) SELECT [date], case when [type]=0 Or [type]=1 Or [type]=2 then [quan] else 0 end, case when [type]=3 then [quan] else 0 end, case when [type]=1 then 'ايصال استلام نقدية رقم : ' + chkno when [type]=0 then ' شيك رقم ' + chkno when [type]=2 then 'اشعار خصم برقم ' + chkno else 'اشعار اضافة رقم ' + chkno end, note, 4 From vencuspay WHERE vencuspay.vcode=5 And vencuspay.ptype = 2 AND (vencuspay.date>='2026/11/01' AND vencuspay.date<='2026/11/30') and (ztype = 2 or ztype = 3);
INSERT INTO tmp_acc ([date],am2,am1,note1,note2,f6) SELECT [date], case when [type]=0 Or [type]=1 Or [type]=2 then [quan] else 0 end, case when [type]=3 then [quan] else 0 end, case when [type]=1 then 'ايصال دفع رقم ' + chkno when [type]=0 then ' شيك رقم ' + chkno when [type]=2 then 'مدفوعات :اشعار خصم برقم ' + chkno else 'اضافة :  رقم ' + chkno end, note, 3 From vencuspay WHERE vencuspay.vcode=5 And vencuspay.ptype = 1 AND (vencuspay.date>='2026/11/01' AND vencuspay.date<='2026/11/30');
select * from tmp_acc order by date

-- tips, offers
select * from boundata order by ccode
select * from boundata
select sales.pnum, boundata.cname from sales LEFT OUTER JOIN boundata ON sales.link = boundata.ccode
select max(ofr_num) as xof from offer
select * from offer
SELECT offer.date,offer.ofr_num, offer.vcode, offer.cust_c, cust_cash.zname, custdata.cname FROM offer LEFT OUTER JOIN custdata ON offer.vcode = custdata.ccode LEFT OUTER JOIN cust_cash ON offer.cust_c = cust_cash.zcode GROUP BY offer.date,offer.ofr_num, offer.vcode, offer.cust_c, cust_cash.zname, custdata.cname
SELECT * from offer where ofr_num =  1

-- store transfers
select sum(quan) as qq,stcode from stk where icode = 101 and isnull([quan],0)  > 0  Group By stcode  having stcode <> 1
select sum(quan) as quan from stk where icode = 101 and stcode = 2
select max(tnum) as last_ from sttran
INSERT INTO sttran (tnum,tdate,tfrom,tto) select 1 , '2026/11/21' ,2,1
INSERT INTO transdata (tnum,tdate,icode,quan1,scode,stcode,stcode1,quan) select 1 , '2026/11/21' , 101 , 2 , 3 , 2 , 1 , 24
select * from stk where icode = 101 and stcode = 2 order by edate
INSERT INTO tmp_tran (tnum,icode,edate,quan,stcode,stcode1) select 1 , 101 , '2027/01/31' , 3 , 2 , 1
INSERT INTO tmp_tran (tnum,icode,edate,quan,stcode,stcode1) select 1 , 101 , '3000/01/01' , 21 , 2 , 1
select * from tmp_tran where tnum = 1
update stk set quan = IsNull([quan], 0) - 3 where icode = 101 and edate ='2027/01/31' and stcode = 2
select * from stk where icode = 101 and stcode = 1 and edate = '2027/01/31'
update stk set quan = IsNull([quan], 0) + 3 where icode = 101 and edate ='2027/01/31' and stcode = 1
INSERT INTO stk (icode,edate,stcode,quan) select 101 , '2027/01/31' , 1 , 3
select * from pharmd

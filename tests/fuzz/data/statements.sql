-- Statements of the program to damage, one a line.

select getdate()
select * from basic
select * from [users]
select * from stocks where code = 1
update [user] set pass = '2' where code = 1
ALTER TABLE items add p_77 nvarchar(20) null
select max(pay_id) as xl from vencuspay 
 select max(pnum) as last_i from sales where (ctype = 0 or ctype = 1)  and vcode <> -1 
select * from saledata
select * from bankdata where isnull(mob,0) = 0 
select * from sal_prd where sale_from <='2026/11/21' and sale_to >= '2026/11/21'
select * from news
SELECT Sum(stk.quan) AS xq From stk WHERE stk.icode=101 AND stk.stcode=1
select * from barcode where bar ='6221033101234 '
SELECT items.*, IsNull(tmp_price.p_per,0) AS Expr1, tmp_price.s_price FROM items LEFT JOIN tmp_price ON items.code = tmp_price.icode  where code = 101
select sum(quan1) as rq from reservd where icode = 101
select * from shift where  stcode = 1and cash_no = 1 order by scode 
select * from sales where pnum = 12 and ctype = 0 and stcode = 1 and date = '2026/11/21'
select * from cust_cash where zcode = 3
select max(ser) as xmax from btran 
select * from stk where icode = 101 order by edate
update salver set cqty = [cqty] - 1 where scode = 7
delete from [print] where f18='1' and [user] = 'سعاد'
delete from [print] where [user] = 'سعاد'
select * from [print]
select * from elec_inv
select * from worker RIGHT OUTER JOIN shift ON worker.work_code = shift.man_  where stcode = 1 AND cash_no = 1  and scode = 4
select * from shift Order By s_date
select sum(copen) as xtot from cash where stcode = 1 and code = 1
select sum(disboun) as xs from sales where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1 and stype = 2  and ptype = 1
SELECT Sum(btran.quan) AS xs From btran Where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and btran.Type = 1 And btran.type1 = 1   And stcode = 1 and cash_n = 1
SELECT Sum(case when [type1]=0 then [aml] else 0 end ) AS Expr1, Sum(case when [type1]=1 then [aml] else 0 end ) AS Expr2 From in_out WHERE cast(convert(varchar,in_out.date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' And stcode = 1 and cash_n = 1
SELECT  sum(mor_les.aml) as xs FROM mor_les where (cast(convert(varchar,date,101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00')  And stcode = 1 and ptype = 1
Insert Into cach_t (cnum,cdate,caml,cfr,cto,note1,cash_nf,cash_nt,user_c,time_) select 1,'2026/11/21',250.5,1,1,'تحويل من درج 1',2,1,1,'10:42:00'
select sum(round(ptot,2)) as xs from sales where  cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and stcode = 1 and (ctype = 0 Or ctype = 1) and vcode = -1  and ptype = 1
SELECT Sum(round(btran.quan,2)) AS xs From btran Where cast(convert(varchar,[date],101) + ' ' + isnull(convert(varchar,[time_],8),'00:00:00') as datetime)<'2026/11/21 10:42:00' and btran.Type = 0 And btran.type1 = 1  And stcode = 1 and cash_n = 1
select sum(aml) as xs from mor_les where ptype = 1 and date ='2026/11/21' and stcode = 1
select * from mainx
select * from dailyexp
select * from gover where ccode=1
select * from dist where ccity=1
select * from country
select * from custdata order by ccode
select * from cust_typ  Where name like '%جملة%'
 select * from cust_cash Where zname like '%سع%'
 select * from cust_cash Where zmail like '%@%'
 select vcode as x1,vname as x2 from vendata
select * from link where ccode =1
select max(case when isnumeric(chkno)=1 then case when chkno = '.' then 0 else  cast(chkno as real) end else 0 end) as last_c from vencuspay where type <> 0 and ptype = 2
SELECT vencuspay.chkno, vencuspay.vcode, custdata.mname FROM vencuspay INNER JOIN custdata ON vencuspay.vcode = custdata.ccode WHERE (vencuspay.chkno = '12') AND (vencuspay.ptype = 2)
select * from vencuspay
select * from vendata where vcode = 5
SELECT  Sum(case when[ctype]=1 then [ptot]  else 0 end ) AS am1, Sum(case when [ctype]=3 then [ptot] else 0 end ) AS am2 From purchase Where (purchase.ctype=1 OR purchase.ctype=3) AND purchase.vcode =5 AND (purchase.date <'2026/11/21');
delete  from tmp_acc
select * from boundata order by ccode
select sales.pnum, boundata.cname from sales LEFT OUTER JOIN boundata ON sales.link = boundata.ccode
select * from offer
SELECT * from offer where ofr_num =  1
select max(tnum) as last_ from sttran
INSERT INTO transdata (tnum,tdate,icode,quan1,scode,stcode,stcode1,quan) select 1 , '2026/11/21' , 101 , 2 , 3 , 2 , 1 , 24
select * from tmp_tran where tnum = 1
INSERT INTO stk (icode,edate,stcode,quan) select 101 , '2027/01/31' , 1 , 3
SELECT sales.pnum, case when sales.ctype = 0 or sales.ctype = 1 then 'مبيعات' else 'مرتجعات' end AS E1, case when sales.vcode = -1 then 'نقدية' else 'آجلة' end AS E2, sales.ptot, worker.work_name, custdata.cname, vendata.vname, boundata.cname AS bname, link.cname AS lname, sales.time_, sales.Date, sales.note, users.Name, sales.vcode, sales.ctype, sales.stype, sales.pdis, sales.inv_type, sales.Shift, sales.link, sales.teln FROM sales LEFT OUTER JOIN users ON sales.[user] = users.code LEFT OUTER JOIN worker ON sales.wcode = worker.work_code LEFT OUTER JOIN custdata ON sales.vcode = custdata.ccode LEFT OUTER JOIN vendata ON sales.vcode = vendata.vcode LEFT OUTER JOIN boundata ON sales.link = boundata.ccode LEFT OUTER JOIN link ON sales.link = link.ccode where cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)>='2026/11/21 00:00:00' and cast(convert(varchar,sales.date,101) + ' ' + isnull(convert(varchar,sales.time_,8),'00:00:00') as datetime)<='2026/11/21 23:59:59' and sales.stcode = 1 and (sales.ctype = 0 or sales.ctype = 1) and sales.vcode <> -1  order by pnum;

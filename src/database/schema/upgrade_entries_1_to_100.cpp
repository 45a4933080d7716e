// Entries 1 to 100 of the upgrade list, as they have always been sent.
#include "database/schema/upgrade_list.h"

namespace database {

namespace {

constexpr UpgradeEntry entries[] = {
    {1, "create table news (ncode numeric primary key , nname nvarchar(255) null )"},
    {2,
     "CREATE TABLE pharmd(pcode smallint ,pname nvarchar(40) null,popen float null,pacc float null,pphone "
     "nvarchar(15) null,paddress nvarchar(100) null,ctype tinyint null,mlimit float null,note nvarchar(225) "
     "null)"},
    {3,
     "CREATE TABLE pharmex(exnum smallint ,date datetime,name nvarchar(40) null,ptot real null,phcode "
     "smallint null,stcode smallint null,ecode smallint null,distype tinyint null,disaml real null,agent "
     "tinyint null,ser int null)"},
    {4, "DROP TABLE [dbo].[tmp_acc]"},
    {5,
     "CREATE TABLE [dbo].[tmp_acc]([date] [datetime] NULL,[am1] [real] NULL,[am2] [real] NULL,[ser] [bigint] "
     "NULL,[note3] [nvarchar](500) NULL,[user_] [bigint] NULL,[f1] [real] NULL,[f2] [real] NULL,[f3] [real] "
     "NULL,[f4] [real] NULL,[f5] [nvarchar](50) NULL,[f6] [real] NULL,[f7] [nvarchar](50) NULL,[f8] [real] "
     "NULL,[f9] [real] NULL,[f10] [real] NULL,[f11] [real] NULL,[f12] [real] NULL,[note1] [nvarchar](500) "
     "NULL,[note2] [nvarchar](500) NULL,[time_] [datetime] NULL,[f13] [int] NULL) ON [PRIMARY]"},
    {6, "DROP TABLE [dbo].[tmp_item]"},
    {7,
     "CREATE TABLE [dbo].[tmp_item]([icode] [int] NULL,[date] [datetime] NULL,[quan] [real] NULL,[note1] "
     "[nvarchar](250) NULL,[note2] [nvarchar](250) NULL,[xtype] [smallint] NULL,[note3] [nvarchar](50) NULL) "
     "ON [PRIMARY]"},
    {8,
     "CREATE TABLE [dbo].[tmp_credit](date [datetime] NULL,ptot real NULL,safe int NULL,bdate datetime "
     "NULL,credit_no [nvarchar](250) null,credit_bank [nvarchar](250) null,credit_name [nvarchar](250) "
     "null,type int null,pnum [nvarchar](100) null ) ON [PRIMARY]"},
    {9,
     "CREATE TABLE [dbo].[offer]([f1] [nvarchar](50) NULL,[f2] [nvarchar](50) NULL,[f3] [nvarchar](50) "
     "NULL,[f4] [nvarchar](50) NULL,[f5] [nvarchar](50) NULL,[f6] [nvarchar](50) NULL,[f7] [nvarchar](50) "
     "NULL,[f8] [nvarchar](50) NULL,[f9] [nvarchar](50) NULL,[f10] [nvarchar](50) NULL,[f11] [nvarchar](50) "
     "NULL,[f12] [nvarchar](50) NULL,[f13] [nvarchar](50) NULL,[f14] [nvarchar](50) NULL,[f15] "
     "[nvarchar](50) NULL,[f16] [nvarchar](50) NULL,[f17] [nvarchar](50) NULL,[f18] [nvarchar](50) "
     "NULL,[f19] [nvarchar](50) NULL,[f20] [nvarchar](50) NULL,[f21] [nvarchar](50) NULL,[f22] "
     "[nvarchar](50) NULL,[f23] [nvarchar](50) NULL,[f24] [nvarchar](50) NULL,[f25] [nvarchar](50) "
     "NULL,[f26] [nvarchar](50) NULL,[f27] [nvarchar](50) NULL,[f28] [nvarchar](50) NULL,[f29] "
     "[nvarchar](50) NULL,[tmp_no] [float] NULL,[f0] [nvarchar](50) NULL,[f30] [nvarchar](50) NULL,[f31] "
     "[nvarchar](50) NULL,[f32] [nvarchar](50) NULL,[vcode] [smallint] NOT NULL,[stype] [smallint] NOT "
     "NULL,[ctype] [smallint] NOT NULL, [link] [int] NULL,user_ int null , ucount real null,cash_id int ) ON "
     "[PRIMARY]"},
    {10, "ALTER TABLE [offer] add ofr_num real"},
    {11, "ALTER TABLE [offer] add pdis real"},
    {12, "ALTER TABLE [offer] add cust_c real"},
    {13, "ALTER TABLE [offer] add date datetime"},
    {14,
     "CREATE TABLE [dbo].[stk_F_q]([icode] [int] NOT NULL,[date] [datetime] NULL,[quan] [float] NULL,[edate] "
     "[datetime] NOT NULL,[quan1] [smallint] NULL,[nquan] [smallint] NULL,[nquan1] [smallint] NULL,[ndate] "
     "[datetime] NULL,[nedate] [datetime] NULL,[stcode] [smallint] NOT NULL,[f_q] [smallint] NULL,[Size_] "
     "[smallint] NULL,[art_no] [nvarchar](30) NULL,[B_no] [nvarchar](30) NULL)  ON [PRIMARY]"},
    {15, "ALTER TABLE [basic] Add f_q_date datetime null"},
    {16, "ALTER TABLE [basic] Add f_q_time datetime null"},
    {17, "ALTER TABLE [stk_f_q] Add price real null"},
    {18, "CREATE TABLE [dbo].[op_log]([op] nvarchar(100) NULL,[date] [datetime] NULL)"},
    {19,
     "CREATE TABLE [dbo].[item_log](vencode int NOT NULL,itemcode int NOT NULL,date datetime NULL,user_ int "
     "null ,price real null  )"},
    {20, "ALTER TABLE [item_log] add typ int"},
    {21, "ALTER TABLE [item_log] add prg int"},
    {22, "ALTER TABLE [item_log] add name nvarchar(100)"},
    {23, "ALTER TABLE [basic] add cr_v nvarchar(100)"},
    {24, "ALTER TABLE btran add shift int null"},
    {25, "ALTER TABLE users alter column perm nvarchar(1000)"},
    {26, "ALTER TABLE [bankdata] add mob int"},
    {27, "ALTER TABLE [vencuspay] ADD credit_no [nvarchar](250) null"},
    {28, "ALTER TABLE [vencuspay] ADD credit_bank [nvarchar](250) null"},
    {29, "ALTER TABLE [vencuspay] ADD bank_t real null"},
    {30, "ALTER TABLE [vencuspay] ADD bdate datetime null"},
    {31, "ALTER TABLE [vencuspay] ADD safe int null"},
    {32, "ALTER TABLE [vencuspay] ADD ref_no [nvarchar](100) null"},
    {33, "ALTER TABLE [vencuspay] ADD btran_ser real null"},
    {34, "ALTER TABLE [sales] ADD bcode real null"},
    {35, "ALTER TABLE [sales] ADD bank_t real null"},
    {36, "ALTER TABLE [sales] ADD bdate datetime null"},
    {37, "ALTER TABLE [sales] ADD safe int null"},
    {38, "ALTER TABLE [sales] ADD ref_no [nvarchar](100) null"},
    {39, "ALTER TABLE [sales] ADD btran_ser real null"},
    {40, "ALTER TABLE [print] alter column f1 nvarchar(100)"},
    {41, "ALTER TABLE items ADD dcode int NULL"},
    {42, "ALTER TABLE users ADD allow int  null"},
    {43, "ALTER TABLE users ADD wr_op int  null"},
    {44, "ALTER TABLE [users] add Wstcode int"},
    {45, "ALTER TABLE [users] add Wcash int"},
    {46, "ALTER TABLE [users] add Wall_st int"},
    {47, "ALTER TABLE saledata add wcode int null"},
    {48, "ALTER TABLE tmp_item alter column note1 nvarchar(100)"},
    {49, "ALTER TABLE tmp_item alter column note2 nvarchar(100)"},
    {50, "ALTER TABLE tmp_item alter column note3 nvarchar(100)"},
    {51, "ALTER TABLE users alter column [perm] nvarchar(400)"},
    {52, "ALTER TABLE basic add [bar_font] nvarchar(70)"},
    {53, "ALTER TABLE partener add [perc] float"},
    {54, "ALTER TABLE basic ADD toted int null"},
    {55, "ALTER TABLE saledata add stk_c int"},
    {56, "ALTER TABLE inv_d add stk_c int"},
    {57, "ALTER TABLE [print] add st int"},
    {58, "Update items set num1=1"},
    {59, "ALTER TABLE purchase add notes nvarchar(400)"},
    {60, "ALTER TABLE basic ADD fasT_g int null"},
    {61, "ALTER TABLE items alter column name nvarchar(100)"},
    {62,
     "CREATE TABLE [dbo].[elec_inv]([url] [nvarchar](150) NULL,[clintid] [nvarchar](500) NULL,[pos] "
     "[nvarchar](50) NULL) ON [PRIMARY]"},
    {63, "ALTER TABLE [basic] add qr_p int"},
    {64, "ALTER TABLE [basic] add sear_lang int"},
    {65, "ALTER TABLE SALES ADD ELEC_no int null"},
    {66,
     "create table stk_f_q (stcode int Null,icode int Null,edate datetime Null,quan real Null,price real "
     "null)"},
    {67, "ALTER TABLE [stk_f_q] Add date datetime null"},
    {68, "ALTER TABLE items ADD  stop_in  int null"},
    {69, "ALTER TABLE items ADD  n_it  int null"},
    {70, "ALTER TABLE items ADD  oicode  real null"},
    {71, "ALTER TABLE barcode ADD  oicode  real null"},
    {72, "Update inv_d set edate = '3000/01/01'"},
    {73, "Update purdata set edate = '3000/01/01'"},
    {74, "Update f_q set edate = '3000/01/01'"},
    {75, "Update modify set edate = '3000/01/01'"},
    {76, "Update tmp_tran set edate = '3000/01/01'"},
    {77, "ALTER TABLE items add stop int null"},
    {78, "ALTER TABLE modify add modscreen int null"},
    {79,
     "CREATE TABLE [country] ([ccode] [int] NULL , [cname] [nvarchar] (255) COLLATE Arabic_CI_AS NULL) ON "
     "[PRIMARY]"},
    {80,
     "CREATE TABLE [gover] ([ccode] [int] NULL ,[cgover] [int] NULL , [cname] [nvarchar] (255) COLLATE "
     "Arabic_CI_AS NULL) ON [PRIMARY]"},
    {81,
     "CREATE TABLE [cityn] ([cgov] [int] NULL ,[ccity] [int] NULL ,[cname] [nvarchar] (255) COLLATE "
     "Arabic_CI_AS NULL) ON [PRIMARY]"},
    {82,
     "CREATE TABLE [dist] ([ccity] [int] NULL ,[cdist] [int] NULL , [cname] [nvarchar] (255) COLLATE "
     "Arabic_CI_AS NULL) ON [PRIMARY]"},
    {83,
     "CREATE TABLE [dbo].[cust_cash]([zcode] [int] NOT NULL,[zname] nvarchar(100) NULL,[zphone] nvarchar(70) "
     "NULL,[zmail] nvarchar(70) NULL )"},
    {84, "ALTER TABLE basic ADD cust_reg int null"},
    {85, "ALTER TABLE sales ADD cust_c int null"},
    {86, "ALTER TABLE saledata ADD cust_c int null"},
    {87, "ALTER TABLE basic ADD inv_prs int null"},
    {88,
     "ALTER TABLE custdata add country int null,gov int null,city int null,dist int null,cust_typ int null, "
     "grntr int null, Idno nvarchar(20) null"},
    {89, "ALTER TABLE items add price14 real null,price24 real null,price34 real null"},
    {90, "ALTER TABLE items add price15 real null,price25 real null,price35 real null"},
    {91, "ALTER TABLE items add list_per real null"},
    {92, "ALTER TABLE sales add perm_no nvarchar(20) null"},
    {93,
     "CREATE TABLE [reservT] ([rnum] [bigint] NULL ,[rdate] [datetime] NULL ,[ruser] [bigint] NULL ,[rtime] "
     "[datetime] NULL ,[stcode] [bigint] NULL ,[ccode] [bigint] NULL) ON [PRIMARY]"},
    {94,
     "CREATE TABLE [reservD] (ccode int null,[icode] [bigint] NULL ,[date] [datetime] NULL ,[edate] "
     "[datetime] NULL ,[quan] [real] NULL ,[quan1] [real] NULL ,[unit] [real] NULL ,[scode] [bigint] NULL "
     ",[stcode] [bigint] NULL ,[rnum] [bigint] NULL ,[user_] [bigint] NULL ,[price] [real] NULL ,[note] "
     "[nvarchar] (50) COLLATE Arabic_CI_AS NULL ,[reson] [nvarchar] (50) COLLATE Arabic_CI_AS NULL) ON "
     "[PRIMARY]"},
    {95,
     "ALTER TABLE custdata add G_name nvarchar(20) null,G_phone nvarchar(20) null,G_idno nvarchar(20) "
     "null,idno nvarchar(20) null"},
    {96, "ALTER TABLE purdata add discp real"},
    {97, "ALTER TABLE basic add inv_p int"},
    {98, "ALTER TABLE basic add Inv_Eng int null"},
    {99, "ALTER TABLE basic add Fast_Add int null"},
    {100, "ALTER TABLE basic add new_d int null"},
};

}  // namespace

std::span<const UpgradeEntry> upgrade_entries_1_to_100() {
    return entries;
}

}  // namespace database

// The upgrade list, as it has always been sent.
#include "database/schema/schema.h"

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
    {101, "ALTER TABLE basic add mst int null,mcash int null"},
    {102, "ALTER TABLE basic add barcode_pp int null"},
    {103, "ALTER TABLE custdata add grntr int null"},
    {104, "ALTER TABLE custdata add idno nvarchar(20) null"},
    {105, "ALTER TABLE custdata ALTER column idno nvarchar(20) null"},
    {106, "ALTER TABLE premiumpay_d add pmt_date datetime"},
    {107, "ALTER TABLE premiumpay_d add Gcode int null"},
    {108, "ALTER TABLE [sales] ADD credit_name nvarchar(100)"},
    {109, "ALTER TABLE [sales] ADD credit_no nvarchar(100)"},
    {110, "ALTER TABLE [sales] ADD credit_bank nvarchar(100)"},
    {111, "ALTER TABLE [vencuspay] ADD pay_ser nvarchar(100)"},
    {112,
     "CREATE TABLE [dbo].[ven_rt]([itemcode] nvarchar(50) null,[vencode] nvarchar(50) null,[quan] "
     "nvarchar(50) null) ON [PRIMARY]"},
    {113,
     "CREATE TABLE [dbo].[maint_log](code int null,date datetime null,reson  nvarchar(500) null,typ int "
     "null) ON [PRIMARY]"},
    {114, "ALTER TABLE maint_log ADD prg nvarchar(50) null"},
    {115,
     "]([itemcode] nvarchar(50) null,[vencode] nvarchar(50) null,[quan] nvarchar(50) null) ON [PRIMARY]"},
    {116, "ALTER TABLE sttran add wrkr_name nvarchar(50) null"},
    {117,
     "DELETE barcode FROM items RIGHT OUTER JOIN barcode ON items.code = barcode.code WHERE "
     "isnull(items.name, '') = ''"},
    {118, "create table ven_rec (itemcode int,vencode int,vcode int,q real,q1 real,ser_ int)"},
    {119, "create table sale_avg (itemcode int,vencode int,sale_avg real)"},
    {120, "create table last_ed (itemcode int,vencode int,quan real,quan1 real,s_v real)"},
    {121,
     "create table pur_tmp (itemcode int,vencode int,vcode int,tprice real,mdisp real,edisp real,inv_ser "
     "int)"},
    {122,
     "create table pur_tmp2 (itemcode int,vencode int,vcode int,tprice real,mdisp real,edisp real,type int)"},
    {123, "create table tmp_avg (itemcode int,vencode int,vcode int,quan real,quan1 real,date datetime)"},
    {124, "ALTER TABLE basic add qper int"},
    {125, "ALTER TABLE basic add logo nvarchar(100) null"},
    {126, "ALTER TABLE [sav_1] alter column edate datetime"},
    {127, "ALTER TABLE shift add man_ int"},
    {128, "ALTER TABLE shift add man int"},
    {129, "ALTER TABLE [basic] add inv_note nvarchar(100) null"},
    {130, "ALTER TABLE [basic] add rec_note nvarchar(100) null"},
    {131, "ALTER TABLE [basic] add main_p int null"},
    {132, "ALTER TABLE [pur_tmp] ALTER COLUMN itemcode real,inv_ser real,tprice real"},
    {133, "ALTER TABLE [pur_tmp2] ALTER COLUMN itemcode real,inv_ser real,tprice real"},
    {134, "ALTER TABLE [pur_tmp] ALTER COLUMN inv_ser real"},
    {135, "ALTER TABLE [pur_tmp2] ALTER COLUMN inv_ser real"},
    {136, "ALTER TABLE [pur_tmp] ALTER COLUMN tprice real"},
    {137, "ALTER TABLE [pur_tmp2] ALTER COLUMN tprice real"},
    {138, "CREATE TABLE [hlp] ([fname] [nvarchar] (100) ,[Path] [nvarchar](100))"},
    {139,
     "ALTER TABLE [sales] add re_date [datetime] null,SPHR [nvarchar](100),CYLR [nvarchar](100),AXR "
     "[nvarchar](100),SPHL [nvarchar](100),YYLL [nvarchar](100),AXL [nvarchar](100),ADDRL [nvarchar](100)"},
    {140,
     "ALTER TABLE [sales] add len_t [nvarchar] (100) null,NSPHR [nvarchar](100),NCYLR [nvarchar](100),NAXR "
     "[nvarchar](100),NSPHL [nvarchar](100),NYYLL [nvarchar](100),NAXL [nvarchar](100)"},
    {141, "ALTER TABLE [sales] add pt real,pts real"},
    {142, "ALTER TABLE [vencuspay] add rec_no real"},
    {143, "ALTER TABLE [saledata] add shift int null"},
    {144, "ALTER TABLE [vencuspay] add shift int"},
    {145, "ALTER TABLE [sales] add shift int null"},
    {146,
     "create TABLE shift (stcode int , cash_no int , scode bigint , s_date datetime , e_date datetime , man_ "
     "int)"},
    {147, "ALTER TABLE [cash] Add time_ datetime"},
    {148, "ALTER TABLE [cash_t] Add time_ datetime"},
    {149, "ALTER TABLE [sales] Add time_ datetime"},
    {150, "ALTER TABLE [saledata] Add time_ datetime"},
    {151, "ALTER TABLE [vencuspay] Add time_ datetime"},
    {152, "ALTER TABLE [btran] Add time_ datetime"},
    {153, "ALTER TABLE [in_out] Add time_ datetime"},
    {154, "ALTER TABLE [mor_les] Add time_ datetime"},
    {155, "ALTER TABLE [dailyexp] Add time_ datetime"},
    {156, "ALTER TABLE [boun] Add time_ datetime"},
    {157, "ALTER TABLE [items] Add prn_prs int"},
    {158, "ALTER TABLE [tmp_acc] Add time_ datetime"},
    {159, "ALTER TABLE [vencuspay] Add ucode int"},
    {160, "ALTER TABLE [sales] add rec_no real"},
    {161, "ALTER TABLE sales add custcash varchar(100)"},
    {162, "create table mach_data (mcode int,mname varchar(100))"},
    {163, "create table prd (pcode int,date datetime,prd_code int,mach_code int, worker int, quan real)"},
    {164,
     "create table prd_data (pcode int,date datetime,prd_code int,mach_code int, worker int, quan real,icode "
     "int)"},
    {165, "ALTER TABLE PRD add st_code int"},
    {166, "ALTER TABLE PRD_data add st_code int"},
    {167, "ALTER TABLE PRD add ccode int"},
    {168, "ALTER TABLE PRD add done int"},
    {169, "ALTER TABLE PRD add d_date datetime"},
    {170, "ALTER TABLE basic add fact_it  int"},
    {171, "ALTER TABLE basic add bon_font_s int Null"},
    {172, "ALTER TABLE basic add bon_font nvarchar(60) null"},
    {173, "ALTER TABLE PRD_data add unit1 int"},
    {174, "ALTER TABLE PRD_data add scode int"},
    {175, "ALTER TABLE sttran add perm_no nvarchar(20) null"},
    {176, "create table filt_m (icode int,ccode int,quan int,period int,s_date datetime)"},
    {177, add_store_columns},
    {178,
     "CREATE TABLE [place_min] ([vencode] [smallint] NULL ,[itemcode] [smallint] NULL ,[stcode] [smallint] "
     "NULL ,[min_qty] [real] NULL ,[place] [nvarchar] (20) COLLATE Arabic_CI_AS NULL)"},
    {179, "ALTER TABLE items add len_i int null"},
    {180, "ALTER TABLE items add pict  nvarchar(250) null"},
    {181, "ALTER TABLE saledata add prod_c int null ,mach_code int null"},
    {182, "ALTER TABLE sales add inv_o int null"},
    {183, "create table filt_m_rec (icode int,ccode int,quan int,date datetime)"},
    {184, "ALTER TABLE filt_m_rec add o_date datetime null"},
    {185, "ALTER TABLE [custdata] add w_dep int"},
    {186, "ALTER TABLE [custdata] add w_pay int"},
    {187,
     "ALTER TABLE [custdata] add G_name nvarchar(20) null,G_phone nvarchar(20) null,G_idno nvarchar(20) "
     "null"},
    {188, "ALTER TABLE basic add flex_mer int"},
    {189, "ALTER TABLE [filt_m] add inst_date datetime"},
    {190, "ALTER TABLE [saledata] add width real"},
    {191, "ALTER TABLE [saledata] add length real"},
    {192, "ALTER TABLE [saledata] add no_ int"},
    {193, "ALTER TABLE [prd] add width real"},
    {194, "ALTER TABLE [prd] add length real"},
    {195, "ALTER TABLE [items] add wid real"},
    {196, "ALTER TABLE [items] add len real"},
    {197, "ALTER TABLE [items] add t_price real"},
    {198, "ALTER TABLE [items] add rool int"},
    {199, "create table tmp_pay (rec_no int,quan real )"},
    {200, "ALTER TABLE [items] add rnt int"},
    {201, "ALTER TABLE [basic] add cash_m int"},
    {202, "ALTER TABLE [basic] add cash_dis real"},
    {203, "ALTER TABLE [basic] add cash_dis_1 int"},
    {204, "ALTER TABLE [basic] add bon_prv int"},
    {205, "ALTER TABLE [basic] add aft_dsc int"},
    {206, "create table tmp_qun (icode int,quan int)"},
    {207, "ALTER TABLE [custdata] ALTER COLUMN g_name nvarchar(60) Null"},
    {208,
     "CREATE TABLE [dbo].[pharmd]([pcode] [smallint] NOT NULL,[pname] [nvarchar](35) NULL,[popen] [float] "
     "NULL, CONSTRAINT [PK_pharmd] PRIMARY KEY CLUSTERED([pcode] Asc)WITH (PAD_INDEX = OFF, "
     "STATISTICS_NORECOMPUTE = OFF, IGNORE_DUP_KEY = OFF, ALLOW_ROW_LOCKS = ON, ALLOW_PAGE_LOCKS = ON) ON "
     "[PRIMARY]) ON [PRIMARY]"},
    {209,
     "CREATE TABLE [dbo].[pharmex]([exnum] [int] NOT NULL,[date] [datetime] NOT NULL,[name] [nvarchar](40) "
     "NULL,[ptot] [real] NULL,[phcode] [smallint] NULL,[stcode] [smallint] NULL,[ecode] [smallint] "
     "NULL,[distype] [tinyint] NULL,[disaml] [real] NULL,[agent] [tinyint] NULL,[ser] [int] NULL, CONSTRAINT "
     "[PK_pharmex] PRIMARY KEY CLUSTERED([exnum] ASC,[Date] Asc)WITH (PAD_INDEX = OFF, "
     "STATISTICS_NORECOMPUTE = OFF, IGNORE_DUP_KEY = OFF, ALLOW_ROW_LOCKS = ON, ALLOW_PAGE_LOCKS = ON) ON "
     "[PRIMARY]) ON [PRIMARY]"},
    {210,
     "CREATE TABLE [dbo].[exdata]([exnum] [int] NULL,[date] [datetime] NULL,[icode] [smallint] NULL,[scode] "
     "[smallint] NULL,[unit1] [smallint] NULL,[quan1] [smallint] NULL,[quan] [smallint] NULL,[price] [real] "
     "NULL,[edate] [datetime] NULL,[type] [tinyint] NULL,[phcode] [smallint] NULL,[stcode] [smallint] "
     "NULL,[dcode] [numeric](18, 0) NULL,[ord] [numeric](18, 0) NULL) ON [PRIMARY]"},
    {211, "ALTER TABLE [basic] add inv_ser int"},
    {212, "ALTER TABLE [purchase] add inv_ser int"},
    {213, "ALTER TABLE [purdata] add inv_ser int"},
    {214, "ALTER TABLE [basic] add glass_s int"},
    {215, "ALTER TABLE [sales] ADD op_n int"},
    {216, "ALTER TABLE [purchase] ADD op_n int"},
    {217, "CREATE TABLE [dbo].[ven_item]([icode] [int] NULL,cnt int )  ON [PRIMARY]"},
    {218,
     "CREATE TABLE [dbo].[pur_tmp3]([pnum] [nvarchar](50) NULL,[date] [datetime] NULL,[vcode] [smallint] "
     "NULL,[itemcode] [int] NULL,[vencode] [smallint] NULL,[price] [real] NULL,[ctype] [tinyint] NULL,[quan] "
     "[real] NULL,[unit1] [real] NULL,[fquan] [real] NULL,[edate] [datetime] NULL,[stcode] [smallint] "
     "NULL,[sprice] [real] NULL,[tprice] [real] NULL,[mdisp] [real] NULL,[edisp] [real] NULL,[stax] [real] "
     "NULL,[itype] [smallint] NULL,[quan1] [real] NULL,[inv_ser] [int] NULL,[serial] [int] NULL,[ret_] "
     "[tinyint] NULL,[disc5] [real] NULL,[art_no] [nvarchar](30) NULL,[av_price] [float] NULL,[err] [int] "
     "NULL,[prs_edit] [int] NULL,pur_id int,user_ int) ON [PRIMARY]"},
    {219, "ALTER TABLE [print] ADD r real null"},
    {220, "ALTER TABLE shift ADD cur_bal real null"},
    {221, "ALTER TABLE [shift] ADD dep float"},
    {222, "ALTER TABLE basic ADD clos_bal int null"},
    {223, "ALTER TABLE [basic] add prn_csh_rep int"},
    {224, copy_shifts_to_drawers},
    {225, "ALTER TABLE bad_data ALTER COLUMN note nvarchar(500) Null"},
    {226, "ALTER TABLE boundata ALTER COLUMN note nvarchar(500) Null"},
    {227, "ALTER TABLE btran ALTER COLUMN note nvarchar(500) Null"},
    {228, "ALTER TABLE cuspay ALTER COLUMN note nvarchar(500) Null"},
    {229, "ALTER TABLE custdata ALTER COLUMN note nvarchar(500) Null"},
    {230, "ALTER TABLE frm_to ALTER COLUMN note nvarchar(500) Null"},
    {231, "ALTER TABLE in_out ALTER COLUMN note nvarchar(500) Null"},
    {232, "ALTER TABLE in_out ALTER COLUMN remark nvarchar(500) Null"},
    {233, "ALTER TABLE maintain ALTER COLUMN note nvarchar(500) Null"},
    {234, "ALTER TABLE netmaint ALTER COLUMN note nvarchar(500) Null"},
    {235, "ALTER TABLE pharmd ALTER COLUMN note nvarchar(500) Null"},
    {236, "ALTER TABLE reservD ALTER COLUMN note nvarchar(500) Null"},
    {237, "ALTER TABLE saledata ALTER COLUMN note nvarchar(500) Null"},
    {238, "ALTER TABLE sales ALTER COLUMN note nvarchar(500) Null"},
    {239, "ALTER TABLE vencuspay ALTER COLUMN note nvarchar(500) Null"},
    {240, "ALTER TABLE worker ALTER COLUMN note nvarchar(500) Null"},
    {241, "ALTER TABLE btran ALTER COLUMN note1 nvarchar(500) Null"},
    {242, "ALTER TABLE cach_t ALTER COLUMN note1 nvarchar(500) Null"},
    {243, "ALTER TABLE saledata ALTER COLUMN note1 nvarchar(500) Null"},
    {244, "ALTER TABLE cash ALTER COLUMN notes nvarchar(500) Null"},
    {245, "ALTER TABLE dailyexp ALTER COLUMN notes nvarchar(500) Null"},
    {246, "ALTER TABLE purchase ALTER COLUMN notes nvarchar(500) Null"},
    {247, "ALTER TABLE worker ALTER COLUMN notes nvarchar(500) Null"},
    {248, "ALTER TABLE tmp_item ALTER COLUMN note1 nvarchar(500) Null"},
    {249, "ALTER TABLE tmp_acc ALTER COLUMN note1 nvarchar(500) Null"},
    {250, "ALTER TABLE tmp_acc ALTER COLUMN note2 nvarchar(500) Null"},
    {251, "ALTER TABLE tmp_item ALTER COLUMN note2 nvarchar(500) Null"},
    {252, "ALTER TABLE tmp_item ALTER COLUMN note3 nvarchar(500) Null"},
    {253, "ALTER TABLE tmp_acc ALTER COLUMN note3 nvarchar(500) Null"},
    {254, "ALTER TABLE tmp_acc add f13 int Null"},
    {255, "ALTER TABLE [link] add sale int"},
    {256, "ALTER TABLE [link] add pay int"},
    {257, "ALTER TABLE [link] add col int"},
    {258, "ALTER TABLE [sales] add out_no int"},
    {259, "CREATE TABLE [dbo].[l_pers] ([aml] [real] NULL ,[per] [real] NULL)"},
    {260, "ALTER TABLE [basic] add inv_size int"},
    {261, "ALTER TABLE [F_Q] add sprice real"},
    {262, "ALTER TABLE basic ALTER COLUMN inv_note nvarchar(500) Null"},
    {263, "ALTER TABLE basic ALTER COLUMN rec_note nvarchar(150) Null"},
    {264, "ALTER TABLE basic add csh_inv int"},
    {265, "ALTER TABLE [salver] add edate datetime"},
    {266, "ALTER TABLE [premiumpay] add note nvarchar(250) Null"},
    {267, "ALTER TABLE premiumpay ALTER COLUMN note nvarchar(500) Null"},
    {268, "ALTER TABLE reservt add pre_pay real"},
    {269, "ALTER TABLE sales add pre_pay real"},
    {270, "ALTER TABLE basic add cst_prs real"},
    {271, "create table cust_typ (code int Null,name nvarchar(20) null )"},
    {272, "ALTER TABLE [custdata] Add cust_grp int"},
    {273, "ALTER TABLE [custdata] Add cust_note nvarchar(200) null"},
    {274, "ALTER TABLE [basic] Add bal_typ int"},
    {275, "ALTER TABLE [basic] Add arabic_num int"},
    {276, "ALTER TABLE [basic] Add g_c_prs int"},
    {277, "ALTER TABLE [basic] Add fast_bar int"},
    {278, "ALTER TABLE [basic] Add cust_n int"},
    {279, "ALTER TABLE [purdata] Add ser int"},
    {280, "ALTER TABLE [basic] Add trad_no nvarchar(70) null"},
    {281, "ALTER TABLE [basic] Add Tax_no nvarchar(100) null"},
    {282, "ALTER TABLE [basic] Add Tax_f nvarchar(100) null"},
    {283, "ALTER TABLE [basic] Add item_code int null"},
    {284, "ALTER TABLE [basic] Add mn_br int null"},
    {285,
     "CREATE TABLE [dbo].[exim]([exnum] [int] NULL,[date] [datetime] NULL,[vencode] [smallint] "
     "NULL,[itemcode] [smallint] NULL,[quan] [smallint] NULL, [price] [real] NULL,[edate] [datetime] "
     "NULL,[type] [tinyint] NULL,[phcode] [smallint] NULL,[stcode] [smallint] NULL,[unit1] [smallint] "
     "NULL,[scode] [int] NULL) ON [PRIMARY]"},
    {286, "ALTER TABLE sales   ADD sid real"},
    {287, "ALTER TABLE items   ADD av_price real"},
    {288, "ALTER TABLE purdata   ADD av_price real"},
    {289, "ALTER TABLE saledata   ADD av_price real"},
    {290, "ALTER TABLE tmp_item ADD scode real"},
    {291, "ALTER TABLE tmp_item ADD unit1 real"},
    {292, "ALTER TABLE tmp_item ADD f1 real"},
    {293, "ALTER TABLE tmp_item ADD f2 real"},
    {294, "ALTER TABLE tmp_item ADD f3 real"},
    {295, "ALTER TABLE tmp_item ADD f4 real"},
    {296, "ALTER TABLE tmp_item ADD f5 nvarchar(100)"},
    {297, "ALTER TABLE tmp_item ADD f6 real"},
    {298, "ALTER TABLE unit1 ADD f6 real"},
    {299, "ALTER TABLE VENCUSpay add pay_id real"},
    {300, number_vouchers},
};

}  // namespace

std::span<const UpgradeEntry> upgrade_entries() {
    return entries;
}

}  // namespace database

// Entries 201 to 300 of the upgrade list, as they have always been sent.
#include "database/schema/upgrade_list.h"

namespace database {

namespace {

constexpr UpgradeEntry entries[] = {
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

std::span<const UpgradeEntry> upgrade_entries_201_to_300() {
    return entries;
}

}  // namespace database

// Entries 101 to 200 of the upgrade list, as they have always been sent.
#include "database/schema/upgrade_list.h"

namespace database {

namespace {

constexpr UpgradeEntry entries[] = {
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
};

}  // namespace

std::span<const UpgradeEntry> upgrade_entries_101_to_200() {
    return entries;
}

}  // namespace database

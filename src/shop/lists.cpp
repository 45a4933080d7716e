#include "shop/lists.h"

#include <algorithm>
#include <stdexcept>

#include "common/date_time.h"
#include "database/schema/schema.h"
#include "shop/messages.h"

namespace shop {

using common::FieldDescription;
using common::FieldKind;
using common::Refusal;

namespace {

// The field of a name: the first of every list.
constexpr FieldDescription name_field(std::string_view column, int columns = 1) {
    return {.name = "list_name",
            .caption = "الا&سم",
            .place = {0, 0, columns},
            .column = column,
            .missing = message::no_name};
}

constexpr FieldDescription parent_field(const char* caption, std::string_view column,
                                        std::string_view missing) {
    return {.name = "list_parent",
            .caption = caption,
            .kind = FieldKind::choice,
            .place = {0, 1},
            .column = column,
            .missing = missing};
}

constexpr FieldDescription note_field(std::string_view column, common::FieldPlace place) {
    return {.name = "list_note", .caption = "مل&احظات", .place = place, .column = column};
}

constexpr FieldDescription only_a_name[] = {name_field("name", 2)};

constexpr FieldDescription fields_of_drawers[] = {
    name_field("name"),
    parent_field("ال&فرع", "stcode", "اختر الفرع"),
    {.name = "list_opening",
     .caption = "النقدية الافت&تاحية",
     .kind = FieldKind::amount,
     .place = {1, 0},
     .column = "copen"},
    note_field("notes", {1, 1}),
};

constexpr FieldDescription worker_fields[] = {name_field("work_name"), note_field("note", {0, 1})};

constexpr FieldDescription bank_fields[] = {
    name_field("bname"),
    {.name = "list_wallet",
     .caption = "محف&ظة موبايل",
     .kind = FieldKind::check,
     .place = {0, 1},
     .column = "mob"},
};

constexpr FieldDescription sub_heading_fields[] = {
    name_field("name"), parent_field("المصرو&ف الرئيسي", "mcode", "اختر المصروف الرئيسي")};
constexpr FieldDescription receiver_fields[] = {name_field("cname"), note_field("note", {0, 1})};
constexpr FieldDescription representative_fields[] = {
    name_field("cname"),
    {.name = "list_phone",
     .caption = "ال&تليفون",
     .kind = FieldKind::digits,
     .place = {0, 1},
     .column = "cphone"},
};
constexpr FieldDescription period_fields[] = {
    name_field("name", 2),
    {.name = "list_from",
     .caption = "من تاري&خ",
     .kind = FieldKind::date,
     .place = {1, 0},
     .column = "sale_from"},
    {.name = "list_to",
     .caption = "إلى &تاريخ",
     .kind = FieldKind::date,
     .place = {1, 1},
     .column = "sale_to"},
};
constexpr FieldDescription country_fields[] = {name_field("cname", 2)};
constexpr FieldDescription governorate_fields[] = {name_field("cname"),
                                                   parent_field("ال&دولة", "ccode", "اختر الدولة")};
constexpr FieldDescription city_fields[] = {name_field("cname"),
                                            parent_field("المحا&فظة", "cgov", "اختر المحافظة")};
constexpr FieldDescription district_fields[] = {name_field("cname"),
                                                parent_field("المر&كز", "ccity", "اختر المركز")};
constexpr FieldDescription news_fields[] = {{.name = "list_name",
                                             .caption = "ال&سطر",
                                             .place = {0, 0, 2},
                                             .column = "nname",
                                             .missing = "اكتب السطر"}};

constexpr Reference store_references[] = {
    {"البونات", "select top 1 stcode from sales where stcode = "},
    {"أرصدة الأصناف", "select top 1 stcode from stk where quan <> 0 and stcode = "},
    {"الأدراج", "select top 1 stcode from cash where stcode = "},
    {"الورديات", "select top 1 stcode from shift where stcode = "},
    {"فواتير الموردين", "select top 1 stcode from purdata where stcode = "},
    {"التحويلات", "select top 1 tnum from sttran where tfrom = "},
    {"التحويلات", "select top 1 tnum from sttran where tto = "},
    {"إعدادات المحل", "select top 1 st_d from basic where st_d = "},
    {"إعدادات المحل", "select top 1 mst from basic where mst = "},
};
constexpr Reference drawer_references[] = {
    {"البونات", "select top 1 ptype from sales where ptype = ", " and stcode = "},
    {"الورديات", "select top 1 cash_no from shift where cash_no = ", " and stcode = "},
    {"المصروفات", "select top 1 cash_n from dailyexp where cash_n = ", " and stcode = "},
    {"الإيصالات", "select top 1 cash_n from vencuspay where cash_n = ", " and stcode = "},
    {"حركات البنوك", "select top 1 cash_n from btran where cash_n = ", " and stcode = "},
    {"إعدادات المحل", "select top 1 mcash from basic where mcash = ", " and mst = "},
};
constexpr Reference worker_references[] = {
    {"الورديات", "select top 1 man_ from shift where man_ = "},
    {"البونات", "select top 1 wcode from saledata where wcode = "},
    {"أعمال الصنايعية", "select top 1 wcode from salver where wcode = "},
};
constexpr Reference bank_references[] = {
    {"البونات", "select top 1 bcode from sales where bcode = "},
    {"حركات البنوك", "select top 1 bcode from btran where bcode = "},
    {"الإيصالات", "select top 1 bcode from vencuspay where bcode = "},
};
constexpr Reference heading_references[] = {
    {"المصروفات الفرعية", "select top 1 mcode from subx where mcode = "},
    {"المصروفات", "select top 1 mcode from dailyexp where mcode = "},
};
constexpr Reference sub_heading_references[] = {
    {"المصروفات", "select top 1 scode from dailyexp where scode = ", " and mcode = "}};
constexpr Reference group_references[] = {{"الأصناف", "select top 1 itype from items where itype = "}};
constexpr Reference maker_references[] = {{"الأصناف", "select top 1 fact from items where fact = "}};
constexpr Reference class_references[] = {
    {"العملاء", "select top 1 cust_typ from custdata where cust_typ = "}};
constexpr Reference period_references[] = {
    {"أسعار أصناف في الفترة", "select top 1 sale_prd from sale_price where sale_prd = "}};
constexpr Reference receiver_references[] = {
    {"بونات الإكراميات", "select top 1 link from sales where stype = 2 and link = "},
    {"الإكراميات المصروفة", "select top 1 ccode from boun where ccode = "},
};
constexpr Reference representative_references[] = {
    {"العملاء", "select top 1 link from custdata where link = "},
    {"الإيصالات", "select top 1 link from vencuspay where link = "},
};
constexpr Reference country_references[] = {
    {"المحافظات", "select top 1 ccode from gover where ccode = "},
    {"العملاء", "select top 1 country from custdata where country = "}};
constexpr Reference governorate_references[] = {{"المراكز", "select top 1 cgov from cityn where cgov = "},
                                                {"العملاء", "select top 1 gov from custdata where gov = "}};
constexpr Reference city_references[] = {{"الأحياء", "select top 1 ccity from dist where ccity = "},
                                         {"العملاء", "select top 1 city from custdata where city = "}};
constexpr Reference district_references[] = {{"العملاء", "select top 1 dist from custdata where dist = "}};

// A day may have only one period, or it would be unclear which prices count.
std::optional<Refusal> check_period(const ListRow& row, const std::vector<ListRow>& others) {
    const auto from = [](const ListRow& period) { return std::get<common::Date>(period.values[1]); };
    const auto to = [](const ListRow& period) { return std::get<common::Date>(period.values[2]); };
    if (to(row) < from(row)) return Refusal("list_to", message::ends_before_it_begins);
    for (const ListRow& other : others)
        if (from(row) <= to(other) && from(other) <= to(row))
            return Refusal("list_from",
                           std::string(message::overlaps) + std::get<std::string>(other.values.front()));
    return std::nullopt;
}

const ListDescription descriptions[] = {
    {.name = "stores",
     .caption = "الفروع والمخازن",
     .one = "فرع",
     .table = "stocks",
     .key = "code",
     .all = "select * from stocks order by code",
     .row = "select * from stocks where code = ",
     .highest = "select max(code) from stocks",
     .erase = "delete from stocks where code = ",
     .fields = only_a_name,
     .references = store_references,
     .added = database::add_store_columns},
    {.name = "drawers",
     .caption = "أدراج النقدية",
     .one = "درج",
     .table = "cash",
     .key = "code",
     .all = "select * from cash order by stcode, code",
     .row = "select * from cash where code = ",
     .highest = "select max(code) from cash",
     .erase = "delete from cash where code = ",
     .fields = fields_of_drawers,
     .references = drawer_references,
     .parent = "stores",
     .parent_column = "stcode",
     .and_parent = " and stcode = ",
     .where_parent = " where stcode = "},
    {.name = "workers",
     .caption = "العاملون والبائعون",
     .one = "عامل",
     .table = "worker",
     .key = "work_code",
     .all = "select * from worker order by work_code",
     .row = "select * from worker where work_code = ",
     .highest = "select max(work_code) from worker",
     .erase = "delete from worker where work_code = ",
     .fields = worker_fields,
     .references = worker_references},
    {.name = "banks",
     .caption = "البنوك",
     .one = "بنك",
     .table = "bankdata",
     .key = "bcode",
     .all = "select * from bankdata order by bcode",
     .row = "select * from bankdata where bcode = ",
     .highest = "select max(bcode) from bankdata",
     .erase = "delete from bankdata where bcode = ",
     .fields = bank_fields,
     .references = bank_references},
    {.name = "headings",
     .caption = "المصروفات الرئيسية",
     .one = "مصروف رئيسي",
     .table = "mainx",
     .key = "code",
     .all = "select * from mainx order by code",
     .row = "select * from mainx where code = ",
     .highest = "select max(code) from mainx",
     .erase = "delete from mainx where code = ",
     .fields = only_a_name,
     .references = heading_references},
    {.name = "sub_headings",
     .caption = "المصروفات الفرعية",
     .one = "مصروف فرعي",
     .table = "subx",
     .key = "code",
     .all = "select * from subx order by mcode, code",
     .row = "select * from subx where code = ",
     .highest = "select max(code) from subx",
     .erase = "delete from subx where code = ",
     .fields = sub_heading_fields,
     .references = sub_heading_references,
     .parent = "headings",
     .parent_column = "mcode",
     .and_parent = " and mcode = ",
     .where_parent = " where mcode = "},
    {.name = "groups",
     .caption = "مجموعات الأصناف",
     .one = "مجموعة",
     .table = "item_types",
     .key = "code",
     .all = "select * from item_types order by code",
     .row = "select * from item_types where code = ",
     .highest = "select max(code) from item_types",
     .erase = "delete from item_types where code = ",
     .fields = only_a_name,
     .references = group_references},
    {.name = "makers",
     .caption = "الشركات المنتجة",
     .one = "شركة",
     .table = "makers",
     .key = "code",
     .all = "select * from makers order by code",
     .row = "select * from makers where code = ",
     .highest = "select max(code) from makers",
     .erase = "delete from makers where code = ",
     .fields = only_a_name,
     .references = maker_references},
    {.name = "classes",
     .caption = "فئات السعر",
     .one = "فئة",
     .table = "cust_typ",
     .key = "code",
     .all = "select * from cust_typ order by code",
     .row = "select * from cust_typ where code = ",
     .highest = "select max(code) from cust_typ",
     .erase = "delete from cust_typ where code = ",
     .fields = only_a_name,
     .references = class_references},
    {.name = "periods",
     .caption = "فترات العروض",
     .one = "فترة",
     .table = "sal_prd",
     .key = "sale_no",
     .all = "select * from sal_prd order by sale_no",
     .row = "select * from sal_prd where sale_no = ",
     .highest = "select max(sale_no) from sal_prd",
     .erase = "delete from sal_prd where sale_no = ",
     .fields = period_fields,
     .references = period_references,
     .check = check_period},
    {.name = "receivers",
     .caption = "عملاء الإكراميات",
     .one = "عميل إكراميات",
     .table = "boundata",
     .key = "ccode",
     .all = "select * from boundata order by ccode",
     .row = "select * from boundata where ccode = ",
     .highest = "select max(ccode) from boundata",
     .erase = "delete from boundata where ccode = ",
     .fields = receiver_fields,
     .references = receiver_references},
    {.name = "representatives",
     .caption = "المندوبون",
     .one = "مندوب",
     .table = "link",
     .key = "ccode",
     .all = "select * from link order by ccode",
     .row = "select * from link where ccode = ",
     .highest = "select max(ccode) from link",
     .erase = "delete from link where ccode = ",
     .fields = representative_fields,
     .references = representative_references},
    {.name = "countries",
     .caption = "الدول",
     .one = "دولة",
     .table = "country",
     .key = "ccode",
     .all = "select * from country order by ccode",
     .row = "select * from country where ccode = ",
     .highest = "select max(ccode) from country",
     .erase = "delete from country where ccode = ",
     .fields = country_fields,
     .references = country_references},
    {.name = "governorates",
     .caption = "المحافظات",
     .one = "محافظة",
     .table = "gover",
     .key = "cgover",
     .all = "select * from gover order by ccode, cgover",
     .row = "select * from gover where cgover = ",
     .highest = "select max(cgover) from gover",
     .erase = "delete from gover where cgover = ",
     .fields = governorate_fields,
     .references = governorate_references,
     .parent = "countries",
     .parent_column = "ccode"},
    {.name = "cities",
     .caption = "المراكز والمدن",
     .one = "مركز",
     .table = "cityn",
     .key = "ccity",
     .all = "select * from cityn order by cgov, ccity",
     .row = "select * from cityn where ccity = ",
     .highest = "select max(ccity) from cityn",
     .erase = "delete from cityn where ccity = ",
     .fields = city_fields,
     .references = city_references,
     .parent = "governorates",
     .parent_column = "cgov"},
    {.name = "districts",
     .caption = "الأحياء",
     .one = "حي",
     .table = "dist",
     .key = "cdist",
     .all = "select * from dist order by ccity, cdist",
     .row = "select * from dist where cdist = ",
     .highest = "select max(cdist) from dist",
     .erase = "delete from dist where cdist = ",
     .fields = district_fields,
     .references = district_references,
     .parent = "cities",
     .parent_column = "ccity"},
    {.name = "news",
     .caption = "شريط الأخبار",
     .one = "سطر",
     .table = "news",
     .key = "ncode",
     .all = "select * from news order by ncode",
     .row = "select * from news where ncode = ",
     .highest = "select max(ncode) from news",
     .erase = "delete from news where ncode = ",
     .fields = news_fields,
     .references = {}},
};

}  // namespace

std::span<const ListDescription> lists() {
    return descriptions;
}

const ListDescription& list_named(std::string_view name) {
    const auto* const found = std::ranges::find(descriptions, name, &ListDescription::name);
    if (found == std::end(descriptions)) throw std::logic_error("no list " + std::string(name));
    return *found;
}

}  // namespace shop

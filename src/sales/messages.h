// What the cashier is told while an invoice is rung up and saved. Blanks at the ends belong to the texts.
#pragma once

#include <string_view>

#include "common/messages.h"

namespace sales::message {

// --- kinds -------------------------------------------------------------------------------------------
// The receipt type cannot be changed now.
inline constexpr std::string_view kind_fixed = "لا يمكن تغير نوع البون الان ";

// --- item entry --------------------------------------------------------------------------------------
// Customers must be added / tips customers must be added / the invoice must be selected first.
inline constexpr std::string_view add_customers = "يجب اضافة عملاء";
inline constexpr std::string_view add_tips_customers = "يجب اضافة عملاء اكراميات";
inline constexpr std::string_view select_invoice_first = "يجب تحديد الفاتوره اولا";
// The barcode is registered for more than one item; enter the item's code.
inline constexpr std::string_view shared_barcode = "الباركود مسجل لأكثر من صنف، أدخل كود الصنف";
// The product code is wrong, or the product was sold already / was not sold.
inline constexpr std::string_view product_sold = "كود المنتج غير صحيح أو تم بيع هذا المنتج";
inline constexpr std::string_view product_not_sold = "كود المنتج غير صحيح أو لم تم بيع هذا المنتج";
// Sorry, trading in this item has been stopped.
inline constexpr std::string_view stopped = "عفوا تم إيقاف تداول هذا الصنف";
// Sorry, this is a sale-only item without quantities; it cannot be returned.
inline constexpr std::string_view sale_only = "عفوا هذا صنف بيع فقط بدون كميات ليس له ارتجاع";
// Unit / pack / carton data must be set in the item card.
inline constexpr std::string_view set_units = "يجب ضبط بيانات الوحدات بكارت الصنف ";
inline constexpr std::string_view set_packs = "يجب ضبط بيانات العبوات بكارت الصنف ";
inline constexpr std::string_view set_cartons = "يجب ضبط بيانات الكراتين بكارت الصنف ";
// The weight stands on the scale's label; scan it without a quantity before it.
inline constexpr std::string_view label_has_quantity =
    "الوزن مكتوب على ملصق الميزان، مرر الملصق بدون كمية قبله";
// The invoice has no line whose quantity or unit could change.
inline constexpr std::string_view no_line = "لا يوجد سطر في البون";
// Prices must be set in the item card.
inline constexpr std::string_view set_prices = "يجب ضبط بيانات الأسعار بكارت الصنف ";
// This item was entered before; increase its quantity?
inline constexpr std::string_view entered_before = "تم ادخال هذا الصنف من قبل هل تريد زيادة الكمية";
// The name of a general (unlisted) item.
inline constexpr std::string_view general_item = "صنف عام";

// --- stock -------------------------------------------------------------------------------------------
// The remaining stock is reserved; sell from it?
inline constexpr std::string_view stock_reserved =
    "الكمية المتبقية بالمخزن تم حجزها .. هل تريد البيع من الكمية المتبقيه؟ ";
// You are not permitted to sell reserved quantities.
inline constexpr std::string_view may_not_sell_reserved = "غير مصرح لك ببيع كميات محجوزة";
// This item cannot be sold now.
inline constexpr std::string_view cannot_sell_now = "لا يمكن بيع هذا الصنف حاليا ";
// The quantity does not allow.
inline constexpr std::string_view quantity_not_allowed = "الكمية لا تسمح";
// The quantity in the transfer store does not allow.
inline constexpr std::string_view transfer_store_short = "الكمية الموجودة في مخزن التحويل لا تسمح";
// The override question: item, stock, need; sell below the stock?
inline constexpr std::string_view override_item = "الصنف : ";
inline constexpr std::string_view override_stock = "\nالرصيد : ";
inline constexpr std::string_view override_need = "\nالمطلوب : ";
inline constexpr std::string_view override_question =
    "\nالكمية بالمخزن لا تكفي ..\nهل تريد البيع بأقل من الرصيد ؟";
// The goods that would be sold are past their date: item, date; sell them?
inline constexpr std::string_view expired_on = "\nمنه كمية انتهت صلاحيتها في ";
inline constexpr std::string_view expired_question = "\nراجع تاريخ العبوة .. هل تريد بيعه ؟";

// --- editing -----------------------------------------------------------------------------------------
// No discount can be made on a clearance-sale item.
inline constexpr std::string_view no_clearance_discount = "لا يمكن عمل خصم لصنف من اصناف الاوكازيون";
// This discount is not allowed: on a line, on the invoice.
inline constexpr std::string_view line_discount_refused = "غير مسموح بهذا الخصم ";
inline constexpr std::string_view invoice_discount_refused = "غير مسموح بهذا الخصم";
// This discount causes a loss.
inline constexpr std::string_view discount_loses = "هذا الخصم يسبب خسارة";
// This price / quantity is not allowed because of a large discount.
inline constexpr std::string_view price_against_discount = "غير مسموح بهذا السعر لوجود خصم كبير";
inline constexpr std::string_view quantity_against_discount = "غير مسموح بهذا العدد لوجود خصم كبير";
// What an invoice was refused for, below "you are not authorised": the price of item … / the discount of
// item … / more than the stock of item … / a return.
inline constexpr std::string_view price_of_item = "\nسعر الصنف ";
inline constexpr std::string_view discount_of_item = "\nخصم الصنف ";
inline constexpr std::string_view below_stock_of_item = "\nالبيع بأقل من رصيد الصنف ";
inline constexpr std::string_view saving_a_return = "\nحفظ مرتجع";
// The discount was granted for the receipt as it was, not for other goods or quantities.
inline constexpr std::string_view discount_of_other_goods =
    "\nالخصم الممنوح للبون كما كان لا يسري على أصناف أو كميات أخرى";
// Check the discount value.
inline constexpr std::string_view check_discount = "تأكد من قيمة الخصم";
// The quantity / price / discount is not a valid number.
inline constexpr std::string_view wrong_quantity = "الكمية غير صحيحة";
inline constexpr std::string_view wrong_price = "السعر غير صحيح";
inline constexpr std::string_view wrong_discount = "قيمة الخصم غير صحيحة";
// The unit of this line cannot be changed: a general item, a craftsman's work, goods that come back.
inline constexpr std::string_view fixed_unit = "لا تتغير وحدة هذا السطر";
// The item's card has no other unit with a price.
inline constexpr std::string_view one_unit = "ليس للصنف وحدة أخرى لها سعر بكارت الصنف";
// Enter the quantity / the price of item … before saving.
inline constexpr std::string_view enter_quantity_of = "أدخل كمية الصنف ";
inline constexpr std::string_view enter_price_of = "أدخل سعر الصنف ";

// --- tiles -------------------------------------------------------------------------------------------
// Write a name for the page.
inline constexpr std::string_view name_tile_page = "اكتب اسم الصفحة";
// Another till has changed this page. Look at it as it is now, and change it again.
inline constexpr std::string_view tile_page_changed =
    "غير جهاز آخر هذه الصفحة .. راجعها كما هي الآن ثم أعد التعديل";

// --- recalled receipts ------------------------------------------------------------------------------
// The receipt does not exist.
inline constexpr std::string_view no_such_receipt = "البون غير موجود";
// The receipt number is digits only.
inline constexpr std::string_view wrong_receipt_number = "رقم البون غير صحيح، اكتب أرقاما فقط";
// This receipt was saved before; save it again as a new receipt?
inline constexpr std::string_view save_as_new = "هذا البون محفوظ من قبل .. هل تريد حفظه كبون جديد ؟";
// Nothing is left of this receipt to return.
inline constexpr std::string_view nothing_to_return = "تم إرجاع كل أصناف هذا البون من قبل";
// There is no receipt to print again.
inline constexpr std::string_view nothing_to_reprint = "لا يوجد بون لإعادة طباعته";

// --- offers ------------------------------------------------------------------------------------------
// There are no lines to keep as an offer.
inline constexpr std::string_view empty_offer = "لا توجد أصناف لحفظها كعرض سعر";
// "Offer number …" "is kept. Print it?"
inline constexpr std::string_view offer_number = "عرض السعر رقم ";
inline constexpr std::string_view offer_kept = " تم حفظه .. هل تريد طباعته ؟";
// There is no offer of this number.
inline constexpr std::string_view no_such_offer = "عرض السعر غير موجود";
// "Item …" "was deleted and cannot be sold".
inline constexpr std::string_view item_of = "الصنف ";
inline constexpr std::string_view item_deleted = " تم حذفه ولا يمكن بيعه";

// Stand on a line of an item with a code. For the price of another item, type its name.
inline constexpr std::string_view no_item_line =
    "قف على سطر صنف له كود.\nولمعرفة سعر صنف ليس في البون اكتب اسمه في خانة الكود";

// --- lines from another store ------------------------------------------------------------------------
// Type the code of an item that is kept in stock, or choose its line, in a sale.
inline constexpr std::string_view no_source_line =
    "اكتب كود صنف له رصيد بالمخزن أو اختر سطره أولا، في بون بيع";

// --- cancelling --------------------------------------------------------------------------------------
// Cancel the receipt? / Cancel this record?
inline constexpr std::string_view cancel_receipt = "هل تريد الغاء البون ؟";
inline constexpr std::string_view cancel_record = "هل تريد إلغاء هذا السجل ؟";
// What becomes of it, below those questions: what was saved of it stays, and will be asked about at the next
// save. / The saved receipt stays as it is. / There are no items on the screen. / They go from the screen and
// none of them is recorded. / The same for a held receipt that was resumed: it is no longer held either.
inline constexpr std::string_view partly_saved_is_kept =
    "ما حفظ منه يبقى كما هو، ويسأل عنه البرنامج عند الحفظ التالي";
inline constexpr std::string_view saved_receipt_stays = "البون المحفوظ يبقى كما هو، وتبدأ بونا جديدا";
inline constexpr std::string_view nothing_on_screen = "لا توجد أصناف على الشاشة";
inline constexpr std::string_view lines_are_lost = "تمحى من الشاشة ولا يسجل منها شيء";
inline constexpr std::string_view held_is_removed = "تمحى من الشاشة ومن المعلقة ولا يسجل شيء";
// "Lines: …" "· Net: …"
inline constexpr std::string_view line_count = "عدد السطور ";
inline constexpr std::string_view net_of = " · الصافي ";
// Exit? / Start the program again?
inline constexpr std::string_view exit = "هل تريد الخروج ؟";
inline constexpr std::string_view restart = "هل تريد إعادة تشغيل البرنامج ؟";
// Before it, of an invoice in work: "A receipt that is not saved is on the screen:" … it is held, and every
// till of the store finds it among the held ones / it stays on this till and is offered at the next start /
// it is lost.
inline constexpr std::string_view not_saved_yet = "على الشاشة بون لم يحفظ\n";
inline constexpr std::string_view held_at_leaving = "\nعند الخروج يعلق وتجده في البونات المعلقة\n";
inline constexpr std::string_view kept_at_leaving = "\nيبقى على الجهاز ويعرض عليك عند التشغيل\n";
inline constexpr std::string_view lost_at_leaving = "\nإذا خرجت الآن يفقد\n";

// --- held invoices -----------------------------------------------------------------------------------
// There are no items to hold. Held receipts: Shift F3.
inline constexpr std::string_view nothing_to_hold =
    "لا توجد أصناف على الشاشة لتعليقها\nالبونات المعلقة بالمفتاحين Shift F3";
// This receipt is saved already. It is found among today's receipts.
inline constexpr std::string_view saved_is_not_held = "هذا البون محفوظ من قبل ولا يعلق، تجده في بونات اليوم";
// The shop's database takes no held receipts: tell the person in charge.
inline constexpr std::string_view cannot_hold = "قاعدة البيانات لا تقبل تعليق البونات، أبلغ المدير";
// After what is on the screen: it is not saved. Hold it and resume the chosen one?
inline constexpr std::string_view hold_first =
    "\nهذا البون على الشاشة ولم يحفظ. هل تريد تعليقه واسترجاع البون المختار ؟";
// Remove this held receipt for good?
inline constexpr std::string_view discard_held = "هل تريد حذف هذا البون المعلق نهائيا ؟\n";
// When a shift is closed: this drawer's held receipts stay held: … (how many, then each).
inline constexpr std::string_view still_held = "\nبونات معلقة لهذا الدرج تبقى معلقة : ";
// In the till's journal: "from the held ones: …".
inline constexpr std::string_view of_held = "من المعلقة: ";
// This receipt is on your screen now / is open now at … / is no longer held: it was saved or removed.
inline constexpr std::string_view held_is_here = "هذا البون على شاشتك الآن";
inline constexpr std::string_view held_is_elsewhere = "هذا البون مفتوح الآن على : ";
// After the till and its user: since … / if that till is out of order it is resumed here as it was held; what
// was changed there does not come with it. Resume it here?
inline constexpr std::string_view since = " منذ \u200e";
inline constexpr std::string_view take_over =
    "\u200f\nإذا كان ذلك الجهاز معطلا تسترجعه هنا كما علق، وما تغير فيه هناك لا ينتقل معه\n"
    "هل تريد استرجاعه هنا ؟";
// Its save is not finished at … / in the till's journal: "was open at …".
inline constexpr std::string_view held_is_partly_saved =
    "هذا البون حفظ جزء منه، ويكمل حفظه أو يتراجع عنه الجهاز الذي بدأه : ";
inline constexpr std::string_view was_open_at = "، كان مفتوحا على: ";
// … has resumed this receipt on another till: it is not saved here. F3 begins a new one.
inline constexpr std::string_view held_was_taken_over = "استرجع هذا البون على جهاز آخر : ";
inline constexpr std::string_view leave_it_there = "\nلا يحفظ هنا. اضغط F3 لتبدأ بونا جديدا";
inline constexpr std::string_view held_is_gone = "هذا البون لم يعد معلقا، تم حفظه أو حذفه على جهاز آخر";
// A receipt that was not saved was on the screen when the program ended: … / rung up by … / resume it or
// hold it? / resume, hold / it is on the screen again.
inline constexpr std::string_view draft_found = "كان على الشاشة بون لم يحفظ\n";
inline constexpr std::string_view draft_of_user = "\nسجله ";
inline constexpr std::string_view restore_or_hold = "\nهل تريد استرجاعه الآن أم تعليقه ؟";
inline constexpr std::string_view restore = "استرجاع";
inline constexpr std::string_view put_aside = "تعليق";
inline constexpr std::string_view draft_restored = "\nعاد البون إلى الشاشة";

// --- stock display and item info ---------------------------------------------------------------------
// Quantity in store: … / zero.
inline constexpr std::string_view stock_quantity = " الكمية بالمخزن : ";
inline constexpr std::string_view stock_zero = " الكمية بالمخزن : صفر";
inline constexpr std::string_view expiry_mark = "==> ";
// No date.
inline constexpr std::string_view no_expiry_date = "بدون تاريخ";
// Expected profit.
inline constexpr std::string_view expected_profit = "ربح متوقع ==> ";

// --- payment -----------------------------------------------------------------------------------------
// A return: pay this amount to the customer.
inline constexpr std::string_view paid_out = "مرتجع: ادفع هذا المبلغ للعميل";
// This receipt was paid by card; pay this amount to the customer in cash.
inline constexpr std::string_view card_paid_out =
    "هذا البون مدفوع ببطاقة ائتمان: ادفع هذا المبلغ للعميل نقدا من الدرج";

// Less was paid than the net: the amount still owed; save the receipt?
inline constexpr std::string_view underpaid = "المدفوع أقل من الصافي\nالباقي على العميل \u200e";
inline constexpr std::string_view underpaid_question = "\u200f .. هل تريد حفظ البون ؟";
// Keys that pay a cash sale at once are pressed for another one: press F1.
inline constexpr std::string_view cash_sales_only = "هذا الزر للبيع النقدي فقط .. اضغط F1 لحفظ هذا البون";

// --- failures ----------------------------------------------------------------------------------------
// The action could not be completed; nothing has changed on the screen.
inline constexpr std::string_view action_failed = "تعذر إتمام العملية ولم يتغير شيء على الشاشة";

// --- saving ----------------------------------------------------------------------------------------
// The invoice has no lines.
inline constexpr std::string_view empty_invoice = "لا توجد أصناف في البون";
// A receipt cannot be saved without opening a new shift.
inline constexpr std::string_view no_shift = "لا يمكن حفظ البون بدون فتح ورديه جديده";
// "The quantity of item … is not enough", with the item's name in between.
inline constexpr std::string_view quantity_of = "كميه الصنف ";
inline constexpr std::string_view not_enough = " لا تكفي";
// "... is not enough now: a part of it is on a receipt that another till is saving. Try again in a moment."
inline constexpr std::string_view being_sold =
    " لا تكفي الآن: بعضها في بون يتم حفظه على جهاز آخر. حاول مرة أخرى بعد لحظات";
// Enter the permit data.
inline constexpr std::string_view enter_permit = "أدخل بيانات الاذن";
// This receipt number was already entered for the same customer.
inline constexpr std::string_view number_used = "سبق ادخال نفس رقم الايصال لنفس العميل";
// Choose the customer / the account customer no longer exists.
inline constexpr std::string_view choose_customer = "اختر العميل";
// Choose the tips customer / the tips customer, the bank no longer exists / choose the bank / enter the
// card's reference.
inline constexpr std::string_view choose_tips = "اختر عميل الإكراميات";
inline constexpr std::string_view tips_gone = "عميل الإكراميات غير موجود";
inline constexpr std::string_view choose_bank = "اختر البنك";
inline constexpr std::string_view enter_reference = "أدخل الرقم المرجعي لبطاقة الائتمان";
// "…: the text is too long", after the name of the field.
inline constexpr std::string_view too_long = ": النص أطول من المسموح";
inline constexpr std::string_view permit_field = "رقم الإذن";
inline constexpr std::string_view note_field = "ملاحظات";
inline constexpr std::string_view holder_field = "صاحب البطاقة";
inline constexpr std::string_view reference_field = "رقم مرجعي";
inline constexpr std::string_view name_field = "اسم الصنف";
// More is returned of item … than was sold and not yet returned.
inline constexpr std::string_view returned_too_much = "الكمية المرتجعة أكبر من المباعة للصنف ";
// The invoice could not be saved; nothing was written.
inline constexpr std::string_view not_saved = "لم يتم حفظ البون ولم يسجل منه شيء";
// The same if its receipt was printed: it is void, tear it up.
inline constexpr std::string_view not_saved_paper_void =
    "لم يتم حفظ البون ولم يسجل منه شيء. البون المطبوع لاغ، مزقه";
// "Invoice number …" "was saved in part only. The last step finished:" … "Do not save it again; tell the
// manager."
inline constexpr std::string_view partly_number = "البون رقم ";
inline constexpr std::string_view partly_saved = " تم حفظ جزء منه فقط. آخر خطوة تمت: ";
inline constexpr std::string_view partly_advice = "\nلا تحفظه مرة أخرى وأبلغ المدير";

// "Receipt number ..." "has a number that another till has used. The printed receipt is void: tear it
// up. It is printed again under a new number."
inline constexpr std::string_view number_taken =
    " استخدم جهاز آخر رقمه.\nالبون المطبوع لاغ: مزقه. سيطبع مرة أخرى برقم جديد";
// "The receipt was saved, but the stock of ..." "ran out while it was printing: another till sold it. The
// stock is now below zero; tell the person in charge."
inline constexpr std::string_view sold_elsewhere = "تم حفظ البون، لكن رصيد الصنف ";
inline constexpr std::string_view sold_elsewhere_advice =
    " نفد أثناء الطباعة لأن جهازا آخر باعه.\nالرصيد الآن أقل من الصفر، أبلغ المدير";

// Did the receipt come out of the printer?
inline constexpr std::string_view receipt_came = "هل خرج البون من الطابعة ؟";

// "This receipt was saved in part. Press F1 to finish or undo saving it."
inline constexpr std::string_view partly_can_be_settled =
    "هذا البون تم حفظ جزء منه. اضغط F1 لإكمال حفظه أو التراجع عنه";
// "This receipt was saved in part. It cannot be changed or saved again: cancel it and tell the manager."
inline constexpr std::string_view partly_stays =
    "هذا البون تم حفظ جزء منه، لا يمكن تعديله أو حفظه مرة أخرى. ألغ البون وأبلغ المدير";

}  // namespace sales::message

#include "ui/help/open_help.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <algorithm>

#include "ui/help/screen.h"
#include "ui/widgets/message_box.h"

namespace ui {

namespace {

Guide program_guide = Guide::cashier;

const std::vector<std::pair<QString, QString>>& office_places() {
    static const std::vector<std::pair<QString, QString>> places = {
        {"Form62", "sign-in"},
        {"Form63", "password"},
        {"office_window", "window"},
        {"till_journal", "till-journal"},
        {"approval", "approval"},
        {"goods_page", "goods"},
        {"item_sheet", "item-card"},
        {"item_barcode", "item-barcodes"},
        {"price_history_sheet", "item-card"},
        {"label_sheet", "labels"},
        {"price_sheet", "several-prices"},
        {"import_sheet", "import"},
        {"csv_sheet", "import"},
        // Goods in.
        {"receipts_page", "goods-in"},
        {"goods_in", "goods-in-new"},
        {"saved_receipt", "goods-in-saved"},
        {"suppliers_page", "suppliers"},
        {"supplier_card", "suppliers"},
        {"supplier_statement", "supplier-statement"},
        {"proposal_view", "order-proposal"},
        {"today_page", "today"},
        {"close_days", "close-days"},
        {"report_page", "reports"},
        {"report_rows", "report-rows"},
        {"document_lines", "report-rows"},
        {"counting_page", "counting"},
        {"new_count", "counting-new"},
        {"stock_count", "counting-lines"},
        {"write_off", "write-off"},
        {"write_offs", "write-off"},
        {"needs_page", "needs"},
        {"first_start", "first-start"},
        {"lists_page", "lists"},
        {"period_prices", "period-prices"},
        {"users_page", "users"},
        {"user_password_sheet", "users"},
        {"user_badge_sheet", "users"},
        {"settings_page", "settings"},
    };
    return places;
}

}  // namespace

const std::vector<std::pair<QString, QString>>& help_places(Guide guide) {
    if (guide == Guide::office) return office_places();
    static const std::vector<std::pair<QString, QString>> places = {
        {"Form62", "sign-in"},
        {"Form63", "password"},
        // The sales window and its parts.
        {"Form31", "ringing-up"},
        {"lines", "lines"},
        {"discount_value", "discounts"},
        {"discount_percent", "discounts"},
        {"invoice_number", "recall"},
        {"invoice_banner", "recall"},
        {"entry_for_recalled", "recall"},
        {"account_customer", "account-sale"},
        {"permit", "permit"},
        {"permit_number", "permit"},
        {"bank", "card"},
        {"card_holder", "card"},
        {"card_reference", "card"},
        {"tips_receiver", "tips"},
        {"Form34", "payment"},
        {"search_panel", "search"},
        {"held_screen", "hold"},
        {"tiles_panel", "tiles"},
        {"tile_sheet", "tiles"},
        {"tile_page_sheet", "tiles"},
        {"quick_quantity_sheet", "quick-quantity"},
        {"item_info_sheet", "item-info"},
        {"invoice_data", "invoice-data"},
        {"line_source", "line-source"},
        {"receipts_screen", "receipts"},
        {"offers_screen", "offers"},
        {"screen_sheet", "screen-choice"},
        {"keypad", "keypad"},
        {"printer_screen", "printer"},
        {"receipt_designer", "receipt-design"},
        {"logo_sheet", "receipt-design"},
        {"paper_sheet", "printer"},
        {"preview", "printer"},
        {"printing_line", "printer"},
        {"printing_wait", "printer"},
        {"progress", "printer"},
        // Shifts and cash.
        {"shift2s", "shift-start"},
        {"count_sheet", "count-pieces"},
        {"shiftc", "shift-start"},
        {"shift_counted", "shift-close"},
        {"shift_leave", "shift-close"},
        {"shift_side", "cash-position"},
        {"cash_count", "cash-count"},
        {"cash_panel", "cash-count"},
        {"daily_statement", "daily-statement"},
        {"figure_rows", "daily-statement"},
        {"till_journal", "till-journal"},
        {"approval", "approval"},
        {"Form41ca", "expenses"},
        // Customers and vouchers.
        {"Cust_cash", "walk-in"},
        {"account_customers", "account-customers"},
        {"Form7ca", "account-customers"},
        {"Form39", "account-statement"},
        {"Form38", "vouchers"},
        {"Form23", "payment-vouchers"},
        {"voucher_list", "voucher-edit"},
        {"direct_receipt", "direct-receipt"},
        {"tips_receivers", "tips-receivers"},
        {"Form36", "tips-receivers"},
    };
    return places;
}

QString help_place_of(Guide guide, const QWidget* widget) {
    const auto& places = help_places(guide);
    for (; widget != nullptr; widget = widget->parentWidget()) {
        const auto found = std::find_if(places.begin(), places.end(), [&](const auto& place) {
            return place.first == widget->objectName();
        });
        if (found != places.end()) return found->second;
    }
    return {};
}

void open_help() {
    QWidget* window = QApplication::activeWindow();
    if (window == nullptr || QApplication::activePopupWidget() != nullptr) return;
    QWidget* front = Sheet::top_of(window);
    if (front == nullptr) front = window;
    if (qobject_cast<MessageBox*>(front) != nullptr || qobject_cast<HelpScreen*>(front) != nullptr) return;

    QWidget* used = QApplication::focusWidget();
    const bool on_front = used != nullptr && (used == front || front->isAncestorOf(used));
    // A field that gets the focus back selects all of its text. Restore its cursor, so that typing goes on
    // where it stopped.
    const QPointer<QLineEdit> field = qobject_cast<QLineEdit*>(used);
    const int cursor = field != nullptr ? field->cursorPosition() : 0;
    const int marked_from = field != nullptr ? field->selectionStart() : -1;
    const int marked = field != nullptr ? static_cast<int>(field->selectionLength()) : 0;

    HelpScreen(window, program_guide, help_place_of(program_guide, on_front ? used : front)).run();

    if (field == nullptr || !field->hasFocus()) return;
    field->deselect();
    field->setCursorPosition(cursor);
    if (marked_from >= 0) field->setSelection(marked_from, marked);
}

HelpKey::HelpKey(Guide guide) {
    program_guide = guide;
    qApp->installEventFilter(this);
}

HelpKey::~HelpKey() {
    qApp->removeEventFilter(this);
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || watched != QApplication::focusWidget()) return false;
    const auto* pressed = static_cast<QKeyEvent*>(event);
    const auto modifiers =
        pressed->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool wanted = (pressed->key() == Qt::Key_H && modifiers == Qt::ControlModifier) ||
                        (pressed->key() == Qt::Key_Help && modifiers == Qt::NoModifier);
    if (!wanted || pressed->isAutoRepeat()) return false;
    open_help();
    return true;
}

}  // namespace ui

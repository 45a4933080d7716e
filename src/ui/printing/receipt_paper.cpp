#include "ui/printing/receipt_paper.h"

#include <QEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "printing/layouts.h"
#include "printing/pages/paper_picture.h"
#include "printing/pages/system_printers.h"
#include "printing/text_receipt.h"
#include "signin/session.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/style.h"

namespace ui {

namespace pages = printing::pages;

namespace {

constexpr double largest_dots_per_mm = 6;  // a receipt in letters of twice their size

}  // namespace

ReceiptPaper::ReceiptPaper(const Context& context, printing::Receipt receipt)
    : context_(context), receipt_(std::move(receipt)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(px(8));
    shown_ = new Segments("design_shown", {{static_cast<int>(Shown::text), "نص"},
                                           {static_cast<int>(Shown::roll), "مرسوم"},
                                           {static_cast<int>(Shown::page), "فاتورة A&4"}});
    connect(shown_, &Segments::chosen, this, [this](int form) {
        shown_->show_chosen(form);
        emit changed();
    });
    column->addWidget(shown_);
    paper_ = new QLabel;
    paper_->setObjectName("design_paper");
    area_ = new QScrollArea;
    area_->setObjectName("design_paper_area");
    area_->setWidget(paper_);
    area_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);  // the width to fit does not depend on it
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    set_role(area_, "paper");
    area_->viewport()->installEventFilter(this);
    column->addWidget(area_, 1);
}

void ReceiptPaper::open() {
    codes_ = printing::PrinterCodes::load(context_.connection);
    if (const auto shop = printing::read_electronic_invoicing(context_.connection))
        qr_ = printing::qr_code(printing::qr_text(*shop, receipt_));
}

void ReceiptPaper::show_form(Shown form) {
    shown_->show_chosen(static_cast<int>(form));
}

void ReceiptPaper::draw(const printing::ReceiptDesign& design, int columns) {
    const double ratio = devicePixelRatioF();
    QPixmap drawn = QPixmap::fromImage(picture(design, columns, area_->viewport()->width() * ratio));
    drawn.setDevicePixelRatio(ratio);
    paper_->setPixmap(drawn);
    paper_->resize(drawn.deviceIndependentSize().toSize());
}

QImage ReceiptPaper::picture(const printing::ReceiptDesign& design, int columns, double width) const {
    const printing::Receipt receipt = design.applied_to(receipt_);
    const printing::ReceiptSettings settings = design.settings();
    const auto shown = static_cast<Shown>(shown_->value());
    if (shown == Shown::text) {
        const QImage paper = pages::paper_picture(
            printing::text_receipt(receipt, printing::Form::full, columns, codes_, settings), columns);
        return paper.width() <= width
                   ? paper
                   : paper.scaledToWidth(static_cast<int>(width), Qt::SmoothTransformation);
    }
    const printing::Form form = shown == Shown::page ? design.form() : printing::Form::full;
    const auto made =
        pages::receipt_pages(receipt, form, columns, settings, printing::layout_rows(receipt, form, settings),
                             context_.session.program_folder, settings.show_qr ? qr_ : std::nullopt);
    if (!made) return {};
    const double dots_per_mm =
        std::min(px(largest_dots_per_mm) * devicePixelRatioF(), (width - 1) / made->size().width());
    return pages::pictures(*made, dots_per_mm).front();
}

void ReceiptPaper::scroll(bool down) {
    QScrollBar* bar = area_->verticalScrollBar();
    const int page = area_->viewport()->height() * 3 / 4;
    bar->setValue(bar->value() + (down ? page : -page));
}

bool ReceiptPaper::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && watched == area_->viewport()) emit changed();
    return QWidget::eventFilter(watched, event);
}

}  // namespace ui

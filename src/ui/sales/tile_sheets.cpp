#include "ui/sales/tile_sheets.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>

#include "sales/items.h"
#include "ui/widgets/choices.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

namespace ui {

namespace {

// "White", "yellow", "orange", "red", "purple", "blue", "turquoise", "green".
constexpr const char* colour_names[] = {"أبيض",   "أصفر", "برتقالي", "أحمر",
                                        "بنفسجي", "أزرق", "فيروزي",  "أخضر"};

class ColourButton : public QPushButton {
  public:
    explicit ColourButton(int colour) : QPushButton(colour_names[colour]), colour_(colour) {
        setObjectName("tile_colour_" + QString::number(colour));
        setCheckable(true);
        setMinimumHeight(px(48));
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double edge = px(isChecked() || hasFocus() ? 3 : 1);
        painter.setPen(QPen(QColor(hasFocus()    ? colour::focus
                                   : isChecked() ? colour::net
                                                 : colour::edge),
                            edge));
        painter.setBrush(QColor(tile_colour(colour_)));
        painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), px(8), px(8));
        painter.setPen(QColor(colour::ink));
        painter.drawText(rect(), Qt::AlignCenter, text());
    }

  private:
    int colour_;
};

}  // namespace

const char* tile_colour(int colour) {
    return tile_colours[colour >= 0 && colour < tile_colour_count ? colour : 0];
}

TileSheet::TileSheet(QWidget* host, const sales::Tile& tile) : Sheet(host, qt(tile.name)), tile_(tile) {
    setObjectName("tile_sheet");
    set_card_width(720);
    auto* units = new Segments("tile_unit", {{1, "&وحدة"}, {2, "&عبوة"}, {3, "ك&رتونة"}});
    units->set_height(field_height);
    units->show_chosen(tile.unit);
    connect(units, &Segments::chosen, this, [this, units](int unit) {
        tile_.unit = unit;
        units->show_chosen(unit);
        take_focus();
    });
    QHBoxLayout* unit_row = add_row();
    unit_row->addWidget(label("يباع", "side"));
    unit_row->addWidget(units);
    unit_row->addStretch(1);
    QHBoxLayout* colours = add_row();
    for (int colour = 0; colour < tile_colour_count; ++colour) {
        auto* button = new ColourButton(colour);
        button->setChecked(colour == tile.colour);
        connect(button, &QPushButton::clicked, this, [this, colour] {
            tile_.colour = colour;
            for (std::size_t i = 0; i < colours_.size(); ++i)
                colours_[i]->setChecked(static_cast<int>(i) == colour);
            take_focus();
        });
        colours->addWidget(button, 1);
        colours_.push_back(button);
    }
    QHBoxLayout* places = add_row();
    foot_button(places, "tile_earlier", "ت&قديم", 1, [this] { leave(earlier); });
    foot_button(places, "tile_later", "&تأخير", 1, [this] { leave(later); });
    set_role(foot_button(places, "tile_remove", "&حذف من الصفحة", 1, [this] { leave(remove); }), "stop");
    QHBoxLayout* foot = add_row();
    keep_ = foot_button(foot, "tile_keep", "&موافق  Enter", 1, [this] { leave(change); });
    set_role(keep_, "main");
    foot_button(foot, "tile_back", "ر&جوع", 1, [this] { leave(back); });
}

// Enter then takes what was chosen.
void TileSheet::take_focus() {
    keep_->setFocus();
}

TilePageSheet::TilePageSheet(QWidget* host, const QString& name, bool is_new)
    : Sheet(host, is_new ? "صفحة جديدة" : "صفحة الأصناف"), name_(text_field("tile_page_name")) {
    setObjectName("tile_page_sheet");
    set_card_width(560);
    name_->setText(name);
    name_->setMaxLength(sales::longest_tile_page_name);
    body()->addWidget(captioned("ا&سم الصفحة", name_));
    QHBoxLayout* foot = add_row();
    set_role(foot_button(foot, "tile_page_keep", "&موافق  Enter", 1, [this] { leave(change); }), "main");
    if (!is_new)
        set_role(foot_button(foot, "tile_page_remove", "&حذف الصفحة", 1, [this] { leave(remove); }), "stop");
    foot_button(foot, "tile_page_back", "ر&جوع", 1, [this] { leave(back); });
}

QString TilePageSheet::name() const {
    return name_->text();
}

}  // namespace ui

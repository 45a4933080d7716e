#include "ui/widgets/style.h"

#include <QApplication>
#include <QFont>
#include <QLabel>
#include <QPalette>
#include <QProxyStyle>
#include <QRegularExpression>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "ui/widgets/colours.h"

namespace ui {

namespace {

constexpr int base_font = 16;  // pixels at 1366×768

// "$name" is a colour, "12px" is a measure of the 1366×768 screen.
constexpr auto sheet = R"(
QWidget { color: $ink; font-size: 16px; }
QWidget[role="screen"] { background: $background; }
QLabel { background: transparent; }
QLabel[role="caption"] { font-size: 12px; color: $quiet; }
QLabel[role="figure"] { font-size: 18px; font-weight: 700; }
QLabel[role="side"] { font-size: 15px; color: $slate; }
QLabel[role="warning"] { font-size: 15px; font-weight: 700; color: $alarm; }
QLabel[role="lost"] { font-size: 16px; font-weight: 700; padding: 5px 14px; background: $alarm; color: $paper; }
QLabel[role="lost"][back="true"] { background: $save; }
QProgressBar { background: $still; border: 1px solid $edge; border-radius: 6px; text-align: center; min-height: 26px; }
QProgressBar::chunk { background: $current; border-radius: 5px; }
QLabel[role="foot"] { font-size: 14px; color: $slate; }
QLabel[role="total"] { font-size: 18px; font-weight: 700; }
QLabel[role="plain"] { font-size: 18px; }
QLabel[role="title"] { font-size: 22px; font-weight: 700; }
QLabel[role="said"] { font-size: 20px; }
QLabel[role="cap"] { background: $cap; border-radius: 4px; padding: 1px 7px; font-size: 12px; color: $slate; }
QLabel[role="ticker"] { font-size: 14px; color: #dbe6ef; }

QWidget[role="head"] { background: $night; }
QWidget[role="head"] QLabel { color: #dce2e6; }
QWidget[role="head"] QLabel[role="shop"] { font-size: 20px; font-weight: 700; color: $paper; }
QWidget[role="head"] QLabel[role="clock"] { font-size: 22px; font-weight: 700; color: $paper; }

QWidget[role="kinds"] { background: $paper; border-bottom: 1px solid $line; }
QWidget[role="cell"] { border: none; border-left: 1px solid #e6ebf0; }
QWidget[role="cell"][last="true"] { border: none; }
QLabel[role="kind"] { font-size: 26px; font-weight: 700; padding: 0 12px; }

QLineEdit { background: $paper; border: 1px solid $edge; border-radius: 8px; padding: 6px 12px;
            selection-background-color: $focus; selection-color: $paper; }
QLineEdit:focus { border: 3px solid $focus; padding: 4px 10px; }
QLineEdit:disabled { background: $still; color: $off; }
QLineEdit[role="entry"] { font-size: 24px; min-height: 48px; max-height: 48px; padding: 0 14px; border: 3px solid $edge; }
QLineEdit[role="entry"]:focus { border-color: $focus; padding: 0 14px; }
QLineEdit[role="disc"] { border: none; border-radius: 0; background: transparent; padding: 0; font-size: 20px; font-weight: 700; }
QLineEdit[role="disc"]:focus { border: none; padding: 0; }
QLineEdit[role="large"] { font-size: 34px; font-weight: 700; padding: 6px 14px; }
QLineEdit[role="large"]:focus { padding: 4px 12px; }
QLineEdit[role="celledit"] { border: 2px solid $focus; border-radius: 0; padding: 0 8px; font-size: 17px; background: $paper; }
QWidget[role="discbox"] { background: $paper; border: 1px solid $line; border-radius: 8px; }
QWidget[role="discbox"][lit="true"] { border: 3px solid $focus; }

QComboBox { background: $paper; border: 1px solid $edge; border-radius: 8px; padding: 5px 12px; min-height: 24px; }
QComboBox:focus { border: 3px solid $focus; padding: 3px 10px; }
QComboBox:disabled { background: $still; color: $off; }
QComboBox::drop-down { border: none; width: 26px; }
QComboBox::down-arrow { image: none; width: 0; height: 0; }
QLineEdit[fixed="true"], QComboBox[fixed="true"] { background: #f5f7f9; color: $ink; border: 1px solid $line; }
QComboBox QLineEdit, QComboBox QLineEdit:focus { border: none; padding: 0; background: transparent; }
QAbstractItemView { background: $paper; border: 1px solid $edge; outline: none;
                    selection-background-color: $current; selection-color: $ink; }
QComboBox QAbstractItemView::item { min-height: 44px; padding: 0 10px; }

QCheckBox { spacing: 8px; padding: 4px 6px; border: 2px solid transparent; border-radius: 6px; }
QCheckBox:focus { border-color: $focus; }
QCheckBox::indicator { width: 18px; height: 18px; }

QPushButton { background: $paper; border: 1px solid $edge; border-radius: 8px; padding: 8px 16px; }
QPushButton:hover { background: #f5f8fa; }
QPushButton:focus { border: 3px solid $focus; padding: 6px 14px; }
QPushButton:pressed { background: $cap; }
QPushButton:checked { background: $night; border-color: $night; color: $paper; }
QPushButton:checked:focus { border-color: $lit; }
QPushButton:disabled { color: $off; background: $still; border-color: $line; }
QPushButton[role="main"] { background: $focus; border-color: $focus; color: $paper; font-weight: 700; }
QPushButton[role="main"]:focus { border-color: $net; }
QPushButton[role="main"]:disabled { color: $off; background: $still; border-color: $line; }
QPushButton[role="stop"] { background: $alarm; border-color: $alarm; color: $paper; font-weight: 700; }
QPushButton[role="stop"]:focus { border-color: $net; }

QPushButton[role="answer"]:focus { background: $focus; border: 1px solid $focus; color: $paper; font-weight: 700; padding: 8px 16px; }
QPushButton[role="segment"] { border: none; border-radius: 0; padding: 4px 12px; font-size: 14px; min-width: 20px; }
QPushButton[role="segment"]:checked { background: $night; color: $paper; }
QPushButton[role="segment"][end="first"] { border-top-right-radius: 5px; border-bottom-right-radius: 5px; }
QPushButton[role="segment"][end="last"] { border-top-left-radius: 5px; border-bottom-left-radius: 5px; }
QPushButton[role="segment"]:focus { border: 2px solid $focus; padding: 2px 10px; }
QPushButton[role="segment"]:checked:focus { border: 3px solid $lit; padding: 1px 9px; }
QPushButton[role="segment"]:disabled { color: $off; }
QWidget[role="segments"] { background: $paper; border: 1px solid $edge; border-radius: 6px; }
QFrame[role="divider"] { background: $edge; border: none; max-width: 1px; min-width: 1px; }

QFrame[role="grid"] { background: $paper; border: 1px solid #c8d1d9; border-radius: 8px; }
QFrame[role="grid"][lit="true"] { border: 2px solid $focus; }
QFrame[role="matches"] { background: $paper; border: 2px solid $focus; border-radius: 8px; }
QFrame[role="matches"] QLabel { color: $quiet; font-size: 14px; padding: 4px 10px; border-top: 1px solid $line; }
QWidget[role="tiles"], QScrollArea[role="tiles"] { background: $paper; border: none; }
QTableView { border: none; background: transparent; gridline-color: transparent; font-size: 17px;
             selection-background-color: $current; selection-color: $ink; }
QTableView:focus { border: none; }
QTableView[role="sheet"] { border: 2px solid #c8d1d9; border-radius: 8px; background: $paper; font-size: 16px; }
QTableView[role="sheet"]:focus { border: 2px solid $focus; }
QTableView[role="sheet"]::item { border-bottom: 1px solid #e6ebf0; padding: 0 8px; }
QTableView[role="matches"] { border: none; background: $paper; font-size: 18px; }
QTableView[role="matches"]::item { border-bottom: 1px solid #e6ebf0; padding: 0 8px; }
QHeaderView { background: $strip; border: none; }
QHeaderView::section { background: $strip; border: none; padding: 4px 10px 4px 0; font-size: 14px; font-weight: 700; color: $slate; }
QTableCornerButton::section { background: $strip; border: none; }
QScrollBar:vertical { background: transparent; width: 12px; margin: 2px; }
QScrollBar::handle:vertical { background: $edge; border-radius: 4px; min-height: 28px; }
QScrollBar:horizontal { background: transparent; height: 12px; margin: 2px; }
QScrollBar::handle:horizontal { background: $edge; border-radius: 4px; min-width: 28px; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }

QScrollArea[role="paper"] { border: 3px solid #c9d1d8; background: #c9d1d8; }
QScrollArea[role="paper"]:focus { border-color: $focus; }
QTextBrowser[role="helppage"] { border: 2px solid transparent; border-radius: 8px; background: $paper; }
QTextBrowser[role="helppage"]:focus { border-color: $focus; }
QWidget[role="aside"] { background: $paper; border-right: 1px solid $line; }
QFrame[role="net"] { background: $net; border-radius: 10px; }
QFrame[role="net"] QLabel { color: #cfd6dc; font-size: 16px; }
QFrame[role="net"] QLabel[role="netfigure"] { color: $paper; font-size: 56px; font-weight: 700; }
QFrame[role="change"] { background: #e7f3ec; border-radius: 10px; }
QFrame[role="change"] QLabel[role="changefigure"] { color: #12613a; font-size: 56px; font-weight: 700; }
QFrame[role="change"][short="true"] { background: #fbe9e7; }
QFrame[role="change"][short="true"] QLabel[role="changefigure"] { color: $alarm; }

QWidget[role="keys"] { background: $strip; border-top: 1px solid #c8d1d9; }

QWidget[role="entries"] { background: $strip; }
QPushButton[role="entry"] { border: none; border-radius: 6px; background: transparent; padding: 6px 12px; text-align: left; }
QPushButton[role="entry"]:hover { background: $cap; }
QPushButton[role="entry"]:focus { border: 3px solid $focus; padding: 3px 9px; }
QPushButton[role="entry"]:checked { background: $night; color: $paper; font-weight: 700; }
QPushButton[role="entry"]:checked:focus { border: 3px solid $lit; }

QPushButton[role="key"] { border: 1px solid #c8d1d9; border-radius: 6px; padding: 0; }
QPushButton[role="tool"] { padding: 0; }
QPushButton[role="pay"] { padding: 0; }
QPushButton[role="pay"]:checked { background: $focus; border-color: $focus; }
QPushButton[role="pay"]:disabled { background: $still; }
QPushButton[role="save"] { background: $save; border: 1px solid $save; border-radius: 10px; padding: 0; }
QPushButton[role="save"]:hover { background: #166b3c; }
QPushButton[role="save"]:disabled { background: $still; border-color: $line; }
QPushButton[role="key"]:focus, QPushButton[role="tool"]:focus { border: 3px solid $focus; padding: 0; }
QPushButton[role="pay"]:focus, QPushButton[role="save"]:focus { border: 3px solid $net; padding: 0; }
QPushButton[role="headbutton"] { background: transparent; border: 1px solid #4a6379; border-radius: 6px; color: #dce2e6; padding: 4px 12px; }
QPushButton::menu-indicator { image: none; width: 0; }
QPushButton[role="headtext"] { background: transparent; border: none; color: #dce2e6; padding: 0; }
QPushButton[role="headtext"]:hover { color: $paper; }
QPushButton[role="headtext"]:focus { border: 2px solid $paper; border-radius: 6px; padding: 2px; }
QPushButton[role="headbutton"]:hover { background: #24455f; }
QPushButton[role="headbutton"]:focus { border: 2px solid $paper; padding: 3px 11px; }
QMenu { background: $paper; border: 1px solid $edge; padding: 4px; font-size: 15px; }
QMenu::item { padding: 6px 20px; border-radius: 6px; }
QMenu::item:selected { background: $current; }

QWidget[role="card"] { background: $paper; border-radius: 12px; }
QFrame[role="keypad"] { background: $night; border: 2px solid $paper; border-radius: 12px; }
QPushButton[role="padkey"] { font-size: 22px; font-weight: 700; padding: 0; }
QPushButton[role="padcontrol"] { font-size: 18px; padding: 0; background: $cap; }
QPushButton[role="padenter"] { font-size: 16px; font-weight: 700; padding: 0; background: $save; border-color: $save; color: $paper; }
QPushButton[role="padkey"]:pressed, QPushButton[role="padcontrol"]:pressed { background: $current; }
QFrame[role="rule"] { background: $line; border: none; max-height: 1px; min-height: 1px; }
QToolTip { background: $net; color: $paper; border: none; padding: 4px; }
)";

// Mnemonics are not underlined: underlining one letter of an Arabic word breaks its joining.
class HouseStyle : public QProxyStyle {
  public:
    HouseStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}
    // The style sheet shows the focus, so the frame of the base style is left out.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element != PE_FrameFocusRect) QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override {
        if (hint == SH_UnderlineShortcut) return 0;
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

void restyle(QWidget* widget) {
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
}

}  // namespace

QString style_sheet(double unit) {
    const std::pair<const char*, const char*> names[] = {
        {"$night", colour::night}, {"$net", colour::net},
        {"$ink", colour::ink},     {"$slate", colour::slate},
        {"$quiet", colour::quiet}, {"$off", colour::off},
        {"$paper", colour::paper}, {"$background", colour::background},
        {"$strip", colour::strip}, {"$cap", colour::cap},
        {"$line", colour::line},   {"$edge", colour::edge},
        {"$focus", colour::focus}, {"$current", colour::current},
        {"$alarm", colour::alarm}, {"$still", colour::still},
        {"$save", colour::save},   {"$lit", colour::lit},
    };
    QString text = QString::fromLatin1(sheet);
    for (const auto& [name, value] : names) {
        text.replace(QRegularExpression(QRegularExpression::escape(name) + "\\b"), value);
    }
    QString scaled;
    static const QRegularExpression measure(R"((\d+)px)");
    qsizetype from = 0;
    for (auto found = measure.globalMatch(text); found.hasNext();) {
        const auto match = found.next();
        scaled += text.mid(from, match.capturedStart() - from);
        scaled += QString::number(std::lround(match.captured(1).toDouble() * unit)) + "px";
        from = match.capturedEnd();
    }
    return scaled + text.mid(from);
}

void apply_style(QApplication& application, const QSize& screen) {
    const double unit = std::clamp(std::min(screen.width() / 1366.0, screen.height() / 768.0), 1.0, 4.0);
    application.setLayoutDirection(Qt::RightToLeft);
    application.setStyle(new HouseStyle);
    QFont font;
    // The Arabic font has no tabular Western figures; those of Noto Sans are all one width.
    font.setFamilies({"Noto Sans Arabic", "Noto Sans", "DejaVu Sans"});
    font.setPixelSize(static_cast<int>(std::lround(base_font * unit)));
    font.setHintingPreference(QFont::PreferNoHinting);
    application.setFont(font);
    // The selection in a list's own field, which the style sheet does not reach.
    QPalette palette = application.palette();
    palette.setColor(QPalette::Highlight, QColor(colour::focus));
    palette.setColor(QPalette::HighlightedText, QColor(colour::paper));
    application.setPalette(palette);
    application.setStyleSheet(style_sheet(unit));
}

int px(double measure) {
    return static_cast<int>(std::lround(measure * QApplication::font().pixelSize() / base_font));
}

void set_role(QWidget* widget, const char* role) {
    widget->setProperty("role", role);
    widget->setAttribute(Qt::WA_StyledBackground);
    restyle(widget);
}

void set_state(QWidget* widget, const char* property, bool value) {
    widget->setProperty(property, value);
    restyle(widget);
    for (QLabel* part : widget->findChildren<QLabel*>())
        restyle(part);
}

}  // namespace ui

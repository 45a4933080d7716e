// Every pair of writing and background that the style sheet makes can be read.
#include "ui/widgets/contrast.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QMap>
#include <QRegularExpression>
#include <QStringList>

#include "ui/widgets/colours.h"
#include "ui/widgets/style.h"

namespace {

struct Rule {
    QString selector;
    QString colour;
    QString background;
};

QString declared(const QString& body, const QString& property) {
    const QRegularExpression found("(?:^|;|\\s)" + property + ":\\s*([^;]+);?");
    return found.match(body).captured(1).trimmed();
}

std::vector<Rule> rules() {
    std::vector<Rule> all;
    static const QRegularExpression rule(R"(([^{}]+)\{([^}]*)\})");
    const QString sheet = ui::style_sheet(1);
    for (auto found = rule.globalMatch(sheet); found.hasNext();) {
        const auto match = found.next();
        for (const QString& selector : match.captured(1).split(',')) {
            all.push_back({selector.trimmed(), declared(match.captured(2), "color"),
                           declared(match.captured(2), "background")});
        }
    }
    return all;
}

// What lies behind a text whose rule has no background of its own: that of the box it stands in, or of its
// base rule, or what every card and screen is made of.
QStringList backgrounds_of(const Rule& rule, const QMap<QString, QString>& backgrounds) {
    static const QStringList on_the_head = {"headbutton", "headtext", "ticker"};
    for (const QString& role : on_the_head) {
        if (rule.selector.contains('"' + role + '"')) return {ui::colour::night};
    }
    if (!rule.background.isEmpty() && rule.background != "transparent") return {rule.background};
    const QString box = rule.selector.section(' ', 0, 0);
    if (rule.selector.contains(' ') && backgrounds.contains(box)) return {backgrounds[box]};
    const QString base = rule.selector.section(':', 0, 0);
    if (base != rule.selector && backgrounds.contains(base)) return {backgrounds[base]};
    return {ui::colour::paper, ui::colour::background};
}

TEST(Contrast, OfEveryRuleOfTheStyleSheet) {
    QMap<QString, QString> backgrounds;
    for (const Rule& rule : rules()) {
        if (!rule.background.isEmpty()) backgrounds[rule.selector] = rule.background;
    }
    int pairs = 0;
    for (const Rule& rule : rules()) {
        if (rule.colour.isEmpty()) continue;
        for (const QString& background : backgrounds_of(rule, backgrounds)) {
            ASSERT_TRUE(QColor::isValidColorName(rule.colour)) << rule.selector.toStdString();
            ASSERT_TRUE(QColor::isValidColorName(background)) << rule.selector.toStdString();
            EXPECT_GE(ui::contrast(QColor(rule.colour), QColor(background)), ui::readable_contrast)
                << rule.selector.toStdString() << " " << rule.colour.toStdString() << " on "
                << background.toStdString();
            ++pairs;
        }
    }
    EXPECT_GT(pairs, 30);
}

// What is drawn without the style sheet.
TEST(Contrast, OfWhatIsDrawnByHand) {
    namespace c = ui::colour;
    const std::pair<const char*, const char*> drawn[] = {
        {c::quiet, c::paper}, {c::quiet, c::strip},   {c::quiet, c::current}, {c::ink, c::current},
        {c::alarm, c::paper}, {c::alarm, c::current}, {c::slate, c::cap},     {c::slate, c::paper},
        {c::hint, c::paper},  {c::slate, c::current}, {c::off, c::still},     {c::off, c::cap},
        {c::off, c::paper},   {c::paper, c::focus},   {c::paper, c::warning}, {c::paper, c::alarm},
        {c::paper, c::save},
    };
    for (const auto& [text, background] : drawn) {
        EXPECT_GE(ui::contrast(QColor(text), QColor(background)), ui::readable_contrast)
            << text << " on " << background;
    }
}

}  // namespace

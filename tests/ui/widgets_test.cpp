// The widgets that every screen is made of: the contrast of their colours, typing into a number field, and
// the guard of actions.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMouseEvent>
#include <QPushButton>
#include <QRegularExpression>
#include <QTimer>
#include <new>
#include <system_error>
#include <thread>

#include "database/error.h"
#include "play/inspection.h"
#include "support/services.h"
#include "ui/signin/waiting_window.h"
#include "ui/widgets/colours.h"
#include "ui/widgets/column_menu.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/guard.h"
#include "ui/widgets/list_model.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/style.h"
#include "ui/widgets/text.h"

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

// The possible backgrounds of a rule's text: its own, that of the box around it or of its base rule, or those
// of cards and screens.
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

// Colours that are painted without the style sheet.
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

void mouse(QWidget& field, QEvent::Type type, const QPointF& at) {
    QMouseEvent event(type, at, field.mapToGlobal(at), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&field, &event);
}

void press_key(QWidget& field, int key, const QString& text) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&field, &event);
}

// Typing 10 replaces 0.00 wherever the field was clicked.
TEST(AmountField, WhatIsTypedAfterAClickReplacesTheAmount) {
    for (const int at : {2, 60, 118}) {
        SCOPED_TRACE(at);
        QWidget window;
        auto* entry = new QLineEdit(&window);  // has the focus before
        auto* field = new ui::AmountField("discount_percent", &window);
        field->setGeometry(0, 40, 120, 40);
        field->setText("0.00");
        window.show();
        window.activateWindow();
        QApplication::processEvents();
        entry->setFocus();
        field->setFocus(Qt::MouseFocusReason);
        mouse(*field, QEvent::MouseButtonPress, QPointF(at, 20));
        mouse(*field, QEvent::MouseButtonRelease, QPointF(at, 20));
        press_key(*field, Qt::Key_1, "1");
        press_key(*field, Qt::Key_0, "0");
        EXPECT_EQ(field->text().toStdString(), "10");

        // A second click sets the cursor, so that one digit can be corrected.
        mouse(*field, QEvent::MouseButtonPress, QPointF(118, 20));
        mouse(*field, QEvent::MouseButtonRelease, QPointF(118, 20));
        EXPECT_FALSE(field->hasSelectedText());
    }
}

TEST(Guard, SaysWhatWentWrongInTheCashiersWords) {
    using database::Error;
    const struct {
        Error error;
        std::string_view words;
    } cases[] = {
        {Error("08S01", "Communication link failure", "select 1"), database::message::connection_lost},
        {Error("08001", "SQL Server does not exist or access denied.", ""),
         database::message::connection_lost},
        {Error("HYT00", "Timeout expired", "select 1"), database::message::timed_out},
        {Error("HY000", "database or disk is full", "insert", Error::Kind::disk_full),
         database::message::disk_full},
        {Error("HY000", "attempt to write a readonly database", "insert", Error::Kind::read_only),
         database::message::read_only},
        {Error("HYT00", "database is locked", "insert", Error::Kind::busy), database::message::busy},
        {Error("40001", "the row was changed", "update"), database::message::changed_meanwhile},
        {Error("HY000", "database disk image is malformed", "insert", Error::Kind::file_damaged),
         database::message::damaged},
        {Error("28000", "Login failed for user 'sa'.", ""), database::message::login_refused},
        {Error("42000", "syntax error", "selec"), database::message::see_log},
    };
    for (const auto& [error, words] : cases) {
        test::RememberedServices services;
        const bool done = ui::guarded(services.all(), "Action", [&] { throw error; });
        EXPECT_FALSE(done);
        EXPECT_EQ(services.prompts.last(), "لم تتم العملية\n" + std::string(words)) << error.what();
        ASSERT_EQ(services.log.lines.size(), 1U);
        EXPECT_NE(services.log.lines[0].find(error.what()), std::string::npos);
        EXPECT_NE(services.log.lines[0].find(error.statement()), std::string::npos);
    }
}

TEST(Guard, OutlivesErrorsOfOtherKinds) {
    test::RememberedServices services;
    EXPECT_FALSE(ui::guarded(services.all(), "Action", [] { throw std::bad_alloc(); }));
    EXPECT_EQ(services.prompts.last(), "لم تتم العملية\nالسبب مسجل في سجل البرنامج");
    for (const auto& [number, words] : {std::pair{ENOSPC, database::message::disk_full},
                                        std::pair{EROFS, database::message::may_not_write}}) {
        EXPECT_FALSE(ui::guarded(services.all(), "Action",
                                 [&] { throw std::system_error(number, std::generic_category(), "file"); }));
        EXPECT_EQ(services.prompts.last(), "لم تتم العملية\n" + std::string(words));
    }
    EXPECT_TRUE(ui::guarded(services.all(), "Action", [] {}));
    EXPECT_EQ(services.prompts.messages.size(), 3U);
}

// Sentences with negative figures, as boxes, labels and lists set them.
TEST(Sentence, HasEveryMinusLeftOfItsNumber) {
    const QStringList texts = {
        "الفرق -1234.50",
        "تم بدء وردية جديدة .. رصيد الخزينه -- درج 1 : -12.00 -- صفر أو أقل لم يتم تحويل النقديه منها",
        "الصنف : شاي\nالرصيد : -3\nالمطلوب : 2",
        "سعر الصنف (-5.25) أقل من التكلفة",
        "زيادة 5.00 · عجز -7.50 · الصافي -2.50",
        "وردية 2026/11/21 · الفرق -3%",
        "-0.75",
    };
    for (const QString& text : texts) {
        EXPECT_FALSE(play::minus_stands_left(text, Qt::RightToLeft)) << text.toStdString();
        EXPECT_TRUE(play::minus_stands_left(ui::sentence(text), Qt::RightToLeft)) << text.toStdString();
        const ui::MessageBox box(nullptr, text, common::Icon::none);
        EXPECT_TRUE(play::minus_stands_left(box.findChild<QLabel*>("message_text")->text(), Qt::RightToLeft))
            << text.toStdString();
        ui::ListModel list({"البيان"}, nullptr);
        list.replace({QStringList{text}});
        EXPECT_TRUE(play::minus_stands_left(list.index(0, 0).data().toString(), Qt::RightToLeft));
    }
    const QString untouched = "من 2026-11-20 إلى 2026-11-21، ملف a-1.csv، 10-3، COM-1 -";
    EXPECT_EQ(ui::sentence(untouched), untouched);
}

TEST(Sheet, LeavesTheFocusBelowEvenIfNothingHadIt) {
    QWidget window;
    QLineEdit field(&window);
    window.show();
    window.activateWindow();
    QApplication::processEvents();
    field.clearFocus();
    ASSERT_EQ(QApplication::focusWidget(), nullptr);
    ui::MessageBox box(&window, "?", common::Icon::none);
    QTimer::singleShot(0, [&] { box.leave(1); });
    EXPECT_EQ(box.run(), 1);
    EXPECT_EQ(QApplication::focusWidget(), &window);
}

// The caption of the marked button is bold; it was cut at both ends.
TEST(MessageBox, HasRoomForEveryCaptionInBold) {
    ui::MessageBox box(nullptr, "?", common::Icon::none);
    box.offer("موافقة المشرف على هذا العمل");
    const auto* offer = box.findChild<QPushButton*>("message_offer");
    QFont bold = offer->font();
    bold.setBold(true);
    EXPECT_GE(offer->minimumWidth(), QFontMetrics(bold).horizontalAdvance(offer->text()) + 2 * ui::px(16));
}

// The first column stands on the right, where its entry is painted and answers to the mouse.
TEST(ColumnMenu, RunsFromRightToLeft) {
    ui::ColumnMenu menu(nullptr);
    menu.setLayoutDirection(Qt::RightToLeft);
    menu.setStyleSheet("QMenu::item { padding: 20px; } QMenu::item:selected { background: #ff0000; }");
    int taken = -1;
    for (int at = 0; at < 40; ++at)
        QObject::connect(menu.addAction("entry"), &QAction::triggered, [&taken, at] { taken = at; });
    menu.popup({});
    const QRect first = menu.actionGeometry(menu.actions().front());
    const QRect last = menu.actionGeometry(menu.actions().back());
    ASSERT_GT(last.left(), first.right()) << "one column";
    const QPoint there(menu.width() - 1 - first.center().x(), first.center().y());
    menu.setActiveAction(menu.actions().front());
    EXPECT_EQ(menu.grab().toImage().pixelColor(there + QPoint(0, 15)), QColor(Qt::red));
    for (const auto type : {QEvent::MouseMove, QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent mouse(type, there, menu.mapToGlobal(there), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&menu, &mouse);
    }
    EXPECT_EQ(taken, 0);
}

// A large shop is copied before its update; the window cannot be left before that.
TEST(CopyingWindow, AppearsOnlyForALongCopyAndPassesItsErrorOn) {
    int shown = 0;
    const auto show = [&shown](QWidget& window) {
        ++shown;
        window.show();
        window.close();
        EXPECT_TRUE(window.isVisible());
    };
    ui::CopyingWindow(show, "heading", "text").run([](const std::function<void(int)>& tell) { tell(100); });
    EXPECT_EQ(shown, 0);
    const auto slow = [](const std::function<void(int)>& tell) {
        tell(50);
        std::this_thread::sleep_for(std::chrono::seconds(1));
        throw std::runtime_error("no room");
    };
    EXPECT_THROW(ui::CopyingWindow(show, "heading", "text").run(slow), std::runtime_error);
    EXPECT_EQ(shown, 1);
}

}  // namespace

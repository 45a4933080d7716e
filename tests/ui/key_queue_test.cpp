// The key queue: typing and scans into a box, an amount field and an entry field.
#include "ui/widgets/key_queue.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWindow>

#include "ui/widgets/fields.h"

namespace {

using ui::KeyQueue;

class Keys : public testing::Test {
  protected:
    void SetUp() override {
        auto* column = new QVBoxLayout(&window_);
        column->addWidget(&entry_);
        column->addWidget(&amount_);
        column->addWidget(&box_);
        box_.setProperty(ui::keys_property, ui::keys_held);
        QObject::connect(&box_, &QLineEdit::returnPressed, [this] { ++answers_; });
        QObject::connect(&entry_, &QLineEdit::returnPressed, [this] {
            entered_ << entry_.text();
            entry_.clear();
        });
        QObject::connect(&queue_, &KeyQueue::scan_waiting, [this] { ++scans_; });
        window_.show();
        window_.activateWindow();
        QApplication::processEvents();
        ASSERT_NE(QGuiApplication::focusWindow(), nullptr);
    }

    // Sends keys `apart` milliseconds from one another, after a pause; "\r" is Enter.
    void keys(const QString& text, quint64 apart, quint64 pause = 2000) {
        time_ += pause;
        for (const QChar character : text) {
            send(character == '\r' ? int(Qt::Key_Return) : int(character.toUpper().unicode()), character);
            time_ += apart;
        }
    }
    void send(int key, const QString& text, Qt::KeyboardModifiers modifiers = {}) const {
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        press.setTimestamp(time_);
        QCoreApplication::sendEvent(QGuiApplication::focusWindow(), &press);
    }
    void focus(QWidget& widget) {
        widget.setFocus();
        QApplication::processEvents();
    }

    quint64 time_ = 10000;
    int answers_ = 0;
    int scans_ = 0;
    QStringList entered_;
    QWidget window_;
    QLineEdit entry_;
    ui::AmountField amount_{"amount"};
    QLineEdit box_;
    KeyQueue queue_;
};

TEST_F(Keys, AScanBehindABoxWaitsAndIsEnteredInOrder) {
    focus(box_);
    keys("111\r222\r", 5);
    EXPECT_EQ(answers_, 0);
    EXPECT_TRUE(box_.text().isEmpty());
    EXPECT_FALSE(queue_.idle());
    focus(entry_);
    EXPECT_EQ(entered_, (QStringList{"111", "222"}));
    EXPECT_TRUE(queue_.idle());
}

TEST_F(Keys, OnlyAnEnterThatComesAloneAnswersABox) {
    focus(entry_);
    keys("9\r", 60);
    focus(box_);
    keys("\r", 0, 50);  // bounce of the key that opened the box
    keys("\r", 0, 50);
    EXPECT_EQ(answers_, 0);
    keys("\r", 0, KeyQueue::answer_gap_ms);
    EXPECT_EQ(answers_, 1);
    keys("12\r", 300);  // typed without looking: dropped with the Enter that ends it
    EXPECT_EQ(answers_, 1);
    keys("\r", 0, KeyQueue::answer_gap_ms);
    EXPECT_EQ(answers_, 2);
    time_ += 60;
    send(Qt::Key_Left, {});
    keys("\r", 0, 40);  // the hand that moved to a button
    EXPECT_EQ(answers_, 3);
    focus(entry_);
    EXPECT_EQ(entered_, QStringList{"9"});
}

// Keys typed for an action that ends in a box are dropped, but a scan after them is kept, even if only a part
// of it has arrived.
TEST_F(Keys, OfKeysThatWaitedForAnActionABoxKeepsTheScans) {
    focus(entry_);
    queue_.hold(true);
    keys("327\r", 200);
    keys("5001\r", 5);
    keys("6229", 5);
    focus(box_);
    queue_.hold(false);
    keys("413\r", 5, 0);
    keys("88", 200, 300);
    QApplication::processEvents();
    EXPECT_EQ(answers_, 0);
    EXPECT_EQ(queue_.waiting_scans(), 2U);
    focus(entry_);
    EXPECT_EQ(entered_, (QStringList{"5001", "6229413"}));
}

// The place of a key decides, whatever the layout types there.
TEST_F(Keys, CtrlAndAltWorkOnEveryLayout) {
    QLineEdit name, file;
    QLabel with_arabic_letter("&حفظ"), with_latin_letter("&CSV");
    with_arabic_letter.setBuddy(&name);
    with_latin_letter.setBuddy(&file);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{&name, &file, &with_arabic_letter, &with_latin_letter})
        window_.layout()->addWidget(widget);
    focus(entry_);
    entry_.setText("77");
    entry_.selectAll();
    send(0x624, "ؤ", Qt::ControlModifier);  // Ctrl+C, Ctrl+V, and Ctrl+1 under Eastern digits
    entry_.clear();
    send(Qt::Key_V, "v", Qt::ControlModifier);
    EXPECT_EQ(entry_.text(), "77");
    send(0x661, "١", Qt::ControlModifier);
    send(0xFEFB, "ﻻ", Qt::ControlModifier);
    send(0xFEFB, "ﻻ", Qt::AltModifier);
    EXPECT_EQ(entry_.text(), "77");
    const std::tuple<int, QString, QLineEdit*> leads[] = {
        {0x62D, "ح", &name}, {0x624, "ؤ", &file}, {Qt::Key_P, "p", &name}, {Qt::Key_C, "c", &file}};
    for (const auto& [key, text, field] : leads) {
        send(key, text, Qt::AltModifier);
        EXPECT_TRUE(field->hasFocus()) << text.toStdString();
    }
    EXPECT_EQ(entry_.text() + name.text() + file.text(), "77");
    send(0xFEFB, "ﻻ");
    EXPECT_EQ(file.text(), "لا");
}

TEST_F(Keys, AnAmountTakesAHandsKeysAndNoScan) {
    focus(amount_);
    amount_.setText("41.50");
    amount_.selectAll();
    keys("6229413700237\r", 5);
    EXPECT_EQ(amount_.text(), "41.50");
    EXPECT_EQ(scans_, 1);
    focus(entry_);
    EXPECT_EQ(entered_, QStringList{"6229413700237"});

    focus(amount_);
    amount_.selectAll();
    keys("1250\r", 60);  // a fast typist
    EXPECT_EQ(amount_.text(), "1250");
    EXPECT_EQ(scans_, 1);
}

TEST_F(Keys, ABurstTooShortForAScanIsANumber) {
    focus(amount_);
    keys("50\r", 5);  // three keys: a hand may be that fast
    EXPECT_EQ(amount_.text(), "50");
    EXPECT_EQ(scans_, 0);
    EXPECT_TRUE(entered_.isEmpty());
}

// Without a window manager, closing another program's window can leave no window active.
TEST_F(Keys, AKeyIsNotLostWhileNoWindowIsActive) {
    focus(entry_);
    QWindow* till = QGuiApplication::focusWindow();
    {
        QWindow other;
        other.show();
        other.requestActivate();
        QApplication::processEvents();
    }
    QApplication::processEvents();
    ASSERT_EQ(QGuiApplication::focusWindow(), nullptr);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_7, Qt::NoModifier, "7");
    QCoreApplication::sendEvent(till, &press);
    EXPECT_EQ(entry_.text(), "7");
}

}  // namespace

// What a click into a field for amounts leaves for the keys that follow.
#include "ui/widgets/fields.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace {

void mouse(QWidget& field, QEvent::Type type, const QPointF& at) {
    QMouseEvent event(type, at, field.mapToGlobal(at), Qt::LeftButton,
                      type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&field, &event);
}

void press_key(QWidget& field, int key, const QString& text) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&field, &event);
}

// A discount of 10 is typed into a field that was clicked, wherever the click fell.
TEST(AmountField, WhatIsTypedAfterAClickReplacesTheAmount) {
    for (const int at : {2, 60, 118}) {
        SCOPED_TRACE(at);
        QWidget window;
        auto* entry = new QLineEdit(&window);  // where the focus is before
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

        // A second click sets the cursor, so that one digit can be mended.
        mouse(*field, QEvent::MouseButtonPress, QPointF(118, 20));
        mouse(*field, QEvent::MouseButtonRelease, QPointF(118, 20));
        EXPECT_FALSE(field->hasSelectedText());
    }
}

}  // namespace

// What a till for touch needs: a keypad that keeps out of the way, and sounds that stop nobody.
#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QThread>
#include <cstdlib>
#include <fstream>

#include "support/shop.h"
#include "ui/widgets/fields.h"
#include "ui/widgets/pad.h"
#include "ui/widgets/screen_choice.h"
#include "ui/widgets/sounds.h"
#include "ui/widgets/style.h"

namespace {

// Wherever the field is, and on every page, the pad leaves it free and within the window; its keys are at
// least 56 pixels. The figures leave the change free as well.
TEST(Keypad, NeverCoversTheFieldThatItTypesInto) {
    QFont font;
    font.setPixelSize(16);
    QApplication::setFont(font);
    QWidget window;
    window.resize(1024, 768);
    auto* field = new QLineEdit(&window);
    QWidget change(&window);
    change.setProperty(ui::read_property, true);
    change.setGeometry(294, 220, 716, 110);
    window.show();
    ui::Pad pad(&window, [] {});
    pad.show();
    for (const char* page : {"123", "أبت", "abc"}) {
        if (auto* to = pad.findChild<QPushButton*>(QString("pad_") + page)) to->click();
        for (int y = 0; y <= 720; y += 90) {
            for (int x = 0; x <= 824; x += 103) {
                field->setGeometry(x, y, 200, 46);
                pad.make_way_for(field);
                EXPECT_FALSE(pad.geometry().intersects(field->geometry())) << page << ' ' << x << ' ' << y;
                const bool is_free = !pad.geometry().intersects(change.geometry());
                EXPECT_TRUE(is_free || page != std::string("123")) << x << ' ' << y;
                EXPECT_TRUE(window.rect().contains(pad.geometry())) << page << ' ' << x << ' ' << y;
            }
        }
        for (const auto* key : pad.findChildren<QPushButton*>())
            EXPECT_GE(std::min(key->width(), key->height()), ui::px(56)) << key->objectName().toStdString();
    }
    // Nor, for long, rows that come to stand below it.
    pad.begin();
    pad.make_way_for(field);
    QListWidget below(&window);
    for (int row = 0; row < 9; ++row)
        below.addItem("row");
    below.setGeometry(pad.geometry().adjusted(60, 60, -60, -60));
    below.show();
    pad.make_way_for(field);
    EXPECT_FALSE(pad.geometry().intersects(below.geometry()));
}

// A sound card that is a file gets the tone: 1320 Hz for 0.06 s are 79 waves. Without one, or without the
// choice, nothing happens and nobody waits.
TEST(Sounds, AreHeardOnlyWhereChosen) {
    const test::TemporaryFolder folder;
    const auto heard = folder.path() / "heard.raw";
    std::ofstream(folder.path() / "card.conf") << "pcm.!default { type file file \"" << heard.string()
                                               << "\" format \"raw\" slave.pcm { type null } }\n";
    setenv("ALSA_CONFIG_PATH", (folder.path() / "card.conf").c_str(), 1);
    ui::ScreenChoice choice;
    ui::Sounds sounds(choice);
    const auto samples = [&] {
        std::vector<std::int16_t> read;
        std::ifstream stream(heard, std::ios::binary);
        for (std::int16_t one; stream.read(reinterpret_cast<char*>(&one), sizeof one);)
            read.push_back(one);
        return read;
    };
    sounds.play(ui::Sound::taken);
    choice.sounds = true;
    QElapsedTimer time;
    time.start();
    sounds.play(ui::Sound::taken);
    EXPECT_LT(time.elapsed(), 20);
    constexpr std::size_t whole = 2646;  // 44100 × 0.06
    for (time.start(); samples().size() < whole && time.elapsed() < 3000;)
        QThread::msleep(10);
    const auto tone = samples();
    if (tone.empty()) GTEST_SKIP() << "this machine has no sound library";
    EXPECT_GE(tone.size(), whole);
    EXPECT_LT(tone.size(), 2 * whole);  // one tone: the one before the choice was not played
    int waves = 0;
    for (std::size_t at = 1; at < whole; ++at)
        waves += tone[at - 1] < 0 && tone[at] >= 0 ? 1 : 0;
    EXPECT_NEAR(waves, 79, 1);

    setenv("ALSA_CONFIG_PATH", "/nowhere", 1);
    ui::Sounds mute(choice);
    mute.play(ui::Sound::refused);
    QThread::msleep(50);
}

}  // namespace

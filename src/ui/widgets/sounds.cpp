#include "ui/widgets/sounds.h"

#include <dlfcn.h>

#include <QApplication>
#include <QEvent>
#include <cmath>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <numbers>
#include <optional>
#include <thread>
#include <vector>

#include "ui/widgets/message_box.h"
#include "ui/widgets/screen_choice.h"

namespace ui {

namespace {

constexpr unsigned rate = 44100;

struct Tone {
    double hertz;
    double seconds;
};

std::vector<Tone> tones_of(Sound sound) {
    switch (sound) {
        case Sound::taken:
            return {{1320, 0.06}};
        case Sound::refused:
            return {{220, 0.28}};
        case Sound::question:
            return {{660, 0.1}, {880, 0.12}};
    }
    return {};
}

std::vector<std::int16_t> samples_of(const std::vector<Tone>& tones) {
    constexpr double loudness = 9000;
    constexpr double edge = 0.006;  // swells and fades, or it would click
    std::vector<std::int16_t> samples;
    for (const Tone& tone : tones) {
        const auto count = static_cast<unsigned>(tone.seconds * rate);
        for (unsigned at = 0; at < count; ++at) {
            const double from_start = double(at) / rate;
            const double to_end = double(count - at) / rate;
            const double swell = std::min({1.0, from_start / edge, to_end / edge});
            const double wave = std::sin(2 * std::numbers::pi * tone.hertz * from_start);
            samples.push_back(static_cast<std::int16_t>(loudness * swell * wave));
        }
    }
    return samples;
}

// Drops the library's complaints about a machine without sound.
void say_nothing(const char*, int, const char*, int, const char*, ...) {}

// The system's sound library, which a till need not have.
class SoundLibrary {
  public:
    SoundLibrary() : library_(dlopen("libasound.so.2", RTLD_NOW)) {
        if (library_ == nullptr) return;
        find(open_, "snd_pcm_open");
        find(set_params_, "snd_pcm_set_params");
        find(write_, "snd_pcm_writei");
        find(drain_, "snd_pcm_drain");
        find(close_, "snd_pcm_close");
        void (*be_quiet)(void (*)(const char*, int, const char*, int, const char*, ...)) = nullptr;
        find(be_quiet, "snd_lib_error_set_handler");
        if (be_quiet != nullptr) be_quiet(say_nothing);
    }

    // Returns when the samples have sounded, or at once without a sound card.
    void play(const std::vector<std::int16_t>& samples) const {
        constexpr int playback = 0;
        constexpr int signed_16_bits = 2;
        constexpr int interleaved = 3;
        constexpr unsigned latency_us = 60000;
        if (!open_ || !set_params_ || !write_ || !drain_ || !close_) return;
        void* device = nullptr;
        if (open_(&device, "default", playback, 0) < 0) return;
        if (set_params_(device, signed_16_bits, interleaved, 1, rate, 1, latency_us) >= 0 &&
            write_(device, samples.data(), samples.size()) >= 0)
            drain_(device);
        close_(device);
    }

  private:
    template <typename Function>
    void find(Function& function, const char* name) {
        function = reinterpret_cast<Function>(dlsym(library_, name));
    }

    void* library_;
    int (*open_)(void**, const char*, int, int) = nullptr;
    int (*set_params_)(void*, int, int, unsigned, unsigned, int, unsigned) = nullptr;
    long (*write_)(void*, const void*, unsigned long) = nullptr;
    int (*drain_)(void*) = nullptr;
    int (*close_)(void*) = nullptr;
};

}  // namespace

struct Sounds::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    std::optional<Sound> next;
    bool is_ending = false;

    void work() {
        const SoundLibrary library;
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return next || is_ending; });
            if (is_ending) return;
            const Sound sound = *std::exchange(next, std::nullopt);
            lock.unlock();
            library.play(samples_of(tones_of(sound)));
            lock.lock();
        }
    }
};

Sounds::Sounds(const ScreenChoice& choice) : choice_(choice) {
    qApp->installEventFilter(this);
}

Sounds::~Sounds() {
    qApp->removeEventFilter(this);
    if (shared_ == nullptr) return;
    const std::lock_guard lock(shared_->mutex);
    shared_->is_ending = true;
    shared_->changed.notify_one();
}

void Sounds::play(Sound sound) {
    if (!choice_.sounds) return;
    if (shared_ == nullptr) {
        shared_ = std::make_shared<Shared>();
        // The thread is not joined at the end, because a sound card may hang.
        std::thread([shared = shared_] { shared->work(); }).detach();
    }
    const std::lock_guard lock(shared_->mutex);
    shared_->next = sound;
    shared_->changed.notify_one();
}

bool Sounds::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        if (const auto* box = qobject_cast<const MessageBox*>(watched); box != nullptr && !box->is_news())
            play(box->is_question() ? Sound::question : Sound::refused);
    }
    return false;
}

}  // namespace ui

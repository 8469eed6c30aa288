#include "studio/timeline/player.h"

#include <algorithm>
#include <optional>

namespace flumo::studio {
namespace {

// The nearest frame of the list above `frame`, or below it.
std::optional<int> next_above(const std::vector<int>& frames, int frame) {
    std::optional<int> next;
    for (const int candidate : frames) {
        if (candidate > frame && (!next || candidate < *next)) next = candidate;
    }
    return next;
}

std::optional<int> next_below(const std::vector<int>& frames, int frame) {
    std::optional<int> next;
    for (const int candidate : frames) {
        if (candidate < frame && (!next || candidate > *next)) next = candidate;
    }
    return next;
}

}  // namespace

Player::Player(Document& document, Preview& preview, QObject* parent)
    : QObject(parent), document_(document), preview_(preview) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Player::advance);
    connect(&preview, &Preview::frame_shown, this, [this] {
        if (waits_ && preview_.is_finished()) wait_for_next();
    });
    connect(&preview, &Preview::frame_failed, this, [this] { set_playing(false); });
    connect(&document, &Document::replaced, this, [this] { set_playing(false); });
}

void Player::set_playing(bool playing) {
    if (playing == playing_ || (playing && document_.scene().frames->size() < 2)) return;
    playing_ = playing;
    waits_ = false;
    timer_.stop();
    preview_.set_playing(playing);
    emit playing_changed(playing);
    if (!playing) return;
    since_change_.start();
    if (document_.current_frame() >= document_.last_frame()) {
        show(document_.first_frame());
    } else {
        waits_ = true;
        if (preview_.is_finished()) wait_for_next();
    }
}

// The rest of the frame's time; what rendering took is part of it.
void Player::wait_for_next() {
    waits_ = false;
    const host::FrameRate& rate = *document_.scene().rate;
    const qint64 period = 1000LL * rate.den / rate.num;
    timer_.start(static_cast<int>(std::max<qint64>(0, period - since_change_.elapsed())));
}

void Player::advance() {
    auto next = next_above(*document_.scene().frames, document_.current_frame());
    if (!next && loops_) next = document_.first_frame();
    if (next) {
        show(*next);
    } else {
        set_playing(false);
    }
}

void Player::show(int frame) {
    since_change_.start();
    waits_ = true;
    document_.set_current_frame(frame);
}

void Player::go_to_first() {
    document_.set_current_frame(document_.first_frame());
}

void Player::go_to_last() {
    document_.set_current_frame(document_.last_frame());
}

void Player::step_forward() {
    if (const auto next = next_above(*document_.scene().frames, document_.current_frame()))
        document_.set_current_frame(*next);
}

void Player::step_back() {
    if (const auto next = next_below(*document_.scene().frames, document_.current_frame()))
        document_.set_current_frame(*next);
}

}  // namespace flumo::studio

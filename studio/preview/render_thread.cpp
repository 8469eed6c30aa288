#include "studio/preview/render_thread.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace flumo::studio {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// A level that takes longer than this is not begun while a control is moving: a frame cannot be left in its
// middle, and the next change would wait for it.
constexpr milliseconds kLongLevel{40};
// How long a control rests before it counts as not moving: half as long as the level takes, within these.
// Mice report every 8 to 16 ms.
constexpr milliseconds kShortRest{80};
constexpr milliseconds kLongRest{1000};

}  // namespace

RenderThread::RenderThread(const scene::ControlCatalog& catalog, host::Host& host, QObject* parent)
    : QObject(parent), renderer_(catalog, host) {
    qRegisterMetaType<ShownFrame>();
    thread_ = std::jthread([this](const std::stop_token& stop) { work(stop); });
}

RenderThread::~RenderThread() {
    thread_.request_stop();
    thread_.join();
}

void RenderThread::submit(FrameOrder order) {
    const std::lock_guard lock(mutex_);
    next_ = std::move(order);
    changed_.notify_all();
}

void RenderThread::reload_layers() {
    const std::lock_guard lock(mutex_);
    reload_ = true;
}

void RenderThread::work(const std::stop_token& stop) {
    for (;;) {
        FrameOrder order;
        {
            std::unique_lock lock(mutex_);
            if (!changed_.wait(lock, stop, [this] { return next_.has_value(); })) return;
            order = *std::exchange(next_, std::nullopt);
            if (std::exchange(reload_, false)) renderer_.forget_layers();
        }
        try {
            serve(order, stop);
        } catch (const std::exception& error) {
            emit frame_failed(order.number, QString::fromUtf8(error.what()));
        }
    }
}

void RenderThread::serve(const FrameOrder& order, const std::stop_token& stop) {
    if (order.world) {
        show(order, order.finest, order.world);
        return;
    }
    milliseconds expected{0};
    for (int divisor = order.coarsest; divisor >= order.finest; divisor /= 2) {
        const bool is_first = divisor == order.coarsest;
        if (!is_first && !stays_newest(expected, stop)) return;
        const auto begun = Clock::now();
        const auto given_up = [&] {
            if (stop.stop_requested()) return true;
            const std::lock_guard lock(mutex_);
            return !is_first && next_.has_value();
        };
        auto world = renderer_.render(order.state, {order.frame, divisor}, given_up);
        if (!world) return;
        // The next level has four times the pixels.
        expected = 4 * std::chrono::duration_cast<milliseconds>(Clock::now() - begun);
        show(order, divisor, std::move(world));
    }
}

bool RenderThread::stays_newest(milliseconds cost, const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    const milliseconds rest =
        cost > kLongLevel ? std::clamp(cost / 2, kShortRest, kLongRest) : milliseconds(0);
    return !changed_.wait_for(lock, stop, rest, [this] { return next_.has_value(); }) &&
           !stop.stop_requested();
}

void RenderThread::show(const FrameOrder& order, int divisor, std::shared_ptr<const host::World> world) {
    QImage image = display_image(*world, order.channels);
    emit frame_ready({order.number,
                      order.state,
                      {order.frame, divisor},
                      divisor == order.finest,
                      order.channels,
                      std::move(world),
                      std::move(image)});
}

}  // namespace flumo::studio

#include "studio/preview/frame_cache.h"

#include <utility>

namespace flumo::studio {
namespace {

std::size_t bytes_of(const host::World& world) {
    return world.rowbytes() * static_cast<std::size_t>(world.height());
}

}  // namespace

void FrameCache::set_limit(std::size_t bytes) {
    limit_ = bytes;
    drop_over_limit();
}

void FrameCache::put(const SharedState& state, const FramePlace& place,
                     std::shared_ptr<const host::World> world) {
    const Key key{state, place};
    if (const auto found = places_.find(key); found != places_.end()) {
        size_ -= bytes_of(*found->second->world);
        entries_.erase(found->second);
        places_.erase(found);
    }
    size_ += bytes_of(*world);
    entries_.push_front({key, std::move(world)});
    places_.emplace(key, entries_.begin());
    drop_over_limit();
}

std::shared_ptr<const host::World> FrameCache::find(const SharedState& state, const FramePlace& place) {
    const auto found = places_.find({state, place});
    if (found == places_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, found->second);
    return found->second->world;
}

bool FrameCache::contains(const SharedState& state, const FramePlace& place) const {
    return places_.contains({state, place});
}

void FrameCache::clear() {
    places_.clear();
    entries_.clear();
    size_ = 0;
}

void FrameCache::drop_over_limit() {
    while (size_ > limit_ && !entries_.empty()) {
        size_ -= bytes_of(*entries_.back().world);
        places_.erase(entries_.back().key);
        entries_.pop_back();
    }
}

}  // namespace flumo::studio

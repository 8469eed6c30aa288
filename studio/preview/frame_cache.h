// Finished frames in memory, the least recently used ones dropped first.
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <memory>

#include "host/values/world.h"
#include "studio/preview/frame_renderer.h"

namespace flumo::studio {

/// For the UI thread. Frames are kept by state, so that undo finds those of the former look.
class FrameCache {
  public:
    static constexpr std::size_t kDefaultLimit = std::size_t{512} << 20U;

    /// In bytes of pixels; drops what is over it.
    void set_limit(std::size_t bytes);
    std::size_t limit() const { return limit_; }
    std::size_t size() const { return size_; }

    /// A frame larger than the limit is not kept.
    void put(const SharedState& state, const FramePlace& place, std::shared_ptr<const host::World> world);
    /// Null where there is none. The frame counts as used.
    std::shared_ptr<const host::World> find(const SharedState& state, const FramePlace& place);
    bool contains(const SharedState& state, const FramePlace& place) const;
    void clear();

  private:
    struct Key {
        SharedState state;
        FramePlace place;

        auto operator<=>(const Key&) const = default;
    };
    struct Entry {
        Key key;
        std::shared_ptr<const host::World> world;
    };

    void drop_over_limit();

    std::list<Entry> entries_;  ///< the most recently used first
    std::map<Key, std::list<Entry>::iterator> places_;
    std::size_t limit_ = kDefaultLimit;
    std::size_t size_ = 0;
};

}  // namespace flumo::studio

// The host's memory handles: blocks with a master pointer, counted and guarded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "effect_api/types.h"

namespace flumo::host {

struct LiveHandle {
    /// Counted from 1 in the order of creation.
    uint64_t serial = 0;
    uint64_t size = 0;
    int locks = 0;
    PF_Handle handle = nullptr;
};

/// Thread-safe. A disposed handle keeps a null master pointer for a long while, so that a stale copy of
/// it reads as empty. Freed blocks are kept for the next handle of the same size: every frame makes a
/// read-back buffer.
class HandleTable {
  public:
    HandleTable();
    ~HandleTable();
    HandleTable(const HandleTable&) = delete;
    HandleTable& operator=(const HandleTable&) = delete;

    /// A block of `size` bytes with undefined content; null when there is no memory.
    PF_Handle create(uint64_t size);
    /// The block, or null for a handle that does not live.
    void* lock(PF_Handle handle);
    /// False for a handle that does not live or is not locked.
    bool unlock(PF_Handle handle);

    enum class Disposal { kDone, kUnknown, kWasLocked, kOverrun };
    /// Frees the block; a locked or overrun one too. kOverrun: bytes after the block were changed.
    Disposal dispose(PF_Handle handle);
    /// 0 for a handle that does not live.
    uint64_t size(PF_Handle handle) const;
    /// False when the handle does not live, is locked, or memory is short; it then stays as it was.
    bool resize(PF_Handle handle, uint64_t size);

    bool lives(PF_Handle handle) const;
    std::vector<LiveHandle> live() const;
    size_t live_count() const;
    size_t lock_count() const;

  private:
    struct Block;
    Block* find(PF_Handle handle) const;
    std::byte* take_memory(uint64_t size);
    void keep_memory(std::byte* memory, uint64_t size);

    mutable std::mutex mutex_;
    std::unordered_map<void**, std::unique_ptr<Block>> live_;
    std::deque<std::unique_ptr<Block>> disposed_;
    struct Spare {
        std::byte* memory;
        uint64_t size;
    };
    std::vector<Spare> spares_;
    uint64_t next_serial_ = 1;
    size_t locks_ = 0;
};

}  // namespace flumo::host

#include "host/handles.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace flumo::host {

namespace {

constexpr int kGuard = 0xA5;
constexpr size_t kGuardSize = 16;
/// New blocks up to this size hold junk, so that no effect relies on zeros.
constexpr uint64_t kJunkLimit = 4096;
constexpr int kJunk = 0xCD;
/// Freed blocks from this size on are kept, as the system would reclaim their pages.
constexpr uint64_t kSpareMinimum = 65536;
constexpr size_t kSpareCount = 8;
constexpr size_t kRememberedHandles = 1024;

bool guard_intact(const std::byte* memory, uint64_t size) {
    return std::all_of(memory + size, memory + size + kGuardSize,
                       [](std::byte b) { return b == std::byte{kGuard}; });
}

}  // namespace

struct HandleTable::Block {
    void* master = nullptr;
    uint64_t size = 0;
    uint64_t serial = 0;
    int locks = 0;
};

HandleTable::HandleTable() = default;

HandleTable::~HandleTable() {
    for (auto& [handle, block] : live_)
        std::free(block->master);
    for (const Spare& spare : spares_)
        std::free(spare.memory);
}

PF_Handle HandleTable::create(uint64_t size) {
    std::lock_guard guard(mutex_);
    std::byte* memory = take_memory(size);
    if (!memory) return nullptr;
    auto block = std::make_unique<Block>();
    block->master = memory;
    block->size = size;
    block->serial = next_serial_++;
    void** handle = &block->master;
    live_.emplace(handle, std::move(block));
    return handle;
}

void* HandleTable::lock(PF_Handle handle) {
    std::lock_guard guard(mutex_);
    Block* block = find(handle);
    if (!block) return nullptr;
    ++block->locks;
    ++locks_;
    return block->master;
}

bool HandleTable::unlock(PF_Handle handle) {
    std::lock_guard guard(mutex_);
    Block* block = find(handle);
    if (!block || block->locks == 0) return false;
    --block->locks;
    --locks_;
    return true;
}

HandleTable::Disposal HandleTable::dispose(PF_Handle handle) {
    std::lock_guard guard(mutex_);
    const auto found = live_.find(handle);
    if (found == live_.end()) return Disposal::kUnknown;
    std::unique_ptr<Block> block = std::move(found->second);
    live_.erase(found);
    auto* memory = static_cast<std::byte*>(std::exchange(block->master, nullptr));
    const bool intact = guard_intact(memory, block->size);
    const bool was_locked = block->locks > 0;
    locks_ -= static_cast<size_t>(block->locks);
    keep_memory(memory, block->size);
    disposed_.push_back(std::move(block));
    if (disposed_.size() > kRememberedHandles) disposed_.pop_front();
    if (!intact) return Disposal::kOverrun;
    return was_locked ? Disposal::kWasLocked : Disposal::kDone;
}

uint64_t HandleTable::size(PF_Handle handle) const {
    std::lock_guard guard(mutex_);
    const Block* block = find(handle);
    return block ? block->size : 0;
}

bool HandleTable::resize(PF_Handle handle, uint64_t size) {
    std::lock_guard guard(mutex_);
    Block* block = find(handle);
    if (!block || block->locks > 0) return false;
    std::byte* memory = take_memory(size);
    if (!memory) return false;
    auto* old = static_cast<std::byte*>(block->master);
    std::memcpy(memory, old, std::min(size, block->size));
    keep_memory(old, block->size);
    block->master = memory;
    block->size = size;
    return true;
}

bool HandleTable::lives(PF_Handle handle) const {
    std::lock_guard guard(mutex_);
    return find(handle) != nullptr;
}

std::vector<LiveHandle> HandleTable::live() const {
    std::lock_guard guard(mutex_);
    std::vector<LiveHandle> handles;
    for (const auto& [handle, block] : live_)
        handles.push_back({block->serial, block->size, block->locks, handle});
    std::ranges::sort(handles, {}, &LiveHandle::serial);
    return handles;
}

size_t HandleTable::live_count() const {
    std::lock_guard guard(mutex_);
    return live_.size();
}

size_t HandleTable::lock_count() const {
    std::lock_guard guard(mutex_);
    return locks_;
}

HandleTable::Block* HandleTable::find(PF_Handle handle) const {
    const auto found = live_.find(handle);
    return found == live_.end() ? nullptr : found->second.get();
}

std::byte* HandleTable::take_memory(uint64_t size) {
    const auto spare = std::ranges::find(spares_, size, &Spare::size);
    if (spare != spares_.end()) {
        std::byte* memory = spare->memory;
        spares_.erase(spare);
        return memory;
    }
    if (size > SIZE_MAX / 2) return nullptr;
    auto* memory = static_cast<std::byte*>(std::malloc(size + kGuardSize));
    if (!memory) return nullptr;
    if (size <= kJunkLimit) std::memset(memory, kJunk, size);
    std::memset(memory + size, kGuard, kGuardSize);
    return memory;
}

void HandleTable::keep_memory(std::byte* memory, uint64_t size) {
    if (size < kSpareMinimum || !guard_intact(memory, size)) {
        std::free(memory);
        return;
    }
    spares_.push_back({memory, size});
    if (spares_.size() > kSpareCount) {
        std::free(spares_.front().memory);
        spares_.erase(spares_.begin());
    }
}

}  // namespace flumo::host

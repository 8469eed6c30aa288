// What the small effect borrows from its host, and gives back.
#pragma once

#include "effect_api/effect_api.h"
#include "tests/judge/broken/fault.h"

namespace flumo::broken {

/// Calls `use` with what a handle holds.
template <class Content, class Use>
PF_Err with_locked(const PF_InData& in, PF_Handle handle, Use use) {
    void* memory = handle ? in.utils->host_lock_handle(handle) : nullptr;
    if (!memory) return PF_Err_OUT_OF_MEMORY;
    use(*static_cast<Content*>(memory));
    in.utils->host_unlock_handle(handle);
    return PF_Err_NONE;
}

/// Leaves `place` alone when there is no memory, unless it has that fault.
template <class Content>
PF_Err new_handle(const PF_InData& in, Content content, PF_Handle* place, const char* half_made) {
    const PF_Handle handle = in.utils->host_new_handle(sizeof content);
    if (is("TrustsHandles")) *static_cast<Content*>(*handle) = content;
    const PF_Err error = with_locked<Content>(in, handle, [&](Content& held) { held = content; });
    if (error && !is(half_made)) {
        if (handle) in.utils->host_dispose_handle(handle);
        if (handle && is("DisposesTwice")) in.utils->host_dispose_handle(handle);
        return error;
    }
    *place = handle;
    return PF_Err_NONE;
}

template <class Table>
class Suite {
  public:
    Suite(const PF_InData& in, const char* name, int version)
        : basic_(in.pica_basicP), name_(name), version_(version) {
        const void* table = nullptr;
        if (basic_->AcquireSuite(name, version, &table) == 0) table_ = static_cast<const Table*>(table);
    }
    ~Suite() {
        if (table_ && !is("KeepsSuite")) basic_->ReleaseSuite(name_, version_);
    }
    Suite(const Suite&) = delete;
    Suite& operator=(const Suite&) = delete;

    const Table* operator->() const { return table_; }
    explicit operator bool() const { return table_ != nullptr; }

  private:
    SPBasicSuite* basic_;
    const char* name_;
    int version_;
    const Table* table_ = nullptr;
};

}  // namespace flumo::broken

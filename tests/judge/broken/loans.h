// What the small effect borrows from its host, given back at scope end.
#pragma once

#include "effect_api/effect_api.h"

namespace flumo::broken {

class Lock {
  public:
    Lock(const PF_InData& in, PF_Handle handle)
        : in_(in), handle_(handle), memory_(handle ? in.utils->host_lock_handle(handle) : nullptr) {}
    ~Lock() {
        if (memory_) in_.utils->host_unlock_handle(handle_);
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    /// Null when the host could not lock.
    template <class Content>
    Content* as() const {
        return static_cast<Content*>(memory_);
    }

  private:
    const PF_InData& in_;
    PF_Handle handle_;
    void* memory_;
};

template <class Table>
class Suite {
  public:
    Suite(const PF_InData& in, const char* name, int version)
        : basic_(in.pica_basicP), name_(name), version_(version) {
        const void* table = nullptr;
        if (!basic_) return;
        if (basic_->AcquireSuite(name, version, &table) == 0) table_ = static_cast<const Table*>(table);
    }
    ~Suite() {
        if (table_) basic_->ReleaseSuite(name_, version_);
    }
    Suite(const Suite&) = delete;
    Suite& operator=(const Suite&) = delete;

    const Table* operator->() const { return table_; }
    explicit operator bool() const { return table_ != nullptr; }
    /// Never gives it back.
    void keep() { table_ = nullptr; }

  private:
    SPBasicSuite* basic_;
    const char* name_;
    int version_;
    const Table* table_ = nullptr;
};

class Param {
  public:
    Param(const PF_InData& in, PF_ParamIndex index) : in_(in) {
        error_ = in.inter.checkout_param(in.effect_ref, index, in.current_time, in.time_step, in.time_scale,
                                         &record_);
        is_out_ = error_ == PF_Err_NONE;
    }
    ~Param() {
        if (is_out_) in_.inter.checkin_param(in_.effect_ref, &record_);
    }
    Param(const Param&) = delete;
    Param& operator=(const Param&) = delete;

    PF_Err error() const { return error_; }
    const PF_ParamDefUnion& value() const { return record_.u; }
    void keep() { is_out_ = false; }

  private:
    const PF_InData& in_;
    PF_ParamDef record_{};
    PF_Err error_;
    bool is_out_ = false;
};

}  // namespace flumo::broken

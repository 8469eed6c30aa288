// The loaded module under a host, with frames that use everything an effect can be asked for.
#pragma once

#include <memory>

#include "host/instance.h"
#include "tests/support/result_of.h"

namespace flumo::test {

using host::test::result_of;

inline constexpr host::Depth kDepths[] = {host::Depth::k8, host::Depth::k16, host::Depth::k32};

host::FrameRequest small_frame(host::Depth depth);

/// The module in global set-up. Each test has its own, so that the end of the test is the end of the effect's
/// life.
class EffectFixture {
  public:
    EffectFixture();
    /// Global set-down; fails the test when GL objects or contexts that `keeps_objects` does not tell of
    /// survive.
    ~EffectFixture();

    host::Host& host() { return *host_; }
    /// An applied effect with three layers of the three depths, noise, and lines.
    std::unique_ptr<host::Instance> new_instance();
    /// The frame of such an instance, as it was before anything failed.
    const host::World& reference(host::Depth depth) const;
    /// Whether a new instance still renders the reference on this thread.
    bool renders_as_before(host::Depth depth);

    /// GL names that failures have left alive, as they may.
    int64_t kept_objects = 0;

  private:
    host::Module module_;
    std::unique_ptr<host::Host> host_;
    int64_t alive_before_;
    std::vector<host::Layer> layers_;
    std::vector<host::World> references_;
};

}  // namespace flumo::test

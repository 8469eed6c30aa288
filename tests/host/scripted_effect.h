// A small effect inside the test program, whose answer to each command a test can replace.
#pragma once

#include <functional>
#include <map>
#include <vector>

#include "effect_api/effect_api.h"
#include "host/module/module.h"

namespace flumo::host::test {

struct EffectCall {
    PF_InData& in;
    PF_OutData& out;
    PF_ParamDef** params;
    void* extra;

    PF_PreRenderExtra& pre_render() const { return *static_cast<PF_PreRenderExtra*>(extra); }
    PF_SmartRenderExtra& render() const { return *static_cast<PF_SmartRenderExtra*>(extra); }
    PF_EventExtra& event() const { return *static_cast<PF_EventExtra*>(extra); }
    template <class Suite>
    const Suite* acquire(const char* name, int version) const {
        const void* suite = nullptr;
        in.pica_basicP->AcquireSuite(name, version, &suite);
        return static_cast<const Suite*>(suite);
    }
    void release(const char* name, int version) const { in.pica_basicP->ReleaseSuite(name, version); }
};

using Handler = std::function<PF_Err(EffectCall&)>;

// Places of its controls in the host's array.
enum ControlIndex {
    kOuterGroup = 1,
    kAmount,  // float slider, -10 to 10, default 2.5, percent
    kCount,   // slider, 0 to 100, default 4
    kTurn,    // angle, default 90 degrees
    kSwitch,  // checkbox, default on
    kMode,    // popup, two names for three choices, default 2, no keyframes
    kInnerGroup,
    kPicture,  // layer
    kNumber,   // arbitrary data: one double in a handle, default 7, draws itself
    kInnerGroupEnd,
    kOuterGroupEnd,
    kControlsEnd
};

/// By default it registers the controls above, serves the arbitrary data, asks for its input layer and
/// renders opaque red into 8 bits. One at a time: its entry point is a plain function.
class ScriptedEffect {
  public:
    ScriptedEffect();
    ~ScriptedEffect();
    ScriptedEffect(const ScriptedEffect&) = delete;
    ScriptedEffect& operator=(const ScriptedEffect&) = delete;

    /// Runs instead of the default answer.
    std::map<PF_Cmd, Handler> on;
    std::vector<PF_ParamDef> controls;
    Module module;

    PF_Err answer(PF_Cmd command, EffectCall& call);
};

/// The default answers, for handlers that add to them.
PF_Err plain_pre_render(EffectCall& call);
PF_Err plain_render(EffectCall& call);

}  // namespace flumo::host::test

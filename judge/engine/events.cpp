#include "judge/engine/events.h"

namespace flumo::judge {

void judge_value(Fixture& fixture, host::Instance& instance, const host::Control& control) {
    CaseContext& context = fixture.context();
    if (control.kind == host::ControlKind::kArbitrary) {
        const auto value = std::get<host::Arbitrary>(instance.value_at(control.index, 0));
        const auto back = host::ArbitraryValue::unflatten(fixture.host(), control, value->flatten());
        context.expect(value->compare(*back) == PF_ArbCompare_EQUAL, "an edited value that is stored equal",
                       "another value");
    }
    if (!fixture.has_flag2(PF_OutFlag2_SUPPORTS_SMART_RENDER)) return;
    host::FrameRequest request;
    request.width = 20;
    request.height = 12;
    judged_frame(context, instance, request);
}

}  // namespace flumo::judge

#include "effect/entry/effect_main.h"

#include "effect/entry/commands.h"
#include "effect/entry/gradient_param_index_set.h"
#include "effect/licence/licence.h"
#include "effect/suites/errors.h"

PF_Err EffectMain(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params, PF_LayerDef*,
                  void* extra) {
    const PF_Err built = flumo::CommandResult([] { flumo::GradientParamIndices(); });
    if (built != PF_Err_NONE) return built;
    if (!flumo::LicenceAllowsCommand(cmd, in_data, out_data)) return PF_Err_NONE;
    try {
        return flumo::RunCommand(cmd, {in_data, out_data, params, extra});
    } catch (PF_Err thrown) {
        // Nothing else is caught here: handlers that other exceptions can reach catch them themselves.
        return thrown;
    }
}

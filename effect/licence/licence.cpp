#include "effect/licence/licence.h"

namespace flumo {

bool LicenceAllowsCommand(PF_Cmd, PF_InData*, PF_OutData*) {
    return true;
}

bool LicenceAbout(PF_InData*, PF_OutData*) {
    return false;
}

PF_Err LicenceDialog(PF_InData*) {
    return PF_Err_NONE;
}

PF_Err LicenceSetup(PF_InData*, PF_OutData*) {
    return PF_Err_NONE;
}

bool LicenceAllowsFrame() {
    return true;
}

}  // namespace flumo

#include "tests/faults/expectations.h"

#include <algorithm>
#include <iterator>

namespace flumo::test {
namespace {

using enum host::Callback;
using enum Modes;

constexpr std::string_view kNoSuite = "Not able to acquire AEFX Suite.";
constexpr std::string_view kNoWorlds = "Couldn't load suite.";
// A frame's releases and check-ins ask for no condition, so they also reach what was never had.
constexpr host::MisuseKind kReleased = host::MisuseKind::kNotAcquired;
constexpr host::MisuseKind kCheckedIn = host::MisuseKind::kNotCheckedOut;
constexpr host::MisuseKind kNullDrawn = host::MisuseKind::kDrawingReference;

// The first row that fits counts.
constexpr Expectation kTable[] = {
    // A global handle that cannot be locked or registered is not stored and stays allocated.
    {"global setup", kNewHandle, {}, kAny, 512},
    {"global setup", kLockHandle, {}, kAny, 0, {.handles = 1, .misuse = host::MisuseKind::kNotLocked}},
    {"global setup", kAcquireSuite, 1, kAny, 516, {.handles = 1}},
    {"global setup", kRegisterWithAegp, {}, kAny, kPlanned, {.handles = 1}},
    {"global setdown", kAcquireSuite, {}, kAny, 516, {.handles = 1}},
    // All controls are declared, those without a default too; the editors are not registered then.
    {"params setup", kAcquireSuite, {}, kAny, 516, {.goes_on = true}},
    {"params setup", kNewHandle, 0, kAny, 4, {.goes_on = true}},
    {"params setup", kNewHandle, 1, kAny, 0},
    {"params setup", kLockHandle, {}, kAny, 4, {.goes_on = true}},
    // A default goes along with its control, also with one that the host then refuses.
    {"params setup", kAddParam, 25, kAny, kPlanned, {.handles = 1}},
    {"params setup", kAddParam, 59, kAny, kPlanned, {.handles = 1}},

    {"sequence setup", kNewHandle, {}, kAny, 4},
    {"sequence resetup", kNewHandle, {}, kAny, 0, {.incomplete = true}},
    {"sequence flatten", kNewHandle, {}, kAny, 512},
    {"sequence get flattened", kNewHandle, {}, kAny, 512},
    {"sequence", kLockHandle, {}, kAny, 0, {.handles = 1, .incomplete = true}},

    // No handle is no error by itself, but what should then work on it finds no value.
    {"value new", kNewHandle, {}, kAny, 0, {.incomplete = true}},
    {"value copy", kNewHandle, {}, kAny, 0, {.incomplete = true}},
    {"value", kNewHandle, {}, kAny, 4, {.goes_on = true, .incomplete = true}},
    // All locks are taken before the first is used.
    {"value", kLockHandle, {}, kAny, 4, {.goes_on = true, .incomplete = true}},

    // The first suite is fetched silently, the others with a message and by their pointer alone.
    {"event", kAcquireSuite, 0, kAny, 516},
    {"event", kAcquireSuite, {}, kErrorWithResult, 0, {.misuse = kReleased}},
    {"event", kAcquireSuite, {}, kAny, 516, {.message = kNoSuite}},
    {"event", kLockHandle, {}, kAny, 4},
    {"event", kNewHandle, {}, kAny, 4},
    {"event draw", kDrawbotPixelLayout, {0, 1}, kNull, 0},
    {"event draw", kDrawbotPixelLayout, 2, kNull, 4, {.goes_on = true, .incomplete = true}},
    {"event draw", kDrawbotPixelLayout, 3, kNull, 4},
    // A null that is told as a success goes back to the host, which refuses it.
    {"event draw", kCount, {}, kNull, 516, {.misuse = kNullDrawn, .goes_on = true, .incomplete = true}},

    {"frame", kCheckoutParam, {}, kAny, kPlanned, {.misuse = kCheckedIn}},
    {"frame", kCheckoutLayerPixels, {}, kAny, kPlanned, {.misuse = kCheckedIn}},
    {"frame", kCheckoutOutput, {}, kAny, kPlanned, {.misuse = kReleased}},
    {"frame", kAcquireSuite, 0, kErrorWithResult, 0, {.misuse = kReleased}},
    {"frame", kAcquireSuite, 0, kAny, 516, {.message = kNoWorlds, .misuse = kReleased}},
    {"frame", kGetPixelFormat, {}, kNull, 516},
    // A gradient's lock is missed when its ramp is made; textures that are made by then stay.
    {"frame", kLockHandle, 0, kAny, 4, {.textures = 3, .goes_on = true, .incomplete = true}},
    {"frame", kLockHandle, 1, kAny, 4, {.textures = 4, .goes_on = true, .incomplete = true}},
    // The first question about an 8-bit layer and about a float layer only finds out which of the two it is.
    {"frame", kGetPixelData8, 0, kAny, 0, {.incomplete = true}},
    {"frame", kGetPixelData8, 1, kError, kPlanned, {.textures = 1}},
    {"frame", kGetPixelData16, 0, kError, kPlanned, {.textures = 2}},
    {"frame", kGetPixelData8, 2, kAny, 0},
    {"frame", kAcquireSuite, 2, kAny, 4, {.textures = 3}},
    {"frame", kGetPixelDataFloat, 0, kError, kPlanned, {.textures = 3}},
    {"frame", kGetPixelData8, 1, kNull, 0, {.incomplete = true}},
    {"frame", kGetPixelData16, 0, kNull, 0, {.incomplete = true}},
    {"frame", kGetPixelDataFloat, 0, kNull, 0, {.incomplete = true}},
    // The read-back: what fails before its end keeps the handle. Rows that cannot be reached are left alone.
    {"frame", kNewHandle, {}, kAny, 4},
    {"frame", kLockHandle, 2, kAny, 4, {.handles = 1}},
    {"frame 8", kGetPixelData8, {}, kAny, 0, {.incomplete = true}},
    {"frame 16", kGetPixelData16, {}, kAny, 0, {.incomplete = true}},
    {"frame 32", kAcquireSuite, 3, kAny, 516, {.handles = 1, .locks = 1}},
    {"frame 32", kIterateFloat, {}, kAny, kPlanned, {.handles = 1, .locks = 1}},
    // The first check-in that fails is the last that is tried.
    {"frame", kCheckinParam, {}, kAny, kPlanned, {.later_controls = true}},

    // Everywhere: a suite that cannot be had is 516, a failed release is ignored, and
    // the host's own numbers come back as they are.
    {"", kAcquireSuite, {}, kAny, 516},
    {"", kReleaseSuite, {}, kAny, 0},
    {"", kCount, {}, kError, kPlanned},
    {"", kCount, {}, kErrorWithResult, kPlanned},
};

bool fits(Modes modes, host::FaultMode mode) {
    switch (modes) {
        case kAny:
            return true;
        case kError:
            return mode == host::FaultMode::kError;
        case kNull:
            return mode == host::FaultMode::kNull;
        default:
            return mode == host::FaultMode::kErrorWithResult;
    }
}

}  // namespace

const Expectation* find_expectation(std::string_view command, host::Callback call, int nth,
                                    host::FaultMode mode) {
    const auto* row = std::ranges::find_if(kTable, [&](const Expectation& it) {
        return command.starts_with(it.command) && (it.call == call || it.call == kCount) &&
               nth >= it.nth.first && nth <= it.nth.last && fits(it.modes, mode);
    });
    return row != std::end(kTable) ? row : nullptr;
}

}  // namespace flumo::test

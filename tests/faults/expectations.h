// What is expected of the effect for every call to the host that can fail, command by command.
#pragma once

#include <climits>
#include <optional>
#include <string_view>

#include "host/accounting.h"
#include "host/faults.h"

namespace flumo::test {

/// The number that failed calls answer with; no other part of host or effect uses it.
inline constexpr PF_Err kPlanned = 41;

/// Which of a command's calls of one kind, counted from 0.
struct Nth {
    int first = 0;
    int last = INT_MAX;

    constexpr Nth() = default;
    constexpr Nth(int only) : first(only), last(only) {}
    constexpr Nth(int from, int to) : first(from), last(to) {}
};

enum class Modes { kAny, kError, kNull, kErrorWithResult };

/// What comes with the number. By default everything goes back, no message is shown, and after a number that
/// is not 0 the effect does nothing but give back.
struct Also {
    /// Left for good: handles, locks on handles, and textures of the frame.
    int handles = 0;
    int locks = 0;
    int textures = 0;
    /// Left for good: the controls whose check-in would have come after the failed one.
    bool later_controls = false;
    /// What the user is shown.
    std::string_view message{};
    /// The rule of the host that the effect breaks by it.
    std::optional<host::MisuseKind> misuse{};
    /// The command goes on with its work.
    bool goes_on = false;
    /// Its work lacks what the failed call was to bring.
    bool incomplete = false;
};

struct Expectation {
    /// How the command's name begins.
    std::string_view command;
    /// kCount stands for any call.
    host::Callback call;
    Nth nth;
    Modes modes;
    /// PF_Err_NONE: as without the failure.
    PF_Err result;
    Also also{};
};

/// The row for one fault; null when nothing is expected, which is a hole in the table.
const Expectation* find_expectation(std::string_view command, host::Callback call, int nth,
                                    host::FaultMode mode);

}  // namespace flumo::test

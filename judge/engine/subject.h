// What is judged, against what, and which part of it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace flumo::judge {

struct Subject {
    std::filesystem::path module;
    /// What the effect is expected to register, as JSON; empty when nothing particular is.
    std::filesystem::path expectation{};
    /// A Windows module, or a property list by itself, that must say the same as the effect; empty for none.
    std::filesystem::path resource{};
    /// Everything random follows from it.
    uint64_t seed = 1;
};

/// Which steps of a case are played; all of them by default.
struct StepChoice {
    /// This one alone.
    std::optional<std::string> only{};
    /// Those after this one: a case continues after the step that ended its process.
    std::optional<std::string> after{};
};

}  // namespace flumo::judge

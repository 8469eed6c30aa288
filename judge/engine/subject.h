// What is judged, against what, and which part of it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace flumo::judge {

struct Subject {
    std::filesystem::path module;
    /// What the effect is expected to register, as JSON; empty when nothing is expected.
    std::filesystem::path expectation{};
    /// A Windows module, or a property list alone, that must agree with the effect; empty for none.
    std::filesystem::path resource{};
    /// Seed of all random numbers.
    uint64_t seed = 1;
};

/// Which steps of a case are played; all of them by default.
struct StepChoice {
    /// Only this step.
    std::optional<std::string> only{};
    /// Those after this one: a case continues after the step that ended its process.
    std::optional<std::string> after{};
};

}  // namespace flumo::judge

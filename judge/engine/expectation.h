// What the user expects an effect to register, as `flumo info --json` and `flumo controls --json` write it.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/host.h"
#include "host/module/module.h"
#include "host/values/control.h"

namespace flumo::judge {

struct Mismatch {
    std::string expected;
    std::string seen;
};

/// `controls` is an array of controls or their number; `identity` an object with any of name, matchName,
/// category, entryPoint, version, outFlags and outFlags2. Either may be absent.
struct Expectation {
    nlohmann::json identity;
    nlohmann::json controls;

    bool has_identity() const { return !identity.empty(); }
    bool has_controls() const { return !controls.is_null(); }
};

/// An array holds controls; an object holds an identity and, under "controls", an array of them or their
/// number. An empty path expects nothing. Throws std::runtime_error for a file that is neither, expects
/// nothing, or has a key that nothing is compared with.
Expectation read_expectation(const std::filesystem::path& path);

std::vector<Mismatch> identity_mismatches(const Expectation& expected, const host::Registration& registration,
                                          const host::EffectIdentity& identity);
/// By place; a control is compared in the keys that are expected of it and that this host knows. `texts`
/// are the printed defaults of arbitrary data by index.
std::vector<Mismatch> control_mismatches(const Expectation& expected,
                                         const std::vector<host::Control>& controls,
                                         const std::map<int, std::string>& texts);

}  // namespace flumo::judge

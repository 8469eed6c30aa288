// The property list that a host on Windows reads before it loads an effect.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "judge/engine/case_context.h"

namespace flumo::judge {

struct PropertyList {
    uint32_t kind = 0;
    std::string name;
    std::string category;
    std::string match_name;
    /// On 64-bit Windows.
    std::string entry_point;
    uint32_t version = 0;
    int32_t flags = 0;
    int32_t flags2 = 0;
};

/// Properties of other keys are ignored. Throws ModuleError where the list is damaged or lacks one of
/// the above; `name` is what the message calls it.
PropertyList parse_property_list(const std::string& name, std::span<const std::byte> bytes);
/// From the resources of a Windows module, or from a file that holds nothing but the list. Throws
/// ModuleError.
PropertyList read_property_list(const std::filesystem::path& path);

bool is_windows_module(const std::filesystem::path& path);
/// Reports a finding for a Windows module that lacks an export.
void judge_exports(CaseContext& context, const std::filesystem::path& module, const std::string& entry_point);

}  // namespace flumo::judge

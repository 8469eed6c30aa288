#include "effect/params/param_ids.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <vector>

namespace flumo {
namespace {

const std::vector<std::string>& IndexList() {
    static const std::vector<std::string> list = [] {
        std::vector<std::string> ids;
        ids.reserve(std::size(kControls));
        for (const Control& control : kControls)
            ids.emplace_back(control.id);
        return ids;
    }();
    return list;
}

static_assert(std::ranges::find(kControls, kBlendModeDiskId, &Control::diskId) == kControls.end());

const std::unordered_map<std::string, A_long>& DiskIds() {
    static const std::unordered_map<std::string, A_long> table = [] {
        std::unordered_map<std::string, A_long> ids{{"BlendMode", kBlendModeDiskId}};
        for (const Control& control : kControls)
            ids.emplace(control.id, control.diskId);
        return ids;
    }();
    return table;
}

}  // namespace

std::string GetMainParamId(A_u_long section) {
    if (section >= kControlCount) throw std::runtime_error("Failed to get Id for section MainParams");
    return std::string(kControls[section].id);
}

A_long GetParamIndex(const std::string& id) {
    const auto found = std::ranges::find(IndexList(), id);
    if (found == IndexList().end()) {
        throw std::runtime_error("Failed to find the parameter index for id \"" + id + "\"");
    }
    return static_cast<A_long>(found - IndexList().begin()) + 1;
}

A_long GetParamDiskId(const std::string& id) {
    const auto found = DiskIds().find(id);
    if (found == DiskIds().end()) {
        throw std::runtime_error("Failed to find the disk ID for parameter id \"" + id + "\"");
    }
    return found->second;
}

A_long ParamIndexOf(Section section) {
    return GetParamIndex(GetMainParamId(static_cast<A_u_long>(section)));
}

A_long ParamDiskIdOf(Section section) {
    return GetParamDiskId(GetMainParamId(static_cast<A_u_long>(section)));
}

}  // namespace flumo

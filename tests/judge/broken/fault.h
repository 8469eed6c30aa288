// The fault that the small effect has is its file's name: links to one module are broken in many ways.
#pragma once

#include <dlfcn.h>

#include <filesystem>
#include <string>

namespace flumo::broken {

/// Under any other name the effect has no fault.
inline bool is(const char* fault) {
    static const std::string name = [] {
        static const char here = 0;
        Dl_info module{};
        dladdr(&here, &module);
        return std::filesystem::path(module.dli_fname).stem().string();
    }();
    return name == fault;
}

}  // namespace flumo::broken

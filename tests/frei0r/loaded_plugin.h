// A plug-in as a program meets it: a file, loaded, and its exported functions.
#pragma once

#include <dlfcn.h>

#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "frei0r/interface.h"

namespace flumo::frei0r::test {

using Frame = std::vector<uint32_t>;

class LoadedPlugin {
  public:
    explicit LoadedPlugin(const char* path) : file_(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
        if (!file_) throw std::runtime_error(dlerror());
        init();
    }
    ~LoadedPlugin() {
        deinit();
        dlclose(file_);
    }
    LoadedPlugin(const LoadedPlugin&) = delete;
    LoadedPlugin& operator=(const LoadedPlugin&) = delete;

    F0rPluginInfo info() const {
        F0rPluginInfo info{};
        plugin_info(&info);
        return info;
    }
    F0rParamInfo param(int index) const {
        F0rParamInfo info{};
        param_info(&info, index);
        return info;
    }
    /// The index of a parameter by its name.
    int operator[](const std::string& name) const {
        for (int i = 0; i < info().num_params; ++i) {
            if (param(i).name == name) return i;
        }
        throw std::runtime_error("no parameter " + name);
    }

  private:
    template <typename Function>
    Function* symbol(const char* name) const {
        return reinterpret_cast<Function*>(dlsym(file_, name));
    }

    void* file_;

  public:
    decltype(f0r_init)* const init = symbol<decltype(f0r_init)>("f0r_init");
    decltype(f0r_deinit)* const deinit = symbol<decltype(f0r_deinit)>("f0r_deinit");
    decltype(f0r_get_plugin_info)* const plugin_info =
        symbol<decltype(f0r_get_plugin_info)>("f0r_get_plugin_info");
    decltype(f0r_get_param_info)* const param_info =
        symbol<decltype(f0r_get_param_info)>("f0r_get_param_info");
    decltype(f0r_construct)* const construct = symbol<decltype(f0r_construct)>("f0r_construct");
    decltype(f0r_destruct)* const destruct = symbol<decltype(f0r_destruct)>("f0r_destruct");
    decltype(f0r_set_param_value)* const set = symbol<decltype(f0r_set_param_value)>("f0r_set_param_value");
    decltype(f0r_get_param_value)* const get = symbol<decltype(f0r_get_param_value)>("f0r_get_param_value");
    decltype(f0r_update)* const update = symbol<decltype(f0r_update)>("f0r_update");
    decltype(f0r_update2)* const update2 = symbol<decltype(f0r_update2)>("f0r_update2");
};

/// One instance of it. The plug-in must outlive it.
class Drawn {
  public:
    Drawn(const LoadedPlugin& plugin, unsigned width, unsigned height)
        : plugin_(plugin), pixels_(width * height), instance_(plugin.construct(width, height)) {
        if (!instance_) throw std::runtime_error("no instance");
    }
    ~Drawn() { plugin_.destruct(instance_); }
    Drawn(const Drawn&) = delete;
    Drawn& operator=(const Drawn&) = delete;

    void set(int index, double value) { plugin_.set(instance_, &value, index); }
    void set(int index, const std::string& text) {
        std::string copy = text;
        char* pointer = copy.data();
        plugin_.set(instance_, &pointer, index);
    }
    void set(const std::string& name, const auto& value) { set(plugin_[name], value); }

    double number(int index) const {
        double value = -1;
        plugin_.get(instance_, &value, index);
        return value;
    }
    std::string text(int index) const {
        char* value = nullptr;
        plugin_.get(instance_, &value, index);
        return value ? value : "(null)";
    }

    Frame at(double seconds, const Frame& input = {}) {
        Frame frame(pixels_, 0x5A5A5A5A);
        plugin_.update(instance_, seconds, input.empty() ? nullptr : input.data(), frame.data());
        return frame;
    }

  private:
    const LoadedPlugin& plugin_;
    size_t pixels_;
    F0rInstance instance_;
};

}  // namespace flumo::frei0r::test

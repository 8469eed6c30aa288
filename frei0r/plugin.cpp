// The exported functions. Nothing that goes wrong leaves them.
#include "frei0r/plugin.h"

#include <cstdio>
#include <memory>
#include <mutex>
#include <new>

#include "frei0r/frame_time.h"
#include "frei0r/instance.h"
#include "frei0r/interface.h"

namespace flumo::frei0r {
namespace {

constexpr unsigned kSmallestSide = 8;
constexpr unsigned kWidestFrame = 8192;
constexpr unsigned kHighestFrame = 4320;

/// What the interface's functions share, since the interface has no place for it. Lives as long as this file
/// is loaded; the effect only from the first f0r_init() to the last f0r_deinit().
class Plugin {
  public:
    Plugin() = default;
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    /// A program that ends without f0r_deinit() may have ended the driver before: the effect goes with the
    /// process.
    ~Plugin() {
        if (effect_) static_cast<void>(new (std::nothrow) std::shared_ptr<Effect>(std::move(effect_)));
    }

    const scene::ControlCatalog& catalog() const { return catalog_; }
    std::span<const Parameter> parameters() const { return parameters_; }

    void begin() {
        const std::lock_guard lock(mutex_);
        if (users_++ == 0) effect_ = std::make_shared<Effect>();
    }
    /// Instances that still live keep the effect.
    void end() {
        std::shared_ptr<Effect> last;
        const std::lock_guard lock(mutex_);
        if (users_ > 0 && --users_ == 0) last = std::move(effect_);
    }
    std::shared_ptr<Effect> effect() {
        const std::lock_guard lock(mutex_);
        return effect_;
    }

  private:
    const scene::ControlCatalog catalog_ = registered_controls();
    const std::vector<Parameter> parameters_ = make_parameters(kPlugin.kind, catalog_);
    std::mutex mutex_;
    int users_ = 0;
    std::shared_ptr<Effect> effect_;
};

Plugin& plugin() {
    static Plugin shared;
    return shared;
}

/// Runs the work; an exception becomes a line on standard error.
template <typename Work>
void guarded(const Work& work) noexcept try {
    work();
} catch (const std::exception& error) {
    std::fprintf(stderr, "flumo: %s\n", error.what());
} catch (...) {
    std::fputs("flumo: failed\n", stderr);
}

bool is_parameter(int index) {
    return index >= 0 && static_cast<std::size_t>(index) < plugin().parameters().size();
}

Instance& instance_of(F0rInstance instance) {
    return *static_cast<Instance*>(instance);
}

F0rInstance make_instance(unsigned width, unsigned height) {
    const std::shared_ptr<Effect> effect = plugin().effect();
    const bool fits =
        width >= kSmallestSide && height >= kSmallestSide && width <= kWidestFrame && height <= kHighestFrame;
    if (!fits || !effect) {
        std::fprintf(stderr, "flumo: %ux%u: expected a size from %ux%u to %ux%u\n", width, height,
                     kSmallestSide, kSmallestSide, kWidestFrame, kHighestFrame);
        return nullptr;
    }
    return new Instance(effect, plugin().catalog(), plugin().parameters(), static_cast<int>(width),
                        static_cast<int>(height));
}

void draw(F0rInstance instance, const void* caller, double time, const uint32_t* input, uint32_t* output) {
    guarded([&] {
        const bool is_complete = output && (input || kPlugin.kind == PluginKind::kSource);
        if (!instance || !is_complete) return;
        const uint32_t* const used = kPlugin.kind == PluginKind::kFilter ? input : nullptr;
        instance_of(instance).draw(seconds_given_by(caller, time), used, output);
    });
}

}  // namespace
}  // namespace flumo::frei0r

using namespace flumo::frei0r;

int f0r_init() {
    guarded([] { plugin().begin(); });
    return 1;
}

void f0r_deinit() {
    guarded([] { plugin().end(); });
}

void f0r_get_plugin_info(F0rPluginInfo* info) {
    guarded([info] {
        *info = {.name = kPlugin.name,
                 .author = "Flumo",
                 .plugin_type = kPlugin.kind == PluginKind::kFilter ? kF0rFilter : kF0rSource,
                 .color_model = kF0rRgba8888,
                 .frei0r_version = kF0rMajorVersion,
                 .major_version = FLUMO_VERSION_MAJOR,
                 .minor_version = FLUMO_VERSION_MINOR,
                 .num_params = static_cast<int>(plugin().parameters().size()),
                 .explanation = kPlugin.explanation};
    });
}

void f0r_get_param_info(F0rParamInfo* info, int param_index) {
    guarded([&] {
        if (!is_parameter(param_index)) return;
        const Parameter& parameter = plugin().parameters()[static_cast<std::size_t>(param_index)];
        *info = {parameter.name.c_str(), parameter.type(), parameter.explanation.c_str()};
    });
}

F0rInstance f0r_construct(unsigned int width, unsigned int height) {
    F0rInstance instance = nullptr;
    guarded([&] { instance = make_instance(width, height); });
    return instance;
}

void f0r_destruct(F0rInstance instance) {
    guarded([instance] { delete static_cast<Instance*>(instance); });
}

void f0r_set_param_value(F0rInstance instance, F0rParam param, int param_index) {
    guarded([&] {
        if (instance && param && is_parameter(param_index))
            instance_of(instance).set(static_cast<std::size_t>(param_index), param);
    });
}

void f0r_get_param_value(F0rInstance instance, F0rParam param, int param_index) {
    guarded([&] {
        if (instance && param && is_parameter(param_index))
            instance_of(instance).get(static_cast<std::size_t>(param_index), param);
    });
}

void f0r_update(F0rInstance instance, double time, const uint32_t* inframe, uint32_t* outframe) {
    draw(instance, __builtin_return_address(0), time, inframe, outframe);
}

void f0r_update2(F0rInstance instance, double time, const uint32_t* inframe1, const uint32_t*,
                 const uint32_t*, uint32_t* outframe) {
    draw(instance, __builtin_return_address(0), time, inframe1, outframe);
}

#include "host/module/module.h"

#include "host/module/module_file.h"
#include "host/module/module_library.h"

namespace flumo::host {

namespace {

std::string text(const A_u_char* characters) {
    return characters ? reinterpret_cast<const char*>(characters) : "";
}

/// Called by the module; the first argument is what it was handed, the record to fill.
A_Err take_registration(PF_PluginDataPtr record, const A_u_char* name, const A_u_char* match_name,
                        const A_u_char* category, const A_u_char* entry_point, A_long kind, A_long api_major,
                        A_long api_minor, A_long reserved) {
    *reinterpret_cast<Registration*>(record) = {
        text(name), text(match_name), text(category), text(entry_point),
        kind,       api_major,        api_minor,      reserved};
    return PF_Err_NONE;
}

}  // namespace

Module::Module(const std::filesystem::path& path) : path_(path) {
    require_file(path);
    library_ = std::make_unique<ModuleLibrary>(path);
    const auto exported = [&](const char* name) {
        void* address = library_->symbol(name);
        if (!address) throw ModuleError(path.string() + ": has no export " + name);
        return address;
    };
    effect_main_ = reinterpret_cast<EffectMainFunction>(exported("EffectMain"));
    plugin_data_entry_ = reinterpret_cast<PluginDataEntry>(exported("PluginDataEntryFunction"));
}

Module::Module(EffectMainFunction effect_main, PluginDataEntry plugin_data_entry)
    : effect_main_(effect_main), plugin_data_entry_(plugin_data_entry) {}

Module::~Module() = default;
Module::Module(Module&&) noexcept = default;
Module& Module::operator=(Module&&) noexcept = default;

Registration Module::register_plugin() const {
    Registration registration;
    const PF_Err error = plugin_data_entry_(reinterpret_cast<PF_PluginDataPtr>(&registration),
                                            take_registration, nullptr, "Flumo stand-in host", "1");
    if (error != PF_Err_NONE) {
        throw ModuleError(path_.string() + ": registration failed with " + std::to_string(error));
    }
    if (registration.name.empty()) throw ModuleError(path_.string() + ": registered nothing");
    return registration;
}

}  // namespace flumo::host

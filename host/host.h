// A stand-in for the host application: it calls one loaded effect as the host would.
//
//   Module module(path);
//   Host host(module);
//   host.start();                                  // global set-up and parameters
//   auto instance = host.new_instance();
//   instance->set(host.control_by_disk_id(15).index, 50.0);
//   World frame = instance->render({.width = 640, .height = 360, .depth = Depth::k16, .frame = 12});
//
// Destroy instances and arbitrary values before the host, the host before the module.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "effect_api/event.h"
#include "host/accounting.h"
#include "host/faults.h"
#include "host/handles.h"
#include "host/module/command_sender.h"
#include "host/module/module.h"
#include "host/values/control.h"

namespace flumo::host {

struct Call;
class Instance;
class SuiteProvider;
class InputLayers;
struct CallTables;

struct HostOptions {
    A_AppID appl_id = kAfterEffectsApplId;
    /// Threads that the iterate suite spreads large frames over; 1 stays on the caller's thread.
    int iterate_threads = 1;
    /// False: the effect is given no basic suite.
    bool basic_suite = true;
    /// A check-out of a control after the last gives an empty record and no error.
    bool lends_unknown_controls = false;
    /// Suites by name and version that this host does not offer.
    std::set<std::pair<std::string, int>> missing_suites{};
};

/// What the effect wrote into the out data of global set-up.
struct EffectIdentity {
    A_u_long version = 0;
    PF_OutFlags flags = 0;
    PF_OutFlags2 flags2 = 0;
    std::string message;
};

/// Set-up and set-down belong to one thread and exclude rendering; instances may render on any threads.
class Host final : public CommandSender {
  public:
    explicit Host(const Module& module, HostOptions options = {});
    /// Sends the set-down when global set-up succeeded and none was sent.
    ~Host() override;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// global_setup(), then params_setup().
    void start();
    /// Throws HostError; identity() is filled even then.
    void global_setup();
    /// Throws HostError; the controls declared before an error are kept.
    void params_setup();
    /// Gives back the controls' defaults, then sends the command. Throws HostError.
    void global_setdown();
    /// Gives back the controls' defaults and forgets the controls with their interface. Instances and values
    /// must be gone.
    void release_controls();
    /// The text of the about box.
    std::string about();

    const EffectIdentity& identity() const { return identity_; }
    /// The effect's own controls in order, without the input layer; controls()[i].index is i + 1.
    const std::vector<Control>& controls() const { return controls_; }
    /// Throws std::out_of_range.
    const Control& control(int index) const;
    const Control& control_by_disk_id(int disk_id) const;
    /// The events that the effect registered its interface for (PF_CustomEFlag_...).
    const PF_CustomUIInfo& custom_ui() const { return custom_ui_; }
    /// What the effect keeps for all its instances; null when it keeps nothing.
    PF_Handle global_data() const { return global_data_; }

    /// One applied effect, after sequence set-up, with every control at its default. Throws HostError.
    std::unique_ptr<Instance> new_instance();

    Accounting& accounting() { return accounting_; }
    const Accounting& accounting() const { return accounting_; }
    Faults& faults() { return faults_; }
    HandleTable& handles() { return handles_; }
    const HostOptions& options() const { return options_; }
    const Module& module() const { return module_; }

    /// Sends any command outside an instance; throws nothing for a failure of the effect.
    Outcome send(PF_Cmd command, void* extra = nullptr) override;

    // For the other files of the host.
    PF_InData new_in_data();
    /// Runs one command with `call` as the calling thread's current call.
    Outcome run(Call& call, PF_Cmd command, PF_InData& in_data, PF_OutData out_data, PF_ParamDef** params,
                void* extra);
    PF_Err add_control(const PF_ParamDef& definition);
    void set_custom_ui(const PF_CustomUIInfo& info) { custom_ui_ = info; }
    InputLayers& input_layers() { return *input_layers_; }

  private:
    const Module& module_;
    HostOptions options_;
    HandleTable handles_;
    Accounting accounting_;
    Faults faults_;
    std::unique_ptr<CallTables> tables_;
    std::unique_ptr<InputLayers> input_layers_;
    EffectIdentity identity_;
    std::vector<Control> controls_;
    std::vector<std::string> open_groups_;
    PF_CustomUIInfo custom_ui_{};
    PF_Handle global_data_ = nullptr;
    int num_params_ = 0;
    bool is_set_up_ = false;
};

}  // namespace flumo::host

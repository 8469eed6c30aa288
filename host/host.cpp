#include "host/host.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "host/call.h"
#include "host/callbacks/tables.h"
#include "host/frame.h"
#include "host/values/arbitrary_value.h"

namespace flumo::host {

namespace {

constexpr PF_Quality kBestQuality = 1;

std::string shown_message(const PF_OutData& out) {
    return {out.return_msg, std::find(std::begin(out.return_msg), std::end(out.return_msg), '\0')};
}

}  // namespace

Host::Host(const Module& module, HostOptions options)
    : module_(module),
      options_(std::move(options)),
      accounting_(handles_),
      tables_(new CallTables{util_callbacks(), basic_suite()}),
      input_layers_(std::make_unique<InputLayers>()) {}

Host::~Host() {
    if (!is_set_up_) return;
    try {
        global_setdown();
    } catch (const std::exception&) {
        // A destructor has no caller to report to; the accounting has what was not given back.
    }
}

void Host::start() {
    global_setup();
    params_setup();
}

void Host::global_setup() {
    const Outcome outcome = send(PF_Cmd_GLOBAL_SETUP);
    identity_ = {outcome.out.my_version, outcome.out.out_flags, outcome.out.out_flags2, outcome.message};
    global_data_ = outcome.out.global_data;
    throw_on_error(PF_Cmd_GLOBAL_SETUP, outcome);
    is_set_up_ = true;
}

void Host::params_setup() {
    release_controls();
    const Outcome outcome = send(PF_Cmd_PARAMS_SETUP);
    num_params_ = outcome.out.num_params;
    throw_on_error(PF_Cmd_PARAMS_SETUP, outcome);
    if (static_cast<size_t>(num_params_) != controls_.size() + 1) {
        accounting_.misuse(MisuseKind::kAnnouncement, "announced " + std::to_string(num_params_) +
                                                          " parameters and declared " +
                                                          std::to_string(controls_.size()) + " controls");
    }
}

void Host::global_setdown() {
    is_set_up_ = false;
    release_controls();
    const Outcome outcome = send(PF_Cmd_GLOBAL_SETDOWN);
    global_data_ = nullptr;
    throw_on_error(PF_Cmd_GLOBAL_SETDOWN, outcome);
}

std::string Host::about() {
    const Outcome outcome = send(PF_Cmd_ABOUT);
    throw_on_error(PF_Cmd_ABOUT, outcome);
    return shown_message(outcome.out);
}

const Control& Host::control(int index) const {
    if (index < 1 || static_cast<size_t>(index) > controls_.size()) {
        throw std::out_of_range("there is no control " + std::to_string(index));
    }
    return controls_[static_cast<size_t>(index) - 1];
}

const Control& Host::control_by_disk_id(int disk_id) const {
    const auto found = std::ranges::find(controls_, disk_id, &Control::disk_id);
    if (found == controls_.end())
        throw std::out_of_range("no control has the disk id " + std::to_string(disk_id));
    return *found;
}

Outcome Host::send(PF_Cmd command, void* extra) {
    Call call(*this);
    PF_InData in_data = new_in_data();
    PF_OutData out_data{};
    out_data.global_data = global_data_;
    return run(call, command, in_data, out_data, nullptr, extra);
}

PF_InData Host::new_in_data() {
    PF_InData in_data{};
    in_data.inter = interact_callbacks();
    in_data.utils = &tables_->utils;
    in_data.pica_basicP = options_.basic_suite ? &tables_->basic : nullptr;
    in_data.quality = kBestQuality;
    in_data.version = {PF_AE220_PLUG_IN_VERSION, PF_AE220_PLUG_IN_SUBVERS};
    in_data.appl_id = options_.appl_id;
    in_data.num_params = num_params_;
    in_data.time_step = in_data.local_time_step = 1;
    in_data.time_scale = 1;
    in_data.downsample_x = in_data.downsample_y = in_data.pixel_aspect_ratio = {1, 1};
    in_data.global_data = global_data_;
    return in_data;
}

Outcome Host::run(Call& call, PF_Cmd command, PF_InData& in_data, PF_OutData out_data, PF_ParamDef** params,
                  void* extra) {
    CurrentCall current(call);
    in_data.effect_ref = call.ref();
    Outcome outcome{PF_Err_NONE, out_data, {}};
    try {
        outcome.error = module_.effect_main()(command, &in_data, &outcome.out, params, nullptr, extra);
    } catch (...) {
        accounting_.misuse(MisuseKind::kException,
                           command_name(command) + ": an exception left the entry point");
        outcome.error = PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
    if (outcome.out.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE) {
        outcome.message = shown_message(outcome.out);
        accounting_.message(outcome.message);
    }
    return outcome;
}

PF_Err Host::add_control(const PF_ParamDef& definition) {
    const int index = static_cast<int>(controls_.size()) + 1;
    if (definition.param_type == PF_Param_GROUP_END) {
        if (open_groups_.empty()) {
            accounting_.misuse(MisuseKind::kAnnouncement,
                               "control " + std::to_string(index) + " ends a group, but none is open");
        } else {
            open_groups_.pop_back();
        }
    }
    controls_.push_back(read_control(definition, index, open_groups_));
    if (definition.param_type == PF_Param_GROUP_START) open_groups_.push_back(controls_.back().name);
    return PF_Err_NONE;
}

void Host::release_controls() {
    for (Control& control : controls_) {
        PF_ArbitraryH& dephault = control.definition.u.arb_d.dephault;
        if (control.kind != ControlKind::kArbitrary || !dephault) continue;
        const ArbitraryValue owner(*this, control, std::exchange(dephault, nullptr));
    }
    controls_.clear();
    open_groups_.clear();
    custom_ui_ = {};
}

}  // namespace flumo::host

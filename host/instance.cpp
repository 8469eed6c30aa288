#include "host/instance.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include "host/call.h"

namespace flumo::host {

namespace {

/// Rate at which an instance's own commands, such as events, count time.
constexpr int kPanelFrameRate = 25;

Value default_value(Host& host, const Control& control) {
    if (control.is_number()) return control.default_value;
    if (control.kind == ControlKind::kArbitrary) return Arbitrary(ArbitraryValue::default_of(host, control));
    return Layer{};
}

std::vector<std::byte> handle_bytes(HandleTable& handles, PF_Handle handle) {
    if (!handles.lives(handle)) return {};
    const auto* first = static_cast<const std::byte*>(*handle);
    return {first, first + handles.size(handle)};
}

}  // namespace

Instance::Instance(Host& host) : host_(host) {}

void Instance::set_up() {
    const Outcome outcome = send_sequence(PF_Cmd_SEQUENCE_SETUP);
    throw_on_error(PF_Cmd_SEQUENCE_SETUP, outcome);
    sequence_data_ = outcome.out.sequence_data;
    has_sequence_ = true;
    for (const Control& control : host_.controls())
        tracks_.emplace_back(default_value(host_, control));
}

void Instance::open(std::span<const std::byte> stored) {
    sequence_data_ = host_.handles().create(stored.size());
    if (!sequence_data_) throw std::bad_alloc();
    if (!stored.empty()) std::memcpy(*sequence_data_, stored.data(), stored.size());
    has_sequence_ = true;
    resetup();
}

void Instance::copy_values(const Instance& other) {
    tracks_.clear();
    for (const Track& track : other.tracks_) {
        std::vector<Keyframe> keyframes = track.keyframes();
        for (Keyframe& keyframe : keyframes) {
            if (const auto* value = std::get_if<Arbitrary>(&keyframe.value))
                keyframe.value = (*value)->copy();
        }
        tracks_.emplace_back(std::move(keyframes));
    }
}

std::unique_ptr<Instance> Host::new_instance() {
    std::unique_ptr<Instance> instance(new Instance(*this));
    instance->set_up();
    return instance;
}

Instance::~Instance() {
    tracks_.clear();
    if (has_sequence_) send_sequence(PF_Cmd_SEQUENCE_SETDOWN);
}

Track& Instance::track_of(int index) {
    const Control& control = host_.control(index);
    if (!control.has_value()) throw std::out_of_range("control " + std::to_string(index) + " has no value");
    return tracks_[static_cast<size_t>(index) - 1];
}

const Track& Instance::track(int index) const {
    return const_cast<Instance*>(this)->track_of(index);
}

void Instance::set(int index, Value value) {
    Track& track = track_of(index);
    check_value(host_.control(index), value);
    track = Track(std::move(value));
}

void Instance::set_keyframes(int index, std::vector<Keyframe> keyframes) {
    Track& track = track_of(index);
    const Control& control = host_.control(index);
    if (!control.can_vary) {
        throw std::invalid_argument("control " + std::to_string(index) + " \"" + control.name +
                                    "\" cannot have keyframes");
    }
    for (const Keyframe& keyframe : keyframes)
        check_value(control, keyframe.value);
    track = Track(std::move(keyframes));
}

Value Instance::value_at(int index, double frame) const {
    return track(index).at(frame, host_.control(index).kind);
}

PF_InData Instance::new_in_data() const {
    PF_InData in_data = host_.new_in_data();
    in_data.sequence_data = sequence_data_;
    in_data.time_scale = kPanelFrameRate;
    return in_data;
}

Outcome Instance::send_sequence(PF_Cmd command) {
    Call call(host_, this);
    PF_InData in_data = new_in_data();
    PF_OutData out_data{};
    out_data.global_data = in_data.global_data;
    out_data.sequence_data = sequence_data_;
    return host_.run(call, command, in_data, out_data, nullptr, nullptr);
}

std::vector<std::byte> Instance::flatten() {
    const Outcome outcome = send_sequence(PF_Cmd_SEQUENCE_FLATTEN);
    throw_on_error(PF_Cmd_SEQUENCE_FLATTEN, outcome);
    sequence_data_ = outcome.out.sequence_data;
    return handle_bytes(host_.handles(), sequence_data_);
}

void Instance::resetup() {
    const Outcome outcome = send_sequence(PF_Cmd_SEQUENCE_RESETUP);
    throw_on_error(PF_Cmd_SEQUENCE_RESETUP, outcome);
    const PF_Handle stored = std::exchange(sequence_data_, outcome.out.sequence_data);
    // What it was made from, stored or live, belongs to the host.
    if (stored && stored != sequence_data_) host_.handles().dispose(stored);
}

void Instance::resetup(std::span<const std::byte> stored) {
    if (has_sequence_) throw_on_error(PF_Cmd_SEQUENCE_SETDOWN, send_sequence(PF_Cmd_SEQUENCE_SETDOWN));
    open(stored);
}

std::vector<std::byte> Instance::flattened_copy() {
    const Outcome outcome = send_sequence(PF_Cmd_GET_FLATTENED_SEQUENCE_DATA);
    throw_on_error(PF_Cmd_GET_FLATTENED_SEQUENCE_DATA, outcome);
    const PF_Handle copy = outcome.out.sequence_data;
    if (copy == sequence_data_) return {};
    std::vector<std::byte> bytes = handle_bytes(host_.handles(), copy);
    host_.handles().dispose(copy);
    return bytes;
}

std::unique_ptr<Instance> Instance::duplicate() {
    auto twin = host_.new_instance();
    const std::vector<std::byte> stored = flattened_copy();
    if (!stored.empty()) twin->resetup(stored);
    twin->copy_values(*this);
    return twin;
}

std::unique_ptr<Instance> Instance::render_copy(std::span<const std::byte> stored) const {
    std::unique_ptr<Instance> copy(new Instance(host_));
    if (!stored.empty()) copy->open(stored);
    copy->copy_values(*this);
    return copy;
}

void Instance::user_changed_param(int index) {
    // The command's record has one member, the control's index.
    PF_ParamIndex changed = host_.control(index).index;
    throw_on_error(PF_Cmd_USER_CHANGED_PARAM, send(PF_Cmd_USER_CHANGED_PARAM, &changed));
}

std::vector<PF_ParamDef> Instance::params_at(double frame, std::vector<Value>& values) const {
    std::vector<PF_ParamDef> params(host_.controls().size() + 1);
    params[0].param_type = PF_Param_LAYER;
    values.assign(params.size(), 0.0);
    for (const Control& control : host_.controls()) {
        const auto i = static_cast<size_t>(control.index);
        params[i] = control.definition;
        if (!control.has_value()) continue;
        values[i] = tracks_[i - 1].at(frame, control.kind);
        if (const auto* source = std::get_if<LayerSource>(&values[i])) values[i] = (*source)(frame);
        write_value(control, values[i], params[i]);
    }
    return params;
}

Outcome Instance::send_with_params(PF_Cmd command, void* extra, SuiteProvider* suites, double frame,
                                   std::vector<PF_ParamDef>& params) {
    std::vector<PF_ParamDef*> pointers;
    for (PF_ParamDef& param : params)
        pointers.push_back(&param);
    Call call(host_, this, suites);
    PF_InData in_data = new_in_data();
    in_data.current_time = static_cast<A_long>(std::lround(frame));
    PF_OutData out_data{};
    out_data.global_data = in_data.global_data;
    out_data.sequence_data = sequence_data_;
    return host_.run(call, command, in_data, out_data, pointers.data(), extra);
}

Outcome Instance::send(PF_Cmd command, void* extra, SuiteProvider* suites, double frame) {
    std::vector<Value> values;
    std::vector<PF_ParamDef> params = params_at(frame, values);
    return send_with_params(command, extra, suites, frame, params);
}

Outcome Instance::send_event(PF_EventExtra& event, SuiteProvider* suites, double frame, bool& changed) {
    const int index = event.effect_win.index;
    std::vector<Value> values;
    std::vector<PF_ParamDef> params = params_at(frame, values);
    PF_ParamDef& param = params.at(static_cast<size_t>(index));
    if (param.param_type == PF_Param_ARBITRARY_DATA) {
        // The effect edits in place, and values may be shared: it gets a copy, kept when it is marked.
        const UncountedCalls uncounted(host_);
        Value& value = values[static_cast<size_t>(index)];
        value = Arbitrary(std::get<Arbitrary>(value)->copy());
        write_value(host_.control(index), value, param);
    }
    param.uu.change_flags = PF_ChangeFlag_NONE;
    const Outcome outcome = send_with_params(PF_Cmd_EVENT, &event, suites, frame, params);
    changed = (param.uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) != 0;
    const UncountedCalls uncounted(host_);
    if (changed && index > 0) track_of(index).put(frame, values[static_cast<size_t>(index)]);
    values.clear();
    return outcome;
}

}  // namespace flumo::host

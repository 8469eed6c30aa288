// One applied effect: its sequence data, its controls' values, and its frames.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "host/frame_request.h"
#include "host/host.h"
#include "host/values/arbitrary_value.h"
#include "host/values/value.h"
#include "host/values/world.h"

namespace flumo::host {

/// Rendering may run on several threads at once, also on one instance; everything else, above all
/// setting values, must not run at the same time as anything on this instance.
class Instance {
  public:
    /// Sends sequence set-down after set-up or resetup.
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    /// Throws std::out_of_range for an index without a value, std::invalid_argument for a value that does
    /// not fit.
    void set(int index, Value value);
    /// As set(); also throws std::invalid_argument for a control that cannot vary in time.
    void set_keyframes(int index, std::vector<Keyframe> keyframes);
    const Track& track(int index) const;
    Value value_at(int index, double frame) const;

    /// Renders into a new world. Throws HostError.
    World render(const FrameRequest& request);
    /// Renders into `output`, which keeps its memory when its shape fits. Its pixels are not cleared: after
    /// a HostError it holds what the effect wrote. After an empty result it holds the requested part of the
    /// input.
    void render(const FrameRequest& request, World& output);
    /// Pre-render alone.
    FramePlan plan(const FrameRequest& request);

    /// Flattens the sequence data, as before a save, and returns a copy of the bytes.
    std::vector<std::byte> flatten();
    /// After flatten(), or after opening a project: hands the stored form to the effect, then frees it.
    void resetup();
    void resetup(std::span<const std::byte> stored);
    /// The stored form, without a change of the live data.
    std::vector<std::byte> flattened_copy();
    /// A second instance with the same values and sequence data.
    std::unique_ptr<Instance> duplicate();
    /// A copy for a render engine: the same values, and sequence data made from `stored` by the resetup
    /// command alone. Nothing stored: no sequence data and no command for it.
    std::unique_ptr<Instance> render_copy(std::span<const std::byte> stored) const;

    /// Tells the effect that the user changed the control. Throws HostError.
    void user_changed_param(int index);
    /// Sends any command with this instance's data and controls at `frame`.
    Outcome send(PF_Cmd command, void* extra = nullptr, SuiteProvider* suites = nullptr, double frame = 0);
    /// As send(), for an event on control `index`. `changed` tells whether the effect marked a new value,
    /// which the instance then holds.
    Outcome send_event(PF_EventExtra& event, SuiteProvider* suites, double frame, bool& changed);

    Host& host() const { return host_; }
    PF_Handle sequence_data() const { return sequence_data_; }
    /// For the other files of the host: the records of all parameters, which borrow from `values`.
    std::vector<PF_ParamDef> params_at(double frame, std::vector<Value>& values) const;

  private:
    friend class Host;
    /// Without sequence data.
    explicit Instance(Host& host);

    void set_up();
    void open(std::span<const std::byte> stored);
    void copy_values(const Instance& other);
    Track& track_of(int index);
    Outcome send_sequence(PF_Cmd command);
    PF_InData new_in_data() const;
    Outcome send_with_params(PF_Cmd command, void* extra, SuiteProvider* suites, double frame,
                             std::vector<PF_ParamDef>& params);

    Host& host_;
    PF_Handle sequence_data_ = nullptr;
    bool has_sequence_ = false;
    std::vector<Track> tracks_;
};

}  // namespace flumo::host

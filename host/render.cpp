// Frames: pre-render, the worlds, render.
#include "host/call.h"
#include "host/callbacks/tables.h"
#include "host/frame.h"
#include "host/instance.h"

namespace flumo::host {

namespace {

PF_RenderRequest render_request(const FrameState& state) {
    PF_RenderRequest request{};
    request.rect = state.request_rect;
    request.channel_mask = PF_ChannelMask_ARGB;
    return request;
}

void write_time_and_place(const FrameState& state, PF_InData& in_data) {
    const FrameRequest& request = state.request;
    in_data.time_scale = static_cast<A_u_long>(request.rate.num);
    in_data.time_step = request.rate.den;
    in_data.local_time_step = request.rate.den * request.local_step;
    in_data.current_time = request.frame * request.rate.den;
    in_data.total_time = in_data.current_time + in_data.time_step;
    in_data.width = request.width;
    in_data.height = request.height;
    in_data.downsample_x = request.downsample_x;
    in_data.downsample_y = request.downsample_y;
    in_data.extent_hint = state.request_rect;
}

/// Frees the pre-render data of a frame at its end.
struct PreRenderData {
    void* data = nullptr;
    PF_DeletePreRenderDataFunc free_data = nullptr;

    PreRenderData() = default;
    PreRenderData(const PreRenderData&) = delete;
    PreRenderData& operator=(const PreRenderData&) = delete;
    ~PreRenderData() {
        if (free_data) free_data(data);
    }
};

/// One frame from its request to the world.
class FrameRun {
  public:
    FrameRun(Instance& instance, const FrameRequest& request, const PF_InData& in_data)
        : instance_(instance),
          state_(begin_frame(request, instance.host().input_layers())),
          in_data_(in_data) {
        write_time_and_place(state_, in_data_);
    }

    PF_PreRenderOutput pre_render() {
        PF_PreRenderInput input{};
        input.output_request = render_request(state_);
        input.bitdepth = static_cast<short>(state_.request.depth);
        PF_PreRenderOutput output = state_.request.pre_render_output;
        PF_PreRenderCallbacks callbacks = pre_render_callbacks();
        PF_PreRenderExtra extra{&input, &output, &callbacks};
        send(PF_Cmd_SMART_PRE_RENDER, &extra);
        data_.data = output.pre_render_data;
        data_.free_data = output.delete_pre_render_data_func;
        return output;
    }

    /// What a host shows for an empty result: the input layer unchanged.
    void copy_input(World& output) const {
        const PF_EffectWorld& record = state_.input_record;
        const PF_LRect place{record.origin_x, record.origin_y, record.origin_x + record.width,
                             record.origin_y + record.height};
        const PF_LRect common = intersection(place, state_.request_rect);
        output.reshape(output_shape(state_.request, common));
        for (int y = 0; y < output.height(); ++y) {
            for (int x = 0; x < output.width(); ++x)
                output.set_rgba(x, y,
                                state_.input->rgba(common.left - place.left + x, common.top - place.top + y));
        }
    }

    void render(World& output) {
        PF_SmartRenderInput input{};
        input.output_request = render_request(state_);
        input.bitdepth = static_cast<short>(state_.request.depth);
        input.pre_render_data = data_.data;
        PF_SmartRenderCallbacks callbacks = smart_render_callbacks();
        PF_SmartRenderExtra extra{&input, &callbacks};
        state_.output = &output;
        send(PF_Cmd_SMART_RENDER, &extra);
    }

  private:
    void send(PF_Cmd command, void* extra) {
        Call call(instance_.host(), &instance_);
        call.frame = &state_;
        call.params.reserve(instance_.host().controls().size());
        PF_OutData out_data{};
        out_data.global_data = in_data_.global_data;
        out_data.sequence_data = in_data_.sequence_data;
        std::vector<Value> values;
        std::vector<PF_ParamDef> params;
        std::vector<PF_ParamDef*> pointers;
        if (state_.request.gives_params) params = instance_.params_at(state_.request.frame, values);
        for (PF_ParamDef& param : params)
            pointers.push_back(&param);
        PF_ParamDef** array = pointers.empty() ? nullptr : pointers.data();
        const Outcome outcome = instance_.host().run(call, command, in_data_, out_data, array, extra);
        if (call.problem) std::rethrow_exception(call.problem);
        throw_on_error(command, outcome);
    }

    Instance& instance_;
    FrameState state_;
    PF_InData in_data_;
    PreRenderData data_;
};

void judge_plan(Host& host, const PF_PreRenderOutput& plan) {
    const PF_LRect inside = intersection(plan.result_rect, plan.max_result_rect);
    const bool fits = inside.left == plan.result_rect.left && inside.right == plan.result_rect.right &&
                      inside.top == plan.result_rect.top && inside.bottom == plan.result_rect.bottom;
    if (!is_empty(plan.result_rect) && !fits) {
        host.accounting().misuse(MisuseKind::kAnnouncement,
                                 "announced a result that reaches beyond its largest result");
    }
}

}  // namespace

World Instance::render(const FrameRequest& request) {
    World output;
    render(request, output);
    return output;
}

void Instance::render(const FrameRequest& request, World& output) {
    FrameRun run(*this, request, new_in_data());
    const PF_PreRenderOutput plan = run.pre_render();
    judge_plan(host_, plan);
    if (is_empty(plan.result_rect)) {
        run.copy_input(output);
        return;
    }
    output.reshape(output_shape(request, plan.result_rect));
    run.render(output);
}

FramePlan Instance::plan(const FrameRequest& request) {
    FrameRun run(*this, request, new_in_data());
    const PF_PreRenderOutput plan = run.pre_render();
    return {plan.result_rect, plan.max_result_rect};
}

}  // namespace flumo::host

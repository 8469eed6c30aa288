#include "effect/render/smart_render.h"

#include <glbinding/gl33core/gl.h>

#include <optional>

#include "effect/gpu/gl_context.h"
#include "effect/gpu/render_data.h"
#include "effect/gpu/resources.h"
#include "effect/gpu/saved_context.h"
#include "effect/gpu/software_driver.h"
#include "effect/licence/licence.h"
#include "effect/params/param_snapshot.h"
#include "effect/render/bind_uniforms.h"
#include "effect/render/download.h"
#include "effect/render/passes.h"
#include "effect/render/pixel_format.h"
#include "effect/render/select_target.h"
#include "effect/render/smart_pre_render.h"
#include "effect/suites/errors.h"
#include "effect/suites/suite_access.h"
#include "effect/suites/suite_handler.h"

using namespace gl33core;

namespace flumo {

namespace {

using RenderData = AESDK_OpenGL_EffectRenderData;

/// What one call gathers. The worlds are the host's and stay valid until they are checked in.
struct Frame {
    PF_InData* in_data;
    PF_OutData* out_data;
    PF_SmartRenderExtra* extra;
    ParamSnapshot snapshot{};
    std::optional<AEGP_SuiteHandler> suites{};
    PF_EffectWorld* inputWorld = nullptr;
    PF_EffectWorld* outputWorld = nullptr;
    const PF_WorldSuite2* worldSuite = nullptr;
};

PF_Err BuildSuites(Frame& frame) {
    return CommandResult([&frame] { frame.suites.emplace(frame.in_data->pica_basicP); });
}

PF_Err AcquireWorldSuite(Frame& frame) {
    const void* suite = nullptr;
    const PF_Err err = AEFX_AcquireSuite(frame.in_data, frame.out_data, kPFWorldSuite, kPFWorldSuiteVersion2,
                                         "Couldn't load suite.", &suite);
    frame.worldSuite = static_cast<const PF_WorldSuite2*>(suite);
    return err;
}

/// Everything that the frame needs from the host before any GL call. The suites are built even when a
/// control could not be read; that error comes first.
PF_Err Gather(Frame& frame) {
    const PF_ProgPtr effect_ref = frame.in_data->effect_ref;
    const PF_SmartRenderCallbacks& host = *frame.extra->cb;
    frame.snapshot.in_data = frame.in_data;
    PF_Err err = CommandResult([&frame] { return TakeParamSnapshot(frame.snapshot); });
    const PF_Err suitesErr = BuildSuites(frame);
    if (err == PF_Err_NONE) err = suitesErr;
    if (err == PF_Err_NONE) {
        err = host.checkout_layer_pixels(effect_ref, kInputCheckoutId, &frame.inputWorld);
    }
    if (err == PF_Err_NONE) err = host.checkout_output(effect_ref, &frame.outputWorld);
    if (err == PF_Err_NONE) err = AcquireWorldSuite(frame);
    return err;
}

// A failed start leaves contextStarted false, and the thread's next frame tries again.
void StartOnFirstFrame(RenderData& renderData) {
    if (renderData.contextStarted) return;
    AESDK_OpenGL_StartContext(renderData, CommonData);
    renderData.contextStarted = true;
}

const PixelFormatRow& InputFormat(const Frame& frame) {
    PF_PixelFormat format = PF_PixelFormat_INVALID;
    ThrowOnError(frame.worldSuite->PF_GetPixelFormat(frame.inputWorld, &format));
    return PixelFormatInfo(format);
}

void DrawImage(Frame& frame, RenderData& renderData, float multiplier16bit) {
    const PF_EffectWorld& world = *frame.inputWorld;
    SelectTarget(frame.in_data, frame.out_data, renderData, renderData.resultTexture);
    glViewport(0, 0, world.width, world.height);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    BindUniformsAndDraw(frame.in_data, frame.out_data, *frame.suites, renderData, frame.snapshot, world.width,
                        world.height, world.origin_x, world.origin_y, multiplier16bit);
}

void DeliverImage(Frame& frame, const RenderData& renderData, const PixelFormatRow& format) {
    const PF_EffectWorld& world = *frame.inputWorld;
    SelectTarget(frame.in_data, frame.out_data, renderData, renderData.outputTexture);
    glClear(GL_COLOR_BUFFER_BIT);
    OutputPass(renderData, world.width, world.height, renderData.resultTexture, format.multiplier16bit);
    DownloadOutput(renderData, *frame.suites, frame.inputWorld, frame.outputWorld, frame.in_data, format);
}

/// The frame inside this thread's GL context. The caller's context is current again when it ends, also by
/// an exception. On a software driver the frames of a process take turns.
void RenderInContext(Frame& frame) {
    const SoftwareTurn turn(CommonData);
    const AESDK_OpenGL_SavedContext callersContext;
    const auto renderData = AESDK_OpenGL_RenderDataForThread();
    StartOnFirstFrame(*renderData);
    AESDK_OpenGL_MakeCurrent(*renderData);
    AESDK_OpenGL_PrepareResources(*renderData, static_cast<uint16_t>(frame.inputWorld->width),
                                  static_cast<uint16_t>(frame.inputWorld->height), 1);
    const PixelFormatRow& format = InputFormat(frame);
    DrawImage(frame, *renderData, format.multiplier16bit);
    // This build allows every frame; licensing that does not would draw its overlay here.
    static_cast<void>(LicenceAllowsFrame());
    DeliverImage(frame, *renderData, format);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    glBindTexture(GL_TEXTURE_2D, 0);
}

/// Renders the frame, then asks the host whether the user cancelled, with the caller's context current again.
/// After a failed frame the host is not asked.
PF_Err Render(Frame& frame) {
    const PF_Err err = CommandResult([&frame] { RenderInContext(frame); });
    return err != PF_Err_NONE ? err : frame.in_data->inter.abort(frame.in_data->effect_ref);
}

/// Releases everything in this order, whatever failed before: the suite is released and the layer checked in
/// even when they were never acquired. Returns the first error of the call.
PF_Err Release(Frame& frame, PF_Err err) {
    const auto keepFirst = [&err](PF_Err next) {
        if (err == PF_Err_NONE) err = next;
    };
    keepFirst(AEFX_ReleaseSuite(frame.in_data, frame.out_data, kPFWorldSuite, kPFWorldSuiteVersion2,
                                "Couldn't release suite."));
    keepFirst(ReleaseParamSnapshot(frame.snapshot, frame.in_data));
    keepFirst(frame.extra->cb->checkin_layer_pixels(frame.in_data->effect_ref, kInputCheckoutId));
    return err;
}

}  // namespace

PF_Err SmartRender(PF_InData* in_data, PF_OutData* out_data, PF_SmartRenderExtra* extra) {
    Frame frame{.in_data = in_data, .out_data = out_data, .extra = extra};
    PF_Err err = Gather(frame);
    if (err == PF_Err_NONE) err = Render(frame);
    return Release(frame, err);
}

}  // namespace flumo

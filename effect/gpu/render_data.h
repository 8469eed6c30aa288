// The GL records: one root for the process, one for each thread that has rendered.
#pragma once

#include <glbinding/gl/extension.h>
#include <glbinding/gl/types.h>

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "effect/gpu/look.h"

namespace flumo {

/// A hidden drawable and its GL context. The handles are the platform's own, opaque here; null means
/// not made. The root record's contextStarted stays false.
struct AESDK_OpenGL_EffectCommonData {
    AESDK_OpenGL_EffectCommonData() = default;
    AESDK_OpenGL_EffectCommonData(const AESDK_OpenGL_EffectCommonData&) = delete;
    AESDK_OpenGL_EffectCommonData& operator=(const AESDK_OpenGL_EffectCommonData&) = delete;
    /// Leaves no context current on the calling thread.
    virtual ~AESDK_OpenGL_EffectCommonData();

    bool contextStarted = false;
    std::set<gl::GLextension> extensions;
    void* window = nullptr;
    void* deviceContext = nullptr;
    void* renderContext = nullptr;
    std::string windowClassName;
    /// The context's driver draws on the CPU; known from when the context was started.
    bool softwareDriver = false;
};

/// Geometry of the overlay pass that licensing may draw: GL names, and the capacity of each buffer in bytes.
struct OverlayBuffers {
    gl::GLuint vertexArray = 0;
    gl::GLuint positionBuffer = 0;
    gl::GLuint colourBuffer = 0;
    gl::GLsizeiptr positionCapacity = 0;
    gl::GLsizeiptr colourCapacity = 0;
};

/// One thread's GL objects. A name of 0 is not made yet; any other is alive in this record's context.
struct AESDK_OpenGL_EffectRenderData : AESDK_OpenGL_EffectCommonData {
    AESDK_OpenGL_EffectRenderData() = default;
    AESDK_OpenGL_EffectRenderData(const AESDK_OpenGL_EffectRenderData&) = delete;
    AESDK_OpenGL_EffectRenderData& operator=(const AESDK_OpenGL_EffectRenderData&) = delete;
    /// Makes the record's context current on the calling thread and deletes what it holds.
    ~AESDK_OpenGL_EffectRenderData() override;

    gl::GLuint framebuffer = 0;
    gl::GLuint renderbuffer = 0;
    /// Frame size in pixels for which the sized objects were made.
    uint16_t width = 0;
    uint16_t height = 0;
    /// Non-zero when largeTexture is twice the frame on each axis.
    uint8_t doubleSize = 0;
    gl::GLuint mainProgram = 0;
    gl::GLuint colorProgram = 0;
    gl::GLuint copyProgram = 0;
    gl::GLuint blurProgram = 0;
    gl::GLuint outputProgram = 0;
    gl::GLuint largeTexture = 0;
    gl::GLuint resultTexture = 0;
    gl::GLuint outputTexture = 0;
    OverlayBuffers overlayBuffers;
    gl::GLuint quadVertexArray = 0;
    gl::GLuint quadVertexBuffer = 0;
    gl::GLuint frameVertexArray = 0;
    gl::GLuint frameVertexBuffer = 0;
    /// The main program for the looks drawn last, the newest first; empty on a hardware driver.
    std::vector<LookProgram> lookPrograms;
};

/// The root record; empty outside global set-up and set-down. Written only by those two, which the host
/// never runs beside a frame, and read without a lock.
extern std::shared_ptr<AESDK_OpenGL_EffectCommonData> SharedCommonData;
/// The same record, as the first frame of a thread takes it.
extern AESDK_OpenGL_EffectCommonData* CommonData;
/// The render records by ThreadRenderIndex. Entries stay until global set-down, also when their thread ends.
extern std::map<int32_t, std::shared_ptr<AESDK_OpenGL_EffectRenderData>> RenderDataTable;
/// Guards RenderDataTable, for look-up and clearing only: no GL call of a frame is made under it.
extern std::recursive_mutex RenderDataMutex;
/// The next thread number to give out.
extern std::atomic<int32_t> NextThreadRenderIndex;
/// This thread's number, -1 until its first frame; it stays with the thread over set-down and set-up.
extern constinit thread_local int32_t ThreadRenderIndex;

/// The calling thread's record, made on first use; its context is not started here. The caller holds it
/// for one frame. Throws std::system_error when the lock fails, std::bad_alloc without memory.
std::shared_ptr<AESDK_OpenGL_EffectRenderData> AESDK_OpenGL_RenderDataForThread();

}  // namespace flumo

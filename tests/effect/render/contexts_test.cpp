// Contexts, the objects in them, and the small steps of a frame that a frame itself does not show.
#include <EGL/egl.h>
#include <glbinding/gl/gl.h>
#include <gmock/gmock.h>

#include <future>

#include "effect/gpu/gl/draw.h"
#include "effect/gpu/gl/fault.h"
#include "effect/gpu/gl/program.h"
#include "effect/gpu/gl/shader_log.h"
#include "effect/gpu/gl_context.h"
#include "effect/gpu/resources.h"
#include "effect/gpu/target.h"
#include "effect/gradient/value/gradient.h"
#include "effect/render/passes.h"
#include "effect/render/ramp_texture.h"
#include "effect/render/select_target.h"
#include "effect/render/upload.h"
#include "effect/shaders/shader_texts.h"
#include "tests/effect/render/effect_fixture.h"
#include "tests/effect/render/gl_scope.h"

using namespace gl;

namespace flumo::test {
namespace {

using RenderData = AESDK_OpenGL_EffectRenderData;

template <class Work>
auto on_other_thread(Work work) {
    return std::async(std::launch::async, std::move(work)).get();
}

TEST(Contexts, BelongToTheirThreadAndShareTextures) {
    const GlScope gl;
    const auto [untouched, other] = on_other_thread([] {
        const int32_t before = ThreadRenderIndex;
        const GlScope theirs;
        return std::pair(before, AESDK_OpenGL_RenderDataForThread());
    });
    EXPECT_EQ(untouched, -1);
    EXPECT_NE(other->renderContext, gl->renderContext);
    EXPECT_EQ(AESDK_OpenGL_RenderDataForThread().get(), &*gl);
    EXPECT_FALSE(CommonData->contextStarted);
    EXPECT_FALSE(CommonData->extensions.empty());
    EXPECT_FALSE(other->extensions.empty());
    GLint major = 0, minor = 0;
    glGetIntegerv(GL_MAJOR_VERSION, &major);
    glGetIntegerv(GL_MINOR_VERSION, &minor);
    EXPECT_GE(major * 10 + minor, 33);
    const std::vector<Texel> texel = {{0.25F, 0.5F, 0.75F, 1}};
    const GLuint texture = make_texture(1, 1, texel);
    glFinish();
    AESDK_OpenGL_MakeCurrent(*CommonData);
    EXPECT_EQ(read_texture(texture), texel);
    AESDK_OpenGL_MakeCurrent(*gl);
    glDeleteTextures(1, &texture);
    EXPECT_THAT(driver_lines(),
                testing::MatchesRegex("\nOpenGL Version:  [0-9]+\\.[0-9]+\nOpenGL Vendor:   [^\n]+\n"
                                      "OpenGL Renderer: [^\n]+\nOpenGL Revision: 31811 \\(gl\\.xml\\)\n\n"));
}

// Global set-down runs on any thread, also on one that has never drawn.
TEST(Records, EndOnAnotherThreadWithAllThatTheyMade) {
    const GlScope gl;
    auto record = std::make_unique<RenderData>();
    AESDK_OpenGL_StartContext(*record, CommonData);
    {
        const CallCounter counter;
        AESDK_OpenGL_PrepareResources(*record, 8, 4, 1);
        for (const char* call : {"glCreateShader", "glDetachShader", "glDeleteShader"})
            EXPECT_EQ(counter.calls(call), 2 * 5) << call;
    }
    const GLuint program = record->mainProgram;
    const GLuint texture = record->largeTexture;
    AESDK_OpenGL_MakeCurrent(*gl);
    EXPECT_EQ(glIsTexture(texture), GL_TRUE);
    const CallCounter counter;
    on_other_thread([&] { record.reset(); });
    EXPECT_EQ(counter.calls("glDelete"), 3 + 5 + 1 + 1 + 2 + 2)
        << "textures, programs, framebuffer, renderbuffer, buffers, arrays";
    EXPECT_EQ(glIsTexture(texture), GL_FALSE);
    EXPECT_EQ(glIsProgram(program), GL_FALSE);
    { const RenderData untouched; }
    EXPECT_EQ(counter.calls("glDelete"), 14);
}

struct Made {
    int textures, framebuffers, arrays, programs;
    bool operator==(const Made&) const = default;
};

// A new frame size replaces all that has it, another factor of the large image that image alone.
TEST(Records, MakeAnewOnlyWhatASizeChanges) {
    struct Case {
        uint16_t width, height;
        uint8_t double_size;
        Made made;
        std::pair<int, int> large;
    };
    const Case cases[] = {{8, 4, 1, {0, 0, 0, 0}, {16, 8}},
                          {6, 4, 1, {3, 1, 1, 0}, {12, 8}},
                          {6, 5, 1, {3, 1, 1, 0}, {12, 10}},
                          {6, 5, 0, {1, 0, 0, 0}, {6, 5}}};
    const GlScope gl;
    AESDK_OpenGL_PrepareResources(*gl, 8, 4, 1);
    for (const Case& it : cases) {
        const CallCounter counter;
        AESDK_OpenGL_PrepareResources(*gl, it.width, it.height, it.double_size);
        const Made made{counter.calls("glGenTextures"), counter.calls("glGenFramebuffers"),
                        counter.calls("glGenVertexArrays"), counter.calls("glCreateProgram")};
        EXPECT_EQ(made, it.made) << it.width;
        const Made deleted{counter.calls("glDeleteTextures"), counter.calls("glDeleteRenderbuffers"),
                           counter.calls("glDeleteBuffers"), counter.calls("glDeleteProgram")};
        EXPECT_EQ(deleted, it.made) << it.width;
        const auto texels = [](std::pair<int, int> size) {
            return static_cast<size_t>(size.first * size.second);
        };
        EXPECT_EQ(read_texture(gl->largeTexture).size(), texels(it.large));
        for (const GLuint texture : {gl->resultTexture, gl->outputTexture})
            EXPECT_EQ(read_texture(texture).size(), texels({it.width, it.height}));
    }
}

// The same place as the drivers of Mesa, NVIDIA and AMD write it, and logs that name none.
TEST(ShaderLogs, QuoteTheLineThatTheyName) {
    const char* const text = "#version 330\n\n  x = 1;\n";
    const auto quote = [text](const char* log) { return ShaderLogMessage("failed", log, text); };
    for (const std::string log :
         {"0:3(5): error: syntax error", "0(3) : error C1503: undefined variable \"x\"",
          "ERROR: 0:3: 'x' : undeclared identifier"}) {
        EXPECT_EQ(quote((log + "\nmore").c_str()), "failed\n" + log + "\n    3 |   x = 1;\nmore");
    }
    for (const std::string log :
         {"error: no main()", "0:4(1): beyond the text", "10:3 is no place", "0(x)", "0:"})
        EXPECT_EQ(quote(log.c_str()), "failed\n" + log);
}

template <class Fault>
int code_of(const std::function<void()>& work) {
    try {
        work();
    } catch (const Fault& fault) {
        if constexpr (std::is_integral_v<Fault>)
            return fault;
        else
            return fault.code;
    }
    return 0;
}

TEST(Faults, TellTheirKind) {
    const GlScope gl;
    AESDK_OpenGL_PrepareResources(*gl, 8, 4, 1);
    const char* const broken = "#version 330\nvoid main() { colourOut = 1; }\n";
    const char* const unlinkable =
        "#version 330\nin vec3 out_uvs;\nout vec4 colourOut;\nvoid main() { colourOut = out_uvs.xyzz; }\n";
    const std::array<int, 2> list = {kAttributePosition, kAttributeUVs};
    struct Case {
        const char* vertex;
        const char* fragment;
        const char* log;
    };
    const Case cases[] = {{broken, kCopyFragmentText, "Flumo: a vertex shader does not compile\n.*colourOut"},
                          {kUvVertexText, broken, "Flumo: a fragment shader does not compile\n.*colourOut"},
                          {kUvVertexText, unlinkable, "Flumo: a program does not link\n.*out_uvs"}};
    for (const Case& it : cases) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(
            code_of<AESDK_OpenGL_Fault>([&] { AESDK_OpenGL_BuildProgram(it.vertex, it.fragment, list); }), 6);
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_THAT(log, testing::ContainsRegex(it.log));
        EXPECT_EQ(it.fragment == unlinkable,
                  log.find("\n    2 | void main() { colourOut = 1; }\n") == log.npos)
            << log;
    }
    EXPECT_EQ(code_of<AESDK_OpenGL_Fault>([&] { AESDK_OpenGL_BindTarget(*gl, 0); }), 3);
    RenderData nowhere, unmade;
    nowhere.renderContext = &nowhere;
    EXPECT_EQ(code_of<AESDK_OpenGL_Fault>([&] { AESDK_OpenGL_StartContext(unmade, &nowhere); }), 1);
    // The user is told of an incomplete target that is found after the binding.
    PF_UtilCallbacks utils{};
    utils.ansi.sprintf = std::sprintf;
    PF_InData in{};
    in.utils = &utils;
    PF_OutData out{};
    out.out_flags = 1;
    EXPECT_EQ(code_of<PF_Err>([&] { ReportFramebufferStatus(&in, &out); }), 4);
    EXPECT_EQ(out.out_flags, 1 | 256);
    EXPECT_STREQ(out.return_msg, "Framebuffer incomplete, missing attachment!");
    const std::pair<unsigned, const char*> words[] = {
        {36053, "OK"},
        {36054, "Framebuffer incomplete, incomplete attachment!"},
        {36055, "Framebuffer incomplete, missing attachment!"},
        {36059, "Framebuffer incomplete, missing draw buffer!"},
        {36060, "Framebuffer incomplete, missing read buffer!"},
        {36061, "Unsupported framebuffer format!"},
        {36182, "Unknown error!"},
    };
    for (const auto& [status, text] : words)
        EXPECT_STREQ(FramebufferStatusWords(static_cast<GLenum>(status)), text);
}

/// Draws texels over a clear colour through the copy program.
Texel copied(const RenderData& record, BlendMode mode, const Texel& below, const Texel& above) {
    const GLuint texture = make_texture(4, 1, std::vector<Texel>(4, above));
    AESDK_OpenGL_BindTarget(record, record.resultTexture);
    glViewport(0, 0, 4, 1);
    glClearColor(below[0], below[1], below[2], below[3]);
    glClear(GL_COLOR_BUFFER_BIT);
    ResolvePass(record, 4, 1, texture, mode, false);
    glDeleteTextures(1, &texture);
    return read_texture(record.resultTexture)[0];
}

TEST(Passes, BlendAsTheirNumberSays) {
    const GlScope gl;
    AESDK_OpenGL_PrepareResources(*gl, 4, 1, 1);
    const Texel above = {1, 0.5F, 0.25F, 0.5F}, below = {0.25F, 0.5F, 1, 0.5F};
    EXPECT_EQ(copied(*gl, BlendMode::kOver, below, above), (Texel{0.625F, 0.5F, 0.625F, 0.75F}));
    EXPECT_EQ(copied(*gl, BlendMode::kAdd, below, above), (Texel{0.75F, 0.75F, 1.125F, 0.75F}));
    EXPECT_EQ(copied(*gl, BlendMode::kOff, below, above), above);
    EXPECT_EQ(glIsEnabled(GL_BLEND), GL_FALSE) << "a pass leaves blending off";
    glEnable(GL_BLEND);
    SetBlendMode(BlendMode{0});
    SetBlendMode(BlendMode{4});
    EXPECT_EQ(glIsEnabled(GL_BLEND), GL_TRUE) << "other numbers change nothing";
    SetBlendMode(BlendMode::kOff);
}

// No frame of this build draws with the colour text, so it is drawn here: colours as they come, coordinates
// from the place on the target.
TEST(Passes, ColourTextFollowsThePlaceOnTheTarget) {
    const GlScope gl;
    AESDK_OpenGL_PrepareResources(*gl, 4, 1, 1);
    const std::array<int, 4> attributes = {kAttributePosition, 7, -1, kAttributeColor};
    const char* text =
        "#version 330\nin vec2 out_uvs;\nin vec4 out_col;\nout vec4 colourOut;\n"
        "void main() { colourOut = vec4(out_uvs, out_col.xw); }\n";
    const GLuint probe = AESDK_OpenGL_BuildProgram(kColorVertexText, text, attributes);
    RenderData& record = *gl;
    const auto drawn = [&](GLuint program) {
        const GLuint copy = std::exchange(record.copyProgram, program);
        glVertexAttrib4f(2, 0.125F, 0.25F, 0.5F, 0.75F);
        const Texel texel = copied(record, BlendMode::kOff, {}, {});
        record.copyProgram = copy;
        return texel;
    };
    EXPECT_EQ(drawn(record.colorProgram), (Texel{0.125F, 0.25F, 0.5F, 0.75F}));
    EXPECT_EQ(drawn(probe), (Texel{0.125F, 0.5F, 0.125F, 0.75F}));
    glDeleteProgram(probe);
}

}  // namespace
}  // namespace flumo::test

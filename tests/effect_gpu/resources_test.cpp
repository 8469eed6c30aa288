// What a frame's objects are, and when they are made anew.
#include "effect/gpu/resources.h"

#include <glbinding/gl/gl.h>

#include "effect/gpu/draw.h"
#include "effect/gpu/fault.h"
#include "effect/gpu/program.h"
#include "effect/gpu/target.h"
#include "effect/shaders/shader_texts.h"
#include "tests/effect_gpu/gl_fixture.h"

using namespace gl;

namespace flumo::tests {
namespace {

using Data = AESDK_OpenGL_EffectRenderData;

/// The names of all objects of a record.
struct Names {
    explicit Names(const Data& d)
        : programs{d.mainProgram, d.colorProgram, d.copyProgram, d.blurProgram, d.outputProgram},
          sized{d.framebuffer,   d.renderbuffer,    d.resultTexture,
                d.outputTexture, d.quadVertexArray, d.quadVertexBuffer},
          frame{d.frameVertexArray, d.frameVertexBuffer},
          large(d.largeTexture) {}

    std::vector<GLuint> programs;
    std::vector<GLuint> sized;
    std::vector<GLuint> frame;
    GLuint large;
};

std::pair<GLint, GLint> TextureSize(GLuint texture) {
    std::pair<GLint, GLint> size;
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &size.first);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &size.second);
    glBindTexture(GL_TEXTURE_2D, 0);
    return size;
}

QuadVertices ReadBuffer(GLuint buffer) {
    QuadVertices vertices{};
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glGetBufferSubData(GL_ARRAY_BUFFER, 0, sizeof(vertices), vertices.data());
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    return vertices;
}

class ResourcesTest : public GlTest {
  protected:
    void SetUp() override {
        GlTest::SetUp();
        AESDK_OpenGL_PrepareResources(Record(), 8, 4, 1);
    }
};

TEST_F(ResourcesTest, RepeatMakesNothing) {
    const Names before(Record());
    const CallCounter counter;
    AESDK_OpenGL_PrepareResources(Record(), 8, 4, 1);
    EXPECT_EQ(counter.CallsLike("gl"), 0);
}

TEST_F(ResourcesTest, NewSizeKeepsProgramsAndFrameQuadAndReplacesTheRest) {
    const Names before(Record());
    const CallCounter counter;
    AESDK_OpenGL_PrepareResources(Record(), 6, 4, 1);
    const Names after(Record());
    EXPECT_EQ(after.programs, before.programs);
    EXPECT_EQ(after.frame, before.frame);
    EXPECT_EQ(counter.Calls("glDeleteTextures"), 3);
    EXPECT_EQ(counter.Calls("glGenTextures"), 3);
    EXPECT_EQ(counter.Calls("glDeleteFramebuffers"), 1);
    EXPECT_EQ(counter.Calls("glDeleteRenderbuffers"), 1);
    EXPECT_EQ(counter.Calls("glDeleteVertexArrays"), 1);
    EXPECT_EQ(counter.Calls("glDeleteBuffers"), 1);
    for (const GLuint name : after.sized)
        EXPECT_NE(name, 0u);
    EXPECT_EQ(TextureSize(Record().largeTexture), std::pair(12, 8));
    EXPECT_EQ(TextureSize(Record().resultTexture), std::pair(6, 4));
    EXPECT_EQ(TextureSize(Record().outputTexture), std::pair(6, 4));
    EXPECT_EQ(ReadBuffer(Record().quadVertexBuffer),
              (QuadVertices{0, 0, 0, 0, 0, 6, 0, 0, 1, 0, 0, 4, 0, 0, 1, 6, 4, 0, 1, 1}));
    EXPECT_EQ(Record().width, 6);
    EXPECT_EQ(Record().height, 4);
}

TEST_F(ResourcesTest, NewDoubleSizeAloneReplacesOnlyTheLargeTexture) {
    const Names before(Record());
    const CallCounter counter;
    AESDK_OpenGL_PrepareResources(Record(), 8, 4, 0);
    const Names after(Record());
    EXPECT_EQ(after.programs, before.programs);
    EXPECT_EQ(after.sized, before.sized);
    EXPECT_EQ(after.frame, before.frame);
    EXPECT_EQ(counter.Calls("glDeleteTextures"), 1);
    EXPECT_EQ(counter.Calls("glGenTextures"), 1);
    EXPECT_EQ(TextureSize(Record().largeTexture), std::pair(8, 4));
    EXPECT_EQ(TextureSize(Record().resultTexture), std::pair(8, 4));
}

TEST_F(ResourcesTest, TargetsAreFloatClampedAndLinear) {
    for (const GLuint texture : {Record().largeTexture, Record().resultTexture, Record().outputTexture}) {
        glBindTexture(GL_TEXTURE_2D, texture);
        GLint format = 0;
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT, &format);
        EXPECT_EQ(format, 34836);
        for (const auto& [parameter, value] :
             {std::pair(GL_TEXTURE_MAG_FILTER, 9729), std::pair(GL_TEXTURE_MIN_FILTER, 9729),
              std::pair(GL_TEXTURE_WRAP_S, 33071), std::pair(GL_TEXTURE_WRAP_T, 33071)}) {
            GLint found = 0;
            glGetTexParameteriv(GL_TEXTURE_2D, parameter, &found);
            EXPECT_EQ(found, value);
        }
        glBindTexture(GL_TEXTURE_2D, 0);
        AESDK_OpenGL_BindTarget(Record(), texture);
        EXPECT_STREQ(AESDK_OpenGL_FramebufferStatusText(), "OK");
    }
}

// The quad feeds its texture coordinates through location 1 in every program that reads them, also in the
// main program, whose attribute list does not name them.
TEST_F(ResourcesTest, AttributesLieWhereTheQuadFeedsThem) {
    for (const GLuint program :
         {Record().mainProgram, Record().copyProgram, Record().blurProgram, Record().outputProgram}) {
        EXPECT_EQ(glGetAttribLocation(program, "Position"), 0);
        EXPECT_EQ(glGetAttribLocation(program, "UVs"), 1);
        EXPECT_EQ(glGetFragDataLocation(program, "colourOut"), 0);
    }
    EXPECT_EQ(glGetAttribLocation(Record().colorProgram, "Position"), 0);
    EXPECT_EQ(glGetAttribLocation(Record().colorProgram, "Color"), 2);
}

A_long FaultOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const AESDK_OpenGL_Fault& fault) {
        return fault.code;
    }
    return 0;
}

TEST_F(ResourcesTest, ProgramThatDoesNotCompileOrLinkIsFault6) {
    const char* const broken = "#version 330\nvoid main() { colourOut = 1; }\n";
    const char* const unlinkable =
        "#version 330\nin vec3 out_uvs;\nout vec4 colourOut;\nvoid main() { colourOut = out_uvs.xyzz; }\n";
    const std::array<int, 4> list = {kAttributePosition, kAttributeUVs, 7, -1};
    EXPECT_EQ(FaultOf([&] { AESDK_OpenGL_BuildProgram(broken, kCopyFragmentText, list); }), 6);
    EXPECT_EQ(FaultOf([&] { AESDK_OpenGL_BuildProgram(kUvVertexText, broken, list); }), 6);
    EXPECT_EQ(FaultOf([&] { AESDK_OpenGL_BuildProgram(kUvVertexText, unlinkable, list); }), 6);
    ForgetComplaints();
    GLuint program = 0;
    EXPECT_EQ(FaultOf([&] { program = AESDK_OpenGL_BuildProgram(kUvVertexText, kCopyFragmentText, list); }),
              0);
    EXPECT_EQ(glIsProgram(program), GL_TRUE);
    GLint attached = -1;
    glGetProgramiv(program, GL_ATTACHED_SHADERS, &attached);
    EXPECT_EQ(attached, 0);
    glDeleteProgram(program);
}

TEST_F(ResourcesTest, IncompleteTargetIsFault3) {
    EXPECT_EQ(FaultOf([&] { AESDK_OpenGL_BindTarget(Record(), 0); }), 3);
    EXPECT_STREQ(AESDK_OpenGL_FramebufferStatusText(), "Framebuffer incomplete, missing attachment!");
    EXPECT_EQ(FaultOf([&] { AESDK_OpenGL_BindTarget(Record(), Record().resultTexture); }), 0);
}

TEST(FramebufferStatusTest, WordsOfEveryStatus) {
    const std::pair<unsigned, const char*> words[] = {
        {36053, "OK"},
        {36054, "Framebuffer incomplete, incomplete attachment!"},
        {36055, "Framebuffer incomplete, missing attachment!"},
        {36059, "Framebuffer incomplete, missing draw buffer!"},
        {36060, "Framebuffer incomplete, missing read buffer!"},
        {36061, "Unsupported framebuffer format!"},
        {36182, "Unknown error!"},
        {0, "Unknown error!"},
    };
    for (const auto& [status, text] : words) {
        EXPECT_STREQ(FramebufferStatusWords(static_cast<GLenum>(status)), text) << status;
    }
}

}  // namespace
}  // namespace flumo::tests

#include "tests/effect/render/studio.h"

#include <EGL/egl.h>
#include <dlfcn.h>
#include <glbinding/gl/gl.h>
#include <gmock/gmock.h>

#include <cstring>
#include <memory>

#include "effect/entry/effect_main.h"
#include "host/module/module.h"
#include "tests/effect/render/gl_scope.h"

namespace flumo::test {
namespace {

/// The effect and the host of the whole program; the end of the tests is also the end of the effect's life.
class Studio : public testing::Environment {
  public:
    // At the end of the process libEGL unloads the driver, and what Mesa holds until then would be a leak to
    // a leak checker; so the driver stays.
    void SetUp() override {
        dlopen("libEGL_mesa.so.0", RTLD_NOW | RTLD_NODELETE);
        testing::internal::CaptureStdout();
        host.start();
        driver_lines = testing::internal::GetCapturedStdout();
        const GlScope gl;
        gl::glEnable(gl::GL_DEBUG_OUTPUT);
        gl::glEnable(gl::GL_DEBUG_OUTPUT_SYNCHRONOUS);
        gl::glDebugMessageCallback(hear, this);
    }

    void TearDown() override {
        host.global_setdown();
        EXPECT_TRUE(host.accounting().clean()) << host.accounting().describe();
        EXPECT_TRUE(RenderDataTable.empty());
        EXPECT_EQ(CommonData, nullptr);
    }

    static void GL_APIENTRY hear(gl::GLenum, gl::GLenum type, gl::GLuint, gl::GLenum, gl::GLsizei,
                                 const gl::GLchar* message, const void* studio) {
        if (type != gl::GL_DEBUG_TYPE_ERROR && type != gl::GL_DEBUG_TYPE_UNDEFINED_BEHAVIOR &&
            type != gl::GL_DEBUG_TYPE_DEPRECATED_BEHAVIOR) {
            return;
        }
        const_cast<Studio*>(static_cast<const Studio*>(studio))->complaints.emplace_back(message);
    }

    host::Module module{EffectMain, PluginDataEntryFunction};
    host::Host host{module};
    std::string driver_lines;
    /// What the driver said of this thread's calls.
    std::vector<std::string> complaints;
};

Studio* const studio = dynamic_cast<Studio*>(testing::AddGlobalTestEnvironment(new Studio));

// A gradient's stored form: a count, then position, kind, red, green, blue and alpha of each stop.
std::vector<std::byte> stored(const Stops& stops) {
    struct Stored {
        float at;
        int32_t kind;
        float r, g, b, a;
    };
    std::vector<std::byte> bytes(4 + stops.size() * sizeof(Stored));
    const auto count = static_cast<int32_t>(stops.size());
    std::memcpy(bytes.data(), &count, 4);
    for (size_t i = 0; i < stops.size(); ++i) {
        // The alpha of a stop shows nowhere.
        const Stored stop{stops[i].at, stops[i].kind, stops[i].r, stops[i].g, stops[i].b, 0.25F};
        std::memcpy(bytes.data() + 4 + i * sizeof(Stored), &stop, sizeof(Stored));
    }
    return bytes;
}

host::Value value_of(int index, const Setting& setting) {
    if (const auto* number = std::get_if<double>(&setting.value)) return *number;
    if (const auto* layer = std::get_if<host::Layer>(&setting.value)) return *layer;
    return host::Arbitrary(host::ArbitraryValue::unflatten(studio->host, studio->host.control(index),
                                                           stored(std::get<Stops>(setting.value))));
}

}  // namespace

Look with(Look base, const Look& changes) {
    for (const auto& [section, setting] : changes)
        base.insert_or_assign(section, setting);
    return base;
}

host::Host& studio_host() {
    return studio->host;
}

std::unique_ptr<host::Instance> instance_of(const Look& look) {
    auto instance = studio->host.new_instance();
    for (const auto& [section, setting] : look) {
        const int index = static_cast<int>(section) + 1;
        instance->set(index, value_of(index, setting));
    }
    return instance;
}

host::World shoot(const Shot& shot) {
    host::Accounting& accounting = studio->host.accounting();
    studio->complaints.clear();
    host::World frame = instance_of(shot.look)->render(shot.request);
    EXPECT_TRUE(frame.guards_intact());
    EXPECT_TRUE(accounting.idle()) << accounting.describe();
    EXPECT_THAT(accounting.misuses(), testing::IsEmpty());
    EXPECT_THAT(studio->complaints, testing::IsEmpty());
    EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
    EXPECT_EQ(eglQueryAPI(), static_cast<EGLenum>(EGL_OPENGL_ES_API)) << "what every thread starts with";
    return frame;
}

std::string driver_lines() {
    return studio->driver_lines;
}

}  // namespace flumo::test

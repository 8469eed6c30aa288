#include "tests/frames/studio.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "host/module.h"

namespace flumo::test {
namespace {

// The module and the host of the whole program; the end of the tests is also the end of the effect's life.
class Studio : public testing::Environment {
  public:
    // At the end of the process libEGL unloads the driver, and what Mesa holds until then would be a leak to
    // a leak checker; so the driver stays.
    void SetUp() override {
        dlopen("libEGL_mesa.so.0", RTLD_NOW | RTLD_NODELETE);
        module_ = std::make_unique<host::Module>(FLUMO_MODULE);
        host_ = std::make_unique<host::Host>(*module_);
        testing::internal::CaptureStdout();
        host_->start();
        driver_lines_ = testing::internal::GetCapturedStdout();
    }

    void TearDown() override {
        host_->global_setdown();
        EXPECT_TRUE(host_->accounting().clean()) << host_->accounting().describe();
        host_.reset();
        module_.reset();
    }

    host::Host& host() { return *host_; }
    const std::string& driver_lines() const { return driver_lines_; }

  private:
    std::unique_ptr<host::Module> module_;
    std::unique_ptr<host::Host> host_;
    std::string driver_lines_;
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
        const Stored stop{stops[i].at, stops[i].kind, stops[i].r, stops[i].g, stops[i].b, 1};
        std::memcpy(bytes.data() + 4 + i * sizeof(Stored), &stop, sizeof(Stored));
    }
    return bytes;
}

void apply(host::Instance& instance, Section section, const Setting& setting) {
    const int index = static_cast<int>(section) + 1;
    if (const auto* number = std::get_if<double>(&setting.value)) {
        instance.set(index, *number);
    } else if (const auto* layer = std::get_if<host::Layer>(&setting.value)) {
        instance.set(index, *layer);
    } else {
        host::Host& host = studio->host();
        instance.set(index, host::ArbitraryValue::unflatten(host, host.control(index),
                                                            stored(std::get<Stops>(setting.value))));
    }
}

}  // namespace

Look with(Look base, const Look& changes) {
    for (const auto& [section, setting] : changes)
        base.insert_or_assign(section, setting);
    return base;
}

host::World shoot(const Shot& shot) {
    host::Accounting& accounting = studio->host().accounting();
    const auto instance = studio->host().new_instance();
    for (const auto& [section, setting] : shot.look)
        apply(*instance, section, setting);
    host::World frame = instance->render(shot.request);
    EXPECT_TRUE(frame.guards_intact());
    EXPECT_TRUE(accounting.idle()) << accounting.describe();
    EXPECT_TRUE(accounting.misuses().empty()) << accounting.misuses().front();
    return frame;
}

std::string driver_lines() {
    return studio->driver_lines();
}

}  // namespace flumo::test

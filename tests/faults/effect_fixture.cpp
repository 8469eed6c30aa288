#include "tests/faults/effect_fixture.h"

#include <gtest/gtest.h>

#include "effect/params/control_table.h"
#include "tests/faults/gl_spy.h"

namespace flumo::test {
namespace {

using host::Depth;

constexpr int kWidth = 19;
constexpr int kHeight = 12;

int index_of(Section section) {
    return static_cast<int>(section) + 1;
}

host::Layer varied_layer(Depth depth) {
    auto layer = std::make_shared<host::World>(
        host::WorldShape{.width = 9, .height = 7, .depth = depth, .row_padding = 3});
    for (int y = 0; y < layer->height(); ++y) {
        for (int x = 0; x < layer->width(); ++x) {
            const auto across = static_cast<float>(x) / 8;
            const auto down = static_cast<float>(y) / 6;
            layer->set_rgba(x, y, {across, down, 1 - across, 0.5F + down / 2});
        }
    }
    return layer;
}

}  // namespace

host::FrameRequest small_frame(Depth depth) {
    return {.width = kWidth, .height = kHeight, .depth = depth, .row_padding = 5};
}

EffectFixture::EffectFixture()
    : module_(FLUMO_MODULE), host_(std::make_unique<host::Host>(module_)), alive_before_(gl_spy::alive()) {
    for (const Depth depth : kDepths)
        layers_.push_back(varied_layer(depth));
    host_->start();
    const auto instance = new_instance();
    for (const Depth depth : kDepths)
        references_.push_back(instance->render(small_frame(depth)));
}

EffectFixture::~EffectFixture() {
    host_.reset();
    EXPECT_EQ(gl_spy::alive() - alive_before_, kept_objects);
}

std::unique_ptr<host::Instance> EffectFixture::new_instance() {
    auto instance = host_->new_instance();
    instance->set(index_of(Section::Layer1), layers_[0]);
    instance->set(index_of(Section::Layer2), layers_[1]);
    instance->set(index_of(Section::Layer3), layers_[2]);
    instance->set(index_of(Section::Layer2Mult), 0.5);
    instance->set(index_of(Section::ColorizeMode), 3.0);
    instance->set(index_of(Section::LinesVisible), 1.0);
    return instance;
}

const host::World& EffectFixture::reference(Depth depth) const {
    return references_[static_cast<size_t>(depth) / 16];
}

bool EffectFixture::renders_as_before(Depth depth) {
    return new_instance()->render(small_frame(depth)).same_picture(reference(depth));
}

}  // namespace flumo::test

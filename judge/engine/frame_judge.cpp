#include "judge/engine/frame_judge.h"

#include <algorithm>
#include <cmath>

#include "host/frame.h"

namespace flumo::judge {

namespace {

constexpr std::byte kMarks[2] = {std::byte{0x5A}, std::byte{0xC3}};

host::World marked_frame(CaseContext& context, host::Instance& instance, const host::FrameRequest& request,
                         std::byte mark) {
    const host::World input = *request.input;
    host::World world(host::output_shape(request, instance.plan(request).result_rect));
    world.fill_bytes(mark);
    instance.render(request, world);
    context.expect(world.guards_intact(), "nothing written outside of the pixels",
                   "changed bytes after a row or around the world");
    context.expect(input.same_picture(*request.input) && request.input->guards_intact(),
                   "the input layer left alone", "changed bytes in it");
    return world;
}

bool all_are(std::span<const std::byte> bytes, std::byte value) {
    return std::ranges::all_of(bytes, [value](std::byte b) { return b == value; });
}

/// Pixels of two frames that are not the same, apart by whether both still carry their mark.
struct Difference {
    int unwritten = 0;
    int changing = 0;
};

Difference compare(const host::World& first, const host::World& second) {
    Difference difference;
    const size_t step = host::pixel_size(first.depth());
    for (int y = 0; y < first.height(); ++y) {
        const auto a = first.row(y);
        const auto b = second.row(y);
        for (size_t at = 0; at < a.size(); at += step) {
            const auto one = a.subspan(at, step);
            const auto other = b.subspan(at, step);
            if (std::ranges::equal(one, other)) continue;
            const bool marked = all_are(one, kMarks[0]) && all_are(other, kMarks[1]);
            ++(marked ? difference.unwritten : difference.changing);
        }
    }
    return difference;
}

std::string pixels(int count, const host::World& world) {
    return std::to_string(count) + " of " + std::to_string(world.width() * world.height()) + " pixels";
}

double random_number(const host::Control& control, std::mt19937_64& random) {
    if (control.kind == host::ControlKind::kAngle) return between(random, -720, 720);
    const bool is_float = control.kind == host::ControlKind::kFloatSlider;
    const double position = static_cast<double>(random() % 1001) / 1000.0;
    const double value = control.slider.min + (control.slider.max - control.slider.min) * position;
    return is_float ? value : std::clamp(std::round(value), control.valid.min, control.valid.max);
}

host::Value random_value(host::Host& host, const host::Control& control, std::mt19937_64& random,
                         host::Depth depth) {
    if (control.is_number()) return random_number(control, random);
    if (control.kind == host::ControlKind::kLayer) {
        const int width = between(random, 1, 40);
        const int height = between(random, 1, 40);
        const int padding = between(random, 0, 5);
        return pattern({.width = width, .height = height, .depth = depth, .row_padding = padding},
                       between(random, 0, 9));
    }
    const auto standard = host::ArbitraryValue::default_of(host, control);
    const double t = between(random, 0, 4) / 4.0;
    return host::Arbitrary(
        host::ArbitraryValue::interpolate(*standard, *host::ArbitraryValue::fresh(host, control), t));
}

}  // namespace

std::vector<host::Depth> depths_of(const Fixture& fixture) {
    if (!fixture.has_flag2(PF_OutFlag2_SUPPORTS_SMART_RENDER)) throw Skipped{"no smart rendering"};
    std::vector<host::Depth> depths = {host::Depth::k8};
    if (fixture.has_flag(PF_OutFlag_DEEP_COLOR_AWARE)) depths.push_back(host::Depth::k16);
    if (fixture.has_flag2(PF_OutFlag2_FLOAT_COLOR_AWARE)) depths.push_back(host::Depth::k32);
    return depths;
}

void for_each_depth(Fixture& fixture, const std::string& name, const std::function<void(host::Depth)>& body) {
    for (const host::Depth depth : depths_of(fixture)) {
        fixture.step(name + "@" + std::to_string(static_cast<int>(depth)), [&] { body(depth); });
    }
}

std::string name_of(const host::FrameRequest& request) {
    return std::to_string(request.width) + "x" + std::to_string(request.height) + "@" +
           std::to_string(static_cast<int>(request.depth)) + "+" + std::to_string(request.row_padding);
}

host::Layer pattern(const host::WorldShape& shape, int variant) {
    auto world = std::make_shared<host::World>(shape);
    for (int y = 0; y < shape.height; ++y) {
        for (int x = 0; x < shape.width; ++x) {
            const auto share = [&](int a, int b) {
                return static_cast<float>((x * a + y * b + variant * 13) % 29) / 28.0f;
            };
            world->set_rgba(x, y, {share(3, 7), share(11, 2), share(5, 19), 0.25f + 0.75f * share(1, 1)});
        }
    }
    return world;
}

host::Layer input_pattern(const host::FrameRequest& request) {
    host::InputLayers unused;
    const PF_EffectWorld place = host::begin_frame(request, unused).input_record;
    return pattern({.width = place.width,
                    .height = place.height,
                    .depth = request.depth,
                    .row_padding = request.row_padding,
                    .bottom_up = request.bottom_up,
                    .extra_flags = request.extra_world_flags});
}

ObservedFrame observed_frame(CaseContext& context, host::Instance& instance,
                             const host::FrameRequest& request) {
    host::FrameRequest asked = request;
    if (!asked.input) asked.input = input_pattern(request);
    ObservedFrame observed{.frame = marked_frame(context, instance, asked, kMarks[0])};
    const host::World second = marked_frame(context, instance, asked, kMarks[1]);
    if (observed.frame.width() != second.width() || observed.frame.height() != second.height()) {
        context.finding("one size each time", "two sizes");
        return observed;
    }
    const Difference difference = compare(observed.frame, second);
    observed.unwritten = difference.unwritten;
    observed.changing = difference.changing;
    return observed;
}

host::World judged_frame(CaseContext& context, host::Instance& instance, const host::FrameRequest& request) {
    ObservedFrame observed = observed_frame(context, instance, request);
    context.expect(observed.unwritten == 0, "success only with every pixel written",
                   pixels(observed.unwritten, observed.frame) + " untouched");
    context.expect(observed.changing == 0, "the same frame each time",
                   pixels(observed.changing, observed.frame) + " different");
    return std::move(observed.frame);
}

void judge_same(CaseContext& context, const host::World& expected, const host::World& seen,
                const std::string& whose) {
    if (expected.same_picture(seen)) return;
    const bool same_size = expected.width() == seen.width() && expected.height() == seen.height();
    const Difference difference = same_size ? compare(expected, seen) : Difference{};
    context.finding(
        "the frame of " + whose,
        same_size ? pixels(difference.unwritten + difference.changing, seen) + " different" : "another size");
}

void set_randomly(host::Instance& instance, std::mt19937_64& random, host::Depth depth) {
    for (const host::Control& control : instance.host().controls()) {
        if (control.has_value())
            instance.set(control.index, random_value(instance.host(), control, random, depth));
    }
}

void set_layers(host::Instance& instance, host::WorldShape shape) {
    shape.width = 13;
    shape.height = 9;
    for (const host::Control& control : instance.host().controls()) {
        if (control.kind == host::ControlKind::kLayer)
            instance.set(control.index, pattern(shape, control.index));
    }
}

}  // namespace flumo::judge

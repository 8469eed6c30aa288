#include "tests/effect/render/looks.h"

#include <cmath>

namespace flumo::test {

using enum Section;

Stops colourful(float shift) {
    return {{0.0F + shift, 0.1F, 0.0F, 0.4F},
            {0.3F + shift, 0.9F, 0.3F, 0.2F},
            {0.6F + shift, 0.2F, 0.8F, 0.1F},
            {1.0F + shift, 0.5F, 1.0F, 0.9F}};
}

host::Layer colourful_layer(int width, int height, host::Depth depth) {
    auto layer = std::make_shared<host::World>(
        host::WorldShape{.width = width, .height = height, .depth = depth, .row_padding = 3});
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float u = (static_cast<float>(x) + 0.5F) / static_cast<float>(width);
            const float v = (static_cast<float>(y) + 0.5F) / static_cast<float>(height);
            const float wave = 0.5F + 0.5F * std::cos(4 * (u + v));
            layer->set_rgba(x, y, {u, wave, 1 - v, 1 - 0.95F * u * v});
        }
    }
    return layer;
}

host::Layer flat_layer(const host::Rgba& colour, host::Depth depth) {
    auto layer = std::make_shared<host::World>(2, 3, depth);
    for (int i = 0; i < 6; ++i)
        layer->set_rgba(i % 2, i / 2, colour);
    return layer;
}

host::Layer slope_layer(int width, int height, float corner, float across, float down) {
    auto layer = std::make_shared<host::World>(width, height, host::Depth::k32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float value = corner + across * (static_cast<float>(x) + 0.5F) / static_cast<float>(width) +
                                down * (static_cast<float>(y) + 0.5F) / static_cast<float>(height);
            layer->set_rgba(x, y, {value, value, value, 1});
        }
    }
    return layer;
}

Look fluid() {
    return {{Gradient, colourful()}};
}

Look plane(int width, int height) {
    return with(fluid(), {{NoiseContrast, 0},
                          {NoiseBottomCroppingEnabled, 0},
                          {Layer2, slope_layer(2 * width, 2 * height, -0.1F, 0.9F, 0.4F)}});
}

Look lined_plane(int width, int height) {
    const Stops reversed = {{0, 1, 1, 0.2F}, {0.5F, 0.1F, 0.9F, 0.9F}, {1, 0.9F, 0, 0.8F}};
    return with(plane(width, height), {{LinesVisible, 1}, {LinesGradient, reversed}});
}

}  // namespace flumo::test

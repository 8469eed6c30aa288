// The answer to what a frame needs.
#include "effect/render/smart_pre_render.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace flumo::tests {
namespace {

using Rect = std::array<A_long, 4>;

Rect Numbers(const PF_LRect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

TEST(UnionLRectTest, Table) {
    struct Row {
        const char* what;
        PF_LRect source;
        PF_LRect destination;
        Rect wanted;
    };
    const Row rows[] = {
        {"overlapping", {0, 0, 10, 10}, {5, -5, 20, 8}, {0, -5, 20, 10}},
        {"apart", {100, 200, 110, 210}, {-10, -20, 0, 0}, {-10, -20, 110, 210}},
        {"source inside", {2, 2, 3, 3}, {0, 0, 9, 9}, {0, 0, 9, 9}},
        {"empty destination", {2, 3, 4, 5}, {7, 7, 7, 9}, {2, 3, 4, 5}},
        {"destination upside down", {2, 3, 4, 5}, {0, 9, 9, 0}, {2, 3, 4, 5}},
        {"empty source", {5, 5, 5, 50}, {0, 0, 9, 9}, {0, 0, 9, 9}},
        {"source without height", {-5, 5, 50, 5}, {0, 0, 9, 9}, {0, 0, 9, 9}},
        {"both empty", {8, 1, 2, 3}, {0, 0, 0, 0}, {8, 1, 2, 3}},
    };
    for (const Row& row : rows) {
        PF_LRect destination = row.destination;
        UnionLRect(row.source, destination);
        EXPECT_EQ(Numbers(destination), row.wanted) << row.what;
    }
}

struct Asked {
    int calls = 0;
    PF_ProgPtr effect_ref = nullptr;
    PF_ParamIndex index = -1;
    A_long id = -1;
    A_long time = 0;
    A_long step = 0;
    A_u_long scale = 0;
    PF_RenderRequest request{};
    PF_Err answer = PF_Err_NONE;
    PF_CheckoutResult result{};
};
Asked asked;

PF_Err CheckoutLayer(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long id, const PF_RenderRequest* request,
                     A_long time, A_long step, A_u_long scale, PF_CheckoutResult* result) {
    ++asked.calls;
    asked.effect_ref = effect_ref;
    asked.index = index;
    asked.id = id;
    asked.time = time;
    asked.step = step;
    asked.scale = scale;
    asked.request = *request;
    *result = asked.result;
    return asked.answer;
}

class PreRenderTest : public testing::Test {
  protected:
    PreRenderTest() {
        asked = {};
        asked.result.result_rect = {1, 2, 3, 4};
        asked.result.max_result_rect = {0, 0, 50, 60};
        std::memset(&input_.output_request, 0x5A, sizeof(input_.output_request));
        in_data_.effect_ref = reinterpret_cast<PF_ProgPtr>(&in_data_);
        in_data_.current_time = 100;
        in_data_.time_step = -25;
        in_data_.time_scale = 3'000'000'000;
        output_.solid = 1;
        output_.flags = 7;
        output_.pre_render_data = this;
    }

    PF_Err Run() { return SmartPreRender(&in_data_, &extra_); }

    PF_InData in_data_{};
    PF_PreRenderInput input_{};
    PF_PreRenderOutput output_{};
    PF_PreRenderCallbacks callbacks_{CheckoutLayer, nullptr};
    PF_PreRenderExtra extra_{&input_, &output_, &callbacks_};
};

TEST_F(PreRenderTest, AsksForItsOwnLayerNowUnderTheUnchangedRequest) {
    ASSERT_EQ(Run(), PF_Err_NONE);
    EXPECT_EQ(asked.calls, 1);
    EXPECT_EQ(asked.effect_ref, in_data_.effect_ref);
    EXPECT_EQ(asked.index, 0);
    EXPECT_EQ(asked.id, 0);
    EXPECT_EQ(asked.time, 100);
    EXPECT_EQ(asked.step, -25);
    EXPECT_EQ(asked.scale, 3'000'000'000);
    EXPECT_EQ(std::memcmp(&asked.request, &input_.output_request, 44), 0);
    EXPECT_EQ(output_.solid, 1);
    EXPECT_EQ(output_.flags, 7);
    EXPECT_EQ(output_.pre_render_data, this);
}

TEST_F(PreRenderTest, BothRectanglesAreUnitedEachOnItsOwn) {
    output_.result_rect = {2, 2, 9, 9};
    asked.result.result_rect = {5, 5, 5, 5};
    ASSERT_EQ(Run(), PF_Err_NONE);
    EXPECT_EQ(Numbers(output_.result_rect), (Rect{2, 2, 9, 9}));
    EXPECT_EQ(Numbers(output_.max_result_rect), (Rect{0, 0, 50, 60}));
}

TEST_F(PreRenderTest, HostsErrorComesBackAndNothingIsTouched) {
    asked.answer = 513;
    output_.result_rect = {2, 2, 9, 9};
    EXPECT_EQ(Run(), 513);
    EXPECT_EQ(Numbers(output_.result_rect), (Rect{2, 2, 9, 9}));
    EXPECT_EQ(Numbers(output_.max_result_rect), (Rect{0, 0, 0, 0}));
}

}  // namespace
}  // namespace flumo::tests

#include "effect/gradient/callbacks/gradient_callbacks.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/support/linked_effect.h"

namespace flumo::test {
namespace {

using host::ArbitraryValue;

const GradientStop kRed{kStopEdge, 1, 0, 0, 0.5F};

class GradientCallbacks : public testing::Test {
  protected:
    /// Sends one callback; `fill` writes its member of the union.
    template <typename Fill>
    PF_Err Send(PF_FunctionSelector selector, const Fill& fill) {
        PF_ArbParamsExtra extra{};
        extra.which_function = selector;
        extra.id = effect_.Gradient().definition.u.arb_d.id;
        fill(extra.u, effect_.Gradient().definition.u.arb_d.refconPV);
        return effect_.host.send(PF_Cmd_ARBITRARY_CALLBACK, &extra).error;
    }

    LinkedEffect effect_;
};

TEST_F(GradientCallbacks, AnswerTheirSelectorsAndTheirRefconAlone) {
    // The characters as a little-endian number.
    EXPECT_EQ(reinterpret_cast<uint64_t>(effect_.Gradient().definition.u.arb_d.refconPV),
              0x544E454944415247U);
    GradientHandle slot = nullptr;
    for (const PF_FunctionSelector selector : {-1, 11, 1 << 20}) {
        EXPECT_EQ(Send(selector,
                       [&](auto& u, void* refcon) {
                           u.new_func_params = {refcon, &slot};
                       }),
                  PF_Err_UNRECOGNIZED_PARAM_TYPE);
    }
    auto* const foreign = reinterpret_cast<void*>(0x544E454944415248U);
    effect_.host.faults().reset_count();
    EXPECT_EQ(Send(PF_Arbitrary_NEW_FUNC,
                   [&](auto& u, void*) {
                       u.new_func_params = {foreign, &slot};
                   }),
              PF_Err_UNRECOGNIZED_PARAM_TYPE);
    EXPECT_EQ(effect_.host.faults().count(), 0U) << "the host was called";
    EXPECT_EQ(slot, nullptr);
}

TEST_F(GradientCallbacks, CopyLeavesAliasesAndNullsAlone) {
    const auto original = effect_.NewValue({{0.5F, kRed}});
    GradientHandle slot = original->handle();
    const auto copy = [&](GradientHandle source) {
        return Send(PF_Arbitrary_COPY_FUNC, [&](auto& u, void* refcon) {
            u.copy_func_params = {refcon, source, &slot};
        });
    };
    // Without a new handle the slot keeps what it held, here the source itself.
    effect_.host.faults().fail_every(host::Callback::kNewHandle, host::FaultMode::kError);
    EXPECT_EQ(copy(original->handle()), 0);
    EXPECT_EQ(StopsOf(original->handle()), (GradientStopMap{{0.5F, kRed}}));
    effect_.host.faults().clear();
    EXPECT_EQ(copy(nullptr), 0);
    EXPECT_EQ(StopsOf(slot), WhiteGradient());
    ArbitraryValue(effect_.host, effect_.Gradient(), slot);
    EXPECT_TRUE(effect_.Tidy());
}

TEST_F(GradientCallbacks, BlendCompareAndFlattenWhatTheyAreGiven) {
    const auto left = effect_.NewValue({{0.5F, kRed}}), right = effect_.NewValue({{1.0F, kRed}});
    EXPECT_EQ(left->compare(*left), PF_ArbCompare_EQUAL);
    EXPECT_EQ(left->compare(*right), PF_ArbCompare_NOT_EQUAL);
    const auto quarter = ArbitraryValue::interpolate(*left, *right, 0.25);
    EXPECT_EQ(StopsOf(quarter->handle()), (GradientStopMap{{0.625F, kRed}}));
    std::array<A_long, 7> stored{};
    Send(PF_Arbitrary_FLATTEN_FUNC, [&](auto& u, void* refcon) {
        u.flatten_func_params = {refcon, left->handle(), 0, stored.data()};
    });
    EXPECT_EQ(stored[0], 1) << "the size that the host gives is not used";
}

TEST_F(GradientCallbacks, PrintWritesOnlyIntoABufferOfItsExactSize) {
    const auto gradient = effect_.NewValue({{0.5F, kRed}});
    const std::string text = "Gradient t 0.5 edge  r 1 g 0 b 0 a 0.5";
    EXPECT_EQ(gradient->print(), text);
    const auto size = static_cast<A_u_long>(text.size() + 1);
    for (const A_u_long offered : {size - 1, size, size + 1}) {
        std::string buffer(size + 1, '#');
        EXPECT_EQ(Send(PF_Arbitrary_PRINT_FUNC,
                       [&](auto& u, void* refcon) {
                           u.print_func_params = {refcon, PF_ArbPrint_ABBREVIATED, gradient->handle(),
                                                  offered, buffer.data()};
                       }),
                  0);
        EXPECT_EQ(buffer, offered == size ? text + '\0' + '#' : std::string(size + 1, '#'));
    }
}

TEST_F(GradientCallbacks, ScanNeverReadsTheTextAndLeavesWhite) {
    const auto* wild = reinterpret_cast<const A_char*>(1);  // must not be followed
    for (const A_char* buffer :
         {"Gradient t 0.5 edge  r 1 g 0 b 0 a 0.5", "", static_cast<const A_char*>(nullptr), wild}) {
        GradientHandle made = nullptr;
        EXPECT_EQ(Send(PF_Arbitrary_SCAN_FUNC,
                       [&](auto& u, void* refcon) {
                           u.scan_func_params = {refcon, buffer, 38, &made};
                       }),
                  PF_Err_UNRECOGNIZED_PARAM_TYPE);
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(StopsOf(made), WhiteGradient());
        ArbitraryValue(effect_.host, effect_.Gradient(), made);
    }
    EXPECT_TRUE(effect_.Tidy());
}

}  // namespace
}  // namespace flumo::test

#include "effect/gradient/gradient_callbacks.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "tests/gradient/fake_panel_host.h"

namespace flumo::test {
namespace {

const GradientStop kRed{kStopEdge, 1, 0, 0, 0.5F};

using Extra = PF_ArbParamsExtra;

using Union = decltype(Extra::u);

template <typename Params, typename... Args>
Extra Call(PF_FunctionSelector selector, Params Union::*params, Args... args) {
    Extra extra{};
    extra.which_function = selector;
    extra.u.*params = {GradientRefcon(), args...};
    return extra;
}

class GradientCallbacks : public testing::Test {
  protected:
    PF_Err Run(Extra extra) { return DispatchGradientCallback(&host_.in_data, &host_.out_data, &extra); }

    static Extra New(GradientHandle* slot) {
        return Call(PF_Arbitrary_NEW_FUNC, &Union::new_func_params, slot);
    }
    static Extra Dispose(GradientHandle gradient) {
        return Call(PF_Arbitrary_DISPOSE_FUNC, &Union::dispose_func_params, gradient);
    }
    static Extra Copy(GradientHandle source, GradientHandle* slot) {
        return Call(PF_Arbitrary_COPY_FUNC, &Union::copy_func_params, source, slot);
    }
    static Extra FlatSize(GradientHandle gradient, A_u_long* size) {
        return Call(PF_Arbitrary_FLAT_SIZE_FUNC, &Union::flat_size_func_params, gradient, size);
    }
    static Extra Flatten(GradientHandle gradient, A_u_long size, void* bytes) {
        return Call(PF_Arbitrary_FLATTEN_FUNC, &Union::flatten_func_params, gradient, size, bytes);
    }
    static Extra Unflatten(A_u_long size, const void* bytes, GradientHandle* slot) {
        return Call(PF_Arbitrary_UNFLATTEN_FUNC, &Union::unflatten_func_params, size, bytes, slot);
    }
    static Extra Interpolate(GradientHandle left, GradientHandle right, double t, GradientHandle* slot) {
        return Call(PF_Arbitrary_INTERP_FUNC, &Union::interp_func_params, left, right, t, slot);
    }
    static Extra Compare(GradientHandle a, GradientHandle b, PF_ArbCompareResult* result) {
        return Call(PF_Arbitrary_COMPARE_FUNC, &Union::compare_func_params, a, b, result);
    }
    static Extra PrintSize(GradientHandle gradient, A_u_long* size) {
        return Call(PF_Arbitrary_PRINT_SIZE_FUNC, &Union::print_size_func_params, gradient, size);
    }
    static Extra Print(GradientHandle gradient, A_u_long size, A_char* buffer) {
        return Call(PF_Arbitrary_PRINT_FUNC, &Union::print_func_params, PF_ArbPrint_ABBREVIATED, gradient,
                    size, buffer);
    }
    static Extra Scan(const A_char* buffer, A_u_long size, GradientHandle* slot) {
        return Call(PF_Arbitrary_SCAN_FUNC, &Union::scan_func_params, buffer, size, slot);
    }

    GradientHandle NewWith(const GradientStopMap& stops) {
        GradientHandle made = nullptr;
        EXPECT_EQ(Run(New(&made)), 0);
        EXPECT_EQ(FakePanelHost::StopsOf(made), WhiteGradient());
        FakePanelHost::StopsOf(made) = stops;
        return made;
    }

    PF_ArbCompareResult Compared(GradientHandle a, GradientHandle b) {
        PF_ArbCompareResult result = -1;
        EXPECT_EQ(Run(Compare(a, b, &result)), 0);
        return result;
    }

    FakePanelHost host_;
};

TEST_F(GradientCallbacks, KnowTheirSelectorsAndTheirRefcon) {
    for (const PF_FunctionSelector selector : {0, 5, 10}) {
        const Extra extra = Call(selector, &Union::new_func_params, static_cast<GradientHandle*>(nullptr));
        EXPECT_TRUE(IsGradientCallback(&extra));
    }
    for (const PF_FunctionSelector selector : {-1, 11, 1 << 20}) {
        const Extra extra = Call(selector, &Union::new_func_params, static_cast<GradientHandle*>(nullptr));
        EXPECT_FALSE(IsGradientCallback(&extra));
        EXPECT_EQ(Run(extra), PF_Err_UNRECOGNIZED_PARAM_TYPE);
    }
    Extra foreign = New(nullptr);
    // The characters as a little-endian number.
    EXPECT_EQ(reinterpret_cast<uint64_t>(foreign.u.new_func_params.refconPV), 0x544E454944415247U);
    foreign.u.new_func_params.refconPV = reinterpret_cast<void*>(0x544E454944415248U);
    EXPECT_FALSE(IsGradientCallback(&foreign));
}

TEST_F(GradientCallbacks, AValueLivesThroughAProject) {
    const GradientStopMap stops = {{-0.25F, kRed}, {0.5F, {7, 2, 3, 4, 5}}, {1.5F, {}}};
    const GradientHandle original = NewWith(stops);
    GradientHandle copy = nullptr, stored = nullptr, between = nullptr;
    EXPECT_EQ(Run(Copy(original, &copy)), 0);
    EXPECT_NE(&FakePanelHost::StopsOf(copy), &FakePanelHost::StopsOf(original));

    A_u_long size = 0;
    EXPECT_EQ(Run(FlatSize(copy, &size)), 0);
    ASSERT_EQ(size, 76U);
    std::vector<std::byte> bytes(size);
    EXPECT_EQ(Run(Flatten(copy, 0, bytes.data())), 0) << "whatever the buffer's size is said to be";
    EXPECT_EQ(Run(Unflatten(size, bytes.data(), &stored)), 0);
    EXPECT_EQ(FakePanelHost::StopsOf(stored), stops);

    EXPECT_EQ(Run(Interpolate(stored, original, 0.5, &between)), 0);
    EXPECT_EQ(Compared(between, original), PF_ArbCompare_EQUAL);
    EXPECT_EQ(Compared(original, original), PF_ArbCompare_EQUAL);
    FakePanelHost::StopsOf(original).erase(1.5F);
    EXPECT_EQ(Compared(between, original), PF_ArbCompare_NOT_EQUAL);

    EXPECT_TRUE(host_.AllGivenBack(4));
    for (const GradientHandle handle : {original, copy, stored, between})
        EXPECT_EQ(Run(Dispose(handle)), 0);
    EXPECT_TRUE(host_.AllGivenBack(0));
}

TEST_F(GradientCallbacks, CopyLeavesAliasesAndNullsAlone) {
    const GradientHandle original = NewWith({{0.5F, kRed}});
    const GradientHandle alias = host_.Wrap(FakePanelHost::StopsOf(original));
    // The second call makes the new handle; when it yields none the slot keeps what it held.
    constexpr int kNewHandle = 2;
    GradientHandle slot = alias;
    host_.fail_call = kNewHandle;
    EXPECT_EQ(Run(Copy(original, &slot)), 0);
    EXPECT_EQ(slot, alias);
    EXPECT_EQ(FakePanelHost::StopsOf(original), (GradientStopMap{{0.5F, kRed}}));

    slot = nullptr;
    host_.fail_call = kNewHandle;
    EXPECT_EQ(Run(Copy(original, &slot)), 0);
    EXPECT_EQ(slot, nullptr);
    EXPECT_EQ(Run(Copy(nullptr, &slot)), 0);
    EXPECT_EQ(FakePanelHost::StopsOf(slot), WhiteGradient());
    host_.Dispose(alias);
    Run(Dispose(slot));
    Run(Dispose(original));
    EXPECT_TRUE(host_.AllGivenBack(0));
}

TEST_F(GradientCallbacks, PrintWritesOnlyIntoABufferOfItsExactSize) {
    const GradientHandle gradient = NewWith({{0.5F, kRed}});
    const std::string text = "Gradient t 0.5 edge  r 1 g 0 b 0 a 0.5";
    A_u_long size = 0;
    EXPECT_EQ(Run(PrintSize(gradient, &size)), 0);
    EXPECT_EQ(size, text.size() + 1);
    for (const A_u_long offered : {size - 1, size, size + 1}) {
        std::string buffer(size + 1, '#');
        EXPECT_EQ(Run(Print(gradient, offered, buffer.data())), 0);
        EXPECT_EQ(buffer, offered == size ? text + '\0' + '#' : std::string(size + 1, '#'));
    }
    Run(Dispose(gradient));
}

TEST_F(GradientCallbacks, ScanNeverReadsTheTextAndLeavesWhite) {
    const auto* wild = reinterpret_cast<const A_char*>(1);  // must not be followed
    for (const A_char* buffer :
         {"Gradient t 0.5 edge  r 1 g 0 b 0 a 0.5", "", static_cast<const A_char*>(nullptr), wild}) {
        GradientHandle made = nullptr;
        EXPECT_EQ(Run(Scan(buffer, 38, &made)), PF_Err_UNRECOGNIZED_PARAM_TYPE);
        ASSERT_NE(made, nullptr);
        EXPECT_EQ(FakePanelHost::StopsOf(made), WhiteGradient());
        Run(Dispose(made));
    }
    EXPECT_TRUE(host_.AllGivenBack(0));
}

TEST_F(GradientCallbacks, EveryFailureGivesItsNumberAndLeaksNothing) {
    const GradientHandle gradient = NewWith({{0.5F, kRed}});
    std::array<std::byte, 76> bytes{};
    std::array<A_char, 39> text{};
    A_u_long size = 0;
    PF_ArbCompareResult comparison = 0;
    GradientHandle slot = nullptr;
    struct Case {
        Extra call;
        int fallible;  // suites, handles and locks that it asks for
        PF_Err result;
    };
    const Case cases[] = {{New(&slot), 3, 0},
                          {Copy(gradient, &slot), 6, 0},
                          {FlatSize(gradient, &size), 2, 0},
                          {Flatten(gradient, 28, bytes.data()), 2, 0},
                          {Unflatten(52, bytes.data(), &slot), 5, 0},
                          {Interpolate(gradient, gradient, 0.5, &slot), 7, 0},
                          {Compare(gradient, gradient, &comparison), 3, 0},
                          {PrintSize(gradient, &size), 2, 0},
                          {Print(gradient, 39, text.data()), 2, 0},
                          {Scan(nullptr, 0, &slot), 5, PF_Err_UNRECOGNIZED_PARAM_TYPE}};
    for (const Case& c : cases) {
        for (int call = 1; call <= c.fallible + 1; ++call) {
            SCOPED_TRACE(testing::Message()
                         << "selector " << c.call.which_function << ", failing call " << call);
            slot = nullptr;
            host_.expected = 0;
            host_.fail_call = call;
            const PF_Err result = Run(c.call);
            EXPECT_EQ(host_.expected != 0, call <= c.fallible);
            host_.fail_call = 0;
            // Without a handle the making itself reports success, and what follows finds none to lock.
            const bool no_handle = c.call.which_function == PF_Arbitrary_NEW_FUNC && call == 2;
            const bool copy_without = c.call.which_function == PF_Arbitrary_COPY_FUNC && call == 2;
            const PF_Err expected = no_handle || copy_without ? 0 : host_.expected;
            EXPECT_EQ(result, expected ? expected : c.result);
            if (slot) {
                EXPECT_EQ(Run(Dispose(slot)), 0);
            }
            EXPECT_TRUE(host_.AllGivenBack(1));
        }
    }
    host_.fail_call = 2;
    EXPECT_EQ(Run(Dispose(gradient)), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(Run(Dispose(gradient)), 0);
    host_.in_data.pica_basicP = nullptr;
    EXPECT_EQ(Run(New(&slot)), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_TRUE(host_.AllGivenBack(0));
}

}  // namespace
}  // namespace flumo::test

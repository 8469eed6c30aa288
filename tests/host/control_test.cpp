// Controls as registered, their values, and how values change over time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "host/instance.h"
#include "tests/host/scripted_effect.h"

namespace flumo::host::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Controls : public testing::Test {
  protected:
    Controls() {
        host.start();
        instance = host.new_instance();
    }

    double number_at(int index, double frame) { return std::get<double>(instance->value_at(index, frame)); }
    Arbitrary arbitrary(double number) {
        return ArbitraryValue::unflatten(host, host.control(kNumber), std::as_bytes(std::span(&number, 1)));
    }
    std::string text_at(double frame) {
        return std::get<Arbitrary>(instance->value_at(kNumber, frame))->print();
    }

    ScriptedEffect effect;
    Host host{effect.module};
    std::unique_ptr<Instance> instance;
};

TEST_F(Controls, AreReadAsTheEffectDeclaredThem) {
    ASSERT_EQ(host.controls().size(), size_t{kOuterGroupEnd});
    EXPECT_EQ(host.control(kAmount).precision, 1);
    EXPECT_EQ(host.control(kTurn).default_value, 90);
    EXPECT_THAT(host.control(kMode).choices, ElementsAre("Soft", "Hard"));
    EXPECT_EQ(host.control(kMode).valid.max, 3);
    EXPECT_EQ(host.control_by_disk_id(108).index, kPicture);
    EXPECT_THROW(host.control(0), std::out_of_range);
    EXPECT_THROW(host.control(kControlsEnd), std::out_of_range);
    EXPECT_EQ(number_at(kCount, 0), 4);
    EXPECT_EQ(text_at(0), "number 7");
    EXPECT_THAT(host.accounting().misuses(), IsEmpty());
}

TEST_F(Controls, RefuseValuesThatDoNotFit) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::pair<int, Value> wrong[] = {
        {kAmount, nan}, {kAmount, Layer{}}, {kCount, 2.5},  {kCount, 3e9},          {kTurn, 40000.0},
        {kMode, 1.5},   {kPicture, 1.0},    {kNumber, 1.0}, {kNumber, Arbitrary{}}, {kPicture, arbitrary(1)},
    };
    for (const auto& [index, value] : wrong) {
        EXPECT_THROW(instance->set(index, value), std::invalid_argument) << index;
    }
    EXPECT_THROW(instance->set(kOuterGroup, 1.0), std::out_of_range);
    EXPECT_THROW(instance->set_keyframes(kMode, {{0, 1.0}, {5, 2.0}}), std::invalid_argument);
    EXPECT_THROW(instance->set_keyframes(kAmount, {}), std::invalid_argument);
    EXPECT_EQ(number_at(kAmount, 0), 2.5) << "a refused value changes nothing";
}

TEST_F(Controls, RunBetweenKeyframesByTheirKind) {
    for (const int index : {kAmount, kTurn, kCount, kSwitch}) {
        // Out of order, and one frame twice: the later in the list wins.
        instance->set_keyframes(index, {{20, 1.0}, {10, 0.0}, {20, 5.0}});
        const bool blends = index == kAmount || index == kTurn;
        EXPECT_EQ(number_at(index, -100), 0) << index;
        EXPECT_EQ(number_at(index, 10), 0) << index;
        EXPECT_EQ(number_at(index, 14), blends ? 2 : 0) << index;
        EXPECT_EQ(number_at(index, 20), 5) << index;
        EXPECT_EQ(number_at(index, 1e6), 5) << index;
    }
    instance->set_keyframes(kNumber, {{0, arbitrary(2)}, {4, arbitrary(10)}});
    EXPECT_EQ(text_at(1), "number 4");
    EXPECT_EQ(text_at(4), "number 10");
}

TEST_F(Controls, ReachTheEffectInItsOwnUnits) {
    auto picture = std::make_shared<World>(3, 2, Depth::k32);
    instance->set(kTurn, -90.5);
    instance->set(kCount, 9.0);
    instance->set(kPicture, Layer(picture));
    instance->set_keyframes(kAmount, {{0, 0.0}, {100, 100.0}});
    std::map<int, PF_ParamDef> seen;
    PF_Err past_the_end = 0;
    effect.on[PF_Cmd_SMART_RENDER] = [&](EffectCall& call) -> PF_Err {
        for (const int index : {kAmount, kCount, kTurn, kSwitch, kMode, kPicture, kNumber}) {
            PF_ParamDef& def = seen[index];
            call.in.inter.checkout_param(call.in.effect_ref, index, call.in.current_time, call.in.time_step,
                                         call.in.time_scale, &def);
            PF_ParamDef moved = def;
            call.in.inter.checkin_param(call.in.effect_ref, &moved);
        }
        PF_ParamDef def{};
        past_the_end = call.in.inter.checkout_param(call.in.effect_ref, kControlsEnd, 0, 1, 1, &def);
        return PF_Err_NONE;
    };
    instance->render({.width = 4, .height = 4, .frame = 30, .rate = {30000, 1001}});
    EXPECT_EQ(seen[kAmount].u.fs_d.value, 30);
    EXPECT_EQ(seen[kCount].u.sd.value, 9);
    EXPECT_EQ(seen[kTurn].u.ad.value, -5931008);
    EXPECT_EQ(seen[kSwitch].u.bd.value, 1);
    EXPECT_EQ(seen[kMode].u.pd.value, 2);
    EXPECT_EQ(seen[kPicture].u.ld.data, picture->record().data);
    EXPECT_EQ(seen[kPicture].u.ld.width, 3);
    EXPECT_EQ(seen[kPicture].u.ld.dephault, PF_LayerDefault_MYSELF);
    EXPECT_NE(seen[kNumber].u.arb_d.value, nullptr);
    EXPECT_EQ(past_the_end, PF_Err_INVALID_INDEX);
    EXPECT_TRUE(host.accounting().idle()) << host.accounting().describe();
    EXPECT_THAT(host.accounting().misuses(), IsEmpty());
}

TEST_F(Controls, WhatTheHostDoesForItselfIsNotCounted) {
    instance->set_keyframes(kNumber, {{0, arbitrary(2)}, {4, arbitrary(10)}});
    std::string seen;
    effect.on[PF_Cmd_SMART_RENDER] = [&](EffectCall& call) -> PF_Err {
        PF_ParamDef def{};
        call.in.inter.checkout_param(call.in.effect_ref, kNumber, 1, 1, 25, &def);
        seen = std::to_string(*static_cast<double*>(*def.u.arb_d.value));
        return call.in.inter.checkin_param(call.in.effect_ref, &def);
    };
    host.faults().start_recording();
    instance->render({.width = 4, .height = 4, .frame = 1});
    EXPECT_THAT(host.faults().stop_recording(),
                ElementsAre(Callback::kCheckoutLayer, Callback::kCheckoutParam, Callback::kCheckinParam));
    EXPECT_EQ(seen, std::to_string(4.0)) << "interpolated by the effect while it renders";
    EXPECT_TRUE(host.accounting().idle());
}

TEST_F(Controls, ArbitraryValuesThatTheEffectRefusesLeaveNothing) {
    const Arbitrary three = arbitrary(3);
    const size_t live = host.handles().live_count();
    EXPECT_THROW(ArbitraryValue::scan(host, host.control(kNumber), "3"), HostError);
    host.faults().fail_every(Callback::kNewHandle, FaultMode::kNull);
    EXPECT_THROW(three->copy(), HostError);
    EXPECT_EQ(host.handles().live_count(), live);
}

}  // namespace
}  // namespace flumo::host::test

// One frame's values: which control goes where, in which width, and what happens when the host refuses.
#include "effect/params/param_snapshot.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <variant>
#include <vector>

#include "control_facts.h"
#include "fake_host.h"

namespace flumo {
namespace {

using test::ControlFact;
using test::FakeHost;
using test::kControlFacts;

struct Field {
    PF_ParamIndex index;
    std::variant<A_long ParamSnapshot::*, double ParamSnapshot::*, A_u_char ParamSnapshot::*,
                 PF_ArbitraryH ParamSnapshot::*>
        member;
};

// Each takes a member of one width alone, so a field that changes its width does not compile here.
Field Long(PF_ParamIndex index, A_long ParamSnapshot::*member) {
    return {index, member};
}
Field Double(PF_ParamIndex index, double ParamSnapshot::*member) {
    return {index, member};
}
Field Byte(PF_ParamIndex index, A_u_char ParamSnapshot::*member) {
    return {index, member};
}
Field Handle(PF_ParamIndex index, PF_ArbitraryH ParamSnapshot::*member) {
    return {index, member};
}

/// In the order of the record.
const Field kFields[] = {
    Long(2, &ParamSnapshot::noiseType),
    Double(3, &ParamSnapshot::noiseContrast),
    Double(4, &ParamSnapshot::noiseBrightness),
    Double(7, &ParamSnapshot::evolution),
    Byte(8, &ParamSnapshot::loopEvolution),
    Long(9, &ParamSnapshot::complexity),
    Double(10, &ParamSnapshot::speed),
    Double(11, &ParamSnapshot::scale),
    Double(12, &ParamSnapshot::scaleX),
    Double(13, &ParamSnapshot::scaleY),
    Long(48, &ParamSnapshot::linesCount),
    Double(49, &ParamSnapshot::lineWidth),
    Handle(26, &ParamSnapshot::noiseGradient),
    Double(46, &ParamSnapshot::linesVisible),
    Double(24, &ParamSnapshot::noiseVisible),
    Long(25, &ParamSnapshot::colorizeMode),
    Double(43, &ParamSnapshot::reflectionScale),
    Byte(28, &ParamSnapshot::noiseBottomCroppingEnabled),
    Double(29, &ParamSnapshot::noiseBottomCroppingThreshold),
    Double(30, &ParamSnapshot::noiseBottomCroppingFeather),
    Byte(31, &ParamSnapshot::noiseTopCroppingEnabled),
    Double(32, &ParamSnapshot::noiseTopCroppingThreshold),
    Double(33, &ParamSnapshot::noiseTopCroppingFeather),
    Double(35, &ParamSnapshot::alphaThreshold),
    Double(37, &ParamSnapshot::noiseGradientOffset),
    Double(38, &ParamSnapshot::noiseGradientScale),
    Double(39, &ParamSnapshot::noiseGradientScaleBase),
    Long(40, &ParamSnapshot::noiseGradientLoop),
    Double(41, &ParamSnapshot::gradientRandomizeAmplitude),
    Double(42, &ParamSnapshot::gradientRandomizeFrequency),
    Double(14, &ParamSnapshot::layer1Mult),
    Double(18, &ParamSnapshot::layer2Mult),
    Double(16, &ParamSnapshot::layer1LightnessInvert),
    Double(20, &ParamSnapshot::layer2LightnessInvert),
    Double(17, &ParamSnapshot::layer1AlphaInvert),
    Double(21, &ParamSnapshot::layer2AlphaInvert),
    Long(47, &ParamSnapshot::linesBlendMode),
    Double(5, &ParamSnapshot::offsetX),
    Double(6, &ParamSnapshot::offsetY),
    Long(51, &ParamSnapshot::linesLoop),
    Double(50, &ParamSnapshot::linesOffset),
    Byte(53, &ParamSnapshot::linesBottomCroppingEnabled),
    Double(54, &ParamSnapshot::linesBottomCroppingThreshold),
    Double(55, &ParamSnapshot::linesBottomCroppingFeather),
    Byte(56, &ParamSnapshot::linesTopCroppingEnabled),
    Double(57, &ParamSnapshot::linesTopCroppingThreshold),
    Double(58, &ParamSnapshot::linesTopCroppingFeather),
    Handle(60, &ParamSnapshot::linesGradient),
    Double(61, &ParamSnapshot::linesGradientOffset),
    Double(62, &ParamSnapshot::linesGradientScale),
    Double(63, &ParamSnapshot::linesGradientScaleBase),
    Long(64, &ParamSnapshot::linesGradientLoop),
    Double(65, &ParamSnapshot::linesAlpha),
    Long(67, &ParamSnapshot::linesAlphaNoiseType),
    Double(68, &ParamSnapshot::linesAlphaThreshold),
    Double(69, &ParamSnapshot::linesAlphaNoiseOffsetX),
    Double(70, &ParamSnapshot::linesAlphaNoiseOffsetY),
    Double(71, &ParamSnapshot::linesAlphaNoiseEvolution),
    Byte(72, &ParamSnapshot::linesAlphaNoiseLoopEvolution),
    Long(73, &ParamSnapshot::linesAlphaNoiseComplexity),
    Double(74, &ParamSnapshot::linesAlphaNoiseSpeed),
    Double(75, &ParamSnapshot::linesAlphaNoiseScale),
    Double(76, &ParamSnapshot::linesAlphaNoiseScaleX),
    Double(77, &ParamSnapshot::linesAlphaNoiseScaleY),
    Double(81, &ParamSnapshot::linesRandomize),
    Double(82, &ParamSnapshot::widthRandomize),
    Double(83, &ParamSnapshot::gradientRandomize),
    Double(78, &ParamSnapshot::alphaRandomize),
    Long(84, &ParamSnapshot::seed),
};

/// Parameter indices in reading order, the three layers last.
const std::vector<PF_ParamIndex> kReadingOrder = {
    24, 2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 46, 25, 28, 29, 30, 31, 32, 33, 35, 14, 18,
    16, 20, 17, 21, 37, 38, 39, 40, 41, 42, 43, 47, 48, 49, 51, 50, 53, 54, 55, 56, 57, 58, 61, 62,
    63, 64, 65, 67, 68, 69, 70, 71, 72, 73, 74, 75, 76, 77, 81, 82, 83, 78, 84, 26, 60, 15, 19, 36,
};

const ControlFact& FactOf(PF_ParamIndex index) {
    return kControlFacts[index - 1];
}

PF_ArbitraryH HandleOf(PF_ParamIndex index) {
    static void* masters[87];
    return &masters[index];
}

A_u_char pixels[1];

/// Values that tell every control from every other, and every width from every other.
void FillDistinctly(PF_ParamIndex index, PF_ParamDef& def) {
    def.param_type = FactOf(index).type;
    switch (def.param_type) {
        case PF_Param_FLOAT_SLIDER:
            def.u.fs_d.value = -(index + 1.0 / 3.0);
            return;
        case PF_Param_SLIDER:
            def.u.sd.value = 1000000 + index;
            return;
        case PF_Param_POPUP:
            def.u.pd.value = 300 + index;
            return;
        case PF_Param_CHECKBOX:
            def.u.bd.value = 256 * index + 2;
            return;
        // Several turns backwards and half a degree.
        case PF_Param_ANGLE:
            def.u.ad.value = -(720 + index) * 65536 - 32768;
            return;
        case PF_Param_ARBITRARY_DATA:
            def.u.arb_d.value = HandleOf(index);
            return;
        default:
            def.u.ld.width = index;
            def.u.ld.data = reinterpret_cast<PF_PixelPtr>(pixels);
    }
}

A_long ExpectedLong(PF_ParamIndex index) {
    const PF_ParamType type = FactOf(index).type;
    if (type == PF_Param_SLIDER) return 1000000 + index;
    return type == PF_Param_POPUP ? 300 + index : 256 * index + 2;
}

double ExpectedDouble(PF_ParamIndex index) {
    const PF_ParamType type = FactOf(index).type;
    if (type == PF_Param_CHECKBOX) return 1.0;
    return type == PF_Param_ANGLE ? -(720.5 + index) : -(index + 1.0 / 3.0);
}

void ExpectRead(const ParamSnapshot& snapshot, const Field& field) {
    SCOPED_TRACE(FactOf(field.index).id);
    if (const auto* member = std::get_if<A_long ParamSnapshot::*>(&field.member)) {
        EXPECT_EQ(snapshot.**member, ExpectedLong(field.index));
    } else if (const auto* real = std::get_if<double ParamSnapshot::*>(&field.member)) {
        EXPECT_EQ(snapshot.**real, ExpectedDouble(field.index));
    } else if (const auto* byte = std::get_if<A_u_char ParamSnapshot::*>(&field.member)) {
        EXPECT_EQ(snapshot.**byte, 2) << "the low byte";
    } else {
        EXPECT_EQ(snapshot.*std::get<PF_ArbitraryH ParamSnapshot::*>(field.member), HandleOf(field.index));
    }
}

void ExpectUntouched(const ParamSnapshot& snapshot, const Field& field) {
    const bool zero = std::visit(
        [&](auto member) { return snapshot.*member == decltype(snapshot.*member){}; }, field.member);
    EXPECT_TRUE(zero) << FactOf(field.index).id;
}

class SnapshotTest : public testing::Test {
  protected:
    SnapshotTest() {
        host.fill = FillDistinctly;
        host.in_data.current_time = 7;
        host.in_data.time_step = 11;
        host.in_data.time_scale = 0xF0000001;
        snapshot.in_data = &host.in_data;
    }

    FakeHost host;
    ParamSnapshot snapshot;
};

TEST_F(SnapshotTest, ReadsEveryControlInItsWidth) {
    ASSERT_EQ(TakeParamSnapshot(snapshot), 0);
    EXPECT_EQ(std::size(kFields), 69U);
    for (const Field& field : kFields)
        ExpectRead(snapshot, field);
    EXPECT_EQ(host.checkout_time[0], 7);
    EXPECT_EQ(host.checkout_time[1], 11);
    EXPECT_EQ(static_cast<A_u_long>(host.checkout_time[2]), 0xF0000001);
}

TEST_F(SnapshotTest, ReadsInItsOwnOrderAndGivesAllBack) {
    ASSERT_EQ(TakeParamSnapshot(snapshot), 0);
    std::vector<std::string> reads;
    for (const PF_ParamIndex index : kReadingOrder)
        reads.push_back("checkout " + std::to_string(index));
    ASSERT_EQ(reads.size(), 72U);
    EXPECT_EQ(host.log, reads);
    EXPECT_EQ(snapshot.checkedOut.size(), 72U);
    EXPECT_EQ(ReleaseParamSnapshot(snapshot, &host.in_data), 0);
    EXPECT_EQ(host.Count("checkin"), 72);
    EXPECT_TRUE(snapshot.checkedOut.empty());
}

TEST_F(SnapshotTest, FieldsStandInTheOrderOfTheRecord) {
    const auto place = [&](const Field& field) {
        return std::visit([&](auto member) { return reinterpret_cast<const char*>(&(snapshot.*member)); },
                          field.member);
    };
    for (std::size_t i = 1; i < std::size(kFields); ++i) {
        EXPECT_LT(place(kFields[i - 1]), place(kFields[i])) << FactOf(kFields[i].index).id;
    }
}

TEST_F(SnapshotTest, SwitchesThatAreOffAreZeroInEveryWidth) {
    host.fill = [](PF_ParamIndex, PF_ParamDef&) {};
    ASSERT_EQ(TakeParamSnapshot(snapshot), 0);
    for (const Field& field : kFields)
        ExpectUntouched(snapshot, field);
}

TEST_F(SnapshotTest, LayersAreReachedThroughTheirSlots) {
    ASSERT_EQ(TakeParamSnapshot(snapshot), 0);
    EXPECT_EQ(snapshot.layer1Slot, 69);
    EXPECT_EQ(snapshot.layer2Slot, 70);
    EXPECT_EQ(snapshot.layer3Slot, 71);
    ASSERT_NE(SnapshotLayer1(snapshot), nullptr);
    EXPECT_EQ(SnapshotLayer1(snapshot)->width, 15);
    EXPECT_EQ(SnapshotLayer2(snapshot)->width, 19);
    EXPECT_EQ(SnapshotLayer3(snapshot)->width, 36);
    snapshot.checkedOut[70].u.ld.data = nullptr;
    EXPECT_EQ(SnapshotLayer2(snapshot), nullptr) << "no layer chosen";
    EXPECT_EQ(ReleaseParamSnapshot(snapshot, &host.in_data), 0);
    EXPECT_EQ(host.Count("checkin"), 72) << "checked in all the same";
}

// Whichever control the host refuses: the ones before it are read, nothing more is asked for, all have
// their slots, and all slots go back.
TEST(Snapshot, FirstRefusedControlEndsTheReading) {
    for (int refused = 1; refused <= 72; ++refused) {
        SCOPED_TRACE(refused);
        FakeHost host;
        host.fill = FillDistinctly;
        host.fail_checkout = refused;
        ParamSnapshot snapshot;
        snapshot.in_data = &host.in_data;
        EXPECT_EQ(TakeParamSnapshot(snapshot), host.failure);
        EXPECT_EQ(host.checkouts, refused);
        ASSERT_EQ(snapshot.checkedOut.size(), 72U);
        for (const Field& field : kFields) {
            const auto place = std::ranges::find(kReadingOrder, field.index) - kReadingOrder.begin();
            place + 1 < refused ? ExpectRead(snapshot, field) : ExpectUntouched(snapshot, field);
        }
        EXPECT_EQ(snapshot.layer1Slot, refused > 70 ? 69 : -1);
        EXPECT_EQ(snapshot.layer2Slot, refused > 71 ? 70 : -1);
        EXPECT_EQ(snapshot.layer3Slot, -1);
        EXPECT_EQ(SnapshotLayer3(snapshot), nullptr);
        EXPECT_EQ(ReleaseParamSnapshot(snapshot, &host.in_data), 0);
        EXPECT_EQ(host.checkins, 72);
    }
}

TEST_F(SnapshotTest, FirstRefusedCheckInEndsTheReturning) {
    host.fail_checkin = 5;
    ASSERT_EQ(TakeParamSnapshot(snapshot), 0);
    EXPECT_EQ(ReleaseParamSnapshot(snapshot, &host.in_data), host.failure);
    EXPECT_EQ(host.checkins, 5);
    EXPECT_TRUE(snapshot.checkedOut.empty());
    EXPECT_GE(snapshot.checkedOut.capacity(), 72U) << "the storage is kept";
}

}  // namespace
}  // namespace flumo

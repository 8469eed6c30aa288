// The controls: their identities, how they are declared, and how a frame's values of them are read. What they
// are is in the table of controls, which tests/references/controls.json holds in place; what becomes of a
// host that fails is the fault sweep's to see.
#include <gmock/gmock.h>

#include <cstring>
#include <functional>
#include <set>
#include <stdexcept>

#include "effect/params/param_ids.h"
#include "effect/params/param_snapshot.h"
#include "tests/support/linked_effect.h"

namespace flumo::test {
namespace {

std::string MessageOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing thrown";
}

TEST(ParamIds, LeadFromSectionsToIndicesAndDiskIds) {
    for (const Control& control : kControls) {
        const auto section = static_cast<A_u_long>(control.section);
        EXPECT_EQ(GetMainParamId(section), control.id);
        EXPECT_EQ(GetParamIndex(std::string(control.id)), static_cast<A_long>(section) + 1);
        EXPECT_EQ(GetParamDiskId(std::string(control.id)), control.diskId);
    }
    EXPECT_EQ(GetParamDiskId("BlendMode"), 1) << "has a disk id and no index";
    for (const std::string id : {"AlphaThreshold", "noisetype", "", "NoiseType ", "Noise", "BlendMode"}) {
        EXPECT_EQ(MessageOf([&] { GetParamIndex(id); }),
                  "Failed to find the parameter index for id \"" + id + "\"");
        if (id == "BlendMode") continue;
        EXPECT_EQ(MessageOf([&] { GetParamDiskId(id); }),
                  "Failed to find the disk ID for parameter id \"" + id + "\"");
    }
    for (const A_u_long section : {static_cast<A_u_long>(kControlCount), 0xFFFFFFFFU})
        EXPECT_EQ(MessageOf([&] { GetMainParamId(section); }), "Failed to get Id for section MainParams");
}

// Beside what the list of controls shows: what a kind's record holds, and the event that the editor wants.
TEST(ParamsSetup, DeclaresWhatTheKindsNeed) {
    using enum host::ControlKind;
    const LinkedEffect effect;
    for (const host::Control& control : effect.host.controls()) {
        SCOPED_TRACE(control.name);
        const PF_ParamDef& def = control.definition;
        if (control.kind == kGroupEnd) continue;  // is declared with what the control before it left
        EXPECT_EQ(def.flags, control.kind == kPopup ? 6 : control.kind == kGroupStart ? 32 : 0);
        if (control.kind == kFloatSlider) {
            EXPECT_EQ(def.u.fs_d.value, def.u.fs_d.dephault);
            EXPECT_EQ(def.u.fs_d.precision, 1);
            EXPECT_EQ(def.u.fs_d.curve_tolerance, 0.05F);
        } else if (control.kind == kCheckbox) {
            EXPECT_EQ(def.u.bd.value, def.u.bd.dephault);
            EXPECT_STREQ(def.u.bd.u.nameptr, "");
        } else if (control.kind == kArbitrary) {
            EXPECT_THAT((std::array{def.ui_flags, A_long{def.ui_width}, A_long{def.ui_height}}),
                        testing::ElementsAre(130, 150, 50));
            EXPECT_EQ(def.u.arb_d.id, control.disk_id);
            EXPECT_EQ(std::memcmp(&def.u.arb_d.refconPV, "GRADIENT", 8), 0)
                << "the characters are the pointer";
        }
    }
    EXPECT_STREQ(effect.host.control(25).definition.u.pd.u.namesptr,
                 "Gradient|Gradient From Layer|Reflection From Layer|Refraction From Layer")
        << "one choice more than is offered";
    PF_CustomUIInfo interface {};
    interface.events = 4;
    EXPECT_EQ(std::memcmp(&effect.host.custom_ui(), &interface, sizeof interface), 0);
    EXPECT_TRUE(effect.Tidy());
}

TEST(ParamsSetup, KeepsTheNoiseGradientLockedUntilAllIsDeclared) {
    using enum host::Callback;
    LinkedEffect effect;
    effect.instance.reset();
    effect.host.faults().start_recording();
    effect.host.params_setup();
    std::vector<host::Callback> calls = effect.host.faults().stop_recording();
    EXPECT_EQ(std::ranges::count(calls, kStrcpy), 79)
        << "names go through the host, ends of groups have none";
    calls.erase(calls.begin(), calls.end() - 4);
    EXPECT_THAT(calls, testing::ElementsAre(kAddParam, kRegisterUi, kUnlockHandle, kReleaseSuite));
}

struct Asked {
    PF_ParamIndex index;
    A_long time, step;
    A_u_long scale;
};
std::vector<Asked> asked;
size_t refused;
int checkins;

void* masters[87];
A_u_char pixels[1];

/// Values that tell every control and every width from every other.
PF_Err Checkout(PF_ProgPtr, PF_ParamIndex index, A_long time, A_long step, A_u_long scale, PF_ParamDef* def) {
    asked.push_back({index, time, step, scale});
    // What a refused checkout leaves in the record is no value.
    const PF_Err result = asked.size() == refused ? 99 : 0;
    switch (kControls[static_cast<size_t>(index) - 1].kind) {
        case ControlKind::Layer:
            def->u.ld.width = index;
            def->u.ld.data = reinterpret_cast<PF_PixelPtr>(pixels);
            return result;
        case ControlKind::Checkbox:
            def->u.bd.value = 256 * index + 2;
            return result;
        case ControlKind::Angle:
            def->u.ad.value = -(720 + index) * 65536 - 32768;  // turns backwards and half a degree
            return result;
        case ControlKind::Gradient:
            def->u.arb_d.value = &masters[index];
            return result;
        default:
            def->u.fs_d.value = index + 1.0 / 3.0;
            return result;
    }
}

/// The snapshot of a frame whose checkout of this number, counted from 1, is refused; 0 is none.
struct Frame {
    explicit Frame(size_t which = 0) {
        asked.clear();
        checkins = 0;
        refused = which;
        in_data.inter.checkout_param = Checkout;
        in_data.inter.checkin_param = [](PF_ProgPtr, PF_ParamDef*) -> PF_Err {
            ++checkins;
            return PF_Err_NONE;
        };
        in_data.current_time = 7;
        in_data.time_step = 11;
        in_data.time_scale = 0xF0000001;
        snapshot.in_data = &in_data;
        EXPECT_EQ(TakeParamSnapshot(snapshot), which == 0 ? 0 : 99);
        EXPECT_EQ(snapshot.checkedOut.size(), 72U);
    }
    ~Frame() {
        EXPECT_EQ(ReleaseParamSnapshot(snapshot, &in_data), 0);
        EXPECT_EQ(checkins, 72) << "slots that were never checked out are checked in too";
        EXPECT_TRUE(snapshot.checkedOut.empty());
    }

    PF_InData in_data{};
    ParamSnapshot snapshot;
};

TEST(Snapshot, ReadsInItsOwnOrderAtTheFramesTime) {
    const Frame frame;
    std::vector<PF_ParamIndex> order;
    for (const Asked& each : asked) {
        order.push_back(each.index);
        EXPECT_TRUE(each.time == 7 && each.step == 11 && each.scale == 0xF0000001);
    }
    EXPECT_THAT(order,
                testing::ElementsAre(24, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 46, 25, 28, 29, 30, 31, 32,
                                     33, 35, 14, 18, 16, 20, 17, 21, 37, 38, 39, 40, 41, 42, 43, 47, 48, 49,
                                     51, 50, 53, 54, 55, 56, 57, 58, 61, 62, 63, 64, 65, 67, 68, 69, 70, 71,
                                     72, 73, 74, 75, 76, 77, 81, 82, 83, 78, 84, 26, 60, 15, 19, 36));
}

// That each control arrives in its own field is what the frames show.
TEST(Snapshot, ConvertsEachKindToItsWidth) {
    const Frame frame;
    const ParamSnapshot& read = frame.snapshot;
    EXPECT_EQ(read.noiseContrast, 3 + 1.0 / 3.0);
    EXPECT_EQ(read.evolution, -727.5);
    EXPECT_EQ(read.noiseVisible, 1.0);
    EXPECT_EQ(read.loopEvolution, 2) << "the low byte";
    EXPECT_EQ(read.noiseGradientLoop, 256 * 40 + 2);
    EXPECT_EQ(read.linesGradient, &masters[60]);
}

TEST(Snapshot, LayersAreReachedThroughTheirSlots) {
    for (const size_t refused_one : {0U, 1U, 70U, 71U, 72U}) {
        Frame frame(refused_one);
        ParamSnapshot& read = frame.snapshot;
        const size_t had = refused_one == 0 ? 3 : std::max(refused_one, size_t{70}) - 70;
        EXPECT_EQ(read.noiseVisible, refused_one == 1 ? 0.0 : 1.0) << "the first that is read";
        EXPECT_THAT((std::array{read.layer1Slot, read.layer2Slot, read.layer3Slot}),
                    testing::ElementsAre(had > 0 ? 69 : -1, had > 1 ? 70 : -1, had > 2 ? 71 : -1));
        const PF_LayerDef* layers[] = {SnapshotLayer1(read), SnapshotLayer2(read), SnapshotLayer3(read)};
        for (size_t i = 0; i < 3; ++i)
            EXPECT_EQ(layers[i] ? layers[i]->width : 0, i < had ? (std::array{15, 19, 36})[i] : 0);
        read.checkedOut[69].u.ld.data = nullptr;
        EXPECT_EQ(SnapshotLayer1(read), nullptr) << "no layer chosen";
    }
}

}  // namespace
}  // namespace flumo::test

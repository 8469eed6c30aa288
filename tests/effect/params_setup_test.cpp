// What the host hears when it asks for the controls.
#include "effect/params/params_setup.h"

#include <gmock/gmock.h>

#include <cstring>
#include <map>
#include <string>

#include "control_facts.h"
#include "effect/gradient/gradient.h"
#include "fake_host.h"

namespace flumo {
namespace {

using test::ControlFact;
using test::FakeHost;
using test::kControlFacts;
using testing::Each;
using testing::StrEq;

constexpr std::size_t kGradientAt = 25;
constexpr std::size_t kLinesGradientAt = 59;

GradientStopMap& Stops(const PF_ParamDef& def) {
    return *static_cast<GradientRecord*>(*def.u.arb_d.dephault)->stops;
}

/// Owns the default gradients that it was given, as a host does.
class SetupHost : public FakeHost {
  public:
    ~SetupHost() {
        for (const PF_ParamDef& def : params) {
            if (def.param_type == PF_Param_ARBITRARY_DATA && def.u.arb_d.dephault) delete &Stops(def);
        }
    }

    PF_Err Setup() { return ParamsSetup(&in_data, &out_data); }
};

/// The value of a field, which is then wiped: what is left of a record is what nobody expected in it.
template <typename Field>
Field Take(Field& field) {
    const Field value = field;
    std::memset(static_cast<void*>(&field), 0, sizeof field);
    return value;
}

void ExpectNothingLeft(const PF_ParamDef& def, const char* id) {
    PF_ParamDef zero;
    std::memset(&zero, 0, sizeof zero);
    EXPECT_EQ(std::memcmp(&def, &zero, sizeof def), 0) << id << ": a field is set that should be zero";
}

void TakeFloatSlider(const ControlFact& fact, PF_ParamDef& def) {
    PF_FloatSliderDef& slider = def.u.fs_d;
    EXPECT_EQ(Take(slider.value), static_cast<double>(fact.value));
    EXPECT_EQ(Take(slider.dephault), fact.value);
    EXPECT_EQ(Take(slider.valid_min), fact.valid_min);
    EXPECT_EQ(Take(slider.valid_max), fact.valid_max);
    EXPECT_EQ(Take(slider.slider_min), fact.slider_min);
    EXPECT_EQ(Take(slider.slider_max), fact.slider_max);
    EXPECT_EQ(Take(slider.precision), 1);
    EXPECT_EQ(Take(slider.display_flags), fact.percent ? 1 : 0);
    EXPECT_EQ(Take(slider.curve_tolerance), 0.05F);
}

void TakeSlider(const ControlFact& fact, PF_ParamDef& def) {
    PF_SliderDef& slider = def.u.sd;
    const A_long numbers[] = {Take(slider.value),     Take(slider.dephault),   Take(slider.valid_min),
                              Take(slider.valid_max), Take(slider.slider_min), Take(slider.slider_max)};
    const float expected[] = {fact.value,     fact.value,      fact.valid_min,
                              fact.valid_max, fact.slider_min, fact.slider_max};
    for (std::size_t i = 0; i < std::size(numbers); ++i)
        EXPECT_EQ(static_cast<float>(numbers[i]), expected[i]);
}

void TakePopup(const ControlFact& fact, PF_ParamDef& def) {
    static const std::map<std::string, std::string> choices = {
        {"NoiseType", "Fluid|Voronoi|Smoke|Worley"},
        {"ColorizeMode", "Gradient|Gradient From Layer|Reflection From Layer|Refraction From Layer"},
        {"LinesBlendMode", "Normal|Add|Multiply"},
        {"LinesAlphaNoiseType", "Fluid|Voronoi|Smoke|Worley"},
    };
    EXPECT_EQ(Take(def.flags), 6);
    EXPECT_EQ(Take(def.u.pd.value), 1);
    EXPECT_EQ(Take(def.u.pd.dephault), 1);
    EXPECT_EQ(static_cast<float>(Take(def.u.pd.num_choices)), fact.valid_max);
    EXPECT_EQ(Take(def.u.pd.u.namesptr), choices.at(fact.id));
}

void TakeCheckbox(const ControlFact& fact, PF_ParamDef& def) {
    EXPECT_EQ(static_cast<float>(Take(def.u.bd.value)), fact.value);
    EXPECT_EQ(static_cast<float>(Take(def.u.bd.dephault)), fact.value);
    EXPECT_STREQ(Take(def.u.bd.u.nameptr), "");
}

void TakeGradient(const ControlFact& fact, PF_ParamDef& def) {
    EXPECT_EQ(Take(def.ui_flags), 130);
    EXPECT_EQ(Take(def.ui_width), 150);
    EXPECT_EQ(Take(def.ui_height), 50);
    EXPECT_EQ(Take(def.u.arb_d.id), fact.disk_id);
    EXPECT_NE(Take(def.u.arb_d.dephault), nullptr);
    void* const refcon = Take(def.u.arb_d.refconPV);
    EXPECT_EQ(std::memcmp(&refcon, "GRADIENT", 8), 0) << "the characters lie in the field itself";
}

void TakeKind(const ControlFact& fact, PF_ParamDef& def) {
    switch (fact.type) {
        case PF_Param_FLOAT_SLIDER:
            return TakeFloatSlider(fact, def);
        case PF_Param_SLIDER:
            return TakeSlider(fact, def);
        case PF_Param_POPUP:
            return TakePopup(fact, def);
        case PF_Param_CHECKBOX:
            return TakeCheckbox(fact, def);
        case PF_Param_ARBITRARY_DATA:
            return TakeGradient(fact, def);
        case PF_Param_GROUP_START:
            EXPECT_EQ(Take(def.flags), 32);
            return;
        default:
            return;  // a layer and an angle start at zero
    }
}

TEST(ParamsSetup, DeclaresEveryControlAsUsersKnowIt) {
    SetupHost host;
    ASSERT_EQ(host.Setup(), 0);
    EXPECT_EQ(host.out_data.num_params, 87);
    ASSERT_EQ(host.params.size(), 86U);
    EXPECT_THAT(host.add_indices, Each(-1));
    for (const ControlFact& fact : kControlFacts) {
        SCOPED_TRACE(fact.id);
        PF_ParamDef def = host.params[static_cast<std::size_t>(fact.index) - 1];
        EXPECT_EQ(Take(def.uu.id), fact.disk_id);
        EXPECT_EQ(Take(def.param_type), fact.type);
        if (fact.type == PF_Param_GROUP_END) continue;
        EXPECT_STREQ(def.name, fact.name);
        std::memset(def.name, 0, sizeof def.name);
        TakeKind(fact, def);
        ExpectNothingLeft(def, fact.id);
    }
}

// Group ends were always declared with whatever the control before them left behind.
TEST(ParamsSetup, GroupEndsCarryTheControlBeforeThem) {
    SetupHost host;
    ASSERT_EQ(host.Setup(), 0);
    int ends = 0;
    for (std::size_t i = 1; i < host.params.size(); ++i) {
        PF_ParamDef end = host.params[i];
        if (end.param_type != PF_Param_GROUP_END) continue;
        const PF_ParamDef& before = host.params[i - 1];
        end.uu.id = before.uu.id;
        end.param_type = before.param_type;
        EXPECT_EQ(std::memcmp(&end, &before, sizeof end), 0) << "index " << i + 1;
        ++ends;
    }
    EXPECT_EQ(ends, 7);
}

TEST(ParamsSetup, GroupsAreThese) {
    SetupHost host;
    ASSERT_EQ(host.Setup(), 0);
    std::vector<std::size_t> open;
    std::map<std::size_t, std::size_t> groups;
    for (std::size_t index = 1; index <= host.params.size(); ++index) {
        const PF_ParamType type = host.params[index - 1].param_type;
        if (type == PF_Param_GROUP_START) open.push_back(index);
        ASSERT_FALSE(open.empty()) << "index " << index << " stands outside of every group";
        if (type != PF_Param_GROUP_END) continue;
        groups[open.back()] = index;
        open.pop_back();
    }
    EXPECT_EQ(groups, (std::map<std::size_t, std::size_t>{
                          {1, 22}, {23, 44}, {27, 34}, {45, 86}, {52, 59}, {66, 79}, {80, 85}}));
}

TEST(ParamsSetup, NoiseGradientStartsBlackToWhiteAndLinesGradientWhite) {
    SetupHost host;
    ASSERT_EQ(host.Setup(), 0);
    const GradientStop white{1, 1, 1, 1, 1};
    const GradientStop black{1, 0, 0, 0, 1};
    EXPECT_EQ(Stops(host.params[kGradientAt]), (GradientStopMap{{0.0F, black}, {1.0F, white}}));
    EXPECT_EQ(Stops(host.params[kLinesGradientAt]), (GradientStopMap{{0.0F, white}, {1.0F, white}}));
}

TEST(ParamsSetup, AsksForPanelEventsAfterTheLastControl) {
    SetupHost host;
    host.register_ui_result = 42;
    EXPECT_EQ(host.Setup(), 42);
    ASSERT_EQ(host.uis.size(), 1U);
    EXPECT_EQ(Take(host.uis[0].events), 4);
    const PF_CustomUIInfo zero{};
    EXPECT_EQ(std::memcmp(&host.uis[0], &zero, sizeof zero), 0);

    // The noise gradient is locked until everything is declared, then let go, and the suites last.
    const std::vector<std::string> end(host.log.end() - 4, host.log.end());
    EXPECT_THAT(end, testing::ElementsAre("add_param", "register_ui", "unlock", "release PF Handle Suite 2"));
    EXPECT_TRUE(host.AllGivenBack());
}

TEST(ParamsSetup, RefusedControlEndsTheDeclarationAtOnceWhereverItStands) {
    for (int refused = 1; refused <= 86; ++refused) {
        SetupHost host;
        host.fail_add_param = refused;
        EXPECT_EQ(host.Setup(), host.failure);
        EXPECT_EQ(host.Count("add_param"), refused);
        EXPECT_EQ(host.out_data.num_params, refused + 1);
        EXPECT_EQ(host.Count("register_ui"), 0);
        EXPECT_TRUE(host.AllGivenBack()) << "index " << refused;
    }
}

struct GradientFault {
    const char* name;
    int fail_new;
    int fail_lock;
    bool no_handle_suite;
    PF_Err result;
    bool noise_default;
    bool lines_default;
};

// Locks: 1 by the making of the noise gradient, 2 by its blackening, 3 by the making of the second.
constexpr GradientFault kGradientFaults[] = {
    {"no handle suite", 0, 0, true, 516, false, false},
    {"no first handle", 1, 0, false, 4, false, false},
    {"first lock fails", 0, 1, false, 4, false, false},
    {"blackening lock fails", 0, 2, false, 4, true, false},
    {"no second handle", 2, 0, false, 0, true, false},
    {"second lock fails", 0, 3, false, 4, true, false},
};

TEST(ParamsSetup, FailedDefaultGradientLeavesAllControlsDeclared) {
    for (const GradientFault& fault : kGradientFaults) {
        SCOPED_TRACE(fault.name);
        SetupHost host;
        host.fail_new = fault.fail_new;
        host.fail_lock = fault.fail_lock;
        if (fault.no_handle_suite) host.missing_suites = {"PF Handle Suite 2"};
        EXPECT_EQ(host.Setup(), fault.result);
        EXPECT_EQ(host.out_data.num_params, 87);
        ASSERT_EQ(host.params.size(), 86U);
        EXPECT_EQ(host.params[kGradientAt].u.arb_d.dephault != nullptr, fault.noise_default);
        EXPECT_EQ(host.params[kLinesGradientAt].u.arb_d.dephault != nullptr, fault.lines_default);
        EXPECT_EQ(host.Count("register_ui"), fault.result == 0 ? 1 : 0);
        EXPECT_TRUE(host.AllGivenBack());
    }
}

TEST(ParamsSetup, NeedsABasicSuiteBeforeAnythingElse) {
    SetupHost host;
    host.in_data.pica_basicP = nullptr;
    EXPECT_THROW(host.Setup(), PF_Err);
    EXPECT_TRUE(host.params.empty());
}

}  // namespace
}  // namespace flumo

// What is said to have no effect has none, in pixels.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "base/file_contents.h"
#include "effect/params/noise_generator.h"
#include "job/look.h"
#include "job/session.h"
#include "scene/control_needs.h"

namespace flumo::job {
namespace {

using scene::Control;
using scene::ControlCatalog;
using scene::ControlKind;
using scene::Tracks;

void set(Tracks& tracks, const ControlCatalog& catalog, const std::string& id, const std::string& value) {
    const Control& control = catalog.find(id);
    tracks[control.index] = {&control, {{0, scene::parse_control_value(control, value)}}};
}

// Another value than the default, inside the slider.
std::string other_value(const Control& control) {
    switch (control.kind) {
        case ControlKind::kArbitrary:
            return "0:#f00,1:#0f0";
        case ControlKind::kCheckbox:
            return control.default_value == 0 ? "on" : "off";
        case ControlKind::kPopup:
            return "2";
        case ControlKind::kAngle:
            return "77";
        case ControlKind::kSlider:
            return "9";
        default:
            return std::to_string(control.slider.max * 0.37);
    }
}

host::World rendered(Session& session, const Tracks& tracks) {
    const auto instance = session.host().new_instance();
    apply_tracks(*instance, tracks, host::Depth::k8);
    host::FrameRequest request;
    request.width = 40;
    request.height = 24;
    return instance->render(request);
}

TEST(ControlNeeds, WhatHasNoEffectChangesNoPixel) {
    // At the end of the process libEGL unloads the driver, which would look like a leak.
    dlopen("libEGL_mesa.so.0", RTLD_NOW | RTLD_NODELETE);
    Session session(FLUMO_MODULE);
    const ControlCatalog& catalog = session.catalog();
    std::vector<std::vector<std::pair<std::string, std::string>>> looks = {
        {},
        {{"LinesVisible", "on"}, {"Evolution", "50"}},
        {{"LinesVisible", "on"}, {"ColorizeMode", "3"}, {"LinesAlphaThreshold", "40"}, {"Complexity", "1"}},
        {{"NoiseVisible", "off"}},
    };
    for (int type = 1; type <= kNoiseGeneratorCount; ++type) {
        const std::string number = std::to_string(type);
        looks.push_back({{"NoiseType", number},
                         {"Evolution", "30"},
                         {"LinesVisible", "on"},
                         {"LinesAlphaNoiseType", number},
                         {"LinesAlphaThreshold", "40"}});
    }
    size_t without_effect = 0;
    for (const auto& look : looks) {
        Tracks base;
        for (const auto& [id, value] : look)
            set(base, catalog, id, value);
        const host::World plain = rendered(session, base);
        for (const scene::ControlNeeds& needs : scene::control_needs()) {
            const Control& control = catalog.find(needs.id);
            if (base.contains(control.index) || control.kind == ControlKind::kLayer) continue;
            Tracks changed = base;
            set(changed, catalog, control.id, other_value(control));
            if (scene::why_without_effect(control, changed, catalog).empty()) continue;
            ++without_effect;
            EXPECT_TRUE(rendered(session, changed).same_picture(plain)) << control.id;
        }
    }
    EXPECT_GT(without_effect, 120U);
}

TEST(ControlNeeds, ReasonsNameWhatIsMissing) {
    Session session(FLUMO_MODULE, Use::kControlsAlone);
    const ControlCatalog& catalog = session.catalog();
    const struct {
        std::vector<std::pair<std::string, std::string>> look;
        const char* id;
        const char* reason;
    } cases[] = {
        {{}, "LinesCount", "LinesCount changes nothing: it needs LinesVisible on"},
        {{{"LinesVisible", "on"}}, "LinesCount", ""},
        {{{"LinesRandomize", "9"}},
         "Seed",
         "Seed (other random numbers for the controls that randomize) changes nothing: it needs LinesVisible "
         "on"},
        {{{"GradientRandomizeAmplitude", "9"}}, "Seed", ""},
        {{}, "Layer3", "Layer3 changes nothing: it needs ColorizeMode other than Gradient"},
        {{{"ColorizeMode", "2"}}, "Layer3", ""},
        {{}, "Layer1Mult", "Layer1Mult changes nothing: it needs a layer for Layer1"},
        {{{"LinesVisible", "on"}, {"LinesAlphaNoiseType", "Worley"}}, "LinesAlphaNoiseOffsetX", ""},
        {{{"Complexity", "1"}, {"Evolution", "9"}},
         "Speed",
         "Speed changes nothing: it needs NoiseType other than Fluid or Complexity other than 1"},
    };
    for (const auto& row : cases) {
        Tracks tracks;
        for (const auto& [id, value] : row.look)
            set(tracks, catalog, id, value);
        EXPECT_EQ(scene::why_without_effect(catalog.find(row.id), tracks, catalog), row.reason);
    }
    // A keyframe that has the state is enough.
    Tracks tracks;
    const Control& evolution = catalog.find("Evolution");
    tracks[evolution.index] = {&evolution, {{0, 0.0}, {9, 360.0}}};
    EXPECT_EQ(scene::why_without_effect(catalog.find("LoopEvolution"), tracks, catalog), "");
}

TEST(ControlNeeds, TheManualHasTheTable) {
    Session session(FLUMO_MODULE, Use::kControlsAlone);
    const std::string guide = read_text_file(FLUMO_GUIDE);
    for (const scene::ControlNeeds& needs : scene::control_needs()) {
        const size_t row = guide.find("\n| " + scene::needs_text(needs, session.catalog()) + " | ");
        ASSERT_NE(row, guide.npos) << needs.id;
        const std::string line = guide.substr(row + 1, guide.find('\n', row + 1) - row);
        EXPECT_NE(line.find(std::string(1, '`').append(needs.id).append("`")), line.npos) << line;
    }
}

TEST(ControlCatalog, TheManualNamesEachWithItsChoices) {
    Session session(FLUMO_MODULE, Use::kControlsAlone);
    const std::string guide = read_text_file(FLUMO_GUIDE);
    for (const Control& control : session.catalog().controls()) {
        if (control.is_group_mark()) continue;
        EXPECT_NE(guide.find(" | `" + control.id + "` | "), guide.npos) << control.id;
        for (const std::string& choice : scene::offered_choices(control))
            EXPECT_NE(guide.find(choice), guide.npos) << control.id << ' ' << choice;
    }
}

}  // namespace
}  // namespace flumo::job

// Events on a control that draws itself. More of what is drawn, the tests of the gradient editor look at.
#include "host/panel/panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "host/control_events.h"
#include "host/instance.h"
#include "tests/host/scripted_effect.h"

namespace flumo::host::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;

class Panels : public testing::Test {
  protected:
    Panels() {
        host.start();
        instance = host.new_instance();
    }

    ScriptedEffect effect;
    Host host{effect.module};
    std::unique_ptr<Instance> instance;
};

/// A ring at 4,4, an arch at 32,18 that leans to the left, and the second row of a padded image at 50,3.
void paint(EffectCall& call, DRAWBOT_SupplierRef supplier, DRAWBOT_SurfaceRef surface) {
    const auto* make = call.acquire<DRAWBOT_SupplierSuite1>(kDRAWBOT_SupplierSuite, 1);
    const auto* surfaces = call.acquire<DRAWBOT_SurfaceSuite2>(kDRAWBOT_SurfaceSuite, 2);
    const auto* paths = call.acquire<DRAWBOT_PathSuite1>(kDRAWBOT_PathSuite, 1);
    const DRAWBOT_ColorRGBA red{1, 0, 0, 1};
    const DRAWBOT_RectF32 outer{4, 4, 24, 24}, inner{12, 12, 8, 8}, within_arch{35, 14, 2, 2};
    const DRAWBOT_PointF32 first{32, -10}, second{48, 18}, end{48, 18}, place{50, 2};
    const uint8_t argb[] = {9, 0, 0, 0, 77, 77, 9, 255, 128, 0};
    DRAWBOT_BrushRef brush = nullptr;
    DRAWBOT_PathRef ring = nullptr, arch = nullptr;
    DRAWBOT_ImageRef image = nullptr;
    make->NewBrush(supplier, &red, &brush);
    make->NewPath(supplier, &ring);
    make->NewPath(supplier, &arch);
    make->NewImageFromBuffer(supplier, 1, 2, 6, kDRAWBOT_PixelLayout_32RGB, argb, &image);
    paths->AddRect(ring, &outer);
    paths->AddRect(ring, &inner);
    paths->MoveTo(arch, 32, 18);
    paths->BezierTo(arch, &first, &second, &end);
    paths->AddRect(arch, &within_arch);
    surfaces->FillPath(surface, brush, ring, kDRAWBOT_FillType_EvenOdd);
    surfaces->FillPath(surface, brush, arch, kDRAWBOT_FillType_Winding);
    surfaces->DrawImage(surface, image, &place, 1);
    make->ReleaseObject(reinterpret_cast<DRAWBOT_ObjectRef>(brush));
    EXPECT_NE(surfaces->FillPath(surface, brush, ring, kDRAWBOT_FillType_Winding), 0) << "a released brush";
    EXPECT_NE(make->NewPath(nullptr, &ring), 0) << "no supplier";
    make->RetainObject(reinterpret_cast<DRAWBOT_ObjectRef>(arch));
    make->ReleaseObject(reinterpret_cast<DRAWBOT_ObjectRef>(arch));
}

TEST_F(Panels, PaintCountObjectsAndRefuseStrangers) {
    effect.on[PF_Cmd_EVENT] = [](EffectCall& call) -> PF_Err {
        const auto* ui = call.acquire<PF_EffectCustomUISuite1>(kPFEffectCustomUISuite, 1);
        const auto* draw = call.acquire<DRAWBOT_DrawbotSuite1>(kDRAWBOT_DrawSuite, 1);
        DRAWBOT_DrawRef reference = nullptr;
        DRAWBOT_SupplierRef supplier = nullptr;
        DRAWBOT_SurfaceRef surface = nullptr;
        ui->PF_GetDrawingReference(call.event().contextH, &reference);
        draw->GetSupplier(reference, &supplier);
        draw->GetSurface(reference, &surface);
        paint(call, supplier, surface);
        return PF_Err_NONE;
    };
    Panel panel({.width = 60, .height = 30});
    ControlEvents(*instance, {.index = kNumber}, &panel).draw();
    const auto red_at = [&](size_t x, size_t y) { return int{panel.rgba().at(4 * (y * 60 + x))}; };
    EXPECT_EQ(red_at(8, 16), 255);
    EXPECT_EQ(red_at(16, 16), 0x23) << "the hole of even and odd";
    EXPECT_EQ(red_at(36, 8), 255) << "under the arch";
    EXPECT_EQ(red_at(44, 6), 0x23) << "above it, inside its hull";
    EXPECT_EQ(red_at(36, 15), 255) << "wound twice";
    EXPECT_EQ(red_at(50, 3), 255) << "after the padding";
    EXPECT_EQ(host.accounting().lent(Lent::kDrawbotObject), 3) << "as many as are not released";
    EXPECT_THAT(host.accounting().misuse_texts(),
                IsSupersetOf({HasSubstr("does not live"), HasSubstr("not this panel")}));
}

TEST_F(Panels, ClicksBecomeDragsWithTheSameWords) {
    std::vector<std::string> log;
    std::set<PF_ContextH> contexts;
    effect.on[PF_Cmd_EVENT] = [&](EffectCall& call) -> PF_Err {
        PF_EventExtra& event = call.event();
        PF_DoClickEventInfo& click = event.u.do_click;
        EXPECT_EQ(event.e_type, PF_Event_DO_CLICK);
        contexts.insert(event.contextH);
        log.push_back((click.send_drag ? "drag " : "click ") + std::to_string(click.screen_point.h) +
                      " word " + std::to_string(click.continue_refcon[2]) + (click.last_time ? " last" : "") +
                      " clicks " + std::to_string(click.num_clicks));
        click.send_drag = true;
        click.continue_refcon[2] += 10;
        event.evt_out_flags = PF_EO_HANDLED_EVENT;
        return PF_Err_NONE;
    };
    ControlEvents events(*instance, {.index = kNumber});
    EXPECT_THROW(events.drag({1, 1}), std::logic_error);
    const EventOutcome pressed = events.click({5, 6}, 2, PF_Mod_CMD_CTRL_KEY);
    EXPECT_TRUE(pressed.drag_wanted && pressed.handled() && !pressed.changed);
    events.drag({7, 6});
    events.release({9, 6});
    EXPECT_THAT(log, ElementsAre("click 5 word 0 clicks 2", "drag 7 word 10 clicks 2",
                                 "drag 9 word 20 last clicks 2"));
    EXPECT_EQ(contexts.size(), 1u) << "one context for all events";
    EXPECT_THROW(events.drag({1, 1}), std::logic_error);
}

TEST_F(Panels, AChangedValueIsKeptAndSharedOnesStayAsTheyAre) {
    bool marks = true;
    effect.on[PF_Cmd_EVENT] = [&](EffectCall& call) -> PF_Err {
        PF_ParamDef& param = *call.params[kNumber];
        EXPECT_EQ(param.uu.change_flags, PF_ChangeFlag_NONE);
        EXPECT_EQ(call.params[kAmount]->u.fs_d.value, 2.5);
        *static_cast<double*>(*param.u.arb_d.value) += 1;
        if (marks) param.uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
        return PF_Err_NONE;
    };
    const auto text = [&](Instance& of, double frame) {
        return std::get<Arbitrary>(of.value_at(kNumber, frame))->print();
    };
    const Arbitrary shared = std::get<Arbitrary>(instance->value_at(kNumber, 0));
    ControlEvents events(*instance, {.index = kNumber, .time_frame = 5});
    EXPECT_TRUE(events.click({0, 0}).changed);
    EXPECT_EQ(text(*instance, 0), "number 8");
    EXPECT_EQ(shared->print(), "number 7");
    marks = false;
    EXPECT_FALSE(events.click({0, 0}).changed);
    EXPECT_EQ(text(*instance, 0), "number 8");
    marks = true;
    instance->set_keyframes(kNumber, {{0, shared}, {10, shared}});
    events.click({0, 0});
    EXPECT_EQ(text(*instance, 5), "number 8") << "a keyframe at the panel's time";
    EXPECT_EQ(text(*instance, 10), "number 7");
}

TEST_F(Panels, WritePicturesAndSayWhereNot) {
    Panel small({.width = 3, .height = 2});
    const auto path = std::filesystem::path(testing::TempDir()) / "panel_test.png";
    small.write_png(path);
    std::ifstream file(path, std::ios::binary);
    std::string magic(4, '\0');
    file.read(magic.data(), 4);
    EXPECT_EQ(magic, "\x89PNG");
    EXPECT_THROW(small.write_png(path / "below"), std::runtime_error);
    EXPECT_THROW(Panel({.width = 0}), std::invalid_argument);
    EXPECT_THROW(Panel({.scale = 0}), std::invalid_argument);
    EXPECT_THROW(Panel({.width = 100000}), std::invalid_argument);
    std::filesystem::remove(path);
}

}  // namespace
}  // namespace flumo::host::test

// Events on a control that draws itself, and what drawing leaves on the panel.
#include "host/panel/panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "host/control_events.h"
#include "host/instance.h"
#include "tests/host/scripted_effect.h"

namespace flumo::host::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The four drawing suites and the references of one draw event.
struct Drawing {
    explicit Drawing(EffectCall& call)
        : draw(call.acquire<DRAWBOT_DrawbotSuite1>(kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1)),
          make(call.acquire<DRAWBOT_SupplierSuite1>(kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1)),
          paint(call.acquire<DRAWBOT_SurfaceSuite2>(kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2)),
          path(call.acquire<DRAWBOT_PathSuite1>(kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1)),
          call_(call) {
        const auto* ui = call.acquire<PF_EffectCustomUISuite1>(kPFEffectCustomUISuite, 1);
        DRAWBOT_DrawRef reference = nullptr;
        ui->PF_GetDrawingReference(call.event().contextH, &reference);
        call.release(kPFEffectCustomUISuite, 1);
        draw->GetSupplier(reference, &supplier);
        draw->GetSurface(reference, &surface);
    }
    ~Drawing() {
        call_.release(kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1);
        call_.release(kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1);
        call_.release(kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2);
        call_.release(kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1);
    }

    void release(auto reference) const {
        make->ReleaseObject(reinterpret_cast<DRAWBOT_ObjectRef>(reference));
    }

    const DRAWBOT_DrawbotSuite1* draw;
    const DRAWBOT_SupplierSuite1* make;
    const DRAWBOT_SurfaceSuite2* paint;
    const DRAWBOT_PathSuite1* path;
    DRAWBOT_SupplierRef supplier = nullptr;
    DRAWBOT_SurfaceRef surface = nullptr;

  private:
    EffectCall& call_;
};

class Panels : public testing::Test {
  protected:
    Panels() {
        host.start();
        instance = host.new_instance();
    }

    /// Draws on a fresh panel and gives back its picture.
    void draw(const PanelOptions& options, const std::function<void(Drawing&)>& work) {
        effect.on[PF_Cmd_EVENT] = [&](EffectCall& call) -> PF_Err {
            Drawing drawing(call);
            work(drawing);
            return PF_Err_NONE;
        };
        panel = std::make_unique<Panel>(options);
        ControlEvents(*instance, {.index = kNumber}, panel.get()).draw();
        picture = panel->rgba();
    }
    std::vector<int> pixel(int x, int y) const {
        const auto first = 4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(panel->image_width()) +
                                static_cast<std::size_t>(x));
        return {picture.at(first), picture.at(first + 1), picture.at(first + 2), picture.at(first + 3)};
    }

    ScriptedEffect effect;
    Host host{effect.module};
    std::unique_ptr<Instance> instance;
    std::unique_ptr<Panel> panel;
    std::vector<uint8_t> picture;
};

constexpr DRAWBOT_ColorRGBA kRed{1, 0, 0, 1};
constexpr DRAWBOT_ColorRGBA kBlue{0, 0, 1, 1};

TEST_F(Panels, FillStrokeAndScale) {
    const auto work = [](Drawing& d) {
        DRAWBOT_PathRef path = nullptr;
        DRAWBOT_BrushRef brush = nullptr;
        DRAWBOT_PenRef pen = nullptr;
        d.make->NewPath(d.supplier, &path);
        d.make->NewBrush(d.supplier, &kRed, &brush);
        d.make->NewPen(d.supplier, &kBlue, 4, &pen);
        const DRAWBOT_RectF32 outer{4, 4, 24, 24}, inner{12, 12, 8, 8};
        d.path->AddRect(path, &outer);
        d.path->AddRect(path, &inner);
        d.paint->FillPath(d.surface, brush, path, kDRAWBOT_FillType_EvenOdd);
        d.paint->StrokePath(d.surface, pen, path);
        d.release(path);
        d.release(brush);
        d.release(pen);
    };
    for (const int scale : {1, 3}) {
        draw({.width = 40, .height = 30, .scale = double(scale)}, work);
        EXPECT_EQ(panel->image_width(), 40 * scale);
        const auto at = [&](int x, int y) { return pixel(x * scale + scale / 2, y * scale + scale / 2); };
        EXPECT_THAT(at(8, 16), ElementsAre(255, 0, 0, 255)) << "between the rectangles";
        EXPECT_THAT(at(16, 16), ElementsAre(0x23, 0x23, 0x23, 255)) << "the hole of even and odd";
        EXPECT_THAT(at(2, 16), ElementsAre(0, 0, 255, 255)) << "the line lies half outside";
        EXPECT_THAT(at(1, 16), ElementsAre(0x23, 0x23, 0x23, 255));
    }
    EXPECT_TRUE(host.accounting().idle()) << host.accounting().describe();
    EXPECT_THAT(host.accounting().misuses(), IsEmpty());
}

TEST_F(Panels, CurvesAndClosedPathsWind) {
    draw({.width = 20, .height = 20}, [](Drawing& d) {
        DRAWBOT_PathRef path = nullptr;
        DRAWBOT_BrushRef brush = nullptr;
        d.make->NewPath(d.supplier, &path);
        d.make->NewBrush(d.supplier, &kRed, &brush);
        const DRAWBOT_PointF32 first{2, -10}, second{18, 18}, end{18, 18};
        d.path->MoveTo(path, 2, 18);
        d.path->BezierTo(path, &first, &second, &end);
        d.path->LineTo(path, 10, 18);
        d.path->Close(path);
        d.paint->FillPath(d.surface, brush, path, kDRAWBOT_FillType_Winding);
        d.release(path);
        d.release(brush);
    });
    EXPECT_THAT(pixel(6, 8), ElementsAre(255, 0, 0, 255)) << "under the arch, which leans to the left";
    EXPECT_THAT(pixel(14, 6), ElementsAre(0x23, 0x23, 0x23, 255)) << "above it, inside its hull";
}

TEST_F(Panels, TakeImagesInBothByteOrders) {
    // Two rows of two pixels; the first picture has padding.
    const uint8_t argb[] = {9, 255, 128, 0, 9, 0, 0, 255, 77, 77, 77, 77, 9, 0, 255, 0, 9, 1, 1, 1};
    const uint8_t bgra[] = {0, 128, 255, 9, 255, 0, 0, 9, 0, 255, 0, 9, 1, 1, 1, 9};
    const auto show = [&](const void* data, int rowbytes, DRAWBOT_PixelLayout layout) {
        draw({.width = 8, .height = 4, .scale = 4}, [&](Drawing& d) {
            DRAWBOT_ImageRef image = nullptr;
            EXPECT_EQ(d.make->NewImageFromBuffer(d.supplier, 2, 2, rowbytes, layout, data, &image), 0);
            const DRAWBOT_PointF32 origin{3, 2};
            d.paint->DrawImage(d.surface, image, &origin, 1);
            d.release(image);
        });
        EXPECT_THAT(pixel(13, 9), ElementsAre(255, 128, 0, 255));
        EXPECT_THAT(pixel(18, 9), ElementsAre(0, 0, 255, 255));
        EXPECT_THAT(pixel(13, 14), ElementsAre(0, 255, 0, 255));
        EXPECT_THAT(pixel(11, 9), ElementsAre(0x23, 0x23, 0x23, 255));
        EXPECT_THAT(pixel(20, 9), ElementsAre(0x23, 0x23, 0x23, 255));
    };
    show(argb, 12, kDRAWBOT_PixelLayout_32RGB);
    show(bgra, 8, kDRAWBOT_PixelLayout_32BGR);
}

TEST_F(Panels, CountObjectsAndRefuseStrangers) {
    draw({}, [](Drawing& d) {
        DRAWBOT_BrushRef brush = nullptr;
        DRAWBOT_PathRef path = nullptr;
        d.make->NewBrush(d.supplier, &kRed, &brush);
        d.make->NewPath(d.supplier, &path);
        d.release(brush);
        EXPECT_NE(d.paint->FillPath(d.surface, brush, path, kDRAWBOT_FillType_Winding), 0)
            << "a released brush";
        EXPECT_NE(d.make->NewPath(nullptr, &path), 0) << "no supplier";
        d.make->RetainObject(reinterpret_cast<DRAWBOT_ObjectRef>(path));
        d.release(path);
    });
    EXPECT_EQ(host.accounting().lent(Lent::kDrawbotObject), 1) << "retained once more than released";
    EXPECT_THAT(host.accounting().misuses(),
                ElementsAre(HasSubstr("does not live"), HasSubstr("not this panel")));
}

TEST_F(Panels, ClicksBecomeDragsWithTheSameWords) {
    std::vector<std::string> log;
    effect.on[PF_Cmd_EVENT] = [&](EffectCall& call) -> PF_Err {
        PF_EventExtra& event = call.event();
        PF_DoClickEventInfo& click = event.u.do_click;
        EXPECT_EQ(event.e_type, PF_Event_DO_CLICK);
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

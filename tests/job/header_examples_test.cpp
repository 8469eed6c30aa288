// The examples at the head of scene/scene.h, media/media.h and job/job.h, as they are written there.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <fstream>

#include "job/job.h"
#include "media/media.h"
#include "scene/scene.h"
#include "scene/scene_text.h"
#include "tests/support/scratch_folder.h"

namespace flumo::job {
namespace {

class Frames : public Observer {
  public:
    void started(const ProgressState&) override {}
    void frame_begun(int) override {}
    void frame_done(const FrameEvent& event, const ProgressState&) override { files.push_back(event.file); }
    void ended(Ending, const ProgressState&) override {}

    std::vector<std::filesystem::path> files;
};

// A scene is written by its text, rendered by a job, read as a picture and put into a video.
TEST(HeaderExamples, DoWhatTheySay) {
    const flumo::test::ScratchFolder folder;
    Session session(FLUMO_MODULE);
    host::Host& host = session.host();

    const scene::ControlCatalog catalog(host.controls());
    scene::Scene look = scene::read_scene(FLUMO_EXAMPLES "/loop.json", catalog);
    const scene::Control& scale = catalog.find("Scale");
    look.tracks[scale.index] = {&scale, {{0, 40.0}}};
    look.size = FrameSize{32, 18};
    const std::string text = scene::SceneText(look, catalog, host).of_frames(std::array{0});
    std::ofstream(folder / "look.json") << text;

    RenderRequest request;
    request.scene = folder / "look.json";
    request.output = media::OutputPattern((folder / "frame.####.png").string());
    const RenderJob shot = make_render_job(request, session.catalog());
    const std::atomic<bool> cancelled = false;
    RunSettings settings;
    settings.stop = [&] { return cancelled.load(); };
    Frames observer;
    const RunResult result = run_job(session, shot, settings, observer);
    EXPECT_EQ(result.ending, Ending::kDone);
    ASSERT_EQ(observer.files, (std::vector<std::filesystem::path>{folder / "frame.0000.png"}));

    const media::Picture paper = media::read_picture(observer.files[0]);
    const host::World layer = media::world_of(paper, host::Depth::k16);
    media::write_picture(folder / "again.png", media::PictureFormat::kPng, media::picture_of(layer));
    EXPECT_EQ(media::read_picture(folder / "again.png").width, 32U);
    media::VideoSink video(folder / "loop.mov", media::VideoFormat::kMov,
                           {.size = {32, 18}, .depth = layer.depth()});
    video.write(0, layer);
    EXPECT_FALSE(std::filesystem::exists(folder / "loop.mov"));
    video.finish();
    EXPECT_TRUE(std::filesystem::exists(folder / "loop.mov"));
}

}  // namespace
}  // namespace flumo::job

#include "studio/export/export_plan.h"

#include <QTemporaryFile>
#include <nlohmann/json.hpp>

#include "base/failure.h"
#include "base/text_list.h"
#include "scene/frame_list.h"
#include "scene/scene_text.h"
#include "studio/export/export_run.h"

namespace flumo::studio {
namespace {

// The job is read from a scene's text, as the command line reads it.
job::RenderJob job_of(const std::string& text, job::RenderRequest request,
                      const scene::ControlCatalog& catalog) {
    QTemporaryFile file;
    if (!file.open() || file.write(text.data(), static_cast<qint64>(text.size())) < 0 || !file.flush())
        throw output_failure("cannot write a temporary file: " + file.errorString().toStdString());
    request.scene = file.fileName().toStdString();
    return job::make_render_job(request, catalog);
}

std::string command_of(const std::string& text, const ExportSettings& settings, const job::RenderJob& job) {
    const std::string line = nlohmann::ordered_json::parse(text).dump();
    std::string command = "printf %s " + shell_word(line) + " | flumo render --scene -";
    if (job.output.is_exr() && settings.exr_type == media::ExrType::kHalf) command += " --exr-type half";
    if (job.linear) command += " --linear";
    return command + " -o " + shell_word(settings.output);
}

std::string counted_frames(const std::vector<int>& frames) {
    if (frames.size() == 1) return "frame " + std::to_string(frames.front());
    return std::to_string(frames.size()) + " frames (" + scene::frame_list_text(frames) + ")";
}

std::string summary_of(const job::RenderJob& job) {
    const FrameSize size = job.picture_size();
    return counted_frames(job.frames) + ", " + std::to_string(size.width) + "x" +
           std::to_string(size.height) + ", " + std::to_string(static_cast<int>(job.depth)) +
           " bits: " + job.output.text();
}

}  // namespace

std::string shell_word(const std::string& text) {
    std::string word = "'";
    for (const char c : text)
        word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}

ExportPlan plan_export(const scene::Scene& scene, const ExportSettings& settings,
                       const scene::ControlCatalog& catalog) {
    if (settings.frames.empty()) throw usage_failure("frames: expected a list such as 0-47");
    job::RenderRequest request;
    request.output = media::OutputPattern(settings.output);
    if (!request.output->is_pictures() && !request.output->is_video())
        throw usage_failure("output " + in_quotes(settings.output) +
                            ": expected a file for pictures or a video");
    if (request.output->is_exr()) {
        request.exr_type = settings.exr_type;
        request.linear = settings.linear;
    }
    scene::Scene exported = scene;
    exported.frames = settings.frames;
    exported.resolution = settings.resolution;
    const std::string text = scene::scene_text(exported);
    ExportPlan plan{job_of(text, request, catalog), {}, {}};
    require_writable(plan.job);
    plan.command = command_of(text, settings, plan.job);
    plan.summary = summary_of(plan.job);
    return plan;
}

}  // namespace flumo::studio

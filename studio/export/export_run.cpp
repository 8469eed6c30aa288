#include "studio/export/export_run.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "base/failure.h"
#include "base/text_list.h"

namespace flumo::studio {
namespace {

namespace fs = std::filesystem;

fs::path folder_of(const job::RenderJob& job) {
    const fs::path folder = job.path_of(0).parent_path();
    return folder.empty() ? fs::path(".") : folder;
}

/// A hidden folder within another one, removed with all that lies in it.
class HiddenFolder {
  public:
    explicit HiddenFolder(const fs::path& where) {
        std::string name = (where / ".flumo-export-XXXXXX").string();
        if (!mkdtemp(name.data())) {
            throw output_failure("cannot write into the folder " + in_quotes(where.string()) + ": " +
                                 std::generic_category().message(errno));
        }
        path_ = name;
    }
    ~HiddenFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    HiddenFolder(const HiddenFolder&) = delete;
    HiddenFolder& operator=(const HiddenFolder&) = delete;

    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

// The job with its files in the folder, under their own names.
job::RenderJob moved_into(const job::RenderJob& job, const fs::path& folder) {
    const std::string& text = job.output.text();
    const std::size_t slash = text.rfind('/');
    const std::string parent = slash == std::string::npos ? "" : text.substr(0, slash + 1);
    job::RenderJob moved = job;
    moved.output =
        media::OutputPattern(parent + folder.filename().string() + "/" + text.substr(parent.size()));
    return moved;
}

void move_files(const job::RenderJob& from, const job::RenderJob& to) {
    // All frames of a video are one file.
    const std::size_t count = to.output.is_video() ? 1 : to.frames.size();
    for (std::size_t i = 0; i < count; ++i) {
        std::error_code error;
        fs::rename(from.path_of(i), to.path_of(i), error);
        if (error)
            throw output_failure("cannot write " + in_quotes(to.path_of(i).string()) + ": " +
                                 error.message());
    }
}

}  // namespace

void require_writable(const job::RenderJob& job) {
    for (std::size_t i = 1; i < job.frames.size(); ++i) {
        if (job.path_of(i).parent_path() != job.path_of(0).parent_path())
            throw usage_failure("output " + in_quotes(job.output.text()) +
                                ": expected the number of the frame in the file's own name");
    }
    const HiddenFolder trial(folder_of(job));
}

job::RunResult run_export(job::Session& session, const job::RenderJob& job, const std::function<bool()>& stop,
                          job::Observer& observer) {
    const HiddenFolder folder(folder_of(job));
    const job::RenderJob hidden = moved_into(job, folder.path());
    job::RunSettings settings;
    settings.stop = stop;
    const job::RunResult result = job::run_job(session, hidden, settings, observer);
    if (result.ending == job::Ending::kDone) move_files(hidden, job);
    return result;
}

}  // namespace flumo::studio

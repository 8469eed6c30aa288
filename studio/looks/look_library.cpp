#include "studio/looks/look_library.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/text_list.h"
#include "job/preset.h"
#include "studio/document/look_file.h"

namespace flumo::studio {
namespace {

namespace fs = std::filesystem;

std::string checked_name(const QString& name) {
    const std::string text = name.trimmed().toStdString();
    if (text.empty() || text.starts_with('.') || text.find('/') != std::string::npos)
        throw usage_failure("name " + in_quotes(text) + ": expected a file name without a slash");
    return text;
}

void require_free(const fs::path& path) {
    std::error_code ignored;
    if (fs::exists(path, ignored))
        throw usage_failure("the name " + in_quotes(path.stem().string()) + " is taken");
}

[[noreturn]] void refuse(const fs::path& path, const std::error_code& error) {
    throw output_failure("cannot write " + in_quotes(path.string()) + ": " + error.message());
}

void make_folders(const fs::path& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (error) refuse(path, error);
}

}  // namespace

LookLibrary::LookLibrary(fs::path own, QObject* parent) : QObject(parent), own_(std::move(own)) {}

std::vector<LookFolder> LookLibrary::folders() const {
    std::vector<LookFolder> all{{tr("Shipped looks"), {}, true}, {tr("My looks"), own_}};
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(own_, ignored)) {
        if (entry.is_directory(ignored))
            all.push_back({QString::fromStdString(entry.path().filename()), entry.path()});
    }
    std::sort(all.begin() + 2, all.end(),
              [](const LookFolder& a, const LookFolder& b) { return a.name.localeAwareCompare(b.name) < 0; });
    return all;
}

std::vector<LookFile> LookLibrary::looks(const LookFolder& folder) {
    std::vector<LookFile> all;
    if (folder.is_shipped) {
        try {
            for (const job::Preset& preset : job::presets())
                all.push_back({QString::fromStdString(preset.name), preset.file});
        } catch (const Failure&) {
            // A program that was copied without its presets has none.
            return all;
        }
        return all;
    }
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.path, ignored)) {
        if (entry.path().extension() == ".json" && entry.is_regular_file(ignored))
            all.push_back({QString::fromStdString(entry.path().stem()), entry.path()});
    }
    std::sort(all.begin(), all.end(),
              [](const LookFile& a, const LookFile& b) { return a.name.localeAwareCompare(b.name) < 0; });
    return all;
}

LookFolder LookLibrary::make_folder(const QString& name) {
    const fs::path path = own_ / checked_name(name);
    require_free(path);
    make_folders(path);
    emit changed();
    return {name.trimmed(), path};
}

LookFolder LookLibrary::rename_folder(const LookFolder& folder, const QString& name) {
    const fs::path path = own_ / checked_name(name);
    require_free(path);
    std::error_code error;
    fs::rename(folder.path, path, error);
    if (error) refuse(path, error);
    emit changed();
    return {name.trimmed(), path};
}

LookFile LookLibrary::save(const LookFolder& folder, const QString& name, const std::string& scene_text) {
    const fs::path file = folder.path / (checked_name(name) + ".json");
    require_free(file);
    make_folders(folder.path);
    write_text_file(file, scene_text);
    emit changed();
    return {name.trimmed(), file};
}

void LookLibrary::remove(const LookFile& look) {
    std::error_code error;
    fs::remove(look.file, error);
    if (error) refuse(look.file, error);
    emit changed();
}

}  // namespace flumo::studio

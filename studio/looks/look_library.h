// The looks that came with the program, and the user's own folders of looks. Files only, no widgets.
#pragma once

#include <QObject>
#include <QString>
#include <filesystem>
#include <string>
#include <vector>

namespace flumo::studio {

struct LookFile {
    QString name;
    std::filesystem::path file;  ///< a scene file
};

struct LookFolder {
    QString name;
    std::filesystem::path path;
    bool is_shipped = false;  ///< cannot be changed
};

class LookLibrary : public QObject {
    Q_OBJECT

  public:
    /// `own` holds the user's looks: scene files in it and in its folders. Made with the first look or
    /// folder.
    explicit LookLibrary(std::filesystem::path own, QObject* parent = nullptr);

    /// The shipped folder first, then the user's own one, then the folders in it by name.
    std::vector<LookFolder> folders() const;
    /// By name; none for a folder that cannot be read.
    static std::vector<LookFile> looks(const LookFolder& folder);

    // All of these throw Failure: (usage) for a name that is empty, has a slash or is taken, (unwritable
    // output) otherwise.
    LookFolder make_folder(const QString& name);
    LookFolder rename_folder(const LookFolder& folder, const QString& name);
    LookFile save(const LookFolder& folder, const QString& name, const std::string& scene_text);
    void remove(const LookFile& look);

  signals:
    /// Folders or looks were made, renamed or removed.
    void changed();

  private:
    std::filesystem::path own_;
};

}  // namespace flumo::studio

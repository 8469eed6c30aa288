// A second look, or a picture from a file, beside the present look.
#pragma once

#include <QImage>
#include <QObject>
#include <filesystem>
#include <optional>

#include "studio/document/document.h"
#include "studio/looks/thumbnailer.h"

class QAction;
class QMenu;

namespace flumo::studio {

class PreviewView;

/// To the left of the wipe is the present look, to the right the other one, in the present frame.
class Comparison : public QObject {
    Q_OBJECT

  public:
    /// All must outlive it.
    Comparison(Document& document, PreviewView& view, Thumbnailer& thumbnailer, QObject* parent = nullptr);

    void fill_menu(QMenu& menu);

    /// Keeps the present look as the other one.
    void hold_look();
    /// Throws Failure (unreadable input).
    void hold_picture(const std::filesystem::path& file);
    void stop();
    bool is_on() const { return held_ != nullptr || !picture_.isNull(); }
    /// The held look becomes the present one, as an edit, and the other way round.
    void swap();
    /// Shows the one, then the other alone.
    void flip();
    /// 0 shows the other one alone, 1 the present look.
    void set_wipe(double wipe);
    double wipe() const { return wipe_; }
    /// What is shown beside the look; null until it is rendered.
    const QImage& image() const { return image_; }

  signals:
    void failed(const QString& message);
    void changed();

  private:
    void choose_picture();
    void refresh();
    void show();

    Document& document_;
    PreviewView& view_;
    Thumbnailer& thumbnailer_;
    SharedState held_;
    QImage picture_;
    QImage image_;
    double wipe_ = 0.5;
    int ordered_ = 0;
};

}  // namespace flumo::studio

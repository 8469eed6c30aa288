// The preview with its bars: zoom, resolution, channels, backdrop, the frame's size, and the pixel under the
// mouse.
#pragma once

#include <QWidget>
#include <optional>

#include "studio/preview/preview.h"
#include "studio/preview/preview_view.h"

class QComboBox;
class QHBoxLayout;
class QLabel;

namespace flumo::studio {

class PreviewPanel : public QWidget {
    Q_OBJECT

  public:
    /// The preview must outlive the panel.
    explicit PreviewPanel(Preview& preview, QWidget* parent = nullptr);

    PreviewView& view() { return *view_; }

  public slots:
    /// Chooses in the box, as a click does; 0 is RGB.
    void choose_channels(int index);
    void choose_resolution(int index);
    void choose_backdrop(int index);

  private:
    QComboBox* add_box(QHBoxLayout& bar, const QString& name, const QStringList& choices);
    QHBoxLayout* build_bar();
    void show_frame(const ShownFrame& frame);
    void show_failure(const QString& why);
    void show_pixel();
    void show_zoom();
    void take_zoom(const QString& text);

    Preview& preview_;
    PreviewView* view_;
    QComboBox* zoom_ = nullptr;
    QComboBox* resolution_ = nullptr;
    QComboBox* channels_ = nullptr;
    QComboBox* backdrop_ = nullptr;
    QLabel* size_ = nullptr;
    QLabel* message_;
    QLabel* pixel_;
    QLabel* state_;
    std::optional<QPoint> pointed_;
};

}  // namespace flumo::studio

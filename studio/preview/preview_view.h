// The picture on the screen: zoom, pan, backgrounds, and the pixel under the mouse.
#pragma once

#include <QImage>
#include <QWidget>
#include <optional>

#include "studio/preview/shown_frame.h"

namespace flumo::studio {

/// What lies under transparent pixels.
enum class Backdrop { kCheckerboard, kBlack, kGrey, kWhite };

class PreviewView : public QWidget {
    Q_OBJECT

  public:
    explicit PreviewView(QWidget* parent = nullptr);

    void show_frame(const ShownFrame& frame);
    void set_backdrop(Backdrop backdrop);
    /// Blends the pixels of a magnified frame; otherwise they are squares.
    void set_smooth(bool smooth);

    /// Screen pixels for a pixel of the full frame.
    double zoom() const;
    bool is_fitted() const { return !zoom_.has_value(); }
    /// About the centre of the view.
    void set_zoom(double zoom);
    /// Doubles or halves, to the next power of two.
    void zoom_in();
    void zoom_out();
    void fit();

    /// A second picture beside the frame: it covers the part to the right of `wipe` (0 to 1 of the frame's
    /// width). No comparison with a null image.
    void set_comparison(const QImage& image, double wipe);

    /// Where the frame lies, in the widget's coordinates.
    QRectF frame_rect() const;
    QSize sizeHint() const override { return {640, 360}; }

  signals:
    void zoom_changed();
    /// The pixel of the full frame under the mouse; nothing when there is none.
    void pixel_pointed(std::optional<QPoint> pixel);
    /// The wipe of the comparison was dragged.
    void wipe_moved(double wipe);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QSizeF full_size() const;
    double fitted_zoom() const;
    /// Keeps the frame's point under `anchor`.
    void zoom_about(QPointF anchor, double zoom);
    void move_by(QPointF distance);
    bool is_on_wipe(QPointF point) const;
    void point_at(QPointF point);
    void paint_picture(QPainter& painter, const QImage& image, const QRectF& frame, bool is_full) const;

    ShownFrame frame_;
    Backdrop backdrop_ = Backdrop::kCheckerboard;
    bool smooth_ = false;
    std::optional<double> zoom_;  ///< nothing: fitted
    QPointF centre_;              ///< of the frame, from the centre of the view
    QImage comparison_;
    double wipe_ = 0.5;
    std::optional<QPointF> dragged_from_;
    bool drags_wipe_ = false;
};

}  // namespace flumo::studio

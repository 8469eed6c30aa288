// Looks as thumbnails, one of which is taken by a click or Return.
#pragma once

#include <QListWidget>
#include <map>
#include <vector>

#include "studio/looks/thumbnailer.h"

namespace flumo::studio {

/// A look in the grid.
struct GridLook {
    QString name;
    QString about;      ///< tool tip; may be empty
    SharedState state;  ///< null for a look that cannot be read; `about` then tells why
    int frame = 0;      ///< the one that the thumbnail shows
};

/// The thumbnailer must outlive the grid.
class LookGrid : public QListWidget {
    Q_OBJECT

  public:
    explicit LookGrid(Thumbnailer& thumbnailer, QWidget* parent = nullptr);

    void show_looks(std::vector<GridLook> looks);
    const std::vector<GridLook>& looks() const { return looks_; }
    /// How many of them have their pictures or have failed.
    int finished() const { return finished_; }

  signals:
    /// The user chose looks()[place].
    void taken(int place);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void drop_orders();
    void show_picture(int number, const QImage& image);
    void show_failure(int number, const QString& why);
    QPixmap framed(const QImage& image) const;

    Thumbnailer& thumbnailer_;
    std::vector<GridLook> looks_;
    std::map<int, int> places_;  ///< of orders, by their numbers
    int finished_ = 0;
};

}  // namespace flumo::studio

#include "studio/looks/look_grid.h"

#include <QPainter>
#include <utility>

#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

constexpr QSize kPicture(19 * kGrid, 43);  // 16:9
constexpr int kDensity = 2;                // pictures are sharp on screens of double density
constexpr int kCellHeight = 43 + 6 * kGrid;

}  // namespace

LookGrid::LookGrid(Thumbnailer& thumbnailer, QWidget* parent)
    : QListWidget(parent), thumbnailer_(thumbnailer) {
    setViewMode(IconMode);
    setMovement(Static);
    setResizeMode(Adjust);
    // A bar that comes and goes would change the number of columns while they are laid out.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setUniformItemSizes(true);
    setIconSize(kPicture);
    setWordWrap(false);
    setTextElideMode(Qt::ElideRight);
    setFrameShape(NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    connect(&thumbnailer, &Thumbnailer::ready, this, &LookGrid::show_picture);
    connect(&thumbnailer, &Thumbnailer::failed, this, &LookGrid::show_failure);
    const auto take = [this](const QListWidgetItem* item) {
        const int place = row(item);
        if (looks_.at(static_cast<std::size_t>(place)).state) emit taken(place);
    };
    // Return activates; with a style that activates by one click the second signal would come as well.
    connect(this, &QListWidget::itemClicked, this, take);
    connect(this, &QListWidget::itemActivated, this, [this, take](const QListWidgetItem* item) {
        if (!style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, this)) take(item);
    });
}

void LookGrid::drop_orders() {
    for (const auto& [number, place] : places_)
        thumbnailer_.drop(number);
    places_.clear();
    finished_ = 0;
}

void LookGrid::show_looks(std::vector<GridLook> looks) {
    drop_orders();
    clear();
    looks_ = std::move(looks);
    QImage empty(kPicture * kDensity, QImage::Format_RGB32);
    empty.fill(palette().color(QPalette::AlternateBase));
    const QIcon waiting(framed(empty));
    for (std::size_t place = 0; place < looks_.size(); ++place) {
        const GridLook& look = looks_[place];
        auto* const item = new QListWidgetItem(waiting, look.name, this);
        item->setToolTip(look.about.isEmpty() ? look.name : look.about);
        item->setData(Qt::AccessibleTextRole, look.name);
        if (look.state)
            places_[thumbnailer_.order({look.state, look.frame, kPicture.width() * kDensity})] =
                static_cast<int>(place);
        else
            ++finished_;
    }
}

// Over black as a viewer shows it, cut or framed to one shape so that the grid is even.
QPixmap LookGrid::framed(const QImage& image) const {
    QPixmap pixmap(kPicture * kDensity);
    pixmap.fill(Qt::black);
    QPainter painter(&pixmap);
    const QSize fitted = image.size().scaled(pixmap.size(), Qt::KeepAspectRatio);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(
        QRect(QPoint((pixmap.width() - fitted.width()) / 2, (pixmap.height() - fitted.height()) / 2), fitted),
        image);
    painter.end();
    pixmap.setDevicePixelRatio(kDensity);
    return pixmap;
}

void LookGrid::show_picture(int number, const QImage& image) {
    const auto found = places_.find(number);
    if (found == places_.end()) return;
    item(found->second)->setIcon(QIcon(framed(image)));
    places_.erase(found);
    ++finished_;
}

void LookGrid::show_failure(int number, const QString& why) {
    const auto found = places_.find(number);
    if (found == places_.end()) return;
    item(found->second)->setToolTip(why);
    places_.erase(found);
    ++finished_;
}

void LookGrid::resizeEvent(QResizeEvent* event) {
    // Columns of equal width that fill the grid.
    const int room = viewport()->width() - 1;
    const int columns = std::max(1, room / (kPicture.width() + kGrid));
    setGridSize(QSize(room / columns, kCellHeight));
    QListWidget::resizeEvent(event);
}

}  // namespace flumo::studio

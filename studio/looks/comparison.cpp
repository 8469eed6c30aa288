#include "studio/looks/comparison.h"

#include <QFileDialog>
#include <QMenu>
#include <algorithm>
#include <utility>

#include "media/picture_file.h"
#include "studio/preview/preview_view.h"

namespace flumo::studio {
namespace {

constexpr double kWipeStep = 0.05;

QImage image_of(const media::Picture& picture) {
    const media::Picture bytes = media::to_8_bit(picture);
    const auto& samples = std::get<std::vector<uint8_t>>(bytes.samples);
    return QImage(samples.data(), static_cast<int>(bytes.width), static_cast<int>(bytes.height),
                  static_cast<qsizetype>(bytes.width * 4), QImage::Format_RGBA8888)
        .copy();
}

}  // namespace

Comparison::Comparison(Document& document, PreviewView& view, Thumbnailer& thumbnailer, QObject* parent)
    : QObject(parent), document_(document), view_(view), thumbnailer_(thumbnailer) {
    connect(&document, &Document::frame_changed, this, &Comparison::refresh);
    connect(&document, &Document::settings_changed, this, &Comparison::refresh);
    connect(&view, &PreviewView::wipe_moved, this, &Comparison::set_wipe);
    connect(&thumbnailer, &Thumbnailer::ready, this, [this](int number, const QImage& image) {
        if (number != ordered_) return;
        image_ = image;
        show();
    });
    connect(&thumbnailer, &Thumbnailer::failed, this, [this](int number, const QString& why) {
        if (number == ordered_) emit failed(why);
    });
}

void Comparison::fill_menu(QMenu& menu) {
    menu.addAction(tr("&Hold Present Look"), Qt::CTRL | Qt::Key_H, this, &Comparison::hold_look);
    menu.addAction(tr("Compare with &Picture…"), this, &Comparison::choose_picture);
    menu.addSeparator();
    QList<QAction*> while_on{
        menu.addAction(tr("&Flip"), Qt::Key_F7, this, &Comparison::flip),
        menu.addAction(tr("Wipe to the &Left"), Qt::CTRL | Qt::Key_BracketLeft, this,
                       [this] { set_wipe(wipe_ - kWipeStep); }),
        menu.addAction(tr("Wipe to the &Right"), Qt::CTRL | Qt::Key_BracketRight, this,
                       [this] { set_wipe(wipe_ + kWipeStep); }),
        menu.addAction(tr("S&top Comparing"), Qt::SHIFT | Qt::Key_F7, this, &Comparison::stop)};
    QAction* const swap_action =
        menu.addAction(tr("&Swap Looks"), Qt::CTRL | Qt::Key_F7, this, &Comparison::swap);
    const auto enable = [this, while_on, swap_action] {
        for (QAction* const action : while_on)
            action->setEnabled(is_on());
        swap_action->setEnabled(held_ != nullptr);
    };
    connect(this, &Comparison::changed, &menu, enable);
    enable();
}

void Comparison::hold_look() {
    held_ = document_.state();
    picture_ = {};
    refresh();
}

void Comparison::hold_picture(const std::filesystem::path& file) {
    picture_ = image_of(media::read_picture(file));
    held_ = nullptr;
    refresh();
}

void Comparison::choose_picture() {
    const QString file = QFileDialog::getOpenFileName(&view_, tr("Compare with picture"));
    if (file.isEmpty()) return;
    try {
        hold_picture(file.toStdString());
    } catch (const std::exception& error) {
        emit failed(QString::fromUtf8(error.what()));
    }
}

void Comparison::stop() {
    held_ = nullptr;
    picture_ = {};
    refresh();
}

void Comparison::refresh() {
    thumbnailer_.drop(std::exchange(ordered_, 0));
    image_ = picture_;
    if (held_) {
        // In the document's size and depth of now, so that both lie on each other.
        auto state = std::make_shared<SceneState>(*held_);
        const scene::Scene& present = document_.scene();
        state->scene.size = present.size;
        state->scene.depth = present.depth;
        state->scene.resolution = present.resolution;
        state->scene.rate = present.rate;
        ordered_ = thumbnailer_.order({std::move(state), document_.current_frame(), 0});
    }
    show();
    emit changed();
}

void Comparison::show() {
    view_.set_comparison(image_, wipe_);
}

void Comparison::swap() {
    if (!held_) return;
    const SharedState other = std::exchange(held_, document_.state());
    scene::Scene scene;
    scene.description = other->scene.description;
    scene.tracks = other->scene.tracks;
    document_.replace(std::move(scene), tr("Swap looks"));
    refresh();
}

void Comparison::flip() {
    set_wipe(wipe_ > 0 ? 0 : 1);
}

void Comparison::set_wipe(double wipe) {
    wipe_ = std::clamp(wipe, 0.0, 1.0);
    show();
}

}  // namespace flumo::studio

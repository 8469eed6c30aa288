#include "studio/window/view_menu.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QSettings>
#include <array>

#include "studio/theme/theme.h"

namespace flumo::studio {
namespace {

const QString kLight = QStringLiteral("view/light");
const QString kSmooth = QStringLiteral("view/blended");
const QString kMemory = QStringLiteral("view/megabytes");
constexpr std::array kMegabytes = {128, 256, 512, 1024, 2048, 4096, 8192};

Theme stored_theme() {
    return QSettings().value(kLight, false).toBool() ? Theme::kLight : Theme::kDark;
}

int stored_megabytes() {
    return QSettings().value(kMemory, int(FrameCache::kDefaultLimit >> 20U)).toInt();
}

void set_megabytes(Preview& preview, int megabytes) {
    preview.set_cache_limit(static_cast<std::size_t>(megabytes) << 20U);
}

void add_zooms(QMenu& menu, PreviewPanel& panel) {
    PreviewView* const view = &panel.view();
    menu.addAction(PreviewPanel::tr("&Fit"), Qt::CTRL | Qt::Key_0, view, &PreviewView::fit);
    menu.addAction(PreviewPanel::tr("&Actual Pixels"), Qt::CTRL | Qt::Key_1, view,
                   [view] { view->set_zoom(1); });
    menu.addAction(PreviewPanel::tr("Zoom &In"), QKeySequence::ZoomIn, view, &PreviewView::zoom_in);
    menu.addAction(PreviewPanel::tr("Zoom &Out"), QKeySequence::ZoomOut, view, &PreviewView::zoom_out);
    QAction* const smooth = menu.addAction(PreviewPanel::tr("&Blend Magnified Pixels"));
    smooth->setCheckable(true);
    QObject::connect(smooth, &QAction::toggled, view, [view](bool on) {
        view->set_smooth(on);
        QSettings().setValue(kSmooth, on);
    });
    smooth->setChecked(QSettings().value(kSmooth, false).toBool());
}

void add_channels(QMenu& menu, PreviewPanel& panel) {
    QMenu* const channels = menu.addMenu(PreviewPanel::tr("&Channels"));
    const QStringList names = {PreviewPanel::tr("&RGB"),   PreviewPanel::tr("Re&d"),
                               PreviewPanel::tr("&Green"), PreviewPanel::tr("&Blue"),
                               PreviewPanel::tr("&Alpha"), PreviewPanel::tr("&Luminance")};
    for (int i = 0; i < names.size(); ++i) {
        channels->addAction(names[i], QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + i)), &panel,
                            [&panel, i] { panel.choose_channels(i); });
    }
}

void add_memory(QMenu& menu, Preview& preview) {
    QMenu* const memory = menu.addMenu(PreviewPanel::tr("&Memory for Frames"));
    auto* group = new QActionGroup(memory);
    for (const int megabytes : kMegabytes) {
        QAction* const choice =
            memory->addAction(megabytes < 1024 ? PreviewPanel::tr("%1 MB").arg(megabytes)
                                               : PreviewPanel::tr("%1 GB").arg(megabytes / 1024));
        choice->setCheckable(true);
        choice->setChecked(megabytes == stored_megabytes());
        group->addAction(choice);
        QObject::connect(choice, &QAction::triggered, &preview, [&preview, megabytes] {
            QSettings().setValue(kMemory, megabytes);
            set_megabytes(preview, megabytes);
        });
    }
}

}  // namespace

void fill_view_menu(QMenu& menu, PreviewPanel& panel, Preview& preview) {
    add_zooms(menu, panel);
    menu.addSeparator();
    add_channels(menu, panel);
    add_memory(menu, preview);
    menu.addSeparator();
    QAction* const light = menu.addAction(PreviewPanel::tr("&Light Colours"));
    light->setCheckable(true);
    light->setChecked(stored_theme() == Theme::kLight);
    QObject::connect(light, &QAction::toggled, &panel, [](bool on) {
        QSettings().setValue(kLight, on);
        apply_theme(on ? Theme::kLight : Theme::kDark);
    });
}

void restore_view_settings(Preview& preview) {
    apply_theme(stored_theme());
    set_megabytes(preview, stored_megabytes());
}

}  // namespace flumo::studio

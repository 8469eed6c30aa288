#include "studio/theme/theme.h"

#include <QApplication>
#include <QStyleFactory>

namespace flumo::studio {
namespace {

// Neutral greys, so that nothing tints the look beside them.
struct Shades {
    QColor window, base, alternate, button, text, dim, dark, mid, light, highlight;
};

Shades shades_of(Theme theme) {
    if (theme == Theme::kDark)
        return {QColor(0x2b, 0x2b, 0x2b), QColor(0x20, 0x20, 0x20), QColor(0x26, 0x26, 0x26),
                QColor(0x3a, 0x3a, 0x3a), QColor(0xe2, 0xe2, 0xe2), QColor(0x88, 0x88, 0x88),
                QColor(0x19, 0x19, 0x19), QColor(0x40, 0x40, 0x40), QColor(0x50, 0x50, 0x50),
                QColor(0x3d, 0x7e, 0xc8)};
    return {QColor(0xee, 0xee, 0xee), QColor(0xff, 0xff, 0xff), QColor(0xf6, 0xf6, 0xf6),
            QColor(0xf4, 0xf4, 0xf4), QColor(0x1c, 0x1c, 0x1c), QColor(0x85, 0x85, 0x85),
            QColor(0xa8, 0xa8, 0xa8), QColor(0xc4, 0xc4, 0xc4), QColor(0xff, 0xff, 0xff),
            QColor(0x2a, 0x6f, 0xbd)};
}

}  // namespace

QPalette palette_of(Theme theme) {
    const Shades shades = shades_of(theme);
    QPalette palette;
    palette.setColor(QPalette::Window, shades.window);
    palette.setColor(QPalette::WindowText, shades.text);
    palette.setColor(QPalette::Base, shades.base);
    palette.setColor(QPalette::AlternateBase, shades.alternate);
    palette.setColor(QPalette::Text, shades.text);
    palette.setColor(QPalette::PlaceholderText, shades.dim);
    palette.setColor(QPalette::Button, shades.button);
    palette.setColor(QPalette::ButtonText, shades.text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, shades.button);
    palette.setColor(QPalette::ToolTipText, shades.text);
    palette.setColor(QPalette::Dark, shades.dark);
    palette.setColor(QPalette::Mid, shades.mid);
    palette.setColor(QPalette::Midlight, shades.mid);
    palette.setColor(QPalette::Light, shades.light);
    palette.setColor(QPalette::Shadow, shades.dark);
    palette.setColor(QPalette::Highlight, shades.highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, shades.highlight);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(QPalette::Disabled, role, shades.dim);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, shades.mid);
    return palette;
}

void apply_theme(Theme theme) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette palette = palette_of(theme);
    QApplication::setPalette(palette);
    // An empty box shows on the panel's grey.
    palette.setColor(QPalette::Base, shades_of(theme).light);
    QApplication::setPalette(palette, "QCheckBox");
}

}  // namespace flumo::studio

#include "shell/paletas.h"

namespace {

struct Colours {
    QRgb window, base, alternate, button, text, hint, bright, link, highlight, highlighted, tip, tip_text, disabled;
};

QPalette palette_of(const Colours& c) {
    QPalette palette(QColor(c.button), QColor(c.window));
    palette.setColor(QPalette::Window, c.window);
    palette.setColor(QPalette::WindowText, c.text);
    palette.setColor(QPalette::Base, c.base);
    palette.setColor(QPalette::AlternateBase, c.alternate);
    palette.setColor(QPalette::Text, c.text);
    palette.setColor(QPalette::PlaceholderText, c.hint);
    palette.setColor(QPalette::Button, c.button);
    palette.setColor(QPalette::ButtonText, c.text);
    palette.setColor(QPalette::BrightText, c.bright);
    palette.setColor(QPalette::Link, c.link);
    palette.setColor(QPalette::Highlight, c.highlight);
    palette.setColor(QPalette::HighlightedText, c.highlighted);
    palette.setColor(QPalette::ToolTipBase, c.tip);
    palette.setColor(QPalette::ToolTipText, c.tip_text);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, c.disabled);
    return palette;
}

}  // namespace

QPalette paleta_clara() {
    return palette_of({0xFFF3F4F6, 0xFFFFFFFF, 0xFFEDF0F3, 0xFFF3F4F6, 0xFF1B2129, 0xFF6B7682, 0xFFFFFFFF, 0xFF0B5CAD,
                       0xFF1F6FBF, 0xFFFFFFFF, 0xFFFFFFE6, 0xFF1B2129, 0xFF8C959F});
}

QPalette paleta_oscura() {
    return palette_of({0xFF26292E, 0xFF1B1D21, 0xFF22252A, 0xFF31353B, 0xFFE7EAEE, 0xFF98A1AC, 0xFFFFFFFF, 0xFF6CB6FF,
                       0xFF2F6FB3, 0xFFFFFFFF, 0xFF3A3F46, 0xFFE7EAEE, 0xFF7B838D});
}

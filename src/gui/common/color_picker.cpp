#include "color_picker.h"

#include "graph/graph_colors.h"

#include <QColorDialog>
#include <QPixmap>

namespace quorvex::gui {

namespace {

constexpr const char* k_custom_colors = "Custom Colors";

std::string custom_key(int n) { return "CustColor" + std::to_string(n + 1); }

} // namespace

QColor to_qcolor(store::TColor color) {
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
                  static_cast<int>((color >> 16) & 0xFF));
}

store::TColor from_qcolor(const QColor& color) {
    return static_cast<store::TColor>(color.red()) | static_cast<store::TColor>(color.green()) << 8 |
           static_cast<store::TColor>(color.blue()) << 16;
}

QColor pick_color(QWidget* parent, const QColor& initial, store::IniFile* settings, const QString& title) {
    if (settings)
        for (int n = 0; n < 16; ++n) {
            store::TColor custom = 0xFFFFFF;
            settings->GetColor(k_custom_colors, custom_key(n), 0xFFFFFF, custom);
            QColorDialog::setCustomColor(n, to_qcolor(custom));
        }
    const QColor chosen = QColorDialog::getColor(initial, parent, title);
    if (settings) {
        bool changed = false;
        for (int n = 0; n < 16; ++n) {
            const std::string text = graph::color_text(from_qcolor(QColorDialog::customColor(n)));
            if (settings->GetString(k_custom_colors, custom_key(n)) != text) {
                settings->WriteString(k_custom_colors, custom_key(n), text);
                changed = true;
            }
        }
        if (changed) settings->Save();
    }
    return chosen;
}

ColorButton::ColorButton(store::TColor color, store::IniFile* settings, QWidget* parent)
    : QPushButton(parent), m_color(color), m_settings(settings) {
    set_color(color);
    connect(this, &QPushButton::clicked, this, [this] {
        const QColor chosen = pick_color(this, to_qcolor(m_color), m_settings, toolTip());
        if (chosen.isValid()) {
            set_color(from_qcolor(chosen));
            Q_EMIT colorChanged(m_color);
        }
    });
}

void ColorButton::set_color(store::TColor color) {
    m_color = color;
    QPixmap swatch(28, 14);
    swatch.fill(to_qcolor(color));
    setIcon(QIcon(swatch));
    setIconSize(swatch.size());
}

} // namespace quorvex::gui

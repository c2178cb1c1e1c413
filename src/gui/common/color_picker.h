#pragma once
#include "store/ini_file.h"

#include <QColor>
#include <QPushButton>

namespace quorvex::gui {

// Colours as the documents keep them (0x00BBGGRR) and as Qt shows them.
QColor to_qcolor(store::TColor color);
store::TColor from_qcolor(const QColor& color);

// The colour dialog with the sixteen custom colours of Quorvex.ini ([Custom Colors], CustColor1
// to CustColor16), which it writes back when the user changed them. Invalid when cancelled.
QColor pick_color(QWidget* parent, const QColor& initial, store::IniFile* settings, const QString& title);

// A button that shows a colour and changes it through pick_color.
class ColorButton : public QPushButton {
    Q_OBJECT

public:
    ColorButton(store::TColor color, store::IniFile* settings, QWidget* parent = nullptr);
    store::TColor color() const { return m_color; }
    void set_color(store::TColor color);

Q_SIGNALS:
    void colorChanged(store::TColor color);

private:
    store::TColor m_color;
    store::IniFile* m_settings;
};

} // namespace quorvex::gui

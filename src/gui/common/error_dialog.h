#pragma once
#include <QDialog>

class QLabel;

namespace quorvex::gui {

// The window that shows an engine error, captioned "Computation Error". It does not take the
// focus from the editor: the next key pressed there, or the editor losing the focus, closes it.
class ErrorDialog : public QDialog {
    Q_OBJECT

public:
    explicit ErrorDialog(QWidget* parent = nullptr);

    // Shows `text` below the caret's rectangle `caret` (global coordinates), or above it when
    // there is no room below, inside `within` (the editor's main window) as far as it fits and
    // always inside the screen's available area. An empty text does nothing.
    void show_error(const QString& text, const QRect& caret, const QRect& within = {});
    QString text() const;

private:
    QLabel* m_text;
};

} // namespace quorvex::gui

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

    // Shows `text` near `anchor` (the editor's caret, in global coordinates); an empty text does
    // nothing.
    void show_error(const QString& text, const QPoint& anchor);
    QString text() const;

private:
    QLabel* m_text;
};

} // namespace quorvex::gui

#include "tool_dialog.h"

#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"

#include "engine/parser.h"

#include <QComboBox>
#include <QMessageBox>
#include <QSignalBlocker>

namespace quorvex::gui {

ToolDialog::ToolDialog(DocumentWindow& document, QString caption, QWidget* parent)
    : QDialog(parent), m_document(document), m_caption(std::move(caption)) {
    setWindowTitle(m_caption);
    setModal(false);
}

QString ToolDialog::busy_message() const {
    return tr("A computation is running in the %1: stop it before closing the document.").arg(m_caption);
}

void ToolDialog::offer_functions(QComboBox* combo) const {
    const QString typed = combo->currentText();
    const QSignalBlocker quiet(combo);
    combo->clear();
    engine::Parser& parser = m_document.parser();
    for (int i = 0; i < parser.function_count(); ++i)
        if (const char* name = parser.get_func_name(i)) combo->addItem(QString::fromUtf8(name));
    combo->setEditText(typed);
}

void ToolDialog::tell(const QString& text, const QString& caption) {
    const QString& title = caption.isEmpty() ? m_caption : caption;
    if (m_document.services().sounds) m_document.services().sounds->play(QStringLiteral("Error.wav"));
    if (QStringList* collected = m_document.services().collected_messages)
        *collected << title + QStringLiteral(": ") + text;
    else
        QMessageBox::warning(this, title, text);
}

} // namespace quorvex::gui

#include "tool_dialog.h"

#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"

#include "desktop/quick_calc.h"
#include "engine/parser.h"
#include "store/ini_file.h"

#include <QComboBox>
#include <QFileDialog>
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

void ToolDialog::follow_function_variables(QComboBox* expression, QComboBox* variable) {
    connect(expression, &QComboBox::currentTextChanged, this, [this, expression, variable] {
        // A function's own variables are the usual choice.
        engine::Parser& parser = m_document.parser();
        const std::string call = desktop::runnable_expression(parser, expression->currentText().toStdString());
        const int index = parser.find_function(call.c_str());
        if (index < 0) return;
        const engine::Function* function = parser.function_at(index);
        variable->clear();
        for (int n = 1; n <= function->num_variables(); ++n)
            variable->addItem(QString::fromStdString(function->GetFuncVariable(n)));
    });
}

void ToolDialog::export_csv_with_dialog(const std::function<bool(const QString&, QString*)>& write) {
    const QString path = QFileDialog::getSaveFileName(this, tr("Export CSV"), QString(), tr("CSV files (*.csv)"));
    QString error;
    if (!path.isEmpty() && !write(path, &error)) tell(error);
}

void ToolDialog::write_option(const char* key, int value) const {
    if (store::IniFile* settings = m_document.services().settings) {
        settings->WriteString("OPTIONS", key, std::to_string(value));
        settings->Save();
    }
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

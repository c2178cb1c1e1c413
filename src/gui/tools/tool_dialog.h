#pragma once
#include <QDialog>
#include <QString>

#include <functional>

class QComboBox;

namespace quorvex::gui {

class DocumentWindow;

// A math tool's window of one document (quick calc, integration, ...): modeless, beside the
// editor, made once and reused. What the document window and the frame ask of every tool.
class ToolDialog : public QDialog {
    Q_OBJECT

public:
    ToolDialog(DocumentWindow& document, QString caption, QWidget* parent);

    // The window's title, which is also the caption of its messages ("Quick Calc Utility").
    const QString& caption() const { return m_caption; }
    // True while a run works on the document's engine: the document may not close then.
    virtual bool busy() const = 0;
    // What the user is told when the document is closed during a run.
    virtual QString busy_message() const;
    // Offers the document's functions again (they change as the user works).
    virtual void refresh_functions() {}
    // Starts the tool on a function of the document as the function list shows it ("f[x]").
    virtual void take_function(const QString& function) = 0;

protected:
    DocumentWindow& document() const { return m_document; }
    // Fills an expression's combo with the document's functions, keeping what is typed in it.
    void offer_functions(QComboBox* combo) const;
    // From now on, choosing a function in `expression` offers its own variables in `variable`.
    void follow_function_variables(QComboBox* expression, QComboBox* variable);
    // Asks for a CSV file and has `write` put the tool's table there, telling why it could not.
    void export_csv_with_dialog(const std::function<bool(const QString& path, QString* error)>& write);
    // Keeps a setting of the tool in the user's Quorvex.ini, section OPTIONS.
    void write_option(const char* key, int value) const;
    // An input error: the error sound and a box under the tool's caption, or under `caption`
    // when one is given (collected in tests).
    void tell(const QString& text, const QString& caption = {});

private:
    DocumentWindow& m_document;
    QString m_caption;
};

} // namespace quorvex::gui

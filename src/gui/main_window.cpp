#include "main_window.h"

#include <QAction>
#include <QMenuBar>
#include <QPlainTextEdit>

namespace quorvex::gui {

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), m_editor(new QPlainTextEdit(this)), m_quit_action(new QAction(tr("&Quit"), this)) {
    setWindowTitle(QStringLiteral("Quorvex"));
    m_editor->setObjectName(QStringLiteral("editorPane"));
    setCentralWidget(m_editor);

    m_quit_action->setShortcut(QKeySequence::Quit);
    m_quit_action->setShortcutContext(Qt::ApplicationShortcut);
    connect(m_quit_action, &QAction::triggered, this, &QWidget::close);
    menuBar()->addMenu(tr("&File"))->addAction(m_quit_action);

    resize(900, 600);
}

} // namespace quorvex::gui

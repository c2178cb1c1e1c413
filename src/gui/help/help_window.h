#pragma once
#include "desktop/manual.h"

#include <QMainWindow>
#include <QTextBrowser>

#include <memory>

class QLineEdit;
class QListView;
class QSortFilterProxyModel;
class QStandardItemModel;

namespace quorvex::gui {

// The manual's pages as the browser asks for them, by their file names.
class ManualBrowser : public QTextBrowser {
    Q_OBJECT

public:
    ManualBrowser(const desktop::Manual& manual, QWidget* parent) : QTextBrowser(parent), m_manual(manual) {}
    QVariant loadResource(int type, const QUrl& name) override;

private:
    const desktop::Manual& m_manual;
};

// The program's manual (Help > Quorvex Help, F1): its pages at the right, an index of chapters
// and built-in names at the left that narrows as a name is typed, back, forward and contents.
// The function reference is made from builtins.txt in `library_dir`, its examples computed by an
// engine of its own with a new document's settings.
class HelpWindow : public QMainWindow {
    Q_OBJECT

public:
    HelpWindow(const QString& library_dir, QWidget* parent);
    ~HelpWindow() override;

    // Shows "functions.html#SQRT", "language.html" or the contents for an empty target, and
    // raises the window.
    void show_page(const QString& target);
    // The page and anchor shown, as show_page takes it.
    QString current_target() const;
    const desktop::Manual& manual() const { return *m_manual; }
    ManualBrowser* browser() const { return m_browser; }

private:
    void open_index_row(const QModelIndex& index);

    std::unique_ptr<desktop::Manual> m_manual;
    ManualBrowser* m_browser = nullptr;
    QLineEdit* m_find = nullptr;
    QListView* m_index = nullptr;
    QStandardItemModel* m_model = nullptr;
    QSortFilterProxyModel* m_filter = nullptr;
};

} // namespace quorvex::gui

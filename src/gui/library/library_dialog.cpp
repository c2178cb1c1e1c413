#include "library_dialog.h"

#include "desktop/name_catalog.h"
#include "gui/common/services.h"
#include "gui/common/sound_player.h"
#include "gui/tools/function_solver_dialog.h"
#include "gui/editor/document_window.h"
#include "gui/editor/math_editor.h"

#include <QComboBox>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFileSystemWatcher>
#include <QHBoxLayout>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTableView>
#include <QUrl>
#include <QVBoxLayout>

namespace quorvex::gui {

namespace {

enum Column { Name, Category, Description };
constexpr int k_prototype_role = Qt::UserRole + 1;
constexpr int k_constant_role = Qt::UserRole + 2;

// Every word of the search must be in the name or the description, in any case.
class SearchFilter : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;
    void set_words(const QString& text) {
        m_words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        invalidateFilter();
    }
    void set_category(const QString& category) {
        m_category = category;
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override {
        const QAbstractItemModel* model = sourceModel();
        if (!m_category.isEmpty() && model->index(row, Category, parent).data().toString() != m_category) return false;
        const QString name = model->index(row, Name, parent).data().toString();
        const QString description = model->index(row, Description, parent).data().toString();
        for (const QString& word : m_words)
            if (!name.contains(word, Qt::CaseInsensitive) && !description.contains(word, Qt::CaseInsensitive)) return false;
        return true;
    }

private:
    QStringList m_words;
    QString m_category;
};

QString user_library_path(const DocumentWindow& document) {
    return const_cast<DocumentWindow&>(document).services().data_dir + QStringLiteral("/QuorvexUser.lib");
}

} // namespace

LibraryDialog::LibraryDialog(DocumentWindow& document, QWidget* parent)
    : QDialog(parent), m_document(document), m_model(new QStandardItemModel(this)), m_filter(new SearchFilter(this)),
      m_search(new QLineEdit(this)), m_category(new QComboBox(this)), m_view(new QTableView(this)),
      m_details(new QLabel(this)), m_solve(new QPushButton(tr("S&olve..."), this)), m_watcher(new QFileSystemWatcher(this)) {
    setWindowTitle(QStringLiteral("Function Library"));
    setObjectName(QStringLiteral("functionLibrary"));
    m_filter->setSourceModel(m_model);
    m_view->setModel(m_filter);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->setAlternatingRowColors(true);
    m_search->setPlaceholderText(tr("Search names and descriptions"));
    m_search->setClearButtonEnabled(true);
    m_details->setWordWrap(true);
    m_details->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_details->setMinimumHeight(fontMetrics().height() * 3);

    auto* insert = new QPushButton(tr("&Insert"), this);
    auto* edit_user = new QPushButton(tr("&Edit User Library..."), this);
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* top = new QHBoxLayout;
    auto* label = new QLabel(tr("&Search:"), this);
    label->setBuddy(m_search);
    top->addWidget(label);
    top->addWidget(m_search, 1);
    top->addWidget(m_category);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(insert);
    bottom->addWidget(m_solve);
    bottom->addWidget(edit_user);
    bottom->addStretch();
    bottom->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_details);
    layout->addLayout(bottom);

    // Enter in the search inserts the function found; the arrows walk the list from the field.
    insert->setDefault(true);
    for (QPushButton* button : {m_solve, edit_user}) button->setAutoDefault(false);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        static_cast<SearchFilter*>(m_filter)->set_words(text);
        select_first_if_none();
    });
    connect(m_category, &QComboBox::currentIndexChanged, this, [this](int index) {
        static_cast<SearchFilter*>(m_filter)->set_category(index <= 0 ? QString() : m_category->currentText());
        select_first_if_none();
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this, &LibraryDialog::show_details);
    connect(m_view, &QTableView::doubleClicked, this, &LibraryDialog::insert_selection);
    connect(insert, &QPushButton::clicked, this, &LibraryDialog::insert_selection);
    connect(m_solve, &QPushButton::clicked, this, &LibraryDialog::open_solver);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(edit_user, &QPushButton::clicked, this,
            [this] { QDesktopServices::openUrl(QUrl::fromLocalFile(user_library_path(m_document))); });
    // An editor saving the library may replace the file: watch it again each time.
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, [this](const QString& path) {
        reload();
        if (!m_watcher->files().contains(path)) m_watcher->addPath(path);
    });
    m_watcher->addPath(user_library_path(m_document));
    reload();
    resize(680, 500);
}

void LibraryDialog::reload() {
    // The engine reads its libraries once; a changed user library needs a fresh read.
    engine::Parser& parser = m_document.parser();
    parser.set_library_dirs(m_document.services().library_dir.toStdString(), m_document.services().data_dir.toStdString());
    m_model->clear();
    m_model->setHorizontalHeaderLabels({tr("Name"), tr("Category"), tr("Description")});
    QStringList categories;
    for (const desktop::CatalogEntry& entry : desktop::catalog_names(parser)) {
        auto* name = new QStandardItem(QString::fromStdString(entry.name));
        name->setData(QString::fromStdString(entry.prototype), k_prototype_role);
        name->setData(entry.kind == desktop::NameKind::Constant, k_constant_role);
        const QString category = QString::fromStdString(entry.category);
        if (!categories.contains(category)) categories << category;
        m_model->appendRow({name, new QStandardItem(category), new QStandardItem(QString::fromStdString(entry.description))});
    }
    const QString kept = m_category->currentText();
    const QSignalBlocker quiet(m_category);
    m_category->clear();
    m_category->addItem(tr("All categories"));
    m_category->addItems(categories);
    m_category->setCurrentIndex(std::max(0, m_category->findText(kept)));
    m_view->resizeColumnToContents(Name);
    m_view->resizeColumnToContents(Category);
}

void LibraryDialog::select_first_if_none() {
    if (m_view->currentIndex().isValid() || m_filter->rowCount() == 0) return;
    m_view->setCurrentIndex(m_filter->index(0, Name));
}

bool LibraryDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Up || key == Qt::Key_PageDown || key == Qt::Key_PageUp) {
            QCoreApplication::sendEvent(m_view, event);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

int LibraryDialog::shown() const { return m_filter->rowCount(); }

QString LibraryDialog::name_at(int row) const { return m_filter->index(row, Name).data().toString(); }

void LibraryDialog::show_details() {
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid()) {
        m_details->clear();
        m_solve->setEnabled(false);
        return;
    }
    const QModelIndex name = m_filter->index(current.row(), Name);
    const QString prototype = name.data(k_prototype_role).toString();
    const QString description = m_filter->index(current.row(), Description).data().toString();
    m_details->setText(QStringLiteral("<b>%1</b><br>%2").arg(prototype.toHtmlEscaped(), description.toHtmlEscaped()));
    m_solve->setEnabled(!name.data(k_constant_role).toBool());
    // An open solver follows to another function, but never drops an unsaved list on the way
    // (the question would come at every step through the list): Solve asks for that.
    if (FunctionSolverDialog* solver = m_document.solver();
        solver && solver->isVisible() && solver->prototype() != prototype && !solver->list_modified())
        solver->configure(prototype, description);
}

FunctionSolverDialog* LibraryDialog::open_solver() {
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid()) return nullptr;
    if (SoundPlayer* sounds = m_document.services().sounds) sounds->play(QStringLiteral("QClick.wav"));
    const bool first = m_document.solver() == nullptr;
    const QModelIndex name = m_filter->index(current.row(), Name);
    FunctionSolverDialog* solver = m_document.open_solver(name.data(k_prototype_role).toString(),
                                                          m_filter->index(current.row(), Description).data().toString());
    // Beside the browser, where it does not hide the list: to its right when the screen has room.
    if (first) {
        const QRect screen = this->screen()->availableGeometry();
        const QRect browser = frameGeometry();
        const bool right = browser.right() + 8 + solver->width() <= screen.right();
        solver->move(right ? browser.right() + 8 : std::max(screen.left(), browser.left() - 8 - solver->width()),
                     browser.top());
    }
    return solver;
}

bool LibraryDialog::select_name(const QString& wanted) {
    for (int pass = 0; pass < 2; ++pass) {
        for (int row = 0; row < m_filter->rowCount(); ++row) {
            if (name_at(row).compare(wanted, Qt::CaseInsensitive) != 0) continue;
            m_view->setCurrentIndex(m_filter->index(row, Name));
            m_view->scrollTo(m_view->currentIndex());
            return true;
        }
        m_search->clear();
        m_category->setCurrentIndex(0);
    }
    return false;
}

bool LibraryDialog::insert_selection() {
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid()) return false;
    const QString name = m_filter->index(current.row(), Name).data().toString();
    if (take) {
        take(name);
        return true;
    }
    // A call around what is selected in the editor, the caret inside the brackets.
    MathEditor* editor = m_document.editor();
    QTextCursor cursor = editor->textCursor();
    const QString selected = cursor.selectedText();
    cursor.insertText(name + QLatin1Char('[') + selected + QLatin1Char(']'));
    if (selected.isEmpty()) cursor.movePosition(QTextCursor::Left);
    editor->setTextCursor(cursor);
    // The arguments are typed next, in the editor; the browser stays open beside it.
    editor->window()->activateWindow();
    editor->setFocus();
    return true;
}

} // namespace quorvex::gui

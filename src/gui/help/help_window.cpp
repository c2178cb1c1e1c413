#include "help_window.h"

#include "manual_fragments.h" // made by CMake from docs/manual/*.html

#include "engine/parser.h"
#include "functions/builtin_functions.h"
#include "store/atomic_write.h"

#include <QAction>
#include <QFormLayout>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QStandardItemModel>
#include <QToolBar>
#include <QVBoxLayout>

#include <cstring>

namespace quorvex::gui {

namespace {

constexpr int k_target_role = Qt::UserRole + 1;

std::string fragment_of(const std::string& file) {
    for (const ManualFragment& fragment : k_manual_fragments)
        if (file == fragment.file) return fragment.text;
    return {};
}

std::unique_ptr<desktop::Manual> make_manual(const QString& library_dir) {
    std::string text;
    std::vector<desktop::BuiltinText> builtins;
    if (store::read_whole_file((library_dir + QStringLiteral("/builtins.txt")).toStdString(), text))
        builtins = desktop::read_builtin_texts(text);
    // The examples' own engine: a new document's settings, none of the user's variables, the
    // statistics tables of the library folder.
    engine::Parser parser(&functions::builtin_functions(), library_dir.toStdString() + "/");
    return std::make_unique<desktop::Manual>(fragment_of, std::move(builtins), parser);
}

} // namespace

QVariant ManualBrowser::loadResource(int type, const QUrl& name) {
    if (type != QTextDocument::HtmlResource) return QTextBrowser::loadResource(type, name);
    const std::string& page = m_manual.page(name.fileName().toStdString());
    return page.empty() ? QVariant() : QVariant(QString::fromStdString(page));
}

HelpWindow::HelpWindow(const QString& library_dir, QWidget* parent)
    : QMainWindow(parent), m_manual(make_manual(library_dir)) {
    setObjectName(QStringLiteral("helpWindow"));
    setWindowFlag(Qt::Window);
    setWindowTitle(tr("Quorvex Help"));

    m_browser = new ManualBrowser(*m_manual, this);
    m_browser->setObjectName(QStringLiteral("helpBrowser"));
    m_browser->setOpenLinks(true);
    m_browser->setOpenExternalLinks(false);

    auto* side = new QWidget(this);
    auto* side_layout = new QVBoxLayout(side);
    side_layout->setContentsMargins(0, 0, 0, 0);
    auto* form = new QFormLayout;
    m_find = new QLineEdit(side);
    m_find->setObjectName(QStringLiteral("helpFind"));
    m_find->setPlaceholderText(tr("A name or a chapter"));
    m_find->setClearButtonEnabled(true);
    form->addRow(tr("&Find:"), m_find);
    side_layout->addLayout(form);
    auto* index_label = new QLabel(tr("&Index"), side);
    side_layout->addWidget(index_label);
    m_model = new QStandardItemModel(this);
    for (const auto& [text, target] : m_manual->index()) {
        auto* item = new QStandardItem(QString::fromStdString(text));
        item->setData(QString::fromStdString(target), k_target_role);
        item->setEditable(false);
        m_model->appendRow(item);
    }
    m_filter = new QSortFilterProxyModel(this);
    m_filter->setSourceModel(m_model);
    m_filter->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_index = new QListView(side);
    m_index->setObjectName(QStringLiteral("helpIndex"));
    m_index->setModel(m_filter);
    m_index->setUniformItemSizes(true);
    index_label->setBuddy(m_index);
    side_layout->addWidget(m_index);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(side);
    splitter->addWidget(m_browser);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({200, 700});
    setCentralWidget(splitter);

    QToolBar* bar = addToolBar(tr("Navigation"));
    bar->setObjectName(QStringLiteral("helpToolBar"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    QAction* back = bar->addAction(QIcon::fromTheme(QStringLiteral("go-previous")), tr("&Back"), m_browser,
                                   &QTextBrowser::backward);
    back->setShortcut(QKeySequence::Back);
    QAction* forward = bar->addAction(QIcon::fromTheme(QStringLiteral("go-next")), tr("F&orward"), m_browser,
                                      &QTextBrowser::forward);
    forward->setShortcut(QKeySequence::Forward);
    QAction* home = bar->addAction(QIcon::fromTheme(QStringLiteral("go-home")), tr("&Contents"), this,
                                   [this] { show_page({}); });
    home->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Home));
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);

    connect(m_find, &QLineEdit::textChanged, m_filter, &QSortFilterProxyModel::setFilterFixedString);
    // Enter in the find field opens the first entry left, the best guess for a typed name.
    connect(m_find, &QLineEdit::returnPressed, this, [this] {
        if (m_filter->rowCount() > 0) open_index_row(m_filter->index(0, 0));
    });
    connect(m_index, &QListView::activated, this, &HelpWindow::open_index_row);
    connect(m_index, &QListView::clicked, this, &HelpWindow::open_index_row);

    resize(900, 650);
    show_page({});
}

HelpWindow::~HelpWindow() = default;

void HelpWindow::open_index_row(const QModelIndex& index) {
    if (index.isValid()) show_page(index.data(k_target_role).toString());
}

void HelpWindow::show_page(const QString& target) {
    m_browser->setSource(QUrl(target.isEmpty() ? QString::fromLatin1(desktop::k_manual_contents) : target));
    show();
    raise();
    activateWindow();
}

QString HelpWindow::current_target() const {
    const QUrl source = m_browser->source();
    return source.fragment().isEmpty() ? source.fileName() : source.fileName() + QLatin1Char('#') + source.fragment();
}

} // namespace quorvex::gui

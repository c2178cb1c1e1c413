#include "application.h"

#include "main_frame.h"
#include "single_instance.h"

#include "desktop/recent_files.h"
#include "gui/common/error_dialog.h"
#include "gui/common/sound_player.h"
#include "gui/editor/document_window.h"
#include "store/ini_file.h"
#include "store/user_library.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QScreen>
#include <QStandardPaths>

namespace quorvex::gui {

QString user_data_dir(const desktop::LaunchOptions& options) {
    if (!options.data_dir.empty()) return QDir(QString::fromStdString(options.data_dir)).absolutePath();
    // GenericDataLocation is $XDG_DATA_HOME (~/.local/share): the folder quorvex-cli uses too.
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Quorvex");
}

QString program_data_dir() {
    const QString installed = QStringLiteral(QUORVEX_INSTALLED_DATA_DIR);
    if (QFileInfo::exists(installed + QStringLiteral("/Quorvex.lib"))) return installed;
    return QStringLiteral(QUORVEX_SOURCE_DATA_DIR);
}

Application::Application(const desktop::LaunchOptions& options, QObject* parent)
    : QObject(parent), m_options(options) {
    m_services.data_dir = user_data_dir(options);
    m_services.library_dir = program_data_dir();
    QDir().mkpath(m_services.data_dir);
    store::ensure_user_library(m_services.data_dir.toStdString());
    m_settings = std::make_unique<store::IniFile>(document::settings_path(m_services.data_dir.toStdString()));
    m_services.settings = m_settings.get();
    m_services.options = document::ReadAppSettings(*m_settings);
    m_recent = std::make_unique<desktop::RecentFiles>(*m_settings);
    m_services.recent = m_recent.get();
    m_sounds = std::make_unique<SoundPlayer>(m_services.library_dir + QStringLiteral("/sounds"), m_services.options.Sound);
    m_services.sounds = m_sounds.get();
}

Application::~Application() = default;

bool Application::start() {
    const QString file = QString::fromStdString(m_options.file);
    if (!m_options.new_instance) {
        auto* instance = new SingleInstance(m_services.data_dir, this);
        // The first program is the holder of the lock; a later one hands its file over. When the
        // first does not answer it runs on its own, leaving the first's socket alone, unless the
        // first ended meanwhile.
        if (!instance->become_first() && instance->hand_over(file)) return false;
        if (instance->become_first() && instance->listen()) m_instance = instance;
    }
    m_frame = std::make_unique<MainFrame>(m_services);
    m_services.error_dialog = new ErrorDialog(m_frame.get());
    if (m_instance)
        connect(m_instance, &SingleInstance::fileRequested, this, [this](const QString& path) {
            if (!path.isEmpty()) {
                if (QFileInfo::exists(path))
                    m_frame->open_document(path);
                else
                    m_frame->open_missing(path);
            }
            m_frame->setWindowState((m_frame->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
            m_frame->raise();
            m_frame->activateWindow();
        });
    // The first start fills the screen and opens the worksheet that teaches the program.
    if (m_frame->first_start()) {
        // Without a window manager to do it, the screen's size is taken by hand.
        if (const QScreen* screen = m_frame->screen()) m_frame->setGeometry(screen->availableGeometry());
        m_frame->showMaximized();
    }
    else
        m_frame->show();
    if (m_sounds) m_sounds->play(QStringLiteral("Quorvex.wav"));
    // Work a crash left behind first; at the first start the worksheet that teaches the program; a
    // new empty document only when there is nothing else.
    m_frame->offer_recovery();
    if (!file.isEmpty()) {
        if (!QFileInfo::exists(file))
            m_frame->open_missing(file);
        else if (!m_frame->open_document(file))
            m_frame->new_document();
    } else if (m_frame->documents().isEmpty()) {
        if (m_frame->first_start())
            m_frame->open_first_start_documents();
        else
            m_frame->new_document();
    }
    return true;
}

} // namespace quorvex::gui

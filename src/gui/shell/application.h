#pragma once
#include "desktop/launch_options.h"
#include "gui/common/services.h"

#include <QObject>

#include <memory>

namespace quorvex::gui {

class ErrorDialog;
class MainFrame;
class SingleInstance;
class SoundPlayer;

// The program: finds the user's folders, reads Quorvex.ini, makes the shared services and the
// frame, opens the first document, and hands all of it down. Nothing here is global.
class Application : public QObject {
    Q_OBJECT

public:
    explicit Application(const desktop::LaunchOptions& options, QObject* parent = nullptr);
    ~Application() override;

    // Shows the frame with its first document; false when a running program took the request.
    bool start();
    MainFrame* frame() const { return m_frame.get(); }
    Services& services() { return m_services; }

private:
    desktop::LaunchOptions m_options;
    Services m_services;
    std::unique_ptr<store::IniFile> m_settings;
    std::unique_ptr<desktop::RecentFiles> m_recent;
    std::unique_ptr<SoundPlayer> m_sounds;
    std::unique_ptr<MainFrame> m_frame; // owns the error dialog, its child
    SingleInstance* m_instance = nullptr;
};

// The user's folder: --data-dir, else the per-user data location ($XDG_DATA_HOME/Quorvex).
QString user_data_dir(const desktop::LaunchOptions& options);
// The folder of the installed data (Quorvex.lib, sounds), else the source tree's data folder.
QString program_data_dir();

} // namespace quorvex::gui

#include "scratch_services.h"

#include "sound_player.h"

#include "desktop/recent_files.h"
#include "store/ini_file.h"
#include "store/user_library.h"

#include <QMessageBox>

namespace quorvex::gui {

ScratchServices::ScratchServices(const QString& library_dir, const QString& sounds_dir) {
    store::ensure_user_library(m_dir.path().toStdString());
    m_settings = std::make_unique<store::IniFile>((m_dir.path() + QStringLiteral("/Quorvex.ini")).toStdString());
    m_recent = std::make_unique<desktop::RecentFiles>(*m_settings);
    m_sounds = std::make_unique<SoundPlayer>(sounds_dir.isEmpty() ? m_dir.path() : sounds_dir, !sounds_dir.isEmpty());
    services.data_dir = m_dir.path();
    services.library_dir = library_dir;
    services.settings = m_settings.get();
    services.recent = m_recent.get();
    services.sounds = m_sounds.get();
    services.collected_messages = &messages;
    services.answer_save_question = [this](const QString& text) {
        messages << QStringLiteral("Save File: ") + text;
        return save_answers.isEmpty() ? int(QMessageBox::Yes) : save_answers.takeFirst();
    };
}

ScratchServices::~ScratchServices() = default;

} // namespace quorvex::gui

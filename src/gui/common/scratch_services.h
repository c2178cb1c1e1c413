#pragma once
#include "services.h"

#include <QTemporaryDir>

#include <memory>

namespace quorvex::gui {

// A program's services over a folder of their own that goes away with them (settings, recent
// files, a user library), for the screenshot renderer, the benchmarks and the tests, which must
// not touch the user's folder. Messages and the save question are collected, not shown.
class ScratchServices {
public:
    // `library_dir`: the folder of the system library; `sounds_dir`: empty for silence.
    explicit ScratchServices(const QString& library_dir, const QString& sounds_dir = {});
    ~ScratchServices();

    Services services;
    QStringList messages;
    QList<int> save_answers; // answers to the next save questions; Yes when none is left

    QString path() const { return m_dir.path(); }
    QString file_path(const QString& name) const { return m_dir.filePath(name); }
    SoundPlayer& sounds() { return *m_sounds; }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<store::IniFile> m_settings;
    std::unique_ptr<desktop::RecentFiles> m_recent;
    std::unique_ptr<SoundPlayer> m_sounds;
};

} // namespace quorvex::gui

#pragma once
#include <QHash>
#include <QObject>
#include <QString>

class QSoundEffect;

namespace quorvex::gui {

// The program's short sounds ("Add.wav", "Command.wav", "Error.wav", ...) from the sounds folder.
// Silent when sound is off, when a file is missing, or when the machine has no audio device:
// a sound is never an error.
class SoundPlayer : public QObject {
    Q_OBJECT

public:
    SoundPlayer(QString folder, bool enabled, QObject* parent = nullptr);

    void set_enabled(bool enabled) { m_enabled = enabled; }
    bool enabled() const { return m_enabled; }
    void play(const QString& name);
    // The last sound asked for while enabled (for tests, which have no audio device).
    const QString& last_played() const { return m_last; }

private:
    QString m_folder;
    bool m_enabled;
    QString m_last;
    QHash<QString, QSoundEffect*> m_effects;
};

} // namespace quorvex::gui

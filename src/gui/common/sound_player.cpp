#include "sound_player.h"

#include <QFileInfo>
#include <QSoundEffect>
#include <QUrl>

namespace quorvex::gui {

SoundPlayer::SoundPlayer(QString folder, bool enabled, QObject* parent)
    : QObject(parent), m_folder(std::move(folder)), m_enabled(enabled) {}

void SoundPlayer::play(const QString& name) {
    if (!m_enabled || name.isEmpty()) return;
    m_last = name;
    QSoundEffect*& effect = m_effects[name];
    if (!effect) {
        const QString path = m_folder + QLatin1Char('/') + name;
        if (!QFileInfo::exists(path)) return;
        effect = new QSoundEffect(this);
        effect->setSource(QUrl::fromLocalFile(path));
    }
    effect->play();
}

} // namespace quorvex::gui

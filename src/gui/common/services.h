#pragma once
#include "document/app_settings.h"

#include <QString>
#include <functional>
#include <QStringList>

namespace quorvex::store {
class IniFile;
}
namespace quorvex::desktop {
class RecentFiles;
}

namespace quorvex::gui {

class ErrorDialog;
class SoundPlayer;

// What the application hands down to every window: the user's folders, the settings file and
// its options, and the shared services. Owned by the application object; windows keep a reference.
struct Services {
    QString data_dir;    // the user's folder: Quorvex.ini, the user library, autosaves
    QString library_dir; // the folder of the system function library
    store::IniFile* settings = nullptr;
    document::AppSettings options;
    SoundPlayer* sounds = nullptr;
    ErrorDialog* error_dialog = nullptr;
    desktop::RecentFiles* recent = nullptr;
    // Set in tests: messages are collected here instead of shown in boxes, and the save question
    // is answered by `answer_save_question` (QMessageBox::Yes, No or Cancel).
    QStringList* collected_messages = nullptr;
    std::function<int(const QString& text)> answer_save_question;
};

} // namespace quorvex::gui

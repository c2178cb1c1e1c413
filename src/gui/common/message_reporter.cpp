#include "message_reporter.h"

#include "services.h"

#include <QMessageBox>

namespace quorvex::gui {

namespace {

QString text_of(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

void MessageReporter::report(std::string_view text, std::string_view caption, engine::MessageKind kind) {
    if (m_collect) {
        *m_collect << text_of(caption) + QStringLiteral(": ") + text_of(text);
        return;
    }
    const auto icon = kind == engine::MessageKind::Warning ? QMessageBox::Warning : QMessageBox::Information;
    QMessageBox box(icon, text_of(caption), text_of(text), QMessageBox::Ok, m_parent);
    box.exec();
}

bool MessageReporter::ask(std::string_view text, std::string_view caption) {
    if (m_collect) {
        *m_collect << text_of(caption) + QStringLiteral(": ") + text_of(text);
        return true;
    }
    return QMessageBox::question(m_parent, text_of(caption), text_of(text), QMessageBox::Yes | QMessageBox::No) ==
           QMessageBox::Yes;
}

int ask_user(const Services& services, QWidget* parent, const QString& caption, const QString& text, int buttons) {
    if (services.answer_save_question) return services.answer_save_question(text);
    return QMessageBox::question(parent, caption, text, QMessageBox::StandardButtons(buttons), QMessageBox::Yes);
}

} // namespace quorvex::gui

#pragma once
#include "engine/reporter.h"

#include <QStringList>

class QString;
class QWidget;

namespace quorvex::gui {

struct Services;

// A question answered with one of `buttons` (QMessageBox::StandardButtons); in tests the services'
// `answer_save_question` answers instead of a box. The button chosen.
int ask_user(const Services& services, QWidget* parent, const QString& caption, const QString& text, int buttons);

// The engine's Reporter for a window: each message is a message box over it. Given a list to
// collect into (tests, batch work), messages are kept there as "caption: text" instead, and every
// question is answered Yes.
class MessageReporter : public engine::Reporter {
public:
    explicit MessageReporter(QWidget* parent, QStringList* collect = nullptr) : m_parent(parent), m_collect(collect) {}

    void report(std::string_view text, std::string_view caption, engine::MessageKind kind) override;
    bool ask(std::string_view text, std::string_view caption) override;

    void set_parent(QWidget* parent) { m_parent = parent; }

private:
    QWidget* m_parent;
    QStringList* m_collect;
};

} // namespace quorvex::gui

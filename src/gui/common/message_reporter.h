#pragma once
#include "engine/reporter.h"

#include <QStringList>

class QWidget;

namespace quorvex::gui {

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

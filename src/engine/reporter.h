#pragma once
#include <string_view>

namespace quorvex::engine {

enum class MessageKind { Warning, Information, Question };

// Everything the engine must tell a user goes through here: the GUI shows a message box,
// the command line prints, tests record. The engine never shows or prints anything itself.
class Reporter {
public:
    virtual ~Reporter() = default;
    virtual void report(std::string_view text, std::string_view caption, MessageKind kind) = 0;
    // A question with Yes and No; true for Yes. A front end that cannot ask reports and says Yes.
    virtual bool ask(std::string_view text, std::string_view caption) {
        report(text, caption, MessageKind::Question);
        return true;
    }
    // The audible signal of a finished answer or declaration; silent unless a front end wants it.
    virtual void beep() {}
};

} // namespace quorvex::engine

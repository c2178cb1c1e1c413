#pragma once
// What a long command of quorvex-cli needs around it: Ctrl+C asks it to stop where it stands,
// and on a terminal a line on standard error shows how far it has come.
#include "engine/host.h"

#include <chrono>
#include <csignal>
#include <ostream>
#include <string>

namespace quorvex::cli {

class CommandHost : public engine::Host {
public:
    // `show_progress`: standard error is a terminal that the progress line may overwrite.
    CommandHost(std::ostream& err, std::string name, bool show_progress);
    ~CommandHost() override;
    CommandHost(const CommandHost&) = delete;
    CommandHost& operator=(const CommandHost&) = delete;

    bool aborted() const override;
    // `done` of `total` steps; drawn at most a few times a second.
    void progress(long done, long total) override;
    // Removes the progress line, so that what follows starts on a clean line.
    void finish();

private:
    std::ostream& m_err;
    std::string m_name;
    bool m_show_progress;
    bool m_drawn = false;
    std::chrono::steady_clock::time_point m_next_draw;
    struct sigaction m_previous {};
};

} // namespace quorvex::cli

#include "command_host.h"

namespace quorvex::cli {

namespace {

// Set by the signal handler, which may touch nothing else.
volatile std::sig_atomic_t g_interrupted = 0;

extern "C" void note_interrupt(int) { g_interrupted = 1; }

constexpr std::chrono::milliseconds k_draw_interval{200};

} // namespace

CommandHost::CommandHost(std::ostream& err, std::string name, bool show_progress)
    : m_err(err), m_name(std::move(name)), m_show_progress(show_progress),
      m_next_draw(std::chrono::steady_clock::now() + k_draw_interval) {
    g_interrupted = 0;
    struct sigaction action {};
    action.sa_handler = note_interrupt;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGINT, &action, &m_previous);
}

CommandHost::~CommandHost() {
    finish();
    ::sigaction(SIGINT, &m_previous, nullptr);
}

bool CommandHost::aborted() const { return g_interrupted != 0; }

void CommandHost::progress(long done, long total) {
    if (!m_show_progress || total <= 0) return;
    const auto now = std::chrono::steady_clock::now();
    if (now < m_next_draw) return;
    m_next_draw = now + k_draw_interval;
    m_err << '\r' << m_name << ": " << (100 * done / total) << "% (" << done << " of " << total
          << "), Ctrl+C stops" << std::flush;
    m_drawn = true;
}

void CommandHost::finish() {
    if (!m_drawn) return;
    m_err << "\r\033[K" << std::flush;
    m_drawn = false;
}

} // namespace quorvex::cli

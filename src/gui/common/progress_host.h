#pragma once
#include "engine/host.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>
#include <QString>

#include <string_view>

class QWidget;

namespace quorvex::gui {

// The engine's Host for a long computation run from a window: the events keep flowing while the
// engine works, and once the work has taken a tenth of a second a progress dialog with percent,
// text and Stop appears. Stop makes aborted() true; the engine then unwinds.
class ProgressHost : public engine::Host {
public:
    ProgressHost(QWidget* parent, QString caption);
    ~ProgressHost() override;
    ProgressHost(const ProgressHost&) = delete;
    ProgressHost& operator=(const ProgressHost&) = delete;

    bool aborted() const override { return m_stopped || (m_dialog && m_dialog->wasCanceled()); }
    void pump() override;
    // The step now being done and the share of the whole that is done.
    void set_progress(std::string_view text, int percent);
    // The share done, as the engine counts it (`done` of `total` steps; a total of 0 is unknown).
    void progress(long done, long total) override;
    // Asks to stop as the Stop button does (for tests and for closing windows).
    void stop() { m_stopped = true; }
    bool dialog_shown() const { return m_dialog != nullptr; }

private:
    void show_dialog_when_due();

    QWidget* m_parent;
    QString m_caption;
    QString m_text;
    int m_percent = 0;
    bool m_stopped = false;
    QElapsedTimer m_started;
    QElapsedTimer m_last_pump;
    QPointer<QProgressDialog> m_dialog;
};

} // namespace quorvex::gui

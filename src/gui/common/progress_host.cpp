#include "progress_host.h"

#include <QCoreApplication>
#include <QProgressDialog>

namespace quorvex::gui {

namespace {

constexpr int k_show_after_ms = 100;
constexpr int k_pump_every_ms = 30;

} // namespace

ProgressHost::ProgressHost(QWidget* parent, QString caption) : m_parent(parent), m_caption(std::move(caption)) {
    m_started.start();
    m_last_pump.start();
}

ProgressHost::~ProgressHost() { delete m_dialog; }

void ProgressHost::show_dialog_when_due() {
    if (m_dialog || m_started.elapsed() < k_show_after_ms) return;
    m_dialog = new QProgressDialog(m_text, QCoreApplication::translate("ProgressHost", "Stop"), 0, 100, m_parent);
    m_dialog->setWindowTitle(m_caption);
    m_dialog->setObjectName(QStringLiteral("progressDialog"));
    m_dialog->setWindowModality(Qt::WindowModal);
    m_dialog->setMinimumDuration(0);
    m_dialog->setAutoReset(false);
    m_dialog->setAutoClose(false);
    m_dialog->setValue(m_percent);
    QObject::connect(m_dialog, &QProgressDialog::canceled, [this] { m_stopped = true; });
    // Escape rejects the dialog without a word to `canceled`: it must stop the work all the same.
    QObject::connect(m_dialog, &QDialog::rejected, [this] { m_stopped = true; });
    m_dialog->show();
}

void ProgressHost::pump() {
    if (m_last_pump.elapsed() < k_pump_every_ms) return;
    m_last_pump.restart();
    show_dialog_when_due();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

void ProgressHost::set_progress(std::string_view text, int percent) {
    m_text = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    m_percent = std::clamp(percent, 0, 100);
    show_dialog_when_due();
    if (m_dialog) {
        m_dialog->setLabelText(m_text);
        m_dialog->setValue(m_percent);
    }
    pump();
}

void ProgressHost::progress(long done, long total) {
    if (total <= 0) return;
    m_percent = static_cast<int>(std::clamp(done * 100 / total, 0L, 100L));
    if (m_dialog) m_dialog->setValue(m_percent);
}

} // namespace quorvex::gui

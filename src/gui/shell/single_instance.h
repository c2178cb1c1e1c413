#pragma once
#include "desktop/process_lock.h"

#include <QObject>
#include <QString>
#include <QStringList>

class QLocalServer;

namespace quorvex::gui {

// One running program per user and data folder. The first program is the one that holds the
// folder's instance lock, which the system lets go when it ends however it ends; it listens on a
// local socket. A later start hands its file (or an empty request, to be raised) to it and ends.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(const QString& data_dir, QObject* parent = nullptr);

    // Takes the instance lock: true when this is now the first program, which then listens.
    bool become_first();
    // True when the first program took the request; the caller then ends. Waits a few seconds for
    // a first program that holds the lock but does not listen yet; false at once when nobody
    // holds it.
    bool hand_over(const QString& file);
    // Starts listening for later starts; only the first program listens. False when the socket
    // can not be made (the program then runs on its own).
    bool listen();

Q_SIGNALS:
    // Emitted from the event loop, never from inside the socket's own handler, one request at a
    // time: a handler may open a message box or load a large file while the sender goes away.
    void fileRequested(const QString& path); // empty: just come to the front

private:
    void take_request(const QString& path);
    void deliver_next();

    QString m_name;
    QString m_lock_path;
    desktop::ProcessLock m_lock;
    QLocalServer* m_server = nullptr;
    QStringList m_pending;
    bool m_delivering = false;
};

} // namespace quorvex::gui

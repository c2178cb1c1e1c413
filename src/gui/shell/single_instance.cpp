#include "single_instance.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QThread>

#include <unistd.h>

namespace quorvex::gui {

namespace {

constexpr int k_answer_ms = 5000;      // a first program busy with a long evaluation answers late
constexpr int k_starting_ms = 5000;    // a first program that holds the lock listens within this
constexpr int k_retry_ms = 50;
constexpr qint64 k_longest_request = 64 * 1024;

// The path travels percent-encoded on one line, so that no character of a file name (a newline,
// a control character) can cut it or be taken for the end of the request.
QByteArray encode_request(const QString& path) { return path.toUtf8().toPercentEncoding() + '\n'; }

QString decode_request(const QByteArray& line) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding(line.trimmed()));
}

} // namespace

SingleInstance::SingleInstance(const QString& data_dir, QObject* parent) : QObject(parent) {
    // One name per user and data folder: two folders are two separate programs.
    const QString folder = QDir(data_dir).absolutePath();
    m_name = QStringLiteral("quorvex-%1-%2")
                 .arg(::getuid())
                 .arg(QString::fromLatin1(
                     QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha1).toHex().left(12)));
    m_lock_path = folder + QStringLiteral("/instance.lock");
}

bool SingleInstance::become_first() {
    QDir().mkpath(QFileInfo(m_lock_path).absolutePath());
    return m_lock.held() || m_lock.acquire(m_lock_path.toStdString());
}

bool SingleInstance::hand_over(const QString& file) {
    const QString path = file.isEmpty() ? QString() : QDir::current().absoluteFilePath(file);
    const QDeadlineTimer starting(k_starting_ms);
    for (;;) {
        QLocalSocket socket;
        socket.connectToServer(m_name);
        if (socket.waitForConnected(k_retry_ms)) {
            socket.write(encode_request(path));
            if (!socket.waitForBytesWritten(k_answer_ms)) return false;
            // The answer tells that the running program read the request.
            QByteArray answer;
            const QDeadlineTimer answering(k_answer_ms);
            while (!answer.contains('\n') && !answering.hasExpired() &&
                   socket.waitForReadyRead(static_cast<int>(answering.remainingTime())))
                answer += socket.readAll();
            return answer.startsWith("ok");
        }
        // Nobody to wait for: no program holds the lock (or this one does).
        if (m_lock.held() || !desktop::ProcessLock::is_held(m_lock_path.toStdString())) return false;
        if (starting.hasExpired()) return false;
        QThread::msleep(k_retry_ms);
    }
}

bool SingleInstance::listen() {
    if (!m_lock.held()) return false; // a socket belongs to the lock's holder alone
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server->listen(m_name)) {
        // The holder of the lock is the only program that may listen, so a socket found here was
        // left by a program that ended without removing it.
        QLocalServer::removeServer(m_name);
        if (!m_server->listen(m_name)) return false;
    }
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server->nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                if (!socket->canReadLine()) {
                    if (socket->bytesAvailable() > k_longest_request) socket->abort();
                    return;
                }
                const QString path = decode_request(socket->readLine(k_longest_request));
                socket->write("ok\n");
                socket->flush();
                take_request(path);
            });
        }
    });
    return true;
}

void SingleInstance::take_request(const QString& path) {
    m_pending << path;
    // Acted on after the socket's handler has returned: what the request starts may run an event
    // loop of its own, in which the socket is deleted.
    if (!m_delivering)
        QMetaObject::invokeMethod(this, &SingleInstance::deliver_next, Qt::QueuedConnection);
}

void SingleInstance::deliver_next() {
    if (m_delivering || m_pending.isEmpty()) return;
    m_delivering = true;
    const QPointer<SingleInstance> alive(this);
    Q_EMIT fileRequested(m_pending.takeFirst());
    if (!alive) return;
    m_delivering = false;
    if (!m_pending.isEmpty()) QMetaObject::invokeMethod(this, &SingleInstance::deliver_next, Qt::QueuedConnection);
}

} // namespace quorvex::gui

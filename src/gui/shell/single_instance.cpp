#include "single_instance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>

#include <unistd.h>

namespace quorvex::gui {

namespace {

constexpr int k_wait_ms = 1000;

} // namespace

SingleInstance::SingleInstance(const QString& data_dir, QObject* parent) : QObject(parent) {
    // One name per user and data folder: two folders are two separate programs.
    const QByteArray folder = QDir(data_dir).absolutePath().toUtf8();
    m_name = QStringLiteral("quorvex-%1-%2")
                 .arg(::getuid())
                 .arg(QString::fromLatin1(QCryptographicHash::hash(folder, QCryptographicHash::Sha1).toHex().left(12)));
}

bool SingleInstance::hand_over(const QString& file) {
    QLocalSocket socket;
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(k_wait_ms)) return false;
    const QByteArray request = (file.isEmpty() ? QString() : QDir::current().absoluteFilePath(file)).toUtf8() + '\n';
    socket.write(request);
    if (!socket.waitForBytesWritten(k_wait_ms)) return false;
    // The answer tells that the running program read the request.
    return socket.waitForReadyRead(k_wait_ms) && socket.readAll().startsWith("ok");
}

bool SingleInstance::listen() {
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server->listen(m_name)) {
        // A socket left by a program that crashed: nobody answers on it, so it can go.
        QLocalServer::removeServer(m_name);
        if (!m_server->listen(m_name)) return false;
    }
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server->nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                if (!socket->canReadLine()) return;
                const QString path = QString::fromUtf8(socket->readLine()).trimmed();
                socket->write("ok\n");
                socket->flush();
                Q_EMIT fileRequested(path);
            });
        }
    });
    return true;
}

} // namespace quorvex::gui

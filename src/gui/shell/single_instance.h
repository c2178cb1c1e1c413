#pragma once
#include <QObject>
#include <QString>

class QLocalServer;

namespace quorvex::gui {

// One running program per user and data folder: a second start hands its file (or an empty
// request, to be raised) to the first over a local socket and ends.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(const QString& data_dir, QObject* parent = nullptr);

    // True when a running program took the request; the caller then ends.
    bool hand_over(const QString& file);
    // Starts listening for later starts; false when the socket can not be made (the program then
    // runs on its own).
    bool listen();

Q_SIGNALS:
    void fileRequested(const QString& path); // empty: just come to the front

private:
    QString m_name;
    QLocalServer* m_server = nullptr;
};

} // namespace quorvex::gui

#include "app/widgets/SingleInstance.h"

#include <QLocalServer>
#include <QLocalSocket>

namespace {
const QByteArray request = "show\n";
}

SingleInstance::SingleInstance(QObject *parent)
    : QObject(parent)
{ }

SingleInstance::~SingleInstance() = default;

bool SingleInstance::askRunningToShow(const QString &name)
{
    QLocalSocket socket;
    socket.connectToServer(name);
    if (!socket.waitForConnected(1000))
        return false;
    socket.write(request);
    // (Bytes already handed over by the flush leave nothing to wait for.)
    if (!socket.flush())
        socket.waitForBytesWritten(1000);
    // The answer says the request was taken.
    const bool answered = socket.waitForReadyRead(2000) && socket.readAll().startsWith("shown");
    socket.disconnectFromServer();
    return answered;
}

bool SingleInstance::listen(const QString &name, std::function<void()> show)
{
    onShow = std::move(show);
    server = new QLocalServer(this);
    server->setSocketOptions(QLocalServer::UserAccessOption);
    // A socket left by a program that crashed is in the way: the lock says
    // no other program is running, so it can go.
    QLocalServer::removeServer(name);
    if (!server->listen(name))
        return false;
    connect(server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *socket = server->nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
                if (!socket->readAll().startsWith(request.trimmed()))
                    return;
                if (onShow)
                    onShow();
                socket->write("shown\n");
                socket->flush();
            });
        }
    });
    return true;
}

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "programfixture.h"

#include <array>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// The service manager's end: a datagram socket that the program is told of by its environment.
class ServiceManager
{
public:
    explicit ServiceManager(const QString &path, const QByteArray &limitMicroseconds)
        : m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
        const QByteArray name = QFile::encodeName(path);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, name, sizeof address.sun_path);
        if (::bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
            qFatal("no socket at %s", name.constData());
        qputenv("NOTIFY_SOCKET", name);
        qputenv("WATCHDOG_USEC", limitMicroseconds);
        qputenv("WATCHDOG_PID", QByteArray::number(::getpid()));
    }
    ~ServiceManager()
    {
        for (const char *name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"})
            qunsetenv(name);
        ::close(m_socket);
    }
    Q_DISABLE_COPY(ServiceManager)

    /// What has arrived since the last call.
    QByteArrayList received() const
    {
        QByteArrayList messages;
        std::array<char, 256> bytes{};
        ssize_t size = 0;
        while ((size = ::recv(m_socket, bytes.data(), bytes.size(), 0)) > 0)
            messages += QByteArray(bytes.data(), static_cast<int>(size));
        return messages;
    }

private:
    int m_socket;
};

} // namespace

/// What the service manager is told.
class ServiceNotifierTest : public QObject
{
    Q_OBJECT

private slots:
    void tellsWhenTheWindowIsPaintedAndThatItsLoopRuns()
    {
        const TestDevice device;
        const ServiceManager manager(device.path("/lab/notify"), "150000");
        const StartedProgram program;
        QCoreApplication::processEvents();
        QCOMPARE(manager.received(), QByteArrayList());
        program.window.show();
        QByteArrayList received;
        QTRY_VERIFY((received += manager.received()).size() > 3);
        QCOMPARE(received.count("READY=1"), 1);
        QCOMPARE(received.takeFirst(), QByteArray("READY=1"));
        QCOMPARE(received.count("WATCHDOG=1"), received.size());
    }
};

QTEST_MAIN(ServiceNotifierTest)
#include "servicenotifiertest.moc"

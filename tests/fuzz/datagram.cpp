// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "target.h"

#include "config/defaults.h"
#include "config/merge.h"
#include "management/devicestatus.h"
#include "update/consoleformat.h"
#include "update/terminalservermodule.h"
#include "update/wireformat.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QUdpSocket>

namespace {

/// The device's endpoint as the program has it, with a document, and receivers that keep to what they are
/// given.
class Device
{
public:
    Device()
    {
        QDir(m_root.path()).mkpath(QStringLiteral("var/lib/kt964"));
        QFile file(m_root.filePath(QStringLiteral("var/lib/kt964/config.json")));
        require(file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(m_document).toJson()) > 0,
                "a device");
        m_endpoint = new TerminalServerModule(m_status, &m_application);
        QObject::connect(
            m_endpoint, &TerminalServerModule::saveConfiguration, &m_application,
            [this](const QJsonObject &remote, int *) { Merge::mergeJsonObject(m_document, remote); });
        QObject::connect(m_endpoint, &TerminalServerModule::ask_HasUdpFileData, &m_application,
                         [](const UdpFileReply &reply) { require(reply.total > 0, "a file's size"); });
        require(m_console.bind(QHostAddress(QHostAddress::LocalHost)), "a socket");
    }

    /// Sends a datagram and has it handled, then reads the answers.
    void take(const QByteArray &datagram)
    {
        if (m_console.writeDatagram(datagram, QHostAddress(QHostAddress::LocalHost), WireFormat::devicePort)
            < 0)
            return; // larger than any datagram
        m_endpoint->checkCommand();
        int answers = 0;
        for (; m_console.hasPendingDatagrams(); ++answers) {
            QByteArray answer(static_cast<int>(m_console.pendingDatagramSize()), '\0');
            m_console.readDatagram(answer.data(), answer.size());
            check(datagram.left(WireFormat::receiveLimit), answer);
        }
        require(answers <= 1, "at most one answer");
    }

private:
    /// Behind the header an answer holds the request's bytes, zeros, or the document: nothing of an earlier
    /// datagram.
    void check(const QByteArray &request, const QByteArray &answer)
    {
        using ConsoleFormat::headerSize;
        if (answer.size() == ConsoleFormat::actionReplySize && answer.startsWith("33333333"))
            require(answer.mid(headerSize)
                        == request.mid(headerSize, answer.size() - headerSize)
                               .leftJustified(answer.size() - headerSize, '\0'),
                    "an answer of the request's bytes");
    }

    QTemporaryDir m_root;
    bool m_rooted = qputenv("KT_DEVICE_ROOT", m_root.path().toLocal8Bit());
    int m_argc = 1;
    char m_name[5] = "fuzz";
    char *m_argv[2] = {m_name, nullptr};
    QCoreApplication m_application{m_argc, m_argv};
    QJsonObject m_document = Defaults::document(QStringLiteral("kt964"), Defaults::networkSettings({}));
    DeviceStatus m_status;
    TerminalServerModule *m_endpoint = nullptr;
    QUdpSocket m_console;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Device *device = [] {
        QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
        return new Device; // ends with the process
    }();
    device->take(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    return 0;
}

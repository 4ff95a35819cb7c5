// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// kt-bench-transfer: one end of a firmware transfer. bench/transfers measures its time.
//
//     kt-bench-transfer serve ADDRESS FILE     serves blocks in a bare loop
//     kt-bench-transfer bare ADDRESS FILE      fetches them in a bare loop
//     kt-bench-transfer udp ADDRESS NAME       fetches a file from a Corvid server, as the launcher does
//     kt-bench-transfer url URL                downloads an image, as the launcher does
//
// The last two work on the device KT_DEVICE_ROOT and print "peak KIB" (of memory) and "repeated N"
// (requests).

#include "blockloop.h"

#include "management/devicestatus.h"
#include "update/blockreadahead.h"
#include "update/firmwareimage.h"
#include "update/terminalservermodule.h"
#include "update/udpfilemodule.h"
#include "update/urlfilemodule.h"

#include <QCoreApplication>

#include <cstdio>
#include <set>
#include <sys/resource.h>

namespace {

int repeated = 0;

void finish(bool succeeded)
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("peak %ld\nrepeated %d\n", usage.ru_maxrss, repeated);
    QCoreApplication::exit(succeeded ? 0 : 1);
}

int fetchFromServer(const QString &address, const QString &name)
{
    DeviceStatus status;
    TerminalServerModule endpoint(status);
    UdpFileModule transfer;
    BlockReadAhead ahead;
    std::set<quint32> asked;
    QObject::connect(&transfer, &UdpFileModule::ask_WantUdpFileData, &ahead, &BlockReadAhead::request);
    QObject::connect(&ahead, &BlockReadAhead::ask_WantUdpFileData, &endpoint,
                     [&](const UdpFileRequest &request, int &error) {
                         repeated += asked.insert(request.position).second ? 0 : 1;
                         endpoint.getUdpFileData(request, error);
                     });
    QObject::connect(&endpoint, &TerminalServerModule::ask_HasUdpFileData, &ahead,
                     &BlockReadAhead::handleReply);
    QObject::connect(&ahead, &BlockReadAhead::blockArrived, &transfer, &UdpFileModule::fsm_SaveData);
    QObject::connect(&transfer, &UdpFileModule::ready_TransferDone, &ahead, &BlockReadAhead::stop);
    QObject::connect(&transfer, &UdpFileModule::ready_TransferDone, &transfer, [](QTemporaryFile *file) {
        const std::unique_ptr<QTemporaryFile> taken(file);
        finish(taken && FirmwareImage::place(*taken));
    });
    transfer.fsm_StartTransfer(UdpFileRequest(QHostAddress(address), name), true);
    return QCoreApplication::exec();
}

int download(const QString &url)
{
    UrlFileModule transfer;
    QObject::connect(&transfer, &UrlFileModule::downloadFinished, &transfer, [](const QString &message) {
        std::fputs(qPrintable(message), stderr);
        finish(message.isEmpty());
    });
    transfer.fsm_StartTransfer(QUrl(url), true);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QByteArray task = argc > 2 ? argv[1] : "";
    if (task == "serve" && argc == 4)
        return BlockLoop::serve(argv[2], argv[3]);
    if (task == "bare" && argc == 4)
        return BlockLoop::fetch(argv[2], argv[3]);
    QCoreApplication application(argc, argv);
    if (task == "udp" && argc == 4)
        return fetchFromServer(QString::fromLatin1(argv[2]), QString::fromLatin1(argv[3]));
    if (task == "url" && argc == 3)
        return download(QString::fromLatin1(argv[2]));
    std::fputs("usage: kt-bench-transfer serve|bare|udp|url ADDRESS-OR-URL [FILE]\n", stderr);
    return 2;
}

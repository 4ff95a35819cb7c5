// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "operations.h"

#include "certificates/certificatestore.h"
#include "config/keys.h"
#include "device.h"
#include "update/firmwareimage.h"
#include "update/ftpproxytool.h"

#include <QHash>
#include <QJsonArray>
#include <QNetworkProxy>
#include <QUrl>

namespace Operations {

namespace {

using Begin = std::function<void()>;

bool isOnDisk(JsonModule::Change change)
{
    return change == JsonModule::Change::Written || change == JsonModule::Change::Unchanged;
}

bool insert(JsonModule &configuration, QLatin1String section, QLatin1String key, const QJsonValue &value)
{
    return isOnDisk(configuration.change([&](QJsonObject &root) {
        QJsonObject object = root.value(section).toObject();
        object.insert(key, value);
        root.insert(section, object);
        return true;
    }));
}

/// save BYTES: a program path of that length.
bool save(const QStringList &arguments, const Begin &begin)
{
    JsonModule configuration(QStringLiteral("config.json"), true);
    configuration.load();
    begin();
    const QString text(arguments.value(0).toInt(), QLatin1Char('n'));
    return insert(configuration, Key::appAutostart, Key::path, text);
}

/// Saves a setting that tools are told, and has them told. The launcher announces the document alone.
bool apply(const QStringList &, const Begin &begin)
{
    Device device;
    device.start();
    begin();
    const bool saved
        = insert(device.configuration, Key::dateTime, Key::timezone, QStringLiteral("Asia/Tokyo"));
    device.settle();
    return saved;
}

bool start(const QStringList &, const Begin &begin)
{
    begin();
    Device device;
    return device.start();
}

/// The launcher's start, and the opening of the page that lists the certificates.
bool verify(const QStringList &, const Begin &)
{
    Device device;
    const bool started = device.start();
    return CertificateStore(device.configuration).updateRecord() && started;
}

/// import FILE [PASSWORD]
bool import(const QStringList &arguments, const Begin &begin)
{
    JsonModule configuration(QStringLiteral("config.json"), true);
    configuration.load();
    CertificateStore store(configuration);
    begin();
    const auto password = arguments.size() > 1 ? std::make_optional(arguments.at(1)) : std::nullopt;
    return store.importFile(arguments.value(0), password).error == CertificateError::None;
}

/// remove authority|client FILE
bool remove(const QStringList &arguments, const Begin &begin)
{
    using Kind = CertificateStore::Kind;
    JsonModule configuration(QStringLiteral("config.json"), true);
    configuration.load();
    CertificateStore store(configuration);
    begin();
    const Kind kind = arguments.value(0) == QLatin1String("client") ? Kind::Client : Kind::Authority;
    return store.remove(kind, arguments.value(1)) == CertificateError::None;
}

bool placeImage(const QStringList &, const Begin &begin)
{
    constexpr int pieces = 3;
    const QByteArray piece(300000, 'n');
    begin();
    FirmwareImage::removeStale();
    const auto file = FirmwareImage::stage();
    if (!file || !FirmwareImage::makeRoom(pieces * piece.size()))
        return false;
    for (int i = 0; i < pieces; ++i) {
        if (!FirmwareImage::append(*file, piece) || !file->flush())
            return false;
    }
    return FirmwareImage::place(*file);
}

bool fetchImage(const QStringList &, const Begin &begin)
{
    begin();
    FirmwareImage::removeStale();
    FtpProxyTool tool;
    bool hasEnded = false;
    bool isDone = false;
    QObject::connect(&tool, &FtpProxyTool::ended, &tool, [&](bool succeeded) {
        hasEnded = true;
        isDone = succeeded;
    });
    const QNetworkProxy proxy(QNetworkProxy::HttpProxy, QStringLiteral("proxy.lan"), 3128);
    return tool.start(QUrl(QStringLiteral("ftp://10.77.0.21/image")), proxy)
        && waitUntil([&] { return hasEnded; }) && isDone;
}

/// A session from its description to its end. The address in the history is what lasts.
bool session(const QStringList &, const Begin &begin)
{
    Device device;
    device.start();
    bool hasEnded = false;
    QObject::connect(&device.session, &SessionService::ended, &device.configuration,
                     [&] { hasEnded = true; });
    begin();
    const QString address = QStringLiteral("10.77.0.21");
    device.session.connectTo(ConnectTarget::server(QString(), address));
    const bool isKept
        = insert(device.configuration, Key::mainWindow, Key::manualServerHistory, QJsonArray{address});
    return waitUntil([&] { return hasEnded; }) && isKept;
}

} // namespace

bool run(const QString &name, const QStringList &arguments, const Begin &begin)
{
    using Operation = bool (*)(const QStringList &, const Begin &);
    static const QHash<QString, Operation> operations = {
        {QStringLiteral("save"), save},        {QStringLiteral("apply"), apply},
        {QStringLiteral("start"), start},      {QStringLiteral("verify"), verify},
        {QStringLiteral("import"), import},    {QStringLiteral("remove"), remove},
        {QStringLiteral("image"), placeImage}, {QStringLiteral("proxy"), fetchImage},
        {QStringLiteral("session"), session},
    };
    const Operation operation = operations.value(name);
    return operation && operation(arguments, begin);
}

} // namespace Operations

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/certificatefile.h"

#include <QFile>
#include <QFileInfo>

namespace CertificateFile {

namespace {

const QString store = QStringLiteral("/var/lib/kt964/certificates/");
constexpr int sizeLimit = 1024 * 1024;

std::optional<QByteArray> contentOf(const QString &fileName, QString &error)
{
    const QFileInfo info(fileName);
    QFile file(fileName);
    // A way that leaves the store is none of ours.
    if (!info.canonicalFilePath().startsWith(store) || !info.isFile() || info.size() > sizeLimit
        || !file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("there is no certificate %1").arg(fileName);
        return std::nullopt;
    }
    const QByteArray content = file.read(sizeLimit);
    // NetworkManager would take it for the name of a file.
    if (content.isEmpty() || content.startsWith("file:") || content.startsWith("pkcs11:")) {
        error = QStringLiteral("%1 holds no certificate").arg(fileName);
        return std::nullopt;
    }
    return content;
}

} // namespace

std::optional<Profile::Certificates> read(const WifiNetwork &network, QString &error)
{
    Profile::Certificates result;
    if (!network.caCertificate.isEmpty()) {
        const std::optional<QByteArray> authority = contentOf(network.caCertificate, error);
        if (!authority)
            return std::nullopt;
        result.authority = *authority;
    }
    if (network.method == QLatin1String("tls")) {
        const std::optional<QByteArray> client = contentOf(network.clientCertificate, error);
        if (!client)
            return std::nullopt;
        result.client = *client;
    }
    return result;
}

} // namespace CertificateFile

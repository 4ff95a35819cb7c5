// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/certificatechange.h"

#include <QFile>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStandardPaths>

Q_LOGGING_CATEGORY(lcCertificate, "kt.session.certificate")

namespace {

constexpr qint64 largestList = 8 * 1024 * 1024;

QString knownHostsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/freerdp/known_hosts2");
}

/// Returns what the expression captures in each line that it matches whole.
QVector<QStringList> matches(const QStringList &lines, const char *expression)
{
    const QRegularExpression form(QRegularExpression::anchoredPattern(QLatin1String(expression)));
    QVector<QStringList> found;
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = form.match(line.trimmed());
        if (match.hasMatch())
            found += match.capturedTexts().mid(1);
    }
    return found;
}

/// A line begins with "host port fingerprint ", in this order.
QByteArray beginning(const CertificateChange &change, const QString &fingerprint)
{
    return QStringLiteral("%1 %2 %3 ").arg(change.host, change.port, fingerprint).toUtf8();
}

int lineOf(const QList<QByteArray> &lines, const CertificateChange &change)
{
    const QByteArray known = beginning(change, change.known);
    for (int line = 0; line < lines.size(); ++line) {
        if (lines.at(line).startsWith(known))
            return line;
    }
    return -1;
}

} // namespace

std::optional<CertificateChange> certificateChange(const QStringList &output, const QByteArray &knownHosts)
{
    const QVector<QStringList> servers
        = matches(output, "!!!Certificate for (\\S+):([0-9]{1,5}) \\(RDP-[A-Za-z]+\\) has changed!!!");
    const QVector<QStringList> fingerprints
        = matches(output, "Thumbprint:\\s+((?:[0-9a-f]{2}:){31}[0-9a-f]{2})");
    if (servers.size() != 1 || fingerprints.size() != 2)
        return std::nullopt;
    const CertificateChange change{servers.first().at(0), servers.first().at(1), fingerprints.at(1).first(),
                                   fingerprints.at(0).first()};
    if (change.known == change.offered || lineOf(knownHosts.split('\n'), change) < 0)
        return std::nullopt;
    return change;
}

QByteArray withOfferedCertificate(const QByteArray &knownHosts, const CertificateChange &change)
{
    QList<QByteArray> lines = knownHosts.split('\n');
    const int line = lineOf(lines, change);
    if (line < 0)
        return knownHosts;
    // The rest of the line names the subject and the issuer. FreeRDP only compares the fingerprint.
    lines[line].replace(0, beginning(change, change.known).size(), beginning(change, change.offered));
    return lines.join('\n');
}

QByteArray readKnownHosts()
{
    QFile file(knownHostsPath());
    return file.open(QIODevice::ReadOnly) ? file.read(largestList) : QByteArray();
}

bool trustOfferedCertificate(const CertificateChange &change)
{
    const QByteArray before = readKnownHosts();
    const QByteArray after = withOfferedCertificate(before, change);
    QSaveFile file(knownHostsPath());
    const bool stored = after != before && file.open(QIODevice::WriteOnly)
        && file.write(after) == after.size() && file.commit();
    if (stored)
        qCInfo(lcCertificate).noquote() << change.server() << "is trusted with" << change.offered;
    else
        qCWarning(lcCertificate).noquote() << "cannot store the certificate:" << file.errorString();
    return stored;
}

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "certificates/certificatestore.h"

#include "certificates/certificatereader.h"
#include "certificates/stagedfiles.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "device/durablefile.h"
#include "device/paths.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QSet>

#include <algorithm>

Q_LOGGING_CATEGORY(lcStore, "kt.certificates.store")

namespace {

using Kind = CertificateStore::Kind;

constexpr mode_t publicMode = 0644;
constexpr mode_t secretMode = 0600;
constexpr int longestFileName = 64;
constexpr int longestRecordedText = 256;

const QString authorityEnding = QStringLiteral(".pem");
const QString clientEnding = QStringLiteral(".p12");
/// A companion file holds the certificate of each PKCS#12 file, which can then be listed without the
/// password.
const QString publicEnding = QStringLiteral(".crt");

QString folder(Kind kind)
{
    return kind == Kind::Authority ? Paths::caCertificates() + QLatin1Char('/') : Paths::clientCertificates();
}

QString ending(Kind kind)
{
    return kind == Kind::Authority ? authorityEnding : clientEnding;
}

QString baseName(const QString &fileName, const QString &suffix)
{
    return fileName.endsWith(suffix) ? fileName.chopped(suffix.size()) : fileName;
}

std::optional<QByteArray> readBounded(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.read(CertificateReader::sizeLimit + 1);
    return file.error() == QFileDevice::NoError ? std::optional<QByteArray>(bytes) : std::nullopt;
}

/// The first line of a companion binds it to the content of one PKCS#12 file.
const QByteArray digestLineStart = "of PKCS#12 with SHA-256 ";

QByteArray digestLine(const QByteArray &pkcs12)
{
    return digestLineStart + QCryptographicHash::hash(pkcs12, QCryptographicHash::Sha256).toHex() + '\n';
}

/// The certificates in one file of the store; none if it cannot be read.
QVector<Certificate> certificatesIn(Kind kind, const QString &fileName)
{
    const QString path = folder(kind) + fileName;
    const QByteArray bytes = readBounded(path).value_or(QByteArray());
    if (kind == Kind::Authority)
        return CertificateReader::read(bytes).certificates;
    const QByteArray companion
        = readBounded(folder(kind) + baseName(fileName, clientEnding) + publicEnding).value_or(QByteArray());
    const QByteArray line = digestLine(bytes);
    if (companion.startsWith(line))
        return CertificateReader::read(companion.mid(line.size())).certificates.mid(0, 1);
    return CertificateReader::read(bytes).certificates.mid(0, 1); // it may have no password
}

QStringList fileNames(Kind kind)
{
    const QString pattern = kind == Kind::Authority ? QStringLiteral("*") : QLatin1Char('*') + clientEnding;
    return QDir(folder(kind)).entryList({pattern}, QDir::Files | QDir::CaseSensitive, QDir::Name);
}

Certificate storedCertificate(Kind kind, const QString &fileName)
{
    const QVector<Certificate> found = certificatesIn(kind, fileName);
    Certificate certificate = found.value(0);
    certificate.fileName = fileName;
    certificate.moreInFile = std::max(0, static_cast<int>(found.size()) - 1);
    if (certificate.name.isEmpty())
        certificate.name = displayable(baseName(fileName, ending(kind)));
    return certificate;
}

QSet<QByteArray> fingerprints(Kind kind)
{
    QSet<QByteArray> result;
    for (const QString &fileName : fileNames(kind)) {
        for (const Certificate &certificate : certificatesIn(kind, fileName))
            result += certificate.fingerprint;
    }
    return result;
}

/// A file name of safe characters only: it cannot leave its folder, and tools read it as one plain word.
QString safeName(const QString &preferredName)
{
    QString name;
    for (const QChar character : preferredName.left(longestFileName)) {
        const bool plain = character.unicode() < 0x80
            && (character.isLetterOrNumber() || QStringLiteral("._-").contains(character));
        name += plain ? character : QLatin1Char('_');
    }
    while (!name.isEmpty() && !name.at(0).isLetterOrNumber())
        name.remove(0, 1);
    return name.isEmpty() ? QStringLiteral("certificate") : name;
}

bool isUsed(Kind kind, const QString &base)
{
    const QString path = folder(kind) + base;
    return QFileInfo::exists(path + ending(kind))
        || (kind == Kind::Client && QFileInfo::exists(path + publicEnding));
}

QString freeName(Kind kind, const QString &preferredName, const QStringList &reserved)
{
    const QString name = safeName(preferredName);
    QString candidate = name;
    for (int number = 2;
         isUsed(kind, candidate) || reserved.contains(candidate + ending(kind), Qt::CaseInsensitive);
         ++number)
        candidate = name + QLatin1Char('-') + QString::number(number);
    return candidate;
}

QJsonArray records(const QVector<Certificate> &certificates)
{
    QJsonArray result;
    for (const Certificate &certificate : certificates) {
        result += QJsonObject{{Key::certificateFile, certificate.fileName},
                              {Key::certificateSubject, certificate.subject.left(longestRecordedText)},
                              {Key::certificateFingerprint, QString::fromLatin1(certificate.fingerprint)},
                              {Key::certificateExpiry, certificate.validTo.toString(Qt::ISODate)}};
    }
    return result;
}

/// Removes what a power failure left: unfinished files, and certificates without their PKCS#12 file.
void sweep()
{
    for (const Kind kind : {Kind::Authority, Kind::Client})
        StagedFiles::sweep(folder(kind));
    QDir clients(folder(Kind::Client));
    for (const QString &name : clients.entryList({QLatin1Char('*') + publicEnding}, QDir::Files)) {
        const bool ours
            = readBounded(clients.filePath(name)).value_or(QByteArray()).startsWith(digestLineStart);
        if (ours && DurableFile::isMissing(clients.filePath(baseName(name, publicEnding) + clientEnding)))
            clients.remove(name);
    }
}

CertificateStore::Import failure(CertificateError error)
{
    CertificateStore::Import import;
    import.error = error;
    return import;
}

} // namespace

CertificateStore::CertificateStore(JsonModule &configuration, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
{ }

QVector<Certificate> CertificateStore::list(Kind kind) const
{
    QVector<Certificate> result;
    for (const QString &fileName : fileNames(kind))
        result += storedCertificate(kind, fileName);
    std::stable_sort(result.begin(), result.end(), [](const Certificate &first, const Certificate &second) {
        return first.name.compare(second.name, Qt::CaseInsensitive) < 0;
    });
    return result;
}

CertificateStore::Import CertificateStore::importFile(const QString &path,
                                                      const std::optional<QString> &password)
{
    const std::optional<QByteArray> bytes = readBounded(path);
    if (!bytes) {
        qCWarning(lcStore).noquote() << "cannot read" << path;
        return failure(CertificateError::CannotRead);
    }
    const CertificateReader::Content content = CertificateReader::read(*bytes, password);
    if (content.error != CertificateError::None)
        return failure(content.error);
    sweep();
    const QString preferredName = QFileInfo(path).completeBaseName();
    return content.hasKey ? importClient(content.certificates.first(), *bytes, preferredName)
                          : importAuthorities(content.certificates, preferredName);
}

CertificateStore::Import CertificateStore::importAuthorities(const QVector<Certificate> &certificates,
                                                             const QString &preferredName)
{
    Import import;
    QSet<QByteArray> known = fingerprints(Kind::Authority);
    StagedFiles staged;
    for (const Certificate &certificate : certificates) {
        if (known.contains(certificate.fingerprint)) {
            ++import.known;
            continue;
        }
        known += certificate.fingerprint;
        // If a file holds several certificates, its name does not describe each of them.
        const QString base = freeName(
            Kind::Authority, certificates.size() == 1 ? preferredName : certificate.name, import.files);
        import.files += base + authorityEnding;
        if (!staged.add(folder(Kind::Authority), import.files.last(), CertificateReader::toPem(certificate),
                        publicMode))
            return failure(CertificateError::CannotWrite);
    }
    return finish(staged, import);
}

CertificateStore::Import CertificateStore::importClient(const Certificate &certificate,
                                                        const QByteArray &file, const QString &preferredName)
{
    Import import;
    import.kind = Kind::Client;
    if (fingerprints(Kind::Client).contains(certificate.fingerprint))
        return failure(CertificateError::Duplicate);
    const QString base = freeName(Kind::Client, preferredName, {});
    import.files += base + clientEnding;
    StagedFiles staged;
    // In this order, a power failure between the two leaves a certificate without its key, which `sweep`
    // removes.
    if (!staged.add(folder(Kind::Client), base + publicEnding,
                    digestLine(file) + CertificateReader::toPem(certificate), publicMode)
        || !staged.add(folder(Kind::Client), import.files.last(), file, secretMode))
        return failure(CertificateError::CannotWrite);
    return finish(staged, import);
}

CertificateStore::Import CertificateStore::finish(StagedFiles &staged, const Import &import)
{
    if (import.files.isEmpty())
        return failure(CertificateError::Duplicate);
    if (!staged.publish())
        return failure(CertificateError::CannotWrite);
    if (!updateRecord())
        return failure(CertificateError::CannotRecord);
    staged.keep();
    qCInfo(lcStore).noquote() << "imported" << import.files.join(QLatin1Char(' '));
    emit changed();
    return import;
}

CertificateError CertificateStore::remove(Kind kind, const QString &fileName)
{
    QVector<Certificate> authorities = list(Kind::Authority);
    QVector<Certificate> clients = list(Kind::Client);
    QVector<Certificate> &mine = kind == Kind::Authority ? authorities : clients;
    const auto found = std::find_if(mine.begin(), mine.end(), [&fileName](const Certificate &certificate) {
        return certificate.fileName == fileName;
    });
    if (found == mine.end())
        return CertificateError::NotInStore;
    mine.erase(found);
    if (!record(authorities, clients))
        return CertificateError::CannotRecord;
    QFile file(folder(kind) + fileName);
    if (!file.remove()) {
        qCCritical(lcStore).noquote() << "cannot remove" << file.fileName() << ':' << file.errorString();
        updateRecord();
        return CertificateError::CannotWrite;
    }
    sweep();
    StagedFiles::syncFolder(folder(kind));
    qCInfo(lcStore).noquote() << "removed" << displayable(fileName);
    emit changed();
    return CertificateError::None;
}

bool CertificateStore::updateRecord()
{
    sweep();
    return record(list(Kind::Authority), list(Kind::Client));
}

bool CertificateStore::record(const QVector<Certificate> &authorities, const QVector<Certificate> &clients)
{
    const JsonModule::Change change = m_configuration.change([&](QJsonObject &root) {
        QJsonObject section = root.value(Key::security).toObject();
        section.insert(Key::caCertificates, records(authorities));
        section.insert(Key::clientCertificates, records(clients));
        root.insert(Key::security, section);
        return true;
    });
    return change == JsonModule::Change::Written || change == JsonModule::Change::Unchanged;
}

QString certificateValue(CertificateStore::Kind kind, const Certificate &certificate)
{
    if (certificate.fileName.isEmpty())
        return QString();
    return kind == Kind::Authority ? QLatin1Char('/') + certificate.fileName
                                   : baseName(certificate.fileName, clientEnding);
}

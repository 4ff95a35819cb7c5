// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsonmodule.h"

#include "config/keys.h"
#include "config/upgrades.h"
#include "device/devicetools.h"
#include "device/paths.h"

#include <QFile>
#include <QLoggingCategory>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcDocument, "kt.config.document")

namespace {

/// No document of ours comes near; whatever is larger is not one.
constexpr qint64 sizeLimit = 32 * 1024 * 1024;

int openRetrying(const QByteArray &path, int flags)
{
    int descriptor = -1;
    do {
        descriptor = ::open(path.constData(), flags, S_IRUSR | S_IWUSR);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

bool writeWhole(int descriptor, const QByteArray &text)
{
    qint64 written = 0;
    while (written < text.size()) {
        const ssize_t count = ::pwrite(descriptor, text.constData() + written,
                                       static_cast<size_t>(text.size() - written), written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        written += count;
    }
    return true;
}

/// Room for the new text is reserved before the first byte of the old one is touched: a full disk loses
/// nothing.
bool reserve(int descriptor, qint64 oldSize, qint64 newSize)
{
    if (newSize <= oldSize)
        return true;
    int error = 0;
    do {
        error = ::posix_fallocate(descriptor, oldSize, newSize - oldSize);
    } while (error == EINTR); // SIGUSR1 may come at any moment
    if (error == 0)
        return true;
    if (::ftruncate(descriptor, oldSize) != 0)
        qCCritical(lcDocument) << "the document keeps blanks at its end:" << std::strerror(errno);
    errno = error;
    return false;
}

bool replaceContent(int descriptor, const QByteArray &text)
{
    const off_t oldSize = ::lseek(descriptor, 0, SEEK_END);
    return oldSize >= 0 && reserve(descriptor, oldSize, text.size()) && writeWhole(descriptor, text)
        && ::ftruncate(descriptor, text.size()) == 0 && ::fsync(descriptor) == 0;
}

/// The first section that a document of its version must have and has not; empty when it has them all.
QString missingSection(const QJsonObject &root)
{
    QList<QLatin1String> required
        = {Key::appAutostart, Key::audio,       Key::connection,   Key::display,  Key::general,
           Key::mainWindow,   Key::redirection, Key::serverGroups, Key::autologon};
    if (Upgrades::effectiveVersion(root) != Upgrades::oldestVersion)
        required += {Key::security, Key::dateTime, Key::network};
    for (const QLatin1String section : required) {
        if (!Upgrades::isPresent(root.value(section)))
            return section;
    }
    return QString();
}

} // namespace

JsonModule::JsonModule(const QString &fileName, bool inStateDirectory, QObject *parent)
    : QObject(parent)
    , m_filePath(inStateDirectory ? Paths::stateDirectory() + fileName : fileName)
{ }

QJsonDocument &JsonModule::getDocument()
{
    return m_document;
}

QString JsonModule::filePath() const
{
    return m_filePath;
}

QString JsonModule::getJsonString() const
{
    return QString::fromLatin1(m_document.toJson(QJsonDocument::Indented));
}

void JsonModule::setJsonString(const QByteArray &text)
{
    m_document = QJsonDocument::fromJson(text);
}

void JsonModule::getParameters(const QJsonObject &defaults)
{
    m_defaultParameters = defaults;
}

QJsonDocument JsonModule::readFile() const
{
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadOnly))
        qCWarning(lcDocument).noquote() << "cannot read" << m_filePath << ':' << file.errorString();
    return QJsonDocument::fromJson(file.isOpen() ? file.read(sizeLimit) : QByteArray());
}

void JsonModule::readContent()
{
    m_document = readFile();
}

bool JsonModule::readAgain()
{
    if (m_unsaved)
        return true;
    const QJsonDocument file = readFile();
    if (file.object().isEmpty())
        return false;
    m_document = file;
    return true;
}

JsonModule::Change JsonModule::change(const Edit &edit, OnFailure onFailure)
{
    if (!readAgain()) {
        qCCritical(lcDocument).noquote() << "no document to change in" << m_filePath;
        return Change::Unreadable;
    }
    const QJsonDocument before = m_document;
    const bool unsavedBefore = m_unsaved;
    QJsonObject root = before.object();
    if (!edit(root))
        return Change::Refused;
    if (root == before.object() && !m_unsaved)
        return Change::Unchanged;
    if (setObject(root))
        return Change::Written;
    if (onFailure == OnFailure::TakeBack) {
        m_document = before;
        m_unsaved = unsavedBefore;
    }
    return Change::NotWritten;
}

bool JsonModule::writeContent()
{
    const int descriptor = openRetrying(QFile::encodeName(m_filePath), O_WRONLY | O_CREAT | O_CLOEXEC);
    // It holds passwords. Earlier versions created it readable for everybody.
    if (descriptor >= 0 && ::fchmod(descriptor, S_IRUSR | S_IWUSR) != 0)
        qCWarning(lcDocument).noquote() << "others may read" << m_filePath << ':' << std::strerror(errno);
    const bool written
        = descriptor >= 0 && replaceContent(descriptor, m_document.toJson(QJsonDocument::Indented));
    m_unsaved = !written;
    if (!written)
        qCCritical(lcDocument).noquote() << "cannot write" << m_filePath << ':' << std::strerror(errno);
    if (descriptor >= 0)
        ::close(descriptor);
    if (written)
        emit changed();
    return written;
}

bool JsonModule::setObject(const QJsonObject &object)
{
    m_document = QJsonDocument(object);
    return writeContent();
}

bool JsonModule::isUsable() const
{
    const QString missing = missingSection(readFile().object());
    const bool asked = QFile::exists(Paths::recoveryMarker());
    if (missing.isEmpty() && !asked)
        return true;
    if (m_filePath != Paths::configuration())
        return true;
    if (asked)
        qCWarning(lcDocument) << "a recovery is asked for: the document is replaced by the defaults";
    else
        qCWarning(lcDocument) << "the document has no" << missing << "and is replaced by the defaults";
    return false;
}

bool JsonModule::isConfigCorrect()
{
    const bool usable = isUsable();
    if (!usable)
        recover();
    return usable;
}

void JsonModule::hold(const QJsonObject &object)
{
    m_document = QJsonDocument(object);
    m_unsaved = true;
}

void JsonModule::recover()
{
    const bool written = setObject(m_defaultParameters);
    ToolRun::start(DeviceTools::resetHostName());
    // Where the defaults could not be written the marker asks for them again at the next start.
    if (written && QFile::exists(Paths::recoveryMarker()) && !QFile::remove(Paths::recoveryMarker()))
        qCCritical(lcDocument).noquote() << "cannot delete" << Paths::recoveryMarker();
}

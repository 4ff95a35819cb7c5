// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsonmodule.h"

#include "config/keys.h"
#include "config/upgrades.h"
#include "device/devicetools.h"
#include "device/durablefile.h"
#include "device/paths.h"

#include <QFile>
#include <QLoggingCategory>

#include <cerrno>
#include <cstring>

Q_LOGGING_CATEGORY(lcDocument, "kt.config.document")

namespace {

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
    , m_file(inStateDirectory ? Paths::stateDirectory() + fileName : fileName)
{ }

QJsonDocument &JsonModule::getDocument()
{
    return m_document;
}

QString JsonModule::filePath() const
{
    return m_file.path();
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

DocumentFile::Content JsonModule::readFile() const
{
    DocumentFile::Content content = m_file.read();
    if (content.state != DocumentFile::State::Complete)
        qCWarning(lcDocument).noquote() << "cannot read" << filePath() << ':' << std::strerror(errno);
    return content;
}

void JsonModule::readContent()
{
    m_document = QJsonDocument::fromJson(readFile().text);
    m_provisional = false;
}

bool JsonModule::readAgain()
{
    if (m_unsaved)
        return true;
    if (m_provisional)
        return false;
    const QJsonDocument file = QJsonDocument::fromJson(readFile().text);
    if (file.object().isEmpty())
        return false;
    m_document = file;
    return true;
}

JsonModule::Change JsonModule::change(const Edit &edit, OnFailure onFailure)
{
    if (!readAgain()) {
        qCCritical(lcDocument).noquote() << "no document to change in" << filePath();
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
    if (m_deferred)
        return true;
    const bool written = m_file.write(m_document.toJson(QJsonDocument::Indented));
    m_unsaved = !written;
    m_provisional = false;
    if (written)
        emit changed();
    else
        qCCritical(lcDocument).noquote() << "cannot write" << filePath() << ':' << std::strerror(errno);
    return written;
}

bool JsonModule::setObject(const QJsonObject &object)
{
    m_document = QJsonDocument(object);
    return writeContent();
}

JsonModule::Condition JsonModule::load()
{
    const bool ours = filePath() == Paths::configuration();
    if (ours && QFile::exists(Paths::recoveryMarker())) {
        qCWarning(lcDocument) << "a recovery is asked for: the document is replaced by the defaults";
        return Condition::Useless;
    }
    const DocumentFile::Content content = readFile();
    if (ours && content.state == DocumentFile::State::Failed)
        return Condition::Unreadable;
    const QJsonDocument document = QJsonDocument::fromJson(content.text);
    const QString missing = missingSection(document.object());
    if (ours && !missing.isEmpty()) {
        qCWarning(lcDocument) << "the document has no" << missing << "and is replaced by the defaults";
        return Condition::Useless;
    }
    m_document = document;
    m_provisional = false;
    return Condition::Usable;
}

bool JsonModule::isConfigCorrect()
{
    m_deferred = false;
    const Condition found = load();
    if (found == Condition::Useless)
        recover();
    return found == Condition::Usable;
}

void JsonModule::hold(const QJsonObject &object)
{
    m_document = QJsonDocument(object);
    m_deferred = m_unsaved = true;
    m_provisional = false;
}

void JsonModule::holdProvisionally(const QJsonObject &object)
{
    m_document = QJsonDocument(object);
    m_unsaved = false;
    m_provisional = true;
}

bool JsonModule::isProvisional() const
{
    return m_provisional;
}

void JsonModule::recover()
{
    // A document that the disk cannot give back is not worth keeping now.
    if (readFile().state == DocumentFile::State::Failed)
        m_file.remove();
    const bool written = setObject(m_defaultParameters);
    ToolRun::start(DeviceTools::resetHostName());
    // Where the defaults could not be written the marker asks for them again at the next start.
    if (!written || !QFile::exists(Paths::recoveryMarker()))
        return;
    // A marker that a loss of power brings back would take the settings made since.
    if (!QFile::remove(Paths::recoveryMarker()) || !DurableFile::synchronise(Paths::stateDirectory()))
        qCCritical(lcDocument).noquote() << "cannot delete" << Paths::recoveryMarker();
}

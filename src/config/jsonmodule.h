// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QString>

/// The holder of one JSON document and its file: indented UTF-8 text, read whole and written whole.
///
/// The held document is a cache. Whoever needs the file's present state calls `readContent` first; whoever
/// changes something hands the whole root object to `setObject`, which is on disk when it returns.
class JsonModule : public QObject
{
    Q_OBJECT

public:
    /// With `inStateDirectory` the file stands in the device's state directory, otherwise where `fileName`
    /// says. Nothing is read yet.
    JsonModule(const QString &fileName, bool inStateDirectory, QObject *parent = nullptr);

    QJsonDocument &getDocument();
    QString filePath() const;
    /// The held document as indented text, one character for each byte of its UTF-8: `toLatin1` gives the
    /// bytes as they stand in the file.
    QString getJsonString() const;
    /// Replaces the held document by the parse of `text`, a null document when it does not parse. Nothing is
    /// written.
    void setJsonString(const QByteArray &text);
    /// Stores the factory defaults, which a document that is beyond use is replaced by.
    void getParameters(const QJsonObject &defaults);

    /// Replaces the held document by the file's; an unreadable or invalid file gives an empty root object.
    void readContent();
    /// The same, but what is held is better than a file that cannot be read, and stays: false then.
    bool readAgain();
    /// Writes the held document. Where the device has no room for it, the file keeps what it holds.
    /// False, with a line in the log, when it could not be written.
    bool writeContent();
    bool setObject(const QJsonObject &object);

    /// Whether the file can be used as it is, and upgraded where it is old. If not, or if the recovery marker
    /// is there, the device's own document is replaced by the factory defaults, which are then the held
    /// document, the host name is reset and the marker goes: false. Documents in other places are left alone:
    /// true.
    bool isConfigCorrect();

private:
    QJsonDocument readFile() const;
    void recover();

    QJsonDocument m_document;
    QString m_filePath;
    QJsonObject m_defaultParameters;
};

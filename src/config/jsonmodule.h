// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "config/documentfile.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QObject>
#include <QString>

#include <functional>

/// The holder of one JSON document and its file: indented UTF-8 text, read whole and written whole.
///
/// The held document is a cache of the file, and ahead of it only while the file cannot be written. Readers
/// that need the file's present state call `readAgain` first. Every change goes through `change`, which is on
/// disk when it returns, and is announced by `changed`.
class JsonModule : public QObject
{
    Q_OBJECT

public:
    enum class Change {
        Written,
        Unchanged,  ///< the edit made no difference; nothing was written
        Refused,    ///< by the edit
        Unreadable, ///< there is no document to edit
        NotWritten, ///< the disk may be full
    };
    /// What becomes of a change that cannot be written.
    enum class OnFailure {
        TakeBack,
        Hold, ///< it goes to the file with the next change: the program cannot do without it
    };
    enum class Condition {
        Usable,     ///< as it is, or upgraded where it is old
        Useless,    ///< missing or no complete document, or a recovery is asked for
        Unreadable, ///< it may be good, but the system cannot read it now
    };
    /// Edits the root object; false refuses.
    using Edit = std::function<bool(QJsonObject &root)>;

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
    /// The same, but what is held stays when it is ahead of the file, or when the file cannot be read: false
    /// in the second case.
    bool readAgain();
    /// The one way to change the document: reads the file again, lets `edit` change the root object or refuse
    /// by returning false, and writes it. Unless `Written` is returned, the file is as it was.
    Change change(const Edit &edit, OnFailure onFailure = OnFailure::TakeBack);
    /// Writes the held document. Where the device has no room for it, the file keeps what it holds.
    /// False, with a line in the log, when it could not be written.
    bool writeContent();
    /// Holds another document, and writes it. It stays held when it cannot be written.
    bool setObject(const QJsonObject &object);

    /// Reads the file at the start, and holds it if it is usable. Documents in other places than the device's
    /// own always are.
    Condition load();
    /// Holds a document until `isConfigCorrect` replaces it. It can be changed, but nothing is written: a
    /// device that loses its power in between must not start with it.
    void hold(const QJsonObject &object);
    /// Holds a document in place of one that cannot be read now. It is never written, and every change is
    /// refused, until `load` finds a usable file.
    void holdProvisionally(const QJsonObject &object);
    bool isProvisional() const;
    /// Whether the file is usable. A useless one is replaced by the factory defaults, which are then the held
    /// document; the host name is reset and the recovery marker goes.
    bool isConfigCorrect();

signals:
    /// The held document has been written.
    void changed();

private:
    DocumentFile::Content readFile() const;
    void recover();

    QJsonDocument m_document;
    DocumentFile m_file;
    QJsonObject m_defaultParameters;
    bool m_deferred = false;    ///< writing waits for isConfigCorrect
    bool m_unsaved = false;     ///< the held document is ahead of the file
    bool m_provisional = false; ///< the held document stands in for a file that cannot be read
};

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>

/// The file of a document, which is written in place.
///
/// A journal beside it ("config.json.journal") makes that safe: it holds the former text, on the disk, from
/// before the first byte is touched until the new text is on the disk. A write that ends early, by an error
/// or a loss of power, is undone from it: at once, or else with the next read. So the file has the text that
/// its last writer was told, whole.
class DocumentFile
{
public:
    enum class State {
        Complete, ///< read to its end
        Missing,
        Failed, ///< it is there, or may be, but the system cannot read it now
    };
    struct Content
    {
        State state = State::Missing;
        QByteArray text;
    };

    explicit DocumentFile(const QString &path);

    const QString &path() const;
    /// The text as the last complete write left it. Undoes a write that ended early. Reads no more than 32
    /// MiB.
    Content read() const;
    /// Replaces the text. When it returns true, the text is on the disk; when it returns false, with `errno`
    /// set, the former text is still there. The file is readable by its owner only.
    bool write(const QByteArray &text);
    /// Removes the file, and what could bring its text back.
    bool remove();

private:
    QString m_path;
};

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/documentfile.h"

#include "device/durablefile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcDocumentFile, "kt.config.file")

namespace {

/// No document of ours comes near; whatever is larger is not one.
constexpr qint64 sizeLimit = 32 * 1024 * 1024;
const QByteArray journalMark = QByteArrayLiteral("kt964-journal 1 ");

/// An open file, closed at the end of its block. `errno` survives the closing.
class Descriptor
{
public:
    Descriptor(const QString &path, int flags)
    {
        do {
            m_descriptor = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR);
        } while (m_descriptor < 0 && errno == EINTR); // SIGUSR1 may come at any moment
    }
    ~Descriptor()
    {
        const int error = errno;
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        errno = error;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    bool isOpen() const { return m_descriptor >= 0; }
    operator int() const { return m_descriptor; }

private:
    int m_descriptor = -1;
};

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

/// Reserves room for the new text before the first byte of the old one is touched: a full disk loses nothing.
bool reserve(int descriptor, qint64 oldSize, qint64 newSize)
{
    if (newSize <= oldSize)
        return true;
    int error = 0;
    do {
        error = ::posix_fallocate(descriptor, oldSize, newSize - oldSize);
    } while (error == EINTR);
    if (error == 0)
        return true;
    if (::ftruncate(descriptor, oldSize) != 0)
        qCCritical(lcDocumentFile) << "the document keeps blanks at its end:" << std::strerror(errno);
    errno = error;
    return false;
}

bool replaceContent(int descriptor, const QByteArray &text)
{
    const off_t oldSize = ::lseek(descriptor, 0, SEEK_END);
    return oldSize >= 0 && reserve(descriptor, oldSize, text.size()) && writeWhole(descriptor, text)
        && ::ftruncate(descriptor, text.size()) == 0 && ::fsync(descriptor) == 0;
}

bool writeFile(const QString &path, const QByteArray &text)
{
    const Descriptor file(path, O_WRONLY | O_CREAT);
    if (!file.isOpen())
        return false;
    // It holds passwords. Earlier versions created it readable for everybody.
    if (::fchmod(file, S_IRUSR | S_IWUSR) != 0)
        qCWarning(lcDocumentFile).noquote() << "others may read" << path << ':' << std::strerror(errno);
    return replaceContent(file, text);
}

DocumentFile::Content readFile(const QString &path)
{
    using State = DocumentFile::State;
    const Descriptor file(path, O_RDONLY);
    if (!file.isOpen())
        return {errno == ENOENT || errno == ENOTDIR ? State::Missing : State::Failed, {}};
    QByteArray text;
    char piece[65536];
    while (text.size() < sizeLimit) {
        const ssize_t count = ::read(file, piece, sizeof piece);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return {State::Failed, {}};
        if (count == 0)
            break;
        text.append(piece, static_cast<int>(count));
    }
    return {State::Complete, text};
}

QString journalOf(const QString &path)
{
    return path + QStringLiteral(".journal");
}

/// One line with the length and the digest of the text, then the text.
QByteArray journalText(const QByteArray &former)
{
    return journalMark + QByteArray::number(former.size()) + ' '
        + QCryptographicHash::hash(former, QCryptographicHash::Sha256).toHex() + '\n' + former;
}

/// The former text, if a write has ended early; `Missing` otherwise. An incomplete journal is dropped: its
/// write had not begun. One that cannot be read now says nothing about the file.
DocumentFile::Content formerText(const QString &path)
{
    using State = DocumentFile::State;
    const DocumentFile::Content journal = readFile(journalOf(path));
    if (journal.state != State::Complete)
        return {journal.state, {}};
    const int start = journal.text.indexOf('\n') + 1;
    const QByteArray former = journal.text.mid(start);
    if (start > 0 && journal.text == journalText(former))
        return {State::Complete, former};
    QFile::remove(journalOf(path));
    return {State::Missing, {}};
}

/// Makes the journal incomplete, which holds even where the folder's entries are lost, and removes it.
bool dropJournal(const QString &path)
{
    const QString journal = journalOf(path);
    {
        const Descriptor file(journal, O_WRONLY);
        if (!file.isOpen())
            return errno == ENOENT;
        if (::ftruncate(file, 0) != 0 || ::fsync(file) != 0)
            return false;
    }
    QFile::remove(journal);
    return true;
}

bool keepFormer(const QString &path, const QByteArray &former)
{
    const QString journal = journalOf(path);
    bool kept = false;
    {
        const Descriptor file(journal, O_WRONLY | O_CREAT | O_TRUNC);
        kept = file.isOpen() && writeWhole(file, journalText(former)) && ::fsync(file) == 0
            && DurableFile::synchronise(QFileInfo(path).path());
    }
    if (!kept) {
        const int error = errno;
        dropJournal(path);
        errno = error;
    }
    return kept;
}

/// Writes a file that has no former text.
bool create(const QString &path, const QByteArray &text)
{
    if (writeFile(path, text) && DurableFile::synchronise(QFileInfo(path).path()))
        return true;
    const int error = errno;
    QFile::remove(path);
    errno = error;
    return false;
}

/// Undoes a write that ended early. What fails now is done with the next read.
bool restore(const QString &path, const QByteArray &former)
{
    const bool restored = writeFile(path, former) && dropJournal(path);
    if (!restored)
        qCCritical(lcDocumentFile).noquote()
            << "cannot restore" << path << "yet, its text is in the journal:" << std::strerror(errno);
    return restored;
}

} // namespace

DocumentFile::DocumentFile(const QString &path)
    : m_path(path)
{ }

const QString &DocumentFile::path() const
{
    return m_path;
}

DocumentFile::Content DocumentFile::read() const
{
    Content former = formerText(m_path);
    if (former.state == State::Missing)
        return readFile(m_path);
    if (former.state == State::Failed)
        return former;
    qCWarning(lcDocumentFile).noquote() << "a write of" << m_path << "ended early and is undone";
    restore(m_path, former.text);
    return former;
}

bool DocumentFile::write(const QByteArray &text)
{
    const Content former = read();
    if (former.state == State::Missing)
        return create(m_path, text);
    if (former.state == State::Failed || !keepFormer(m_path, former.text))
        return false;
    if (writeFile(m_path, text) && dropJournal(m_path))
        return true;
    const int error = errno;
    // The journal was cut where only its removal failed. Without it a further failure would leave a mixture.
    if (formerText(m_path).state != State::Complete)
        keepFormer(m_path, former.text);
    restore(m_path, former.text);
    errno = error;
    return false;
}

bool DocumentFile::remove()
{
    QFile::remove(m_path);
    QFile::remove(journalOf(m_path));
    return !QFile::exists(m_path) && !QFile::exists(journalOf(m_path));
}

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "device/usbidentifiers.h"

#include <QLoggingCategory>

#include <cctype>

Q_LOGGING_CATEGORY(lcUsbIdentifiers, "kt.device.usbids")

namespace {

constexpr qint64 headSize = 2 * 1024 * 1024; ///< three times the usual database
constexpr qint64 pieceSize = 512 * 1024;
constexpr qint64 sizeLimit = 512 * 1024 * 1024;
constexpr int longestLine = 64 * 1024;
constexpr int longestName = 200;

/// The number at the beginning of a line; -1 where there are no four hexadecimal digits.
int identifier(const QByteArray &text)
{
    bool valid = text.size() >= 4;
    for (int i = 0; i < 4 && valid; ++i)
        valid = std::isxdigit(static_cast<unsigned char>(text.at(i))) != 0;
    return valid ? text.left(4).toInt(nullptr, 16) : -1;
}

quint32 keyOf(int vendor, int product)
{
    return static_cast<quint32>(vendor) << 16 | static_cast<quint32>(product);
}

QString textOf(quint32 key)
{
    const QString digits = QStringLiteral("%1").arg(key, 8, 16, QLatin1Char('0'));
    return digits.left(4) + QLatin1Char(':') + digits.mid(4);
}

} // namespace

UsbIdentifiers::UsbIdentifiers(const QString &path, QObject *parent)
    : QObject(parent)
    , m_file(path)
{
    connect(&m_timer, &QTimer::timeout, this, &UsbIdentifiers::readOn);
}

/// Calls `take` with the key and the names of each product. `vendor` is whose products come first, and
/// afterwards whose come last.
template <typename Take>
void UsbIdentifiers::parse(const QByteArray &text, Vendor &vendor, Take take)
{
    for (int begin = 0; begin < text.size();) {
        const int newline = text.indexOf('\n', begin);
        const int end = newline < 0 ? text.size() : newline;
        const QByteArray line = QByteArray::fromRawData(text.constData() + begin, end - begin);
        begin = end + 1;
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (!line.startsWith('\t')) {
            const QByteArray words = line.left(longestName).simplified();
            vendor = {identifier(words), words.mid(5)};
        } else if (vendor.id >= 0) {
            const int product = identifier(line.mid(1, 16).simplified());
            if (product >= 0)
                take(keyOf(vendor.id, product), Product{vendor.name, line});
        }
    }
}

QString UsbIdentifiers::nameOf(const Product &product)
{
    const QByteArray name = product.line.left(longestName).simplified().mid(5);
    return QString::fromUtf8(product.vendorName + ' ' + name).trimmed();
}

QString UsbIdentifiers::name(const QString &vid, const QString &pid)
{
    const int vendor = identifier(vid.toLatin1());
    const int product = identifier(pid.toLatin1());
    if (vendor < 0 || product < 0 || !readHead())
        return QString();
    const quint32 key = keyOf(vendor, product);
    const auto known = m_products.constFind(key);
    if (known != m_products.constEnd())
        return nameOf(*known);
    if (m_headIsAll || m_found.contains(key))
        return m_found.value(key);
    searchFor(key);
    return QString();
}

/// False when there is no file; it is looked for again the next time.
bool UsbIdentifiers::readHead()
{
    if (!m_head.isEmpty())
        return true;
    if (!m_file.isOpen() && !m_file.open(QIODevice::ReadOnly)) {
        qCWarning(lcUsbIdentifiers).noquote()
            << "cannot read" << m_file.fileName() << ':' << m_file.errorString();
        return false;
    }
    m_head = m_file.read(headSize);
    m_headIsAll = m_head.size() < headSize;
    if (m_headIsAll)
        m_file.close();
    else
        m_head.truncate(m_head.lastIndexOf('\n') + 1);
    if (m_head.isEmpty())
        m_head = "\n"; // nothing that could be used, and read all the same
    parse(m_head, m_headVendor, [this](quint32 key, const Product &product) {
        if (!m_products.contains(key))
            m_products.insert(key, product);
    });
    return true;
}

/// Searches the rest of the file, from its beginning, for this one too.
void UsbIdentifiers::searchFor(quint32 key)
{
    if (m_wanted.isEmpty())
        qCInfo(lcUsbIdentifiers).noquote() << "searching all of" << m_file.fileName();
    m_wanted.insert(key);
    m_file.seek(m_head.size());
    m_vendor = m_headVendor;
    m_cut.clear();
    m_timer.start(0);
}

void UsbIdentifiers::readOn()
{
    const QByteArray piece = m_file.read(pieceSize);
    QByteArray text = m_cut + piece;
    m_cut.clear();
    if (!piece.isEmpty()) {
        const int end = text.lastIndexOf('\n') + 1;
        m_cut = text.mid(end).left(longestLine);
        text.truncate(end);
    }
    parse(text, m_vendor, [this](quint32 key, const Product &product) {
        if (!m_wanted.remove(key))
            return;
        m_found.insert(key, nameOf(product));
        emit named(textOf(key), m_found.value(key));
    });
    if (piece.isEmpty() || m_wanted.isEmpty() || m_file.pos() > sizeLimit)
        endSearch();
}

void UsbIdentifiers::endSearch()
{
    m_timer.stop();
    for (const quint32 key : qAsConst(m_wanted))
        m_found.insert(key, QString());
    m_wanted.clear();
    m_cut.clear();
}

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools-display/edidsound.h"

#include <algorithm>
#include <numeric>

namespace EdidSound {

namespace {

// An EDID consists of blocks of 128 bytes; an extension block of CTA-861 holds the sound formats.
constexpr int blockSize = 128;
constexpr int ctaTag = 2;
constexpr int firstDataBlock = 4;
constexpr int basicAudio = 0x40;
constexpr int audioDataBlock = 1;
constexpr int descriptorSize = 3;
constexpr int pcm = 1;

int byteAt(const QByteArray &bytes, int index)
{
    return static_cast<unsigned char>(bytes.at(index));
}

bool isWhole(const QByteArray &block)
{
    const auto sum = std::accumulate(block.begin(), block.end(), 0U, [](unsigned int total, char byte) {
        return total + static_cast<unsigned char>(byte);
    });
    return block.size() == blockSize && sum % 256 == 0;
}

QString formatName(int format)
{
    static const QStringList names = {QString(),
                                      QStringLiteral("PCM"),
                                      QStringLiteral("AC3"),
                                      QStringLiteral("MPEG1"),
                                      QStringLiteral("MP3"),
                                      QStringLiteral("MPEG2"),
                                      QStringLiteral("AAC"),
                                      QStringLiteral("DTS"),
                                      QStringLiteral("ATRAC"),
                                      QStringLiteral("DSD"),
                                      QStringLiteral("EAC3"),
                                      QStringLiteral("DTS_HD"),
                                      QStringLiteral("MLP"),
                                      QStringLiteral("DST"),
                                      QStringLiteral("WMA")};
    return names.value(format);
}

/// The value of the highest bit that is set.
int highest(int bits, const QVector<int> &values)
{
    for (int bit = values.size() - 1; bit >= 0; --bit) {
        if (bits & (1 << bit))
            return values.at(bit);
    }
    return 0;
}

QString line(int format, int channels, int rate, const QString &rest)
{
    return QStringLiteral("%1 supported: Max channels: %2, Max samplerate: %3kHz%4")
        .arg(formatName(format), 8)
        .arg(channels)
        .arg(rate, 3)
        .arg(rest);
}

/// A short audio descriptor: format and channels, sample rates, and a byte whose meaning depends on the
/// format.
QString described(const QByteArray &descriptor)
{
    const int format = byteAt(descriptor, 0) >> 3 & 15;
    const int rate = highest(byteAt(descriptor, 1), {32, 44, 48, 88, 96, 176, 192});
    const int detail = byteAt(descriptor, 2);
    if (formatName(format).isEmpty() || rate == 0)
        return {};
    const QString rest = format == pcm
        ? QStringLiteral(", Max samplesize %1 bits.").arg(highest(detail, {16, 20, 24}))
        : QStringLiteral(", Max rate %1 kb/s.").arg(detail * 8, 4);
    return line(format, (byteAt(descriptor, 0) & 7) + 1, rate, rest);
}

QStringList formatsInBlock(const QByteArray &block)
{
    if (!isWhole(block) || byteAt(block, 0) != ctaTag)
        return {};
    QStringList lines;
    const int end = std::min(byteAt(block, 2), blockSize - 1);
    for (int start = firstDataBlock; start < end;) {
        const int length = byteAt(block, start) & 31;
        const int next = start + 1 + length;
        if (byteAt(block, start) >> 5 == audioDataBlock && next <= end) {
            for (int place = start + 1; place + descriptorSize <= next; place += descriptorSize)
                lines += described(block.mid(place, descriptorSize));
        }
        start = next;
    }
    lines.removeAll(QString());
    if (lines.isEmpty() && (byteAt(block, 3) & basicAudio))
        lines += line(pcm, 2, 48, QStringLiteral(", Max samplesize 16 bits."));
    return lines;
}

} // namespace

QStringList formats(const QByteArray &edid)
{
    QStringList lines;
    for (int start = blockSize; start + blockSize <= edid.size(); start += blockSize)
        lines += formatsInBlock(edid.mid(start, blockSize));
    return lines;
}

} // namespace EdidSound

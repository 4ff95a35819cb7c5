// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "target.h"

#include "update/consoleformat.h"
#include "update/wireformat.h"

// Every decoder of what arrives, at the device and at a console. None may hand on more than it was given.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // A copy of its own, so that a read behind the end is seen.
    const QByteArray datagram(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const auto block = WireFormat::decodeFileBlock(datagram);
    const auto list = WireFormat::decodeServerList(datagram);
    require(!(block && list), "a datagram is of one kind");
    if (block)
        require(block->total > 0 && block->data.size() <= WireFormat::blockSize, "a block's bounds");
    if (list) {
        require(list->names.size() == list->addresses.size(), "a name for each address");
        require(list->names.size() * 68 <= datagram.size(), "entries that were received");
    }

    const auto info = ConsoleFormat::decodeDeviceInfo(datagram);
    require(!info || info->status.size() < datagram.size(), "a status that was received");
    const auto document = ConsoleFormat::decodeDocumentReply(datagram);
    require(!document || document->text.size() <= datagram.size(), "a document that was received");
    ConsoleFormat::decodeActionReply(datagram);
    ConsoleFormat::decodeMergeReply(datagram);

    const ConsoleFormat::UpdateSource source = ConsoleFormat::decodeUpdateSource(datagram);
    for (const QString &field : {source.url, source.user, source.password, source.file})
        require(field.size() <= ConsoleFormat::longestField + 1, "a field's size");
    require(!ConsoleFormat::decodeJsonText(datagram).contains('\0'), "text up to its NUL");
    require(ConsoleFormat::actionReply(datagram, 1).size() == ConsoleFormat::actionReplySize,
            "an answer's size");
    return 0;
}

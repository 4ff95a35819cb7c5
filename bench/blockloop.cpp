// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "blockloop.h"

#include <arpa/inet.h>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The protocol uses the device's byte order.
constexpr int requestSize = 140;
constexpr int headSize = 12;
constexpr int blockSize = 1024;
constexpr int replySize = headSize + blockSize;
constexpr std::uint16_t serverPort = 1283;
constexpr std::uint32_t marker = 0xFFFF;
constexpr std::uint32_t blockRequest = 5;

sockaddr_in at(const char *address)
{
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_port = htons(serverPort);
    inet_pton(AF_INET, address, &result.sin_addr);
    return result;
}

int failed(const char *what)
{
    std::perror(what);
    return 1;
}

} // namespace

int BlockLoop::serve(const char *address, const char *file)
{
    const int image = open(file, O_RDONLY | O_CLOEXEC);
    struct stat status = {};
    if (image < 0 || fstat(image, &status) != 0)
        return failed(file);
    const auto total = static_cast<std::uint32_t>(status.st_size);
    const int line = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const sockaddr_in own = at(address);
    if (bind(line, reinterpret_cast<const sockaddr *>(&own), sizeof own) != 0)
        return failed(address);
    std::puts("ready");
    std::fflush(stdout);
    char request[requestSize];
    char reply[replySize] = {};
    for (;;) {
        sockaddr_in device{};
        socklen_t length = sizeof device;
        const auto size
            = recvfrom(line, request, sizeof request, 0, reinterpret_cast<sockaddr *>(&device), &length);
        if (size != requestSize)
            continue;
        std::uint32_t position = 0;
        std::memcpy(&position, request, sizeof position);
        std::memcpy(reply, &position, sizeof position);
        std::memcpy(reply + 4, &total, sizeof total);
        if (pread(image, reply + headSize, blockSize, position) >= 0)
            sendto(line, reply, sizeof reply, 0, reinterpret_cast<const sockaddr *>(&device), length);
    }
}

int BlockLoop::fetch(const char *address, const char *into)
{
    const int file = open(into, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    const int line = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const sockaddr_in server = at(address);
    if (file < 0 || connect(line, reinterpret_cast<const sockaddr *>(&server), sizeof server) != 0)
        return failed(into);
    char request[requestSize] = {};
    std::memcpy(request + 4, &marker, sizeof marker);
    std::memcpy(request + 8, &blockRequest, sizeof blockRequest);
    std::strcpy(request + headSize, "image");
    char reply[replySize];
    std::uint32_t position = 0;
    std::uint32_t total = 1;
    while (position < total) {
        std::memcpy(request, &position, sizeof position);
        if (send(line, request, sizeof request, 0) != requestSize
            || recv(line, reply, sizeof reply, 0) != replySize)
            return failed("transfer");
        std::memcpy(&total, reply + 4, sizeof total);
        const std::uint32_t left = total - position;
        const ssize_t size = left < blockSize ? static_cast<ssize_t>(left) : blockSize;
        if (write(file, reply + headSize, static_cast<std::size_t>(size)) != size)
            return failed(into);
        position += static_cast<std::uint32_t>(size);
    }
    return 0;
}

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// kt-bench-link NAMESPACE DELAY-US LOSS-PERCENT MBIT-PER-SECOND
//
// A link between this network namespace and another one (/proc/PID/ns/net): the interfaces "near" and "far".
// Each packet of either direction arrives that much later, or is lost, and each direction has that speed.
// Prints "ready" when both interfaces exist; their addresses are the caller's affair. Stands in for the
// kernel's netem, which not every machine has.

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <deque>
#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <poll.h>
#include <random>
#include <sched.h>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr std::size_t longestPacket = 65536;
/// More waiting packets than a switch keeps are lost.
constexpr std::size_t longestQueue = 1000;

long long now()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000000000LL + time.tv_nsec;
}

int openInterface(const char *name)
{
    const int file = open("/dev/net/tun", O_RDWR | O_NONBLOCK | O_CLOEXEC);
    ifreq request{};
    request.ifr_flags = IFF_TUN | IFF_NO_PI;
    std::strncpy(request.ifr_name, name, IFNAMSIZ - 1);
    if (file < 0 || ioctl(file, TUNSETIFF, &request) < 0) {
        std::perror(name);
        std::exit(1);
    }
    return file;
}

/// What is on its way in one direction.
struct Direction
{
    int from = -1;
    int to = -1;
    long long freeAt = 0; ///< when the sender has sent all before
    std::deque<std::pair<long long, std::string>> packets;
};

struct Link
{
    long long delay = 0;
    double loss = 0;
    double bitsPerNanosecond = 1;
    std::mt19937 dice{1};

    void read(Direction *direction)
    {
        static char packet[longestPacket];
        ssize_t size = 0;
        while ((size = ::read(direction->from, packet, sizeof packet)) > 0) {
            if (direction->packets.size() >= longestQueue
                || std::uniform_real_distribution<>(0, 100)(dice) < loss)
                continue;
            const long long begin = std::max(now(), direction->freeAt);
            direction->freeAt
                = begin + static_cast<long long>(static_cast<double>(size) * 8 / bitsPerNanosecond);
            direction->packets.emplace_back(direction->freeAt + delay,
                                            std::string(packet, static_cast<std::size_t>(size)));
        }
    }

    static void write(Direction *direction)
    {
        while (!direction->packets.empty() && direction->packets.front().first <= now()) {
            const std::string &packet = direction->packets.front().second;
            if (::write(direction->to, packet.data(), packet.size()) < 0 && errno == EAGAIN)
                return;
            direction->packets.pop_front();
        }
    }
};

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 5) {
        std::fputs("usage: kt-bench-link NAMESPACE DELAY-US LOSS-PERCENT MBIT-PER-SECOND\n", stderr);
        return 2;
    }
    Link link;
    link.delay = std::atoll(argv[2]) * 1000;
    link.loss = std::atof(argv[3]);
    link.bitsPerNanosecond = std::atof(argv[4]) / 1000;
    const int near = openInterface("near");
    const int other = open(argv[1], O_RDONLY | O_CLOEXEC);
    if (other < 0 || setns(other, CLONE_NEWNET) != 0) {
        std::perror(argv[1]);
        return 1;
    }
    const int far = openInterface("far");
    Direction there{near, far, 0, {}};
    Direction back{far, near, 0, {}};
    std::puts("ready");
    std::fflush(stdout);
    for (;;) {
        long long next = now() + 1000000000LL;
        for (const Direction *direction : {&there, &back}) {
            if (!direction->packets.empty())
                next = std::min(next, direction->packets.front().first);
        }
        const long long wait = std::max(next - now(), 0LL);
        const timespec timeout{wait / 1000000000LL, wait % 1000000000LL};
        pollfd files[] = {{near, POLLIN, 0}, {far, POLLIN, 0}};
        if (ppoll(files, 2, &timeout, nullptr) < 0 && errno != EINTR)
            return 1;
        for (Direction *direction : {&there, &back}) {
            link.read(direction);
            Link::write(direction);
        }
    }
}

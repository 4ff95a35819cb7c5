// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "network-tools/kernelnetwork.h"

#include <QFile>
#include <QList>

#include <arpa/inet.h>
#include <array>
#include <cstring>
#include <functional>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace KernelNetwork {

namespace {

constexpr int routesLimit = 1024 * 1024;
constexpr unsigned lowerUp = 1U << 16; ///< IFF_LOWER_UP of linux/if.h, which contradicts net/if.h

/// Calls `visit` with each entry of the interface until it returns true.
bool anyEntry(const QString &interface, const std::function<bool(const ifaddrs &)> &visit)
{
    ifaddrs *first = nullptr;
    if (getifaddrs(&first) != 0)
        return false;
    const std::unique_ptr<ifaddrs, void (*)(ifaddrs *)> owner(first, freeifaddrs);
    const QByteArray name = interface.toLatin1();
    for (const ifaddrs *entry = first; entry; entry = entry->ifa_next) {
        if (name == entry->ifa_name && visit(*entry))
            return true;
    }
    return false;
}

bool hasFlags(const QString &interface, unsigned flags)
{
    return anyEntry(interface, [flags](const ifaddrs &entry) { return (entry.ifa_flags & flags) == flags; });
}

/// The IPv4 address of the entry, if it has one.
std::optional<Address> addressOf(const ifaddrs &entry)
{
    if (!entry.ifa_addr || entry.ifa_addr->sa_family != AF_INET || !entry.ifa_netmask)
        return std::nullopt;
    const auto number = [](const sockaddr *socketAddress) {
        sockaddr_in internet;
        std::memcpy(&internet, socketAddress, sizeof internet);
        return internet.sin_addr;
    };
    const in_addr own = number(entry.ifa_addr);
    std::array<char, INET_ADDRSTRLEN> text{};
    inet_ntop(AF_INET, &own, text.data(), text.size());
    return Address{QString::fromLatin1(text.data()), __builtin_popcount(number(entry.ifa_netmask).s_addr)};
}

} // namespace

bool exists(const QString &interface)
{
    return hasFlags(interface, 0);
}

bool isOn(const QString &interface)
{
    return hasFlags(interface, IFF_UP);
}

bool hasCarrier(const QString &interface)
{
    return hasFlags(interface, IFF_UP | lowerUp);
}

bool isReady(const QString &interface)
{
    return hasFlags(interface, IFF_UP | IFF_RUNNING);
}

std::optional<Address> address(const QString &interface)
{
    std::optional<Address> found;
    anyEntry(interface, [&found](const ifaddrs &entry) {
        found = addressOf(entry);
        return found.has_value();
    });
    return found;
}

bool hasAddress(const QString &interface, const QString &wanted)
{
    return anyEntry(interface, [&wanted](const ifaddrs &entry) {
        const std::optional<Address> found = addressOf(entry);
        return found && found->address == wanted;
    });
}

QString gateway(const QString &interface)
{
    QFile routes(QStringLiteral("/proc/net/route"));
    return routes.open(QIODevice::ReadOnly) ? gatewayIn(routes.read(routesLimit), interface) : QString();
}

QString gatewayIn(const QByteArray &routes, const QString &interface)
{
    // Iface Destination Gateway Flags RefCnt Use Metric Mask ..., numbers as they lie in memory
    for (const QByteArray &line : routes.split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() < 8 || fields.at(0) != interface.toLatin1() || fields.at(1) != "00000000"
            || fields.at(7) != "00000000")
            continue;
        bool isNumber = false;
        const in_addr gateway{fields.at(2).toUInt(&isNumber, 16)};
        std::array<char, INET_ADDRSTRLEN> text{};
        if (isNumber && gateway.s_addr != 0 && inet_ntop(AF_INET, &gateway, text.data(), text.size()))
            return QString::fromLatin1(text.data());
    }
    return {};
}

bool turn(const QString &interface, bool on)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return false;
    ifreq request = {};
    qstrncpy(request.ifr_name, interface.toLatin1().constData(), sizeof request.ifr_name);
    bool done = ioctl(descriptor, SIOCGIFFLAGS, &request) == 0;
    request.ifr_flags = static_cast<short>(on ? request.ifr_flags | IFF_UP : request.ifr_flags & ~IFF_UP);
    done = done && ioctl(descriptor, SIOCSIFFLAGS, &request) == 0;
    close(descriptor);
    return done;
}

} // namespace KernelNetwork

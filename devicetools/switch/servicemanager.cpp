// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "servicemanager.h"

#include <memory>
#include <systemd/sd-bus.h>

namespace ServiceManager {

namespace {

constexpr std::uint64_t replyLimitMicroseconds = 8 * 1000 * 1000;

struct CloseBus
{
    void operator()(sd_bus *bus) const { sd_bus_flush_close_unref(bus); }
};

template <typename... Arguments>
Reply call(const char *method, const char *types, Arguments... arguments)
{
    sd_bus *opened = nullptr;
    const int connected = sd_bus_open_system(&opened);
    const std::unique_ptr<sd_bus, CloseBus> bus(opened);
    if (connected < 0)
        return {false, false, QStringLiteral("the system bus cannot be reached")};
    sd_bus_set_method_call_timeout(bus.get(), replyLimitMicroseconds);

    sd_bus_error error = SD_BUS_ERROR_NULL;
    const int result = sd_bus_call_method(bus.get(), "org.freedesktop.systemd1", "/org/freedesktop/systemd1",
                                          "org.freedesktop.systemd1.Manager", method, &error, nullptr, types,
                                          arguments...);
    Reply reply;
    reply.accepted = result >= 0;
    reply.noSuchUnit = sd_bus_error_has_name(&error, "org.freedesktop.systemd1.NoSuchUnit") > 0
        || sd_bus_error_has_name(&error, "org.freedesktop.systemd1.UnitMasked") > 0;
    if (!reply.accepted)
        reply.error = QString::fromUtf8(error.message);
    sd_bus_error_free(&error);
    return reply;
}

} // namespace

Reply start(const char *unit)
{
    return call("StartUnit", "ss", unit, "replace");
}

Reply restart(const char *unit)
{
    return call("RestartUnit", "ss", unit, "replace");
}

Reply resetFailed(const char *unit)
{
    return call("ResetFailedUnit", "s", unit);
}

} // namespace ServiceManager

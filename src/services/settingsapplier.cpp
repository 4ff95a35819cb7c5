// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "services/settingsapplier.h"

#include "config/jsonmodule.h"
#include "config/keys.h"
#include "config/wifisettings.h"
#include "device/devicetools.h"
#include "device/keyboardlayouts.h"
#include "device/networkcontroller.h"
#include "device/paths.h"
#include "device/resolutioncontainer.h"
#include "device/toolqueue.h"

#include <QFile>
#include <QLoggingCategory>

#include <utility>

Q_LOGGING_CATEGORY(lcApplier, "kt.services.applier")

namespace {

QJsonObject member(const QJsonObject &object, QLatin1String key)
{
    return object.value(key).toObject();
}

QString displayMode(const QJsonObject &root)
{
    const QString mode = member(member(root, Key::display), Key::primary).value(Key::resolution).toString();
    return mode.isEmpty() ? ResolutionContainer::automatic : mode;
}

void setDisplayMode(QJsonObject &root, const QString &mode)
{
    QJsonObject display = member(root, Key::display);
    QJsonObject primary = member(display, Key::primary);
    primary.insert(Key::resolution, mode);
    display.insert(Key::primary, primary);
    root.insert(Key::display, display);
}

/// What the DHCP client was told belongs to the network as it was.
void forgetDhcpOffer()
{
    QFile::remove(Paths::dhcpOptions());
}

} // namespace

SettingsApplier::SettingsApplier(JsonModule &configuration, ToolQueue &commands, NetworkController &network,
                                 ResolutionContainer &resolutions, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_commands(commands)
    , m_network(network)
    , m_resolutions(resolutions)
{
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &SettingsApplier::compare);
    connect(&m_configuration, &JsonModule::changed, this, &SettingsApplier::follow);
    isRecordRead();
}

void SettingsApplier::setSessionCheck(const std::function<bool()> &inSession)
{
    m_inSession = inSession;
}

void SettingsApplier::start()
{
    adopt(m_configuration.getDocument().object());
    follow();
}

void SettingsApplier::follow()
{
    m_turn.start(0);
    updateBusy();
}

void SettingsApplier::apply(Sections forced)
{
    m_forced |= forced;
    follow();
}

void SettingsApplier::setClock(const QDateTime &time)
{
    m_clock = time;
}

void SettingsApplier::acknowledge(Sections sections)
{
    const QJsonObject root = m_configuration.getDocument().object();
    for (const Section section : SettingsSections::all()) {
        if (sections.testFlag(section))
            m_record.set(section, SettingsSections::fingerprint(root, section));
    }
}

bool SettingsApplier::isBusy() const
{
    return m_busy;
}

void SettingsApplier::compare()
{
    if (!isRecordRead()) {
        m_turn.start(readPauseMs);
        return;
    }
    const QJsonObject root = m_configuration.getDocument().object();
    // Defaults in place of a document that cannot be read are not what the device is to be.
    if (!root.isEmpty() && !m_configuration.isProvisional()) {
        adopt(root);
        Sections due = withoutUncheckedMode(root, differing(root) | m_forced);
        if (m_inSession && m_inSession())
            due &= ~SettingsSections::disturbing;
        m_forced &= ~due;
        carryOut(root, due);
        saveWhenDone();
    }
    updateBusy();
}

/// What was left undone is known from the record alone: one that cannot be read now is not replaced.
bool SettingsApplier::isRecordRead()
{
    if (m_readsLeft == 0)
        return true;
    --m_readsLeft;
    if (m_record.load() != AppliedRecord::Condition::Unreadable) {
        m_readsLeft = 0;
    } else if (m_readsLeft == 0) {
        qCCritical(lcApplier) << "the record of applied settings cannot be read and stays as it is";
        m_record.protect();
    }
    return m_readsLeft == 0;
}

/// A section that was never recorded is taken as the device has it.
void SettingsApplier::adopt(const QJsonObject &root)
{
    for (const Section section : SettingsSections::all()) {
        if (m_record.fingerprint(section).isEmpty())
            m_record.set(section, SettingsSections::fingerprint(root, section));
    }
}

SettingsApplier::Sections SettingsApplier::differing(const QJsonObject &root) const
{
    Sections sections;
    for (const Section section : SettingsSections::all()) {
        const QByteArray present = m_underWay.contains(section) ? m_underWay.value(section).fingerprint
                                                                : m_record.fingerprint(section);
        sections.setFlag(section, SettingsSections::fingerprint(root, section) != present);
    }
    return sections;
}

/// A mode that comes from afar is one of the connected monitor's, or it becomes "Automatic"; on the page a
/// user may leave one of another monitor. Until the monitor has been asked, the mode waits, and what comes
/// after it.
SettingsApplier::Sections SettingsApplier::withoutUncheckedMode(const QJsonObject &root, Sections due)
{
    const QString mode = displayMode(root);
    const bool onPage = m_forced.testFlag(Section::DisplayMode) && !m_resolutions.resolutions().empty();
    if (!due.testFlag(Section::DisplayMode) || mode == ResolutionContainer::automatic || onPage
        || m_modeChecked == mode)
        return due;
    if (!m_checkingMode)
        checkMode(mode);
    return due & SettingsSections::before(Section::DisplayMode);
}

void SettingsApplier::checkMode(const QString &mode)
{
    m_checkingMode = true;
    m_resolutions.getResolutions(this, [this, mode](const std::vector<Item> &modes) {
        m_checkingMode = false;
        m_modeChecked = mode;
        if (ResolutionContainer::rowIn(modes, mode) < 0 && !m_forced.testFlag(Section::DisplayMode)) {
            qCWarning(lcApplier).noquote() << "the monitor has no mode" << mode;
            m_configuration.change([&mode](QJsonObject &root) {
                if (displayMode(root) != mode)
                    return false;
                setDisplayMode(root, ResolutionContainer::automatic);
                return true;
            });
        }
        follow();
    });
}

void SettingsApplier::carryOut(const QJsonObject &root, Sections due)
{
    const Sections network{Section::Network | Section::Wired | Section::Wireless | Section::Dns};
    for (const Section section : SettingsSections::all()) {
        if (section == Section::Network && (due & network))
            carryOutNetwork(root, due & network);
        if (!due.testFlag(section) || network.testFlag(section))
            continue;
        begin(root, section);
        // The tool of the client mode may end this program. It is not called again at the next start.
        if (section == Section::ClientMode)
            m_commands.add([this] { finish(Section::ClientMode); });
        add(calls(root, section), section);
        if (section != Section::ClientMode)
            m_commands.add([this, section] { finish(section); });
    }
}

/// Only interfaces that have changed are connected anew. A change of the name servers alone takes effect when
/// the enabled ones are.
void SettingsApplier::carryOutNetwork(const QJsonObject &root, Sections due)
{
    const QJsonObject interfaces = member(member(root, Key::network), Key::interfaces);
    const bool wired = member(interfaces, Key::eth).value(Key::enabled).toBool();
    const QJsonObject wlan = member(interfaces, Key::wlan);
    const bool dns = due.testFlag(Section::Dns);
    begin(root, due);
    add({DeviceTools::setNetworkConfig()}, due);
    if (due.testFlag(Section::Wired) || (dns && wired))
        carryOutWired(wired, due);
    if (due.testFlag(Section::Wireless) || (dns && wlan.value(Key::enabled).toBool()))
        carryOutWireless(wlan, due);
    m_commands.add([this, due] { finish(due); });
}

void SettingsApplier::carryOutWired(bool enabled, Sections due)
{
    if (enabled) {
        m_commands.add(forgetDhcpOffer);
        add({DeviceTools::connectWired(), DeviceTools::checkGateway()}, due);
    } else {
        add({DeviceTools::disconnectWired()}, due);
    }
    m_commands.add([this, enabled] { emit wiredApplied(enabled); });
}

void SettingsApplier::carryOutWireless(const QJsonObject &wlan, Sections due)
{
    const bool enabled = wlan.value(Key::enabled).toBool();
    const WifiItem item = WifiSettings::read(wlan);
    m_network.disconnectWifi(noteFailure(due));
    m_commands.add([this, enabled] { emit wirelessLeft(!enabled); });
    if (!enabled || item.essid().isEmpty())
        return;
    m_commands.add(forgetDhcpOffer);
    if (item.security == QLatin1String("enterprise"))
        m_network.connectToWifi(item);
    else if (item.security == QLatin1String("personal"))
        m_network.connectToWifi(item.essid(), item.password, item.hidden);
    else
        m_network.connectToWifi(item.essid(), QString(), item.hidden);
}

QVector<ToolCall> SettingsApplier::calls(const QJsonObject &root, Section section)
{
    const QJsonObject keyboard = member(root, Key::keyboard);
    switch (section) {
    case Section::HostName:
        return {DeviceTools::applyHostName()};
    case Section::DisplayMode:
        m_modeChecked.clear();
        if (const auto call = ResolutionContainer::callFor(m_resolutions.resolutions(), displayMode(root)))
            return {*call};
        return {};
    case Section::ScreenSaver:
        return {DeviceTools::restartScreenSaver()};
    case Section::KeyboardLayout: {
        const QString layout = keyboard.value(Key::layout).toString();
        return {DeviceTools::setKeyboard(layout, KeyboardLayouts::variantOf(layout))};
    }
    case Section::NumLock:
        return {DeviceTools::setNumLock(keyboard.value(Key::numlockOn).toBool())};
    case Section::TimeZone:
        return {DeviceTools::setTimeZone(member(root, Key::dateTime).value(Key::timezone).toString())};
    case Section::TimeServer:
        return clockCalls(member(root, Key::dateTime));
    case Section::ClientMode:
        return {DeviceTools::switchClient()};
    default:
        return {};
    }
}

QVector<ToolCall> SettingsApplier::clockCalls(const QJsonObject &dateTime)
{
    const std::optional<QDateTime> clock = std::exchange(m_clock, std::nullopt);
    const bool ntp = dateTime.value(Key::ntpEnabled).toBool();
    QVector<ToolCall> calls = {DeviceTools::enableNtp(ntp), DeviceTools::startNtp(ntp)};
    if (ntp)
        calls += DeviceTools::setNtpServer(dateTime.value(Key::ntpServer).toString());
    else if (clock)
        calls += DeviceTools::setClock(clock->isNull() ? QDateTime::currentDateTime() : *clock);
    return calls;
}

void SettingsApplier::add(const QVector<ToolCall> &calls, Sections concerned)
{
    for (const ToolCall &call : calls)
        m_commands.add(call, noteFailure(concerned));
}

ToolDone SettingsApplier::noteFailure(Sections concerned)
{
    return [this, concerned](const ToolResult &result) {
        if (result.ended())
            return;
        for (auto entry = m_underWay.begin(); entry != m_underWay.end(); ++entry)
            entry->failed = entry->failed || concerned.testFlag(entry.key());
    };
}

void SettingsApplier::begin(const QJsonObject &root, Sections sections)
{
    for (const Section section : SettingsSections::all()) {
        if (!sections.testFlag(section))
            continue;
        UnderWay &underWay = m_underWay[section];
        underWay.fingerprint = SettingsSections::fingerprint(root, section);
        underWay.failed = false;
        ++underWay.runs;
    }
}

void SettingsApplier::finish(Sections sections)
{
    for (const Section section : SettingsSections::all()) {
        if (!sections.testFlag(section) || --m_underWay[section].runs > 0)
            continue;
        const UnderWay ended = m_underWay.take(section);
        if (ended.failed)
            qCWarning(lcApplier) << "not carried out:" << SettingsSections::name(section);
        else
            m_record.set(section, ended.fingerprint);
    }
    saveWhenDone();
    updateBusy();
}

void SettingsApplier::saveWhenDone()
{
    if (m_underWay.isEmpty())
        m_record.save();
}

void SettingsApplier::updateBusy()
{
    const bool nowBusy = m_turn.isActive() || m_checkingMode || !m_underWay.isEmpty();
    if (std::exchange(m_busy, nowBusy) != nowBusy)
        emit busy(nowBusy);
}

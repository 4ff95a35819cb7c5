// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/settingspages.h"

#include "services/networkstatus.h"
#include "services/settingsapplier.h"
#include "launcher/settingsapp.h"
#include "config/jsonmodule.h"
#include "config/keys.h"
#include "device/log.h"
#include "pages/aboutpage.h"
#include "pages/audiopage.h"
#include "pages/connectionpage.h"
#include "pages/datetimepage.h"
#include "pages/desktopmodedialog.h"
#include "pages/displaypage.h"
#include "pages/firmwarepage.h"
#include "pages/generalpage.h"
#include "pages/keyboardpage.h"
#include "pages/kioskmodepage.h"
#include "pages/logviewerdialog.h"
#include "pages/managementpage.h"
#include "pages/networkpage.h"
#include "pages/peripheralspage.h"
#include "pages/securitypage.h"
#include "pages/servergroupspage.h"

namespace {
/// Where the server groups stand in the list; only a Corvid client has them.
constexpr int serverGroupsIndex = 2;
} // namespace

SettingsPages::SettingsPages(SettingsApp &window, JsonModule &configuration, const Device &device,
                             QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_configuration(configuration)
    , m_networkStatus(device.networkStatus)
    , m_applier(device.applier)
    , m_certificates(configuration)
    , m_view(new SettingsView)
{
    // First, because the style sheet is applied again to everything that changes its parent.
    m_window.setSettingsView(m_view);
    build(device);
    addTools();
    const auto listGroups = [this](SettingsApp::ClientMode mode) {
        m_view->setPageListed(serverGroupsIndex, mode == SettingsApp::ClientMode::Corvid);
    };
    connect(&m_window, &SettingsApp::clientModeChanged, this, listGroups);
    listGroups(m_window.clientMode());
}

void SettingsPages::build(const Device &device)
{
    auto *general = new GeneralPage(m_configuration);
    auto *kioskMode = new KioskModePage(m_configuration);
    auto *serverGroups = new ServerGroupsPage(m_configuration);
    auto *connection = new ConnectionPage(
        m_configuration, [serverGroups] { return serverGroups->groups(); },
        [kioskMode] { return kioskMode->userName(); });
    auto *display = new DisplayPage(m_configuration, device.resolutions);
    auto *sound = new AudioPage(m_configuration, device.audio);
    auto *networkPage = new NetworkPage(m_configuration, device.network, m_certificates);
    auto *keyboard = new KeyboardPage(m_configuration);
    auto *dateTime = new DateTimePage(m_configuration);
    auto *management = new ManagementPage(m_configuration);
    auto *peripherals = new PeripheralsPage(m_configuration);
    auto *security = new SecurityPage(m_configuration, m_certificates);
    auto *firmware = new FirmwarePage(m_configuration);
    auto *about = new AboutPage(m_configuration, device.network);

    const QVector<SettingsPage *> listed
        = {general,  connection, serverGroups, kioskMode,   display,  sound,    networkPage,
           keyboard, dateTime,   management,   peripherals, security, firmware, about};
    for (SettingsPage *page : listed)
        m_view->addPage(page);
    m_fillOrder = {general, serverGroups, connection,  kioskMode,   sound,    keyboard, management,
                   about,   display,      networkPage, peripherals, security, dateTime, firmware};
    m_applyOrder = {general,  connection, serverGroups, kioskMode, display,  sound,   networkPage,
                    keyboard, management, peripherals,  security,  dateTime, firmware};
    connectPages(general, connection, serverGroups, firmware);
    connectNetworkPage(networkPage);
    listSections(general, display, networkPage, keyboard, dateTime);
    connect(&m_window, &SettingsApp::dualDisplayChanged, display, &DisplayPage::showDualDisplay);
    display->showDualDisplay(m_window.session().isDualDisplay());
}

void SettingsPages::connectPages(GeneralPage *general, ConnectionPage *connection,
                                 ServerGroupsPage *serverGroups, FirmwarePage *firmware)
{
    connect(general, &GeneralPage::clientModeChosen, &m_window,
            QOverload<const QString &>::of(&SettingsApp::showClientMode));
    connect(serverGroups, &ServerGroupsPage::groupsChanged, connection, &ConnectionPage::setGroups);
    connect(connection, &ConnectionPage::autoConnectGroupChanged, serverGroups,
            &ServerGroupsPage::setAutoConnectGroup);
    connect(serverGroups, &ServerGroupsPage::refreshServerList, &m_window, &SettingsApp::refreshServerList);
    connect(&m_window, &SettingsApp::passServerList, serverGroups, &ServerGroupsPage::setServerList);
    connect(firmware, &FirmwarePage::updateRequested, &m_window, &SettingsApp::updateFirmware);
}

void SettingsPages::connectNetworkPage(NetworkPage *page)
{
    connect(&m_networkStatus, &NetworkStatus::ethernetAddress, page, &NetworkPage::showEthernetAddress);
    connect(&m_networkStatus, &NetworkStatus::wifiAddress, page, &NetworkPage::showWifiAddress);
    connect(&m_networkStatus, &NetworkStatus::ethernetIndicator, page, &NetworkPage::showEthernetIndicator);
    connect(&m_networkStatus, &NetworkStatus::wifiIndicator, page, &NetworkPage::showWifiIndicator);
    connect(&m_networkStatus, &NetworkStatus::wifiTurnedOff, page, &NetworkPage::turnOffWifi);
    m_networkStatus.sayAgain();
}

/// The tools of a page that the user has edited run again, even when the document is as before: one of them
/// may have failed.
void SettingsPages::listSections(GeneralPage *general, DisplayPage *display, NetworkPage *network,
                                 KeyboardPage *keyboard, DateTimePage *dateTime)
{
    m_dateTime = dateTime;
    m_sections = {{general, SettingsSections::HostName},
                  {display, SettingsSections::DisplayMode | SettingsSections::ScreenSaver},
                  {network, SettingsSections::Network},
                  {keyboard, SettingsSections::KeyboardLayout},
                  {dateTime, SettingsSections::TimeZone | SettingsSections::TimeServer}};
    connect(&m_applier, &SettingsApplier::busy, m_view, &SettingsView::showBusy);
    m_view->showBusy(m_applier.isBusy());
}

void SettingsPages::addTools()
{
    m_view->addTool(tr("Log"), QStringLiteral(":/images/page_log.png"), this, [this] {
        LogViewerDialog viewer(Log::ring(), m_configuration, &m_window);
        viewer.exec();
    });
    m_view->addTool(tr("Desktop mode"), QStringLiteral(":/images/page_desktop.png"), this,
                    [this] { DesktopModeDialog::ask(&m_window, m_configuration.getDocument().object()); });
}

SettingsView &SettingsPages::view()
{
    return *m_view;
}

void SettingsPages::fill()
{
    for (SettingsPage *page : qAsConst(m_fillOrder))
        page->fill();
}

void SettingsPages::discard()
{
    for (SettingsPage *page : qAsConst(m_fillOrder))
        page->discard();
}

bool SettingsPages::apply()
{
    for (SettingsPage *page : qAsConst(m_applyOrder)) {
        const bool touched = page->isChanged();
        if (!page->apply()) {
            m_view->showPage(page);
            return false;
        }
        if (touched && page == m_dateTime)
            m_applier.setClock(m_dateTime->clock());
        if (touched)
            m_applier.apply(m_sections.value(page));
        if (touched && m_sections.value(page).testFlag(SettingsSections::Network))
            m_applier.apply(unconnectedInterfaces());
    }
    return true;
}

/// An interface that should be connected and is not is connected again.
SettingsSections::Sections SettingsPages::unconnectedInterfaces() const
{
    const QJsonObject interfaces = m_configuration.getDocument()
                                       .object()
                                       .value(Key::network)
                                       .toObject()
                                       .value(Key::interfaces)
                                       .toObject();
    const auto isEnabled = [&interfaces](QLatin1String key) {
        return interfaces.value(key).toObject().value(Key::enabled).toBool();
    };
    SettingsSections::Sections sections;
    sections.setFlag(SettingsSections::Wired,
                     isEnabled(Key::eth) && m_networkStatus.wiredState() != NetworkStatus::Link::Connected);
    sections.setFlag(SettingsSections::Wireless,
                     isEnabled(Key::wlan)
                         && m_networkStatus.wirelessState() != NetworkStatus::Link::Connected);
    return sections;
}

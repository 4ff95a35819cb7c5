// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/settingspages.h"

#include "app/settingsapp.h"
#include "config/jsonmodule.h"
#include "device/log.h"
#include "pages/aboutpage.h"
#include "pages/connectionpage.h"
#include "pages/datetimepage.h"
#include "pages/desktopmodedialog.h"
#include "pages/firmwarepage.h"
#include "pages/generalpage.h"
#include "pages/keyboardpage.h"
#include "pages/kioskmodepage.h"
#include "pages/logviewerdialog.h"
#include "pages/managementpage.h"
#include "pages/securitypage.h"
#include "pages/servergroupspage.h"

namespace {
/// Where the server groups stand in the list; only a Corvid client has them.
constexpr int serverGroupsIndex = 2;
} // namespace

SettingsPages::SettingsPages(SettingsApp &window, JsonModule &configuration, NetworkController &network,
                             QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_configuration(configuration)
    , m_certificates(configuration)
    , m_view(new SettingsView)
{
    build(network);
    addTools();
    const auto listGroups = [this](SettingsApp::ClientMode mode) {
        m_view->setPageListed(serverGroupsIndex, mode == SettingsApp::ClientMode::Corvid);
    };
    connect(&m_window, &SettingsApp::clientModeChanged, this, listGroups);
    listGroups(m_window.clientMode());
    m_window.setSettingsView(m_view);
}

void SettingsPages::build(NetworkController &network)
{
    auto *general = new GeneralPage(m_configuration);
    auto *kioskMode = new KioskModePage(m_configuration);
    auto *serverGroups = new ServerGroupsPage(m_configuration);
    auto *connection = new ConnectionPage(
        m_configuration, [serverGroups] { return serverGroups->groups(); },
        [kioskMode] { return kioskMode->userName(); });
    auto *keyboard = new KeyboardPage(m_configuration);
    auto *dateTime = new DateTimePage(m_configuration);
    auto *management = new ManagementPage(m_configuration);
    auto *security = new SecurityPage(m_configuration, m_certificates);
    auto *firmware = new FirmwarePage(m_configuration);
    auto *about = new AboutPage(m_configuration, network);

    const QVector<SettingsPage *> listed = {general,  connection, serverGroups, kioskMode, keyboard,
                                            dateTime, management, security,     firmware,  about};
    for (SettingsPage *page : listed)
        m_view->addPage(page);
    m_fillOrder = {general,    serverGroups, connection, kioskMode, keyboard,
                   management, about,        security,   dateTime,  firmware};
    m_applyOrder
        = {general, connection, serverGroups, kioskMode, keyboard, management, security, dateTime, firmware};
    connectPages(general, connection, serverGroups, firmware);
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
    for (SettingsPage *page : qAsConst(m_fillOrder)) {
        if (page->isChanged())
            page->fill();
    }
}

bool SettingsPages::apply()
{
    for (SettingsPage *page : qAsConst(m_applyOrder)) {
        if (!page->apply()) {
            m_view->showPage(page);
            return false;
        }
    }
    return true;
}

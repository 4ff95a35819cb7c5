// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificatestore.h"
#include "pages/settingsview.h"
#include "services/settingssections.h"

#include <QHash>
#include <QObject>
#include <QVector>

class AudioController;
class ConnectionPage;
class DateTimePage;
class DisplayPage;
class FirmwarePage;
class GeneralPage;
class JsonModule;
class KeyboardPage;
class NetworkController;
class NetworkPage;
class NetworkStatus;
class ResolutionContainer;
class ServerGroupsPage;
class SettingsApp;
class SettingsApplier;
class SettingsPage;

/// The settings view with all its pages: which there are, in which order they are filled and applied, and how
/// the pages and the main window hear of each other.
class SettingsPages : public QObject
{
    Q_OBJECT

public:
    /// What the pages show and change of the device.
    struct Device
    {
        NetworkController &network;
        NetworkStatus &networkStatus;
        ResolutionContainer &resolutions;
        AudioController &audio;
        SettingsApplier &applier;
    };

    /// Builds the pages into a view of the window's. All that is referred to outlives the object.
    SettingsPages(SettingsApp &window, JsonModule &configuration, const Device &device,
                  QObject *parent = nullptr);

    SettingsView &view();
    /// Shows what the document says on every page.
    void fill();
    /// Takes back what was edited and not applied; the view is not shown before it is filled again.
    void discard();
    /// Applies the pages in their order. The first that refuses is shown and ends it; the pages after it stay
    /// as they are.
    bool apply();

private:
    void build(const Device &device);
    void connectPages(GeneralPage *general, ConnectionPage *connection, ServerGroupsPage *serverGroups,
                      FirmwarePage *firmware);
    void connectNetworkPage(NetworkPage *page);
    void addTools();
    void listSections(GeneralPage *general, DisplayPage *display, NetworkPage *network,
                      KeyboardPage *keyboard, DateTimePage *dateTime);
    SettingsSections::Sections unconnectedInterfaces() const;

    SettingsApp &m_window;
    JsonModule &m_configuration;
    NetworkStatus &m_networkStatus;
    SettingsApplier &m_applier;
    CertificateStore m_certificates;
    SettingsView *m_view; ///< owned by the window
    QVector<SettingsPage *> m_fillOrder;
    QVector<SettingsPage *> m_applyOrder;
    DateTimePage *m_dateTime = nullptr;
    QHash<SettingsPage *, SettingsSections::Sections> m_sections; ///< what the tools are told of a page
};

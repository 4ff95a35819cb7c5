// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificatestore.h"
#include "pages/settingsview.h"

#include <QObject>
#include <QVector>

class AudioController;
class ConnectionPage;
class FirmwarePage;
class GeneralPage;
class JsonModule;
class NetworkController;
class ResolutionContainer;
class ServerGroupsPage;
class SettingsApp;
class SettingsPage;

/// The settings view with all its pages: which there are, in which order they are filled and applied, and how
/// the pages and the main window hear of each other.
class SettingsPages : public QObject
{
    Q_OBJECT

public:
    /// Builds the pages into a view of the window's. All arguments outlive the object.
    SettingsPages(SettingsApp &window, JsonModule &configuration, NetworkController &network,
                  ResolutionContainer &resolutions, AudioController &audio, QObject *parent = nullptr);

    SettingsView &view();
    /// Shows what the document says on every page.
    void fill();
    /// Takes back what was edited and not applied.
    void discard();
    /// Applies the pages in their order. The first that refuses is shown and ends it; the pages after it stay
    /// as they are.
    bool apply();

private:
    void build(NetworkController &network, ResolutionContainer &resolutions, AudioController &audio);
    void connectPages(GeneralPage *general, ConnectionPage *connection, ServerGroupsPage *serverGroups,
                      FirmwarePage *firmware);
    void addTools();

    SettingsApp &m_window;
    JsonModule &m_configuration;
    CertificateStore m_certificates;
    SettingsView *m_view; ///< owned by the window
    QVector<SettingsPage *> m_fillOrder;
    QVector<SettingsPage *> m_applyOrder;
};

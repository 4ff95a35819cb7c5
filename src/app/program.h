// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "app/servicenotifier.h"
#include "app/settingscontroller.h"
#include "config/jsonmodule.h"
#include "device/audiocontroller.h"
#include "device/networkcontroller.h"
#include "device/resolutioncontainer.h"
#include "device/toolqueue.h"
#include "launcher/settingsapp.h"
#include "management/devicestatus.h"
#include "services/agentservice.h"
#include "services/networkstatus.h"
#include "services/powerservice.h"
#include "services/remoteconfiguration.h"
#include "services/sessionservice.h"
#include "services/settingsapplier.h"
#include "services/startdocument.h"
#include "services/updateservice.h"
#include "update/terminalservermodule.h"
#include "update/updatemodule.h"

#include <QObject>

/// Owns every part of the program that lives as long as the program, and connects them: the document, the
/// device, the services, the window and the settings. No part owns another one or asks it for a third.
class Program : public QObject
{
    Q_OBJECT

public:
    /// Nothing is read, asked or shown yet.
    Program();
    ~Program() override;

    /// Loads the document, has the device follow it, and fills the window, which is then to be shown.
    void start();

    SettingsApp &window();
    SettingsController &controller();
    JsonModule &configuration();
    NetworkStatus &networkStatus();
    TerminalServerModule &endpoint();
    UpdateModule &updateModule();
    SessionService &session();
    UpdateService &updates();
    RemoteConfiguration &remoteConfiguration();
    SettingsApplier &applier();
    AudioController &audio();
    StartDocument &startDocument();
    AgentService &agent();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectEndpoint();
    void connectSession();
    void connectAgent();
    void connectApplier();
    void followDocument();

    JsonModule m_configuration;
    ToolQueue m_commands; ///< everything that configures the device takes its turn here
    NetworkController m_network;
    NetworkStatus m_networkStatus;
    ResolutionContainer m_resolutions;
    SettingsApplier m_applier;
    StartDocument m_startDocument;
    AudioController m_audio;
    DeviceStatus m_status;
    TerminalServerModule m_endpoint;
    UpdateModule m_update;
    SessionService m_session;
    UpdateService m_updates;
    PowerService m_power;
    AgentService m_agent;
    SettingsApp m_window;
    RemoteConfiguration m_remote;
    SettingsController m_controller;
    ServiceNotifier m_serviceNotifier;
};

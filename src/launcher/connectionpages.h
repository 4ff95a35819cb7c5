// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "launcher/settingsapp.h"
#include "services/connecttarget.h"

#include <QJsonObject>
#include <QObject>

#include <optional>

class AutoStart;

/// The launcher's connection pages, one for each client mode: which of them is shown, what it would connect
/// to, and where a user begins.
class ConnectionPages : public QObject
{
    Q_OBJECT

public:
    using Mode = SettingsApp::ClientMode;

    /// Both arguments outlive the object.
    ConnectionPages(Ui::SettingsApp &form, const AutoStart &autoStart);

    static Mode modeOf(const QString &word);
    Mode mode() const;
    /// Shows the page of a mode and marks its button. False when it is shown already.
    bool show(Mode mode);
    /// Gives the focus to the field that a user begins with.
    void focusFirst();
    /// What Connect would connect to.
    std::optional<ConnectTarget> target() const;

    /// Fills the Corvid and the RDP page from the document, but for the server groups.
    void load(const QJsonObject &root);

public slots:
    /// Connect can be pressed while there is something to connect to.
    void updateConnectButton();

private:
    Ui::SettingsApp &m_form;
    const AutoStart &m_autoStart;
    Mode m_mode = Mode::Corvid;
    bool m_shown = false;
};

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/connectionpages.h"

#include "launcher/autostart.h"
#include "launcher/stylesheets.h"
#include "config/keys.h"

#include "ui_settingsapp.h"

#include <QJsonArray>
#include <QLoggingCategory>

#include <utility>

Q_DECLARE_LOGGING_CATEGORY(lcLauncher)

ConnectionPages::ConnectionPages(Ui::SettingsApp &form, const AutoStart &autoStart)
    : m_form(form)
    , m_autoStart(autoStart)
{
    connect(m_form.corvidPage, &CorvidPage::targetChanged, this, &ConnectionPages::updateConnectButton);
    connect(m_form.rdpPage, &RdpPage::targetChanged, this, &ConnectionPages::updateConnectButton);
}

ConnectionPages::Mode ConnectionPages::modeOf(const QString &word)
{
    if (word == QLatin1String("solva"))
        return Mode::Solva;
    return word == QLatin1String("rdp") ? Mode::Rdp : Mode::Corvid;
}

ConnectionPages::Mode ConnectionPages::mode() const
{
    return m_mode;
}

bool ConnectionPages::show(Mode mode)
{
    if (std::exchange(m_shown, true) && mode == m_mode)
        return false;
    m_mode = mode;
    QPushButton *buttons[] = {m_form.CorvidProButton, m_form.solvaVDIButton, m_form.rdpClientButton};
    for (QPushButton *button : buttons)
        button->setStyleSheet(StyleSheets::uncheckedButtonSheet());
    buttons[static_cast<int>(mode)]->setStyleSheet(StyleSheets::checkedButtonSheet());
    m_form.connectionStackedWidget->setCurrentIndex(static_cast<int>(mode));
    m_form.connectButton->setVisible(mode != Mode::Solva);
    updateConnectButton();
    return true;
}

void ConnectionPages::focusFirst()
{
    if (m_mode == Mode::Corvid)
        m_form.corvidPage->focusFirst();
    else if (m_mode == Mode::Solva)
        m_form.solvaPage->focusFirst();
    else if (m_mode == Mode::Rdp)
        m_form.rdpPage->setFocus();
}

std::optional<ConnectTarget> ConnectionPages::target() const
{
    if (m_mode == Mode::Corvid && m_autoStart.connects() && m_autoStart.target().isComplete())
        return m_autoStart.target();
    switch (m_mode) {
    case Mode::Corvid:
        return m_form.corvidPage->target();
    case Mode::Rdp:
        return m_form.rdpPage->target();
    case Mode::Solva:
        break;
    }
    return std::nullopt;
}

void ConnectionPages::updateConnectButton()
{
    const auto chosen = target();
    m_form.connectButton->setEnabled(chosen.has_value());
    if (chosen)
        qCDebug(lcLauncher).noquote() << "chosen:" << chosen->name;
}

void ConnectionPages::load(const QJsonObject &root)
{
    const QJsonObject window = root.value(Key::mainWindow).toObject();
    const QJsonObject connection = root.value(Key::connection).toObject();
    const QJsonObject corvid = connection.value(Key::corvidConnection).toObject();
    const QJsonObject rdp = connection.value(Key::rdpConnection).toObject();
    m_form.corvidPage->setManualEntryAllowed(corvid.value(Key::allowManualAddress).toBool());
    m_form.corvidPage->setAutoDetectedShown(corvid.value(Key::showAutodetected).toBool());
    m_form.corvidPage->setHistory(window.value(Key::manualServerHistory).toArray());
    m_form.corvidPage->setSelection(window.value(Key::selection).toString());
    m_form.rdpPage->setServer(rdp.value(Key::rdpServerAddress).toString(),
                              rdp.value(Key::allowCustomRdpServers).toBool());
}

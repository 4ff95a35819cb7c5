// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "launcher/mainpages.h"

#include "launcher/popups.h"
#include "launcher/settingsapp.h"
#include "services/updateservice.h"

#include "ui_settingsapp.h"

MainPages::MainPages(Ui::SettingsApp &form, UpdateService &updates, AutoStart &autoStart)
    : m_form(form)
    , m_autoStart(autoStart)
{
    connectUpdates(updates);
}

void MainPages::connectUpdates(const UpdateService &updates)
{
    UpdatePage *page = m_form.updatePage;
    connect(&updates, &UpdateService::opened, this, [this, page](const QString &text) {
        page->showProgress(text, -1, -1);
        m_behindUpdate = current();
        m_autoStart.stop();
        Popups::closeAll();
        m_form.mainStackedWidget->setCurrentIndex(SettingsApp::UpdatePage);
    });
    connect(&updates, &UpdateService::progress, page, &UpdatePage::showProgress);
    connect(&updates, &UpdateService::installing, page, &UpdatePage::showInstalling);
    connect(&updates, &UpdateService::failed, page, &UpdatePage::showFailure);
    connect(&updates, &UpdateService::remaining, page, &UpdatePage::showCountdown);
    connect(&updates, &UpdateService::closed, this, [this] {
        emit updateClosing();
        m_form.mainStackedWidget->setCurrentIndex(m_behindUpdate);
    });
}

int MainPages::current() const
{
    return m_form.mainStackedWidget->currentIndex();
}

void MainPages::show(int page)
{
    if (current() == SettingsApp::UpdatePage)
        m_behindUpdate = page;
    else
        m_form.mainStackedWidget->setCurrentIndex(page);
}

void MainPages::showLauncher(AutoStart::Kind kind)
{
    const int page = kind == AutoStart::Kind::Connect ? SettingsApp::AutoConnectPage
        : kind == AutoStart::Kind::LogOn              ? SettingsApp::AutoLogonPage
                                                      : SettingsApp::LauncherPage;
    if (page != SettingsApp::LauncherPage && page == current())
        m_autoStart.count(kind);
    else
        show(page);
}

/// The settings are left through their own buttons, an update not at all.
void MainPages::handleShown()
{
    const int page = current();
    const bool stays = page == SettingsApp::SettingsPage || page == SettingsApp::UpdatePage;
    if (stays)
        m_autoStart.stop();
    for (QWidget *button : std::initializer_list<QWidget *>{m_form.CorvidProButton, m_form.solvaVDIButton,
                                                            m_form.rdpClientButton, m_form.settingsButton})
        button->setVisible(!stays);
    m_autoStart.count(page == SettingsApp::AutoConnectPage     ? AutoStart::Kind::Connect
                          : page == SettingsApp::AutoLogonPage ? AutoStart::Kind::LogOn
                                                               : AutoStart::Kind::None);
}

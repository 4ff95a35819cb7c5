// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/resolutioncontainer.h"
#include "pages/settingspage.h"

#include <memory>
#include <vector>

class QComboBox;

namespace Ui {
class DisplayPage;
}

/// Sets the monitor's mode, the position of a second display, and the screen saver.
class DisplayPage : public SettingsPage
{
    Q_OBJECT

public:
    /// `resolutions` must outlive the page.
    DisplayPage(JsonModule &configuration, ResolutionContainer &resolutions, QWidget *parent = nullptr);
    ~DisplayPage() override;

    void discard() override;

public slots:
    /// A second display has come or gone: its settings are shown, or no longer. They can be opened in either
    /// case.
    void showDualDisplay(bool inUse);

protected:
    void load(const QJsonObject &root) override;
    void save(QJsonObject &root) override;

private:
    /// Asks what the monitor offers and which mode is set, and shows it when the tools have replied.
    void getDisplayAvailable();
    void showModes(const std::vector<Item> &modes);
    void preferModeIn(const QString &text);
    void setDisplayTab(const QJsonObject &display);
    void saveDisplayTab(QJsonObject &display) const;
    void select(QComboBox &box, const QString &stored) const;
    void showSubPage(bool dual);
    QString position() const;

    std::unique_ptr<Ui::DisplayPage> m_ui;
    ResolutionContainer &m_resolutions;
    std::vector<Item> m_modes; ///< the rows of the boxes
};

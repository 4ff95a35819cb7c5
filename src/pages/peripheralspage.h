// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/peripheralcontroller.h"
#include "pages/settingspage.h"

#include <QJsonArray>

#include <memory>

class QComboBox;

namespace Ui {
class PeripheralsPage;
}

/// Sets which USB devices are used locally and which are redirected to the session: a policy for each class
/// of devices, and exceptions for single devices.
class PeripheralsPage : public SettingsPage
{
    Q_OBJECT

public:
    explicit PeripheralsPage(JsonModule &configuration, QWidget *parent = nullptr);
    ~PeripheralsPage() override;

protected:
    void load(const QJsonObject &root) override;
    void save(QJsonObject &root) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Policy
    {
        QLatin1String key;
        QComboBox *box;
    };

    void setUpPolicies();
    void setUpList();

    void setRedirectionTab(const QJsonObject &redirection);
    void saveRedirectionTab(QJsonObject &redirection) const;
    /// Lists the devices that are plugged in, and the stored ones with their redirection.
    void initPeripheralDevices(const QJsonArray &stored);
    QJsonArray customDevices() const;
    /// Unsaved choices that an unplugged device does not take away: it was stored, added by hand, or is
    /// redirected.
    QJsonArray devicesToKeep() const;

    void addDevice();
    void removeDevice();
    void refresh();
    void toggleRedirection();
    void redirectionPageChanged(int index);

    const Item *current();
    void select(int row);
    void updateButtons();
    void updatePolicies();

    std::unique_ptr<Ui::PeripheralsPage> m_ui;
    PeripheralController m_peripherals;
    QVector<Policy> m_policies;
    QSet<QString> m_added; ///< by hand, since the page was filled
};

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "pages/settingspage.h"

#include <QDateTime>

#include <memory>

namespace Ui {
class DateTimePage;
}

/// Sets the time zone, and the clock from a time server or by hand.
class DateTimePage : public SettingsPage
{
    Q_OBJECT

public:
    explicit DateTimePage(JsonModule &configuration, QWidget *parent = nullptr);
    ~DateTimePage() override;

    /// The entered time; null when the user has left the time as it was shown, which is past by now.
    QDateTime clock() const;

protected:
    void load(const QJsonObject &root) override;
    QString refusal() const override;
    void save(QJsonObject &root) override;

private:
    void getTimezones();
    void setDateTimeTab(const QJsonObject &dateTime);
    void saveDateTimeTab(QJsonObject &dateTime) const;
    void enableFields();

    std::unique_ptr<Ui::DateTimePage> m_ui;
    QDateTime m_shownTime; ///< the time at which the page was filled
};

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/connecttarget.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace Ui {
class RdpPage;
}

/// The launcher's page for RDP: one server, which the user may change where the administrator allows it.
class RdpPage : public QWidget
{
    Q_OBJECT

public:
    explicit RdpPage(QWidget *parent = nullptr);
    ~RdpPage() override;

    void setServer(const QString &address, bool customAllowed);
    /// Nothing while no address stands there.
    std::optional<ConnectTarget> target() const;

signals:
    void targetChanged();

private:
    std::unique_ptr<Ui::RdpPage> m_ui;
    QString m_storedAddress;
};

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLabel>
#include <QWidget>

/// The launcher's page for SOLVA brokers. Signing in to a broker is not part of this version; the page says
/// so.
class SolvaPage : public QWidget
{
    Q_OBJECT

public:
    explicit SolvaPage(QWidget *parent = nullptr);

    void setBroker(const QString &address);

private:
    QLabel *m_text;
};

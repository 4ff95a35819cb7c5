// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "app/solvapage.h"

#include <QVBoxLayout>

SolvaPage::SolvaPage(QWidget *parent)
    : QWidget(parent)
    , m_text(new QLabel(this))
{
    m_text->setObjectName(QStringLiteral("solvaTextLabel"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 16, 0, 0);
    layout->addWidget(m_text, 0, Qt::AlignTop);
    setBroker(QString());
}

void SolvaPage::setBroker(const QString &address)
{
    const QString broker
        = address.isEmpty() ? tr("No SOLVA broker is set up.") : tr("SOLVA broker: %1").arg(address);
    m_text->setText(broker + QLatin1Char('\n')
                    + tr("Signing in to a broker is not available in this version."));
}

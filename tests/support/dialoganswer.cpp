// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "dialoganswer.h"

#include "widgets/generaldialog.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>

namespace {
constexpr int lookMs = 5;
}

DialogAnswer::DialogAnswer(bool accept, const QString &input)
    : m_accept(accept)
    , m_input(input)
{
    connect(&m_timer, &QTimer::timeout, this, &DialogAnswer::answer);
    m_timer.start(lookMs);
}

void DialogAnswer::answer()
{
    auto *dialog = qobject_cast<GeneralDialog *>(QApplication::activeModalWidget());
    if (!dialog)
        return;
    titles += dialog->windowTitle();
    messages += dialog->findChild<QLabel *>("messageLabel")->text();
    dialog->findChild<QLineEdit *>("inputLineEdit")->setText(m_input);
    dialog->done(m_accept ? QDialog::Accepted : QDialog::Rejected);
}

// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProcess>

/// A child process that does not outlive this one: the kernel sends it a signal when this process dies, even
/// by SIGKILL.
class ChildProcess : public QProcess
{
    Q_OBJECT

public:
    explicit ChildProcess(int parentDeathSignal, QObject *parent = nullptr);

protected:
    void setupChildProcess() override;

private:
    int m_parentDeathSignal;
};

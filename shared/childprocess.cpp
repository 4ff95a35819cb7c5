// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "shared/childprocess.h"

#include <sys/prctl.h>

ChildProcess::ChildProcess(int parentDeathSignal, QObject *parent)
    : QProcess(parent)
    , m_parentDeathSignal(parentDeathSignal)
{ }

/// Runs in the child, between fork and exec.
void ChildProcess::setupChildProcess()
{
    ::prctl(PR_SET_PDEATHSIG, m_parentDeathSignal);
}
